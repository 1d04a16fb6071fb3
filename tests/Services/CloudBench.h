// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/PlayerBench.h"
#include "Fixtures/MadePicture.h"
#include "Platform/ResourceLoadingRequest.h"

#include <QDir>
#include <QTest>

#include <QCoroTask>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

using HttpHeaders = QList<QPair<QByteArray, QByteArray>>;

inline FakeTag fakeText(const QString &key, const QString &value)
{
    return {.identifier = u"vorb/"_s + key, .commonKey = {}, .string = value, .data = {}};
}

inline FakeAsset taggedAsset()
{
    return {
        .duration = 201.5,
        .common = QList<FakeTag>{},
        .all =
            QList<FakeTag>{
                fakeText(u"TITLE"_s, u"新标题"_s),
                fakeText(u"ARTIST"_s, u"新歌手"_s),
                fakeText(u"ALBUM"_s, u"新专辑"_s),
                {.identifier = u"id3/APIC"_s, .commonKey = {}, .string = {}, .data = madePng(Qt::green, 8)}},
        .lyrics = u"新歌词"_s};
}

inline FakeAsset untaggedAsset()
{
    return {.duration = 0, .common = QList<FakeTag>{}, .all = QList<FakeTag>{}, .lyrics = {}};
}

inline HttpResponse answered(const QByteArray &body, int status = 200, const HttpHeaders &headers = {})
{
    return {.url = {}, .status = status, .headers = headers, .body = body};
}

/// The answer of a row of test data.
struct WebAnswer
{
    FakeHttpClient::Result result;
};

/// What the player keeps to itself of songs on servers: operations that nothing calls yet, and the time of
/// the last snapshot.
class AudioPlayerCloudAccess
{
public:
    static QCoro::Task<void> downloadForCache(AudioPlayerService &player, const QUrl &url)
    {
        return player.downloadForCache(url);
    }
    static QCoro::Task<void> downloadAndPlay(AudioPlayerService &player, const QUrl &url)
    {
        return player.downloadAndPlay(url);
    }
    static void setIsLoading(AudioPlayerService &player, bool value) { player.setIsLoading(value); }
    static std::optional<QDateTime> lastPersistDate(const AudioPlayerService &player)
    {
        return player.m_lastPersistDate;
    }
};

/// The player with what a test of server songs needs.
class CloudBench : public PlayerBench
{
public:
    CloudBench()
    {
        home.assetReader().otherwise = untaggedAsset();
        start();
    }
    ~CloudBench()
    {
        // Whatever a test does, no credential reaches a line.
        allLines += console.take();
        for (const QString &line : std::as_const(allLines))
            QVERIFY2(!line.contains(u"secret"_s) && !line.contains(u"user"_s), qPrintable(line));
    }

    QStringList allLines;

    QString pathOf(const QString &name) const
    {
        return home.platform.directories.caches + u"/WebDAVCache/"_s + name;
    }
    void putCopy(const QString &name, const QByteArray &bytes = "song")
    {
        QDir().mkpath(QFileInfo(pathOf(name)).path());
        QFile file(pathOf(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    QStringList lines()
    {
        const QStringList taken = console.take();
        allLines += taken;
        return taken;
    }
    /// The lines until there is one that begins with @p last, waited for.
    QStringList linesUntil(const QString &last)
    {
        QStringList all;
        const auto isThere = [&] {
            all += lines();
            return std::ranges::any_of(all, [&](const QString &line) { return line.startsWith(last); });
        };
        if (!QTest::qWaitFor(isThere))
            qWarning() << "never said:" << last << "but:" << all;
        return all;
    }
    bool waitForRequests(size_t count = 1)
    {
        return QTest::qWaitFor([this, count] { return home.web().pending.size() == count; });
    }
    const HttpRequest &lastRequest() { return home.web().sent.constLast(); }
    /// Plays a song whose stream is never loaded, up to the request for its copy.
    void playUnloaded(const Song &song)
    {
        player().playSong(song, {song});
        home.clock().advance(WebDAVStreamingService::loadingGrace);
        QVERIFY(waitForRequests());
        lines();
    }
    /// What the real stream player does first: it asks for the whole file.
    std::shared_ptr<ResourceLoadingRequest> loadStream()
    {
        auto request = std::make_shared<ResourceLoadingRequest>(
            item().asset().url, true,
            ResourceLoadingRequest::Range{.offset = 0, .length = ResourceLoadingRequest::toTheEnd});
        streaming().shouldWaitForLoadingOfRequestedResource(request);
        settle();
        return request;
    }
    /// Fetches the copy of a song whose tags are @p asset, up to the line that ends it.
    QStringList cache(const FakeAsset &asset, const QString &last)
    {
        home.assetReader().otherwise = asset;
        home.web().answer(answered("song"));
        return linesUntil(last);
    }
};

/// Beginning of the line that ends the reading of a copy for a server song.
inline const QString parsedLine = u"🎵 元数据解析完成: "_s;

} // namespace cadorel
