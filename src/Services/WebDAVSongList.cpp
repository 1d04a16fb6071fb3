// SPDX-License-Identifier: GPL-3.0-or-later
// The songs of all servers: loading, storing, and what playback learns about them.
#include "Services/WebDAVService.h"

#include "Services/WebDAV/WebDAVSongStore.h"
#include "Services/WebDAV/WebDAVSongs.h"
#include "Utils/Console.h"
#include "Utils/KeychainHelper.h"
#include "Utils/LogText.h"
#include "Utils/Tasks.h"

#include <QHash>
#include <QPointer>
#include <QSet>
#include <QThreadPool>
#include <QtConcurrent>

#include <QCoroFuture>
#include <QCoroTask>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// UUID texts of the servers of these songs.
QSet<QString> configIdsOf(const QList<Song> &songs)
{
    QSet<QString> ids;
    for (const Song &song : songs) {
        if (const std::optional<QString> id = extractConfigId(song.id()))
            ids.insert(*id);
    }
    return ids;
}

/// The stored songs, sorted out by what the credential store says about their servers.
struct SortedSongs
{
    QList<Song> listed;
    QList<Song> heldBack;
};

SortedSongs sortedOut(const std::shared_ptr<QList<Song>> &stored,
                      const QHash<QString, WebDAVAccess> &accesses, const QSet<QString> &untold)
{
    SortedSongs sorted;
    std::copy_if(
        stored->cbegin(), stored->cend(), std::back_inserter(sorted.heldBack), [&untold](const Song &song) {
            return song.isWebDAV() && untold.contains(extractConfigId(song.id()).value_or(QString()));
        });
    sorted.listed = songsWithAddresses(std::exchange(*stored, {}), accesses);
    return sorted;
}

/// Takes the songs with a prefix out of a list.
QList<Song> without(const QList<Song> &songs, const QString &prefix)
{
    QList<Song> kept;
    kept.reserve(songs.size());
    std::copy_if(songs.cbegin(), songs.cend(), std::back_inserter(kept),
                 [&prefix](const Song &song) { return !song.id().startsWith(prefix); });
    return kept;
}

} // namespace

void WebDAVService::setSongs(const QList<Song> &songs)
{
    // Freeing 100,000 records takes longer than a frame may.
    QThreadPool::globalInstance()->start([old = std::exchange(m_webDAVSongs, songs)] { Q_UNUSED(old); });
    ++m_revision;
    Q_EMIT changed();
}

QCoro::Task<void> WebDAVService::songsLoaded()
{
    co_await m_loaded.future();
}

QCoro::Task<void> WebDAVService::songsStored()
{
    const QPointer<WebDAVService> self(this);
    co_await songsLoaded();
    if (self)
        co_await m_store->idle();
}

// MARK: stored songs

QCoro::Task<void> WebDAVService::loadCachedSongs()
{
    const QPointer<WebDAVService> self(this);
    const std::shared_ptr<QList<Song>> stored = co_await m_store->load();
    if (!self)
        co_return;
    if (stored)
        co_await takeStored(stored);
    if (!self)
        co_return;
    m_isLoaded = true;
    m_loaded.finish();
}

QCoro::Task<void> WebDAVService::takeStored(std::shared_ptr<QList<Song>> stored)
{
    const QPointer<WebDAVService> self(this);
    const QSet<QString> ids = co_await QtConcurrent::run([stored] { return configIdsOf(*stored); });
    if (!self)
        co_return;
    QHash<QString, WebDAVAccess> accesses;
    QSet<QString> untold;
    const QList<WebDAVConfig> configs = m_configs;
    for (const WebDAVConfig &config : configs) {
        const QString id = config.uuidText();
        if (!ids.contains(id))
            continue;
        const Password password = co_await storedPassword(config);
        if (!self)
            co_return;
        if (password)
            accesses.insert(id, {config, *password});
        else if (password.error() != SecretStatus::itemNotFound)
            untold.insert(id);
    }
    SortedSongs songs = co_await QtConcurrent::run(sortedOut, stored, accesses, untold);
    if (!self)
        co_return;
    for (const WebDAVConfig &config : configs) {
        if (m_configs.contains(config))
            continue;
        // Deleted in the meantime.
        songs.listed = without(songs.listed, webDAVSongPrefix(config));
        songs.heldBack = without(songs.heldBack, webDAVSongPrefix(config));
    }
    m_heldBack = songs.heldBack;
    setSongs(songs.listed);
    print(u"📂 WebDAV: 加载了 "_s + QString::number(m_webDAVSongs.size()) + u" 首缓存歌曲"_s);
}

