// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Playlist.h"
#include "Models/Song.h"

#include <QObject>

namespace cadorel {

/// The listener's playlists. Main thread.
class PlaylistStore : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    virtual void createPlaylist(const QString &name, PlaylistType type) = 0;
    virtual void addToPlaylist(const Song &song, const Playlist &playlist) = 0;
    virtual void addOnlineToPlaylist(const OnlineSong &song, const Playlist &playlist) = 0;

Q_SIGNALS:
    void changed();
};

} // namespace cadorel
