// SPDX-License-Identifier: GPL-3.0-or-later
// Songs on WebDAV servers: played from their copy in the cache, or as a stream while a copy is fetched. What
// the copy says of itself is written back to the song.
#include "Services/AudioPlayerService.h"

#include "Services/Cloud/CloudMetadata.h"
#include "Services/Cloud/CloudSongCache.h"
#include "Services/Seams/MediaCenter.h"
#include "Services/WebDAVStreamingService.h"
#include "Utils/Console.h"
#include "Utils/Tasks.h"

#include <QFileInfo>
#include <QPointer>
#include <QtConcurrent>

#include <QCoroFuture>
#include <QCoroTask>

#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

using Failure = CloudSongCache::Failure;

QString nameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

/// The cache goes, and the player with it.
bool wasCancelled(const CloudSongCache::Result &copy)
{
    return !copy && copy.error().kind == Failure::Kind::cancelled;
}

QString errorText(const Failure &failure)
{
    switch (failure.kind) {
    case Failure::Kind::credentials:
        return u"WebDAV URL 缺少认证信息"_s;
    case Failure::Kind::address:
        return u"无效的 URL"_s;
    case Failure::Kind::download:
        return u"下载失败: "_s + failure.description;
    case Failure::Kind::noFile:
        return u"下载失败"_s;
    case Failure::Kind::storage:
        return u"缓存失败: "_s + failure.description;
    case Failure::Kind::cancelled:
        break;
    }
    Q_UNREACHABLE();
}

} // namespace

void AudioPlayerService::playWebDAVURL(const QUrl &url)
{
    print(u"🌐 WebDAV: 开始流式播放..."_s);
    setIsLoading(true);
    setPlayError(std::nullopt);
    if (const std::optional<QString> copy = m_cloudSongs->cachedFile(url)) {
        print(u"📁 WebDAV: 使用本地缓存 - "_s + nameOf(*copy));
        setIsLoading(false);
        playURL(QUrl::fromLocalFile(*copy));
        if (m_currentSong && !m_currentSong->embeddedLyrics())
            detach(parseAudioMetadata(QUrl::fromLocalFile(*copy)));
        return;
    }
    const std::optional<MediaAsset> asset =
        m_parts.streaming ? m_parts.streaming->createStreamingAsset(url) : std::nullopt;
    setIsLoading(false);
    if (asset) {
        playStreamingAsset(*asset, url);
        return;
    }
    setPlayError(u"无法创建流式播放资源"_s);
    standUnloaded();
}

/// The equalizer engine is neither stopped nor looked at: a stream starts beside it.
void AudioPlayerService::playStreamingAsset(const MediaAsset &asset, const QUrl &originalURL)
{
    playAsset(asset, originalURL, DurationLog::streamed);
    print(u"▶️ WebDAV: 流式播放已启动"_s);
    detach(downloadForCache(originalURL));
}

QCoro::Task<void> AudioPlayerService::downloadForCache(QUrl url)
{
    const QPointer<AudioPlayerService> self(this);
    if (m_parts.streaming) {
        {
            // The stream fetches the whole file before its first sound. Copies that are fetched meanwhile, of
            // this song or of an earlier one, would take their share of the line from it.
            const auto hold = m_cloudSongs->holdDownloads();
            co_await m_parts.streaming->listenerServed(url);
        }
        // A stream that was left goes on: the file is not fetched twice at once.
        if (self)
            co_await m_parts.streaming->downloadSettled(url);
    }
    if (!self || m_cloudSongs->isDownloading(url))
        co_return;
    const CloudSongCache::Result copy = co_await m_cloudSongs->download(url);
    if (!self || wasCancelled(copy))
        co_return;
    if (copy) {
        print(u"💾 WebDAV: 后台缓存完成 - "_s + nameOf(*copy));
        co_await parseAudioMetadata(QUrl::fromLocalFile(*copy));
        co_return;
    }
    switch (copy.error().kind) {
    case Failure::Kind::credentials:
    case Failure::Kind::address:
    case Failure::Kind::cancelled:
        break;
    case Failure::Kind::download:
    case Failure::Kind::noFile:
    case Failure::Kind::storage:
        print(u"⚠️ WebDAV: 后台缓存失败 - "_s + copy.error().description);
        break;
    }
}

QCoro::Task<void> AudioPlayerService::downloadAndPlay(QUrl url)
{
    const QPointer<AudioPlayerService> self(this);
    const quint64 request = m_onlineRequest;
    print(u"🌐 WebDAV: 降级到下载后播放..."_s);
    const CloudSongCache::Result copy = co_await m_cloudSongs->download(url);
    if (!self || wasCancelled(copy))
        co_return;
    // Another song may have been asked for while this one was fetched; its copy is kept all the same.
    const bool isWanted = request == m_onlineRequest;
    if (!copy) {
        if (isWanted) {
            setIsLoading(false);
            setPlayError(errorText(copy.error()));
        }
        co_return;
    }
    print(u"✅ WebDAV: 下载完成 - "_s + nameOf(*copy));
    if (isWanted) {
        setIsLoading(false);
        playURL(QUrl::fromLocalFile(*copy));
    }
    co_await parseAudioMetadata(QUrl::fromLocalFile(*copy));
}

QCoro::Task<void> AudioPlayerService::parseAudioMetadata(QUrl url)
{
    const QPointer<AudioPlayerService> self(this);
    const CloudMetadata found = co_await QtConcurrent::run(
        m_gate.through([&reader = *m_platform.assetReader, path = url.toLocalFile()] {
            return readCloudMetadata(reader, path);
        }));
    if (!self)
        co_return;
    print(found.log);
    if (found.isRead)
        apply(found);
}

/// Takes the findings over to the current song, whichever that is by now: only that it lies on a server is
/// looked at.
void AudioPlayerService::apply(const CloudMetadata &found)
{
    if (!m_currentSong || !m_currentSong->isWebDAV())
        return;
    Song song = *m_currentSong;
    if (!found.title.isEmpty())
        song.setTitle(found.title);
    if (!found.artist.isEmpty())
        song.setArtist(found.artist);
    if (!found.album.isEmpty())
        song.setAlbum(found.album);
    if (std::isfinite(found.duration) && found.duration > 0)
        song.setDuration(found.duration);
    if (found.cover)
        song.setArtworkData(ArtworkData(*found.cover));
    if (!found.lyrics.isEmpty()) {
        song.setEmbeddedLyrics(found.lyrics);
        print(u"🎤 已设置内嵌歌词"_s);
    }
    setCurrent(song, std::nullopt);
    if (m_parts.updateSongMetadata)
        m_parts.updateSongMetadata(song);
    updateNowPlayingInfo();
    if (!found.coverImage.isNull()) {
        m_nowPlayingArtwork = found.coverImage;
        if (m_parts.mediaCenter)
            m_parts.mediaCenter->mergeNowPlayingArtwork(found.coverImage);
    }
    print(u"🎵 元数据解析完成: "_s + song.title() + u" - "_s + song.artist());
}

} // namespace cadorel
