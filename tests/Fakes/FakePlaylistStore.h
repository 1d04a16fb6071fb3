// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/Seams/PlaylistStore.h"

namespace cadorel {

/// Remembers what was asked of the playlists: `calls` in order, one text each.
class FakePlaylistStore : public PlaylistStore
{
public:
    QStringList calls;

    void createPlaylist(const QString &name, PlaylistType type) override
    {
        calls.append(QStringLiteral("create ") + name +
                     (type == PlaylistType::local ? QStringLiteral(" local") : QStringLiteral(" online")));
    }
    void addToPlaylist(const Song &song, const Playlist &playlist) override
    {
        calls.append(QStringLiteral("add ") + song.id() + QStringLiteral(" to ") + playlist.name);
    }
    void addOnlineToPlaylist(const OnlineSong &song, const Playlist &playlist) override
    {
        calls.append(QStringLiteral("add online ") + song.id + QStringLiteral(" to ") + playlist.name);
    }
};

} // namespace cadorel
