// SPDX-License-Identifier: GPL-3.0-or-later
// Covers over real connections, of songs on servers and of an online music API.
#include "Fakes/Await.h"
#include "Fakes/ConsoleLines.h"
#include "Fakes/TestPlatform.h"
#include "Fixtures/MadePicture.h"
#include "Platform/Network/NetworkHttpClient.h"
#include "Servers/MisbehavingServer.h"
#include "Servers/OnlineApiServer.h"
#include "Services/APIConfigService.h"
#include "Services/AudioPlayerService.h"
#include "Services/Cloud/CoverRequest.h"
#include "Services/LocalMusicImportService.h"
#include "Services/SystemMediaCenter.h"

#include <QTest>
#include <QThreadPool>

#include <algorithm>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QByteArray coverPath = "/rest/getCoverArt";

/// The real network, which counts.
class WatchedWeb : public HttpClient
{
public:
    int sent = 0;
    int ended = 0;

    QCoro::Task<std::expected<HttpResponse, HttpError>> send(HttpRequest request) override
    {
        ++sent;
        auto answer = co_await m_web.send(std::move(request));
        ++ended;
        co_return answer;
    }

private:
    NetworkHttpClient m_web;
};

/// The player on fakes, but for the network.
class NetworkBench
{
public:
    NetworkBench()
    {
        home.platform.httpClient = std::make_unique<WatchedWeb>();
        m_api = std::make_unique<APIConfigService>(home.platform);
        m_importService = std::make_unique<LocalMusicImportService>(home.platform);
        m_center = std::make_unique<SystemMediaCenter>(home.platform, m_api.get());
        m_player = std::make_unique<AudioPlayerService>(
            home.platform, *m_importService,
            AudioPlayerParts{.onlineAddresses = m_api.get(), .mediaCenter = m_center.get()});
        console.take();
    }
    ~NetworkBench()
    {
        const std::shared_ptr<FakePlayerItem> item =
            home.streamPlayer() ? home.streamPlayer()->lastItem() : nullptr;
        m_player.reset();
        if (item)
            item->answerDuration(std::unexpected(u"the test has ended"_s));
        settle();
        m_center.reset();
        m_importService.reset();
        m_api.reset();
        home.platform.httpClient = std::make_unique<FakeHttpClient>();
    }
    Q_DISABLE_COPY_MOVE(NetworkBench)

    ConsoleLines console;
    TestPlatform home;
    MisbehavingServer server;

    WatchedWeb &web() { return static_cast<WatchedWeb &>(*home.platform.httpClient); }
    AudioPlayerService &player() { return *m_player; }
    APIConfigService &api() { return *m_api; }
    const NowPlayingInfo &shown() { return home.nowPlayingCenter().nowPlayingInfo(); }

    void playStreamed()
    {
        SongFields fields;
        fields.id = u"navidrome_1_a"_s;
        fields.title = u"Title a"_s;
        fields.albumId = u"navidrome_1_album"_s;
        fields.assetURL = server.url("/rest/stream?id=1");
        fields.artworkURL = server.url(coverPath + "?id=1&u=user&t=geheim&s=salz");
        m_player->playSong(Song(fields), {});
    }
    /// Waits until a request has ended, and for what comes of it.
    bool waitForTheEndOfTheLoad()
    {
        const auto hasEnded = [this] { return web().ended > 0; };
        if (!QTest::qWaitFor(hasEnded, patienceMs))
            return false;
        settle();
        const bool isIdle = QThreadPool::globalInstance()->waitForDone(patienceMs);
        settle();
        return isIdle;
    }

private:
    std::unique_ptr<APIConfigService> m_api;
    std::unique_ptr<LocalMusicImportService> m_importService;
    std::unique_ptr<SystemMediaCenter> m_center;
    std::unique_ptr<AudioPlayerService> m_player;
};

} // namespace

class SystemMediaNetworkTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void coverIsShown_data();
    void coverIsShown();
    void whatIsNoCoverIsDropped_data();
    void whatIsNoCoverIsDropped();
    void loadThatIsNotWantedAnyMoreEnds();
    void coversOfAnOnlineApi_data();
    void coversOfAnOnlineApi();
};

void SystemMediaNetworkTest::coverIsShown_data()
{
    QTest::addColumn<ServerAnswer>("answer");
    const ServerAnswer cover = ServerAnswer::ok(madeJpeg(Qt::red, 40), "image/jpeg");
    QTest::newRow("plain") << cover;
    QTest::newRow("chunked") << cover.chunked();
    QTest::newRow("until the connection ends") << cover.untilClose();
    QTest::newRow("of another type than told") << ServerAnswer::ok(madePng(Qt::red, 40), "text/plain");
    QTest::newRow("elsewhere") << ServerAnswer::redirect(302, "/elsewhere.jpg");
}

