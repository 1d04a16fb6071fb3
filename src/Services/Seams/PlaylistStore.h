// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Playlist.h"
#include "Models/Song.h"

#include <QObject>

namespace cadorel {

/// What the central view model needs of the listener's playlists. Main thread.
class PlaylistStore : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    virtual Playlist createPlaylist(const QString &name, const QString &description, PlaylistType type) = 0;
    virtual void addSong(const Song &song, const Playlist &playlist) = 0;
    virtual void addOnlineSong(const OnlineSong &song, const Playlist &playlist) = 0;
    /// Cheap enough for every row that is drawn.
    virtual bool isFavorite(const Song &song) const = 0;
    virtual bool isFavorite(const OnlineSong &song) const = 0;

Q_SIGNALS:
    /// Some playlist has changed, come or gone.
    void changed();
};

} // namespace cadorel