void WebDAVService::saveCachedSongs()
{
    m_store->request();
}

// MARK: changes

QList<Song> WebDAVService::getSongs(const WebDAVConfig &config) const
{
    const QString prefix = webDAVSongPrefix(config);
    QList<Song> songs;
    std::copy_if(m_webDAVSongs.cbegin(), m_webDAVSongs.cend(), std::back_inserter(songs),
                 [&prefix](const Song &song) { return song.id().startsWith(prefix); });
    return songs;
}

void WebDAVService::replaceSongs(const WebDAVConfig &config, const QList<Song> &songs)
{
    const QString prefix = webDAVSongPrefix(config);
    m_heldBack = without(m_heldBack, prefix);
    setSongs(without(m_webDAVSongs, prefix) + songs);
    saveCachedSongs();
}

void WebDAVService::clearAllSongs()
{
    if (!m_isLoaded) {
        detach(clearWhenLoaded());
        return;
    }
    m_heldBack.clear();
    setSongs({});
    saveCachedSongs();
}

QCoro::Task<void> WebDAVService::clearWhenLoaded()
{
    const QPointer<WebDAVService> self(this);
    co_await songsLoaded();
    if (self)
        clearAllSongs();
}

QCoro::Task<void> WebDAVService::refreshSongURLs(WebDAVConfig config)
{
    const QPointer<WebDAVService> self(this);
    const Password password = co_await storedPassword(config);
    if (!self || !password)
        co_return;
    co_await songsLoaded();
    // A song may be changed while the addresses are built; then they are built for the changed list.
    for (bool isDone = false; self && !isDone;) {
        const quint64 revision = m_revision;
        const QList<Song> songs = co_await QtConcurrent::run(songsWithFreshAddresses, m_webDAVSongs,
                                                             WebDAVAccess{config, *password});
        isDone = self && revision == m_revision;
        if (isDone)
            setSongs(songs);
    }
}

void WebDAVService::updateSongMetadata(const Song &song)
{
    if (m_isLoaded)
        takeMetadata(song);
    else
        detach(takeMetadataWhenLoaded(song));
}

QCoro::Task<void> WebDAVService::takeMetadataWhenLoaded(Song song)
{
    const QPointer<WebDAVService> self(this);
    co_await songsLoaded();
    if (self)
        takeMetadata(song);
}

void WebDAVService::takeMetadata(const Song &song)
{
    const qsizetype index = m_webDAVSongs.indexOf(song); // equal songs have equal ids
    if (index < 0)
        return;
    Song &record = m_webDAVSongs[index];
    record.setTitle(song.title());
    record.setArtist(song.artist());
    record.setAlbum(song.album());
    record.setDuration(song.duration());
    record.setEmbeddedLyrics(song.embeddedLyrics());
    record.setArtworkData(song.artworkData());
    const QString line = u"💾 WebDAV: 已更新歌曲元数据缓存 - "_s + logText(record.title()) + u" ("_s +
                         (record.embeddedLyrics() ? u"有歌词"_s : u"无歌词"_s) + u", "_s +
                         (record.artworkData().isPresent() ? u"有封面"_s : u"无封面"_s) + u')';
    ++m_revision;
    Q_EMIT changed();
    saveCachedSongs();
    print(line);
}

} // namespace cadorel
