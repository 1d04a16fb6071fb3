// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"
#include "Services/PreferenceSaver.h"

#include <QByteArray>
#include <QCoroTask>
#include <QList>

#include <functional>
#include <memory>
#include <optional>

namespace cadorel {

class Preferences;

/// Keeps the songs of all WebDAV servers in the preferences: one JSON array under "webdav_songs". With covers
/// it can be tens of megabytes, so that it is read and encoded by the thread pool. Main thread.
class WebDAVSongStore
{
public:
    /// @param preferences outlives the store
    /// @param source gives the songs to be stored, asked for when a state begins to be encoded
    WebDAVSongStore(Preferences &preferences, std::function<QList<Song>()> source);

    /// The stored songs, which hold no addresses; null when there are none or they cannot be read.
    QCoro::Task<std::shared_ptr<QList<Song>>> load() const;
    /// Stores the songs as they are at the end of this turn of the event loop, or later.
    void request() { m_saver.request(); }
    /// Ends when nothing is being encoded or waiting.
    QCoro::Task<void> idle() { return m_saver.idle(); }

    /// The songs of a stored text; nothing when it is damaged or a single record is incomplete. Any thread.
    static std::optional<QList<Song>> decode(const QByteArray &text);
    /// The text to be stored. Any thread.
    static QByteArray encode(const QList<Song> &songs);

private:
    Preferences &m_preferences;
    /// Waits in its destructor for what was asked for to land.
    PreferenceSaver m_saver;
};

} // namespace cadorel
