// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Playlist.h"
#include "Services/PreferenceSaver.h"

#include <QList>

#include <functional>

namespace cadorel {

class Preferences;

/// Keeps the playlists in the preferences: one JSON array under "playlists", covers and all. Main thread.
class PlaylistStorage
{
public:
    /// @param preferences outlives the storage
    /// @param source gives the playlists to be stored; the destructor asks for them too when a request waits
    PlaylistStorage(Preferences &preferences, std::function<QList<Playlist>()> source);

    /// The stored playlists; none, and a log line, when they cannot be read.
    QList<Playlist> loadPlaylists() const;
    /// Stores the playlists as they are at the end of this turn of the event loop, or, where they are large,
    /// a little later. When one has no JSON form, a log line says so and what was stored stays.
    void request() { m_saver.request(); }

private:
    Preferences &m_preferences;
    /// Waits in its destructor for what was asked for to land.
    PreferenceSaver m_saver;
};

} // namespace cadorel
