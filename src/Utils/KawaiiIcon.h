// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

/// A constant of the vocabulary: `KawaiiIcon::play` here, `KawaiiIcon.play` in QML.
#define CADOREL_KAWAII_ICON(constant, picture)                                                               \
    Q_PROPERTY(QString constant MEMBER constant CONSTANT)                                                    \
public:                                                                                                      \
    static inline const QString constant = QStringLiteral(picture);

namespace cadorel {

/// The drawn pictures that stand for symbols in the look `kawaiiPink`, by what they mean. In QML also the way
/// from the name of any picture of ours to its address.
class KawaiiIcon : public QObject
{
    Q_OBJECT
    CADOREL_KAWAII_ICON(play, "play")
    CADOREL_KAWAII_ICON(pause, "pause")
    CADOREL_KAWAII_ICON(next, "next")
    CADOREL_KAWAII_ICON(previous, "previous")
    CADOREL_KAWAII_ICON(shuffle, "shuffle")
    CADOREL_KAWAII_ICON(loopAll, "loopall")
    CADOREL_KAWAII_ICON(loopOne, "loopone")
    CADOREL_KAWAII_ICON(sequential, "sequentialPlay")
    CADOREL_KAWAII_ICON(like, "like")
    CADOREL_KAWAII_ICON(noFavor, "noFavor")
    CADOREL_KAWAII_ICON(home, "home")
    CADOREL_KAWAII_ICON(library, "library")
    CADOREL_KAWAII_ICON(settings, "settings")
    CADOREL_KAWAII_ICON(playlist, "playlist")
    CADOREL_KAWAII_ICON(search, "search")
    CADOREL_KAWAII_ICON(cloud, "cloud")
    CADOREL_KAWAII_ICON(queue, "queue")
    CADOREL_KAWAII_ICON(lyrics, "lyrics")
    CADOREL_KAWAII_ICON(chevronDown, "chevronDown")
    CADOREL_KAWAII_ICON(chevronUp, "chevronUp")
    CADOREL_KAWAII_ICON(sleepTimer, "sleepTimer")
    CADOREL_KAWAII_ICON(share, "share")
    CADOREL_KAWAII_ICON(equalizer, "Equalizer")
    CADOREL_KAWAII_ICON(volumeDown, "volumeDown")
    CADOREL_KAWAII_ICON(volumeUp, "volumeUp")
    CADOREL_KAWAII_ICON(addToPlaylist, "addToPlaylist")
    // The language keeps the word itself for its own use.
    Q_PROPERTY(QString delete MEMBER delete_ CONSTANT)
    CADOREL_KAWAII_ICON(edit, "edit")
    CADOREL_KAWAII_ICON(artist, "artist")
    CADOREL_KAWAII_ICON(albumArt, "albumArt")
    CADOREL_KAWAII_ICON(genre, "genre")
    CADOREL_KAWAII_ICON(recent, "recent")
    static inline const QString delete_ = QStringLiteral("delete");

    /// Address of a picture for an image in QML, see artworkPath(); empty for an unknown name, which draws
    /// nothing.
    Q_INVOKABLE static QUrl artworkFile(const QString &name);
};

} // namespace cadorel

#undef CADOREL_KAWAII_ICON