void SystemMediaNetworkTest::coverIsShown()
{
    QFETCH(ServerAnswer, answer);
    NetworkBench bench;
    bench.server.answer(coverPath, answer);
    bench.server.answer("/elsewhere.jpg", ServerAnswer::ok(madeJpeg(Qt::red, 40), "image/jpeg"));
    bench.playStreamed();
    QTRY_VERIFY_WITH_TIMEOUT(bench.shown().artwork, patienceMs);
    QCOMPARE(bench.shown().artwork->size(), QSize(40, 40));
}

void SystemMediaNetworkTest::whatIsNoCoverIsDropped_data()
{
    QTest::addColumn<ServerAnswer>("answer");
    const QByteArray cover = madePng(Qt::red, 40);
    const qint64 megabytes = largestCover / (1 << 20) + 1;
    QTest::newRow("torn") << ServerAnswer::ok(cover).endingAfter(cover.size() / 2);
    QTest::newRow("refused") << ServerAnswer::status(403, cover);
    QTest::newRow("a page") << ServerAnswer::ok("<html></html>", "text/html").untilClose();
    QTest::newRow("far too long") << ServerAnswer::streamed(cover, QByteArray(1 << 20, 'x'), megabytes, {});
    QTest::newRow("no answer") << ServerAnswer::hangUp();
    QTest::newRow("round and round") << ServerAnswer::redirect(302, coverPath);
}

void SystemMediaNetworkTest::whatIsNoCoverIsDropped()
{
    QFETCH(ServerAnswer, answer);
    NetworkBench bench;
    bench.server.answer(coverPath, answer);
    bench.playStreamed();
    QVERIFY(bench.waitForTheEndOfTheLoad());
    QVERIFY(!bench.shown().artwork);
    for (int tick = 1; tick <= 20; ++tick)
        bench.home.streamPlayer()->tick(tick);
    settle();
    QCOMPARE(bench.web().sent, 1);
    QCOMPARE(bench.shown().title, u"Title a"_s);
    for (const QString &line : bench.console.take())
        QVERIFY2(!line.contains(u"artwork"_s) && !line.contains(u"geheim"_s), qPrintable(line));
}

void SystemMediaNetworkTest::loadThatIsNotWantedAnyMoreEnds()
{
    NetworkBench bench;
    bench.server.answer(coverPath, ServerAnswer::ok(madePng(Qt::red, 40)).holdingAt(20));
    bench.playStreamed();
    QTRY_COMPARE_WITH_TIMEOUT(bench.server.requestCount(), 1, patienceMs);
    bench.server.answer(coverPath, ServerAnswer::ok(madePng(Qt::red, 30)));
    bench.playStreamed();
    // The first one would hold its connection as long as its server likes.
    QTRY_VERIFY_WITH_TIMEOUT(bench.shown().artwork, patienceMs);
    QCOMPARE(bench.shown().artwork->size(), QSize(30, 30));
    QTRY_VERIFY_WITH_TIMEOUT(bench.server.openConnections() <= 1, patienceMs);
}

void SystemMediaNetworkTest::coversOfAnOnlineApi_data()
{
    QTest::addColumn<bool>("isThere");
    QTest::newRow("jpeg") << true;
    QTest::newRow("png") << true;
    QTest::newRow("redirect") << true;
    QTest::newRow("error") << false;
}

void SystemMediaNetworkTest::coversOfAnOnlineApi()
{
    QFETCH(bool, isThere);
    OnlineApiServer server;
    QVERIFY(server.start());
    const QString form = QString::fromLatin1(QTest::currentDataTag());
    const QList<OnlineApiServer::Song> songs = OnlineApiServer::songs(u"netease"_s);
    const auto song = std::ranges::find(songs, form, &OnlineApiServer::Song::picture);
    QVERIFY(song != songs.end());
    NetworkBench bench;
    bench.api().setBaseURL(server.address().toString());
    bench.player().playOnlineSong({.id = song->id,
                                   .name = song->name,
                                   .artist = song->artist,
                                   .album = song->album,
                                   .platform = MusicPlatform::netease,
                                   .picUrl = {},
                                   .lrcUrl = {}},
                                  {});
    QTRY_COMPARE_WITH_TIMEOUT(bench.shown().title, song->name, patienceMs);
    QCOMPARE(bench.shown().artist, song->artist);
    if (isThere) {
        QTRY_VERIFY_WITH_TIMEOUT(bench.shown().artwork, patienceMs);
        QVERIFY(bench.shown().artwork->width() > 1);
    } else {
        QStringList lines;
        const auto isSaid = [&] {
            lines += bench.console.take();
            return lines.contains(u"Failed to load online artwork: 不是图片"_s);
        };
        QVERIFY2(QTest::qWaitFor(isSaid, patienceMs), qPrintable(lines.join(u'\n')));
        QVERIFY(!bench.shown().artwork);
    }
}

QTEST_GUILESS_MAIN(SystemMediaNetworkTest)
#include "tst_system_media_network.moc"
