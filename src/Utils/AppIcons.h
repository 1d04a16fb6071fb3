// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

/// A constant of the vocabulary: `AppIcons::Playback::play` here, `AppIcons.playback.play` in QML.
#define CADOREL_APP_ICON(constant, symbol)                                                                   \
    Q_PROPERTY(QString constant MEMBER constant CONSTANT)                                                    \
public:                                                                                                      \
    static inline const QString constant = QStringLiteral(symbol);

/// What the symbols of the screens stand for, one family a struct: screens name the role, and the symbol of a
/// role is changed here alone. Two roles can share a symbol. symbolFile() has the picture of a symbol.
namespace cadorel::AppIcons {

struct Playback
{
    Q_GADGET
    CADOREL_APP_ICON(play, "play.fill")
    CADOREL_APP_ICON(pause, "pause.fill")
    CADOREL_APP_ICON(stop, "stop.fill")
    CADOREL_APP_ICON(previous, "backward.fill")
    CADOREL_APP_ICON(next, "forward.fill")
    CADOREL_APP_ICON(skipBackward, "gobackward.10")
    CADOREL_APP_ICON(skipForward, "goforward.10")
    CADOREL_APP_ICON(shuffle, "shuffle")
    CADOREL_APP_ICON(repeatAll, "repeat")
    CADOREL_APP_ICON(repeatOne, "repeat.1")
    CADOREL_APP_ICON(sequential, "arrow.forward")
    CADOREL_APP_ICON(playCircle, "play.circle.fill")
    CADOREL_APP_ICON(pauseCircle, "pause.circle.fill")
    CADOREL_APP_ICON(playOutline, "play")
};

struct Audio
{
    Q_GADGET
    CADOREL_APP_ICON(speaker, "speaker.wave.2.fill")
    CADOREL_APP_ICON(speakerMute, "speaker.slash.fill")
    CADOREL_APP_ICON(speakerLow, "speaker.wave.1.fill")
    CADOREL_APP_ICON(speakerHigh, "speaker.wave.3.fill")
    CADOREL_APP_ICON(waveform, "waveform")
    CADOREL_APP_ICON(airplay, "airplayaudio")
    CADOREL_APP_ICON(equalizer, "slider.vertical.3")
};

struct Music
{
    Q_GADGET
    CADOREL_APP_ICON(note, "music.note")
    CADOREL_APP_ICON(noteList, "music.note.list")
    CADOREL_APP_ICON(album, "opticaldisc.fill")
    CADOREL_APP_ICON(playlist, "music.note.list")
    CADOREL_APP_ICON(queue, "list.bullet")
    CADOREL_APP_ICON(lyrics, "text.bubble.fill")
    CADOREL_APP_ICON(musicHouse, "music.note.house.fill")
    CADOREL_APP_ICON(library, "music.note.house")
    CADOREL_APP_ICON(playlistFill, "music.note.list.fill")
    CADOREL_APP_ICON(chart, "chart.bar")
    CADOREL_APP_ICON(online, "globe")
    CADOREL_APP_ICON(onlineFill, "globe.fill")
};

struct Navigation
{
    Q_GADGET
    CADOREL_APP_ICON(back, "chevron.left")
    CADOREL_APP_ICON(forward, "chevron.right")
    CADOREL_APP_ICON(up, "chevron.up")
    CADOREL_APP_ICON(down, "chevron.down")
    CADOREL_APP_ICON(close, "xmark")
    CADOREL_APP_ICON(dismiss, "chevron.down")
    CADOREL_APP_ICON(more, "ellipsis")
    CADOREL_APP_ICON(moreCircle, "ellipsis.circle")
    CADOREL_APP_ICON(parent, "arrow.up")
};

struct Action
{
    Q_GADGET
    CADOREL_APP_ICON(add, "plus")
    CADOREL_APP_ICON(addCircle, "plus.circle.fill")
    CADOREL_APP_ICON(remove, "minus")
    CADOREL_APP_ICON(removeCircle, "minus.circle.fill")
    // The language keeps the word itself for its own use.
    Q_PROPERTY(QString delete MEMBER delete_ CONSTANT)
    CADOREL_APP_ICON(edit, "pencil")
    CADOREL_APP_ICON(share, "square.and.arrow.up")
    CADOREL_APP_ICON(download, "square.and.arrow.down")
    CADOREL_APP_ICON(upload, "square.and.arrow.up")
    CADOREL_APP_ICON(refresh, "arrow.clockwise")
    CADOREL_APP_ICON(search, "magnifyingglass")
    CADOREL_APP_ICON(filter, "line.3.horizontal.decrease")
    CADOREL_APP_ICON(sort, "arrow.up.arrow.down")
    CADOREL_APP_ICON(copy, "doc.on.doc")
    CADOREL_APP_ICON(trash, "trash")
    CADOREL_APP_ICON(reset, "arrow.counterclockwise")
    CADOREL_APP_ICON(addToPlaylist, "text.badge.plus")
    CADOREL_APP_ICON(reveal, "eye")
    CADOREL_APP_ICON(hide, "eye.slash")
    static inline const QString delete_ = QStringLiteral("trash.fill");
};

struct Favorite
{
    Q_GADGET
    CADOREL_APP_ICON(heart, "heart")
    CADOREL_APP_ICON(heartFill, "heart.fill")
    CADOREL_APP_ICON(star, "star")
    CADOREL_APP_ICON(starFill, "star.fill")
    CADOREL_APP_ICON(bookmark, "bookmark")
    CADOREL_APP_ICON(bookmarkFill, "bookmark.fill")
    CADOREL_APP_ICON(heartSlash, "heart.slash")
};

struct File
{
    Q_GADGET
    CADOREL_APP_ICON(folder, "folder.fill")
    CADOREL_APP_ICON(folderBadgePlus, "folder.badge.plus")
    CADOREL_APP_ICON(document, "doc.fill")
    CADOREL_APP_ICON(music, "music.note")
    CADOREL_APP_ICON(server, "externaldrive.fill.badge.wifi")
    CADOREL_APP_ICON(folderOutline, "folder")
    CADOREL_APP_ICON(documentBadgePlus, "doc.badge.plus")
    CADOREL_APP_ICON(photoLibrary, "photo.on.rectangle")
    CADOREL_APP_ICON(photoBadgePlus, "photo.badge.plus")
    CADOREL_APP_ICON(cloud, "cloud")
};

struct User
{
    Q_GADGET
    CADOREL_APP_ICON(person, "person.fill")
    CADOREL_APP_ICON(personCircle, "person.circle.fill")
    CADOREL_APP_ICON(artist, "person.fill")
    CADOREL_APP_ICON(people, "person.2.fill")
};

struct Settings
{
    Q_GADGET
    CADOREL_APP_ICON(gear, "gearshape.fill")
    CADOREL_APP_ICON(gearOutline, "gearshape")
    CADOREL_APP_ICON(theme, "paintbrush.fill")
    CADOREL_APP_ICON(appearance, "circle.lefthalf.filled")
    CADOREL_APP_ICON(accentColor, "paintpalette.fill")
    CADOREL_APP_ICON(sound, "speaker.wave.2.fill")
    CADOREL_APP_ICON(storage, "internaldrive.fill")
    CADOREL_APP_ICON(cache, "internaldrive.fill")
    CADOREL_APP_ICON(info, "info.circle.fill")
    CADOREL_APP_ICON(privacy, "hand.raised.fill")
    CADOREL_APP_ICON(about, "questionmark.circle.fill")
    CADOREL_APP_ICON(service, "gear")
};

struct Timer
{
    Q_GADGET
    CADOREL_APP_ICON(timer, "timer")
    CADOREL_APP_ICON(clock, "clock.fill")
    CADOREL_APP_ICON(alarm, "alarm.fill")
    CADOREL_APP_ICON(sleep, "moon.fill")
    CADOREL_APP_ICON(lyricsSync, "clock.arrow.2.circlepath")
};

struct Status
{
    Q_GADGET
    CADOREL_APP_ICON(checkmark, "checkmark")
    CADOREL_APP_ICON(checkmarkCircle, "checkmark.circle.fill")
    CADOREL_APP_ICON(xmark, "xmark")
    CADOREL_APP_ICON(xmarkCircle, "xmark.circle.fill")
    CADOREL_APP_ICON(warning, "exclamationmark.triangle.fill")
    CADOREL_APP_ICON(error, "xmark.octagon.fill")
    CADOREL_APP_ICON(loading, "arrow.triangle.2.circlepath")
    CADOREL_APP_ICON(info, "info.circle")
    CADOREL_APP_ICON(failure, "exclamationmark.triangle")
};

struct Appearance
{
    Q_GADGET
    CADOREL_APP_ICON(sun, "sun.max.fill")
    CADOREL_APP_ICON(moon, "moon.fill")
    CADOREL_APP_ICON(circle, "circle")
    CADOREL_APP_ICON(circleFill, "circle.fill")
    CADOREL_APP_ICON(square, "square")
    CADOREL_APP_ICON(squareFill, "square.fill")
    CADOREL_APP_ICON(squareOnCircle, "square.on.circle")
    CADOREL_APP_ICON(layered, "square.on.square")
    CADOREL_APP_ICON(photo, "photo.fill")
    CADOREL_APP_ICON(blur, "drop.fill")
    CADOREL_APP_ICON(gradient, "square.stack.3d.up.fill")
    CADOREL_APP_ICON(transparent, "square.dashed")
    CADOREL_APP_ICON(picture, "photo")
};

struct Animation
{
    Q_GADGET
    CADOREL_APP_ICON(bounce, "arrow.up.arrow.down")
    CADOREL_APP_ICON(fade, "circle.lefthalf.filled")
    CADOREL_APP_ICON(slide, "arrow.left.arrow.right")
    CADOREL_APP_ICON(scale, "arrow.up.left.and.arrow.down.right")
    CADOREL_APP_ICON(drop, "arrow.down")
};

struct Misc
{
    Q_GADGET
    CADOREL_APP_ICON(gift, "gift.fill")
    CADOREL_APP_ICON(sparkles, "sparkles")
    CADOREL_APP_ICON(textBubble, "text.bubble")
    CADOREL_APP_ICON(textBubbleFill, "text.bubble.fill")
    CADOREL_APP_ICON(qrcode, "qrcode")
    CADOREL_APP_ICON(link, "link")
    CADOREL_APP_ICON(app, "app.fill")
};

} // namespace cadorel::AppIcons

#undef CADOREL_APP_ICON
