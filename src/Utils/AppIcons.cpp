// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/AppIcons.h"

#include <QHash>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr auto folder = ":/icons/phosphor/"_L1;
constexpr auto unknownSymbol = "regular/circle.svg"_L1;

const QHash<QString, QString> &files()
{
    static const QHash<QString, QString> table = {
        {u"arrow.clockwise"_s, u"regular/arrow-clockwise.svg"_s},
        {u"arrow.counterclockwise"_s, u"regular/arrow-counter-clockwise.svg"_s},
        {u"arrow.up"_s, u"regular/arrow-up.svg"_s},
        {u"backward.fill"_s, u"fill/skip-back-fill.svg"_s},
        {u"bolt.fill"_s, u"fill/lightning-fill.svg"_s},
        {u"chart.bar"_s, u"regular/chart-bar.svg"_s},
        {u"checkmark"_s, u"regular/check.svg"_s},
        {u"checkmark.circle.fill"_s, u"fill/check-circle-fill.svg"_s},
        {u"chevron.left"_s, u"regular/caret-left.svg"_s},
        {u"chevron.right"_s, u"regular/caret-right.svg"_s},
        {u"circle"_s, u"regular/circle.svg"_s},
        {u"cloud"_s, u"regular/cloud.svg"_s},
        {u"cloud.fill"_s, u"fill/cloud-fill.svg"_s},
        {u"doc.badge.plus"_s, u"regular/file-plus.svg"_s},
        {u"ellipsis"_s, u"regular/dots-three.svg"_s},
        {u"ellipsis.circle"_s, u"regular/dots-three-circle.svg"_s},
        {u"exclamationmark.triangle"_s, u"regular/warning.svg"_s},
        {u"exclamationmark.triangle.fill"_s, u"fill/warning-fill.svg"_s},
        {u"externaldrive"_s, u"regular/hard-drive.svg"_s},
        {u"externaldrive.connected.to.line.below"_s, u"regular/network.svg"_s},
        {u"externaldrive.fill"_s, u"fill/hard-drive-fill.svg"_s},
        {u"externaldrive.fill.badge.wifi"_s, u"fill/hard-drives-fill.svg"_s},
        {u"eye"_s, u"regular/eye.svg"_s},
        {u"eye.slash"_s, u"regular/eye-slash.svg"_s},
        {u"folder"_s, u"regular/folder.svg"_s},
        {u"folder.badge.plus"_s, u"regular/folder-plus.svg"_s},
        {u"folder.fill"_s, u"fill/folder-fill.svg"_s},
        {u"forward.fill"_s, u"fill/skip-forward-fill.svg"_s},
        {u"gear"_s, u"regular/gear.svg"_s},
        {u"globe"_s, u"regular/globe.svg"_s},
        {u"globe.fill"_s, u"fill/globe-fill.svg"_s},
        {u"guitars"_s, u"regular/guitar.svg"_s},
        {u"headphones"_s, u"regular/headphones.svg"_s},
        {u"heart"_s, u"regular/heart.svg"_s},
        {u"heart.fill"_s, u"fill/heart-fill.svg"_s},
        {u"heart.slash"_s, u"regular/heart-break.svg"_s},
        {u"house"_s, u"regular/house.svg"_s},
        {u"info.circle"_s, u"regular/info.svg"_s},
        {u"list.number"_s, u"regular/list-numbers.svg"_s},
        {u"lock.open"_s, u"regular/lock-open.svg"_s},
        {u"magnifyingglass"_s, u"regular/magnifying-glass.svg"_s},
        {u"moon.fill"_s, u"fill/moon-fill.svg"_s},
        {u"music.mic"_s, u"regular/microphone-stage.svg"_s},
        {u"music.note"_s, u"regular/music-note.svg"_s},
        {u"music.note.house"_s, u"regular/house.svg"_s},
        {u"music.note.house.fill"_s, u"fill/house-fill.svg"_s},
        {u"music.note.list"_s, u"regular/playlist.svg"_s},
        {u"music.note.list.fill"_s, u"fill/playlist-fill.svg"_s},
        {u"music.quarternote.3"_s, u"regular/music-notes.svg"_s},
        {u"pause.fill"_s, u"fill/pause-fill.svg"_s},
        {u"pencil"_s, u"regular/pencil-simple.svg"_s},
        {u"person.wave.2"_s, u"regular/user-sound.svg"_s},
        {u"photo"_s, u"regular/image.svg"_s},
        {u"pianokeys"_s, u"regular/piano-keys.svg"_s},
        {u"play"_s, u"regular/play.svg"_s},
        {u"play.fill"_s, u"fill/play-fill.svg"_s},
        {u"plus"_s, u"regular/plus.svg"_s},
        {u"repeat"_s, u"regular/repeat.svg"_s},
        {u"repeat.1"_s, u"regular/repeat-once.svg"_s},
        {u"server.rack"_s, u"regular/hard-drives.svg"_s},
        {u"shuffle"_s, u"regular/shuffle.svg"_s},
        {u"slider.horizontal.3"_s, u"regular/sliders-horizontal.svg"_s},
        {u"slider.vertical.3"_s, u"regular/sliders.svg"_s},
        {u"speaker.slash.fill"_s, u"fill/speaker-slash-fill.svg"_s},
        {u"speaker.wave.1.fill"_s, u"fill/speaker-low-fill.svg"_s},
        {u"speaker.wave.2.fill"_s, u"fill/speaker-high-fill.svg"_s},
        {u"speaker.wave.3.fill"_s, u"fill/speaker-high-fill.svg"_s},
        {u"square.and.arrow.down"_s, u"regular/download-simple.svg"_s},
        {u"text.badge.plus"_s, u"regular/list-plus.svg"_s},
        {u"trash"_s, u"regular/trash.svg"_s},
        {u"waveform"_s, u"regular/waveform.svg"_s},
        {u"waveform.path.ecg"_s, u"regular/pulse.svg"_s},
        {u"xmark"_s, u"regular/x.svg"_s},
        {u"xmark.circle.fill"_s, u"fill/x-circle-fill.svg"_s},
    };
    return table;
}

} // namespace

QString symbolFile(const QString &name)
{
    return folder + files().value(name, unknownSymbol);
}

bool hasSymbol(const QString &name)
{
    return files().contains(name);
}

QStringList symbolNames()
{
    return files().keys();
}

} // namespace cadorel
