// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"

#include <QByteArray>
#include <QCoroTask>
#include <QFutureWatcher>
#include <QList>
#include <QObject>
#include <QPromise>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace cadorel {

class Preferences;

/// Keeps the songs of all WebDAV servers in the preferences: one JSON array under "webdav_songs". With covers
/// it can be tens of megabytes, so that it is read and written by the thread pool. One state is encoded at a
/// time; requests that come meanwhile share the next, and the last one always lands. Main thread.
class WebDAVSongStore : public QObject
{
    Q_OBJECT
public:
    /// @param preferences outlives the store
    /// @param source gives the songs to be stored, asked for when a state begins to be encoded
    WebDAVSongStore(Preferences &preferences, std::function<QList<Song>()> source);
    /// Waits for what was asked for to land.
    ~WebDAVSongStore() override;
    Q_DISABLE_COPY_MOVE(WebDAVSongStore)

    /// The stored songs, which hold no addresses; null when there are none or they cannot be read.
    QCoro::Task<std::shared_ptr<QList<Song>>> load() const;
    /// Stores the songs as they are at the end of this turn of the event loop, or later.
    void request();
    /// Ends when nothing is being encoded or waiting.
    QCoro::Task<void> idle();

    /// The songs of a stored text; nothing when it is damaged or a single record is incomplete. Any thread.
    static std::optional<QList<Song>> decode(const QByteArray &text);
    /// The text to be stored. Any thread.
    static QByteArray encode(const QList<Song> &songs);

private:
    void start();
    void finished();

    Preferences &m_preferences;
    std::function<QList<Song>()> m_source;
    QFutureWatcher<QByteArray> m_watcher;
    bool m_isEncoding = false;
    bool m_isWaiting = false;
    std::vector<QPromise<void>> m_idlers;
};

} // namespace cadorel
