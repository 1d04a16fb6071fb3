// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/Seams/PlaylistStore.h"

#include <QSet>

namespace cadorel {

/// Remembers what was asked of the playlists: `calls` in order, one text each.
class FakePlaylistStore : public PlaylistStore
{
public:
    QStringList calls;
    /// Ids of the favourites of both kinds; a change is told by changed().
    QSet<QString> favorites;

    Playlist createPlaylist(const QString &name, const QString &description, PlaylistType type) override
    {
        calls.append(QStringLiteral("create ") + name +
                     (type == PlaylistType::local ? QStringLiteral(" local") : QStringLiteral(" online")));
        Playlist playlist;
        playlist.name = name;
        playlist.description = description;
        playlist.type = type;
        return playlist;
    }
    void addSong(const Song &song, const Playlist &playlist) override
    {
        calls.append(QStringLiteral("add ") + song.id() + QStringLiteral(" to ") + playlist.name);
    }
    void addOnlineSong(const OnlineSong &song, const Playlist &playlist) override
    {
        calls.append(QStringLiteral("add online ") + song.id + QStringLiteral(" to ") + playlist.name);
    }
    bool isFavorite(const Song &song) const override { return favorites.contains(song.id()); }
    bool isFavorite(const OnlineSong &song) const override { return favorites.contains(song.id); }
};

} // namespace cadorel
