// SPDX-License-Identifier: GPL-3.0-or-later
// The service over real connections to a server that does well or badly.
#include "Platform/Network/NetworkHttpClient.h"
#include "Servers/MisbehavingServer.h"
#include "Services/Navidrome/NavidromeFixture.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QByteArray ping = "/rest/ping.view";
const QByteArray randomSongs = "/rest/getRandomSongs.view";
const QByteArray json = "application/json";

class Bench
{
public:
    Bench()
    {
        home.platform.httpClient = std::make_unique<NetworkHttpClient>();
        config.name = u"家"_s;
        config.serverURL = server.url().toString();
        config.username = u"听众 + & # %"_s;
        home.secrets().put(config.passwordKeychainKey(), "sesame");
        server.answer(ping, ServerAnswer::ok(subsonicAnswer(), json));
        service = std::make_unique<NavidromeService>(home.platform);
    }
    ~Bench()
    {
        service.reset();
        home.platform.httpClient = std::make_unique<FakeHttpClient>();
    }
    Q_DISABLE_COPY_MOVE(Bench)

    bool connectToServer()
    {
        const auto connected = await(service->connectTo(config));
        return connected && *connected;
    }

    ConsoleLines console;
    TestPlatform home;
    MisbehavingServer server;
    NavidromeConfig config;
    std::unique_ptr<NavidromeService> service;
};

/// The longest time that the main thread let an event wait while it lives.
class Heartbeat
{
public:
    Heartbeat()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer,
                         [this] { m_longest = std::max(m_longest, m_since.restart()); });
        m_since.start();
        m_timer.start(std::chrono::milliseconds(1));
    }
    qint64 longestMs() const { return std::max(m_longest, m_since.elapsed()); }

private:
    QTimer m_timer;
    QElapsedTimer m_since;
    qint64 m_longest = 0;
};

/// Nothing of these may be shown or printed.
bool holdsASecret(const QString &text)
{
    return text.contains(u"sesame"_s) || text.contains(u"t="_s) || text.contains(u"127.0.0.1"_s) ||
           text.contains(u"://"_s);
}

} // namespace

class TestNavidromeNetwork : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatTheListenerTypedArrives()
    {
        Bench bench;
        QVERIFY(bench.connectToServer());
        bench.server.answer("/rest/search3.view", ServerAnswer::ok(search3Answer({u"夜曲"_s}), json));
        QVERIFY(await(bench.service->searchSongs(u"C++ & 夜曲 #1 100%"_s)));
        QCOMPARE(bench.service->songs().size(), 1);
        const ServedRequest request = bench.server.requests().constLast();
        QCOMPARE(request.method, "GET");
        QVERIFY2(
            request.target.startsWith("/rest/search3.view?u=%E5%90%AC%E4%BC%97%20%2B%20%26%20%23%20%25&t="),
            request.target);
        QVERIFY2(request.target.endsWith("&c=TarnovaPlayer&query=C%2B%2B%20%26%20%E5%A4%9C%E6%9B%B2%20%231%"
                                         "20100%25&songCount=120&f=json"),
                 request.target);
        QVERIFY(!request.hasHeader("Authorization"));
    }

    void aRedirectIsFollowed()
    {
        Bench bench;
        bench.server.answer(ping, ServerAnswer::redirect(301, "/music/ping"));
        bench.server.answer("/music/ping", ServerAnswer::ok(subsonicAnswer(), json));
        QVERIFY(bench.connectToServer());
    }

    void whateverGoesWrongIsToldWithoutASecret_data()
    {
        QTest::addColumn<ServerAnswer>("answer");
        QTest::addColumn<QString>("message");
        QTest::newRow("hangs up") << ServerAnswer::hangUp() << u"服务器关闭了连接"_s;
        QTest::newRow("garbage") << ServerAnswer::raw("no http at all\r\n\r\n") << u"服务器关闭了连接"_s;
        QTest::newRow("ends early") << ServerAnswer::ok(randomSongsAnswer({u"一"_s}), json).endingAfter(30)
                                    << u"连接中断，内容不完整"_s;
        QTest::newRow("moves to a file")
            << ServerAnswer::redirect(302, "file:///etc/passwd") << u"服务器的重定向无效或过多"_s;
        QTest::newRow("moves round in a circle")
            << ServerAnswer::redirect(302, randomSongs) << u"服务器的重定向无效或过多"_s;
        QTest::newRow("asks for a name") << ServerAnswer::unauthorized() << u"拉取歌曲失败"_s;
        QTest::newRow("a fault") << ServerAnswer::status(503) << u"拉取歌曲失败"_s;
        QTest::newRow("an empty body") << ServerAnswer::ok({}, json) << u"无法识别服务器的回答"_s;
    }
    void whateverGoesWrongIsToldWithoutASecret()
    {
        QFETCH(const ServerAnswer, answer);
        QFETCH(const QString, message);
        Bench bench;
        QVERIFY(bench.connectToServer());
        bench.server.answer(randomSongs, answer);
        QVERIFY(await(bench.service->loadDefaultSongs()));
        QCOMPARE(bench.service->errorText(), message);
        QVERIFY(!holdsASecret(bench.service->errorText()));
        for (const QString &line : bench.console.take())
            QVERIFY2(!holdsASecret(line), qPrintable(line));
    }

    void nobodyListensThere()
    {
        Bench bench;
        {
            const MisbehavingServer gone;
            bench.config.serverURL = gone.url().toString();
        }
        const auto connected = await(bench.service->connectTo(bench.config));
        QVERIFY(connected);
        QCOMPARE(connected->error().message, u"连接被拒绝"_s);
    }

    void anAnswerOf50MegabytesIsRefusedWhileTheWindowLives()
    {
        Bench bench;
        QVERIFY(bench.connectToServer());
        constexpr qint64 songs = 600'000;
        const QByteArray song(
            R"(,{"id":"0123456789","title":"0123456789","artist":"0123456789","album":"0123456789","duration":180})");
        QVERIFY(songs * song.size() > 50'000'000);
        bench.server.answer(
            randomSongs,
            ServerAnswer::streamed(
                R"({"subsonic-response":{"status":"ok","randomSongs":{"song":[{"id":"1","title":"t"})", song,
                songs, "]}}}", json));
        const Heartbeat heartbeat;
        QVERIFY(await(bench.service->loadDefaultSongs()));
        QCOMPARE(bench.service->errorText(), u"内容过大"_s);
        QVERIFY(bench.service->songs().isEmpty());
        QVERIFY2(heartbeat.longestMs() < 1000, QByteArray::number(heartbeat.longestMs()));
    }

    void aVeryLongListIsReadWhileTheWindowLives()
    {
        Bench bench;
        QVERIFY(bench.connectToServer());
        constexpr int songs = 50'000;
        bench.server.answer(
            randomSongs,
            ServerAnswer::streamed(
                R"({"subsonic-response":{"status":"ok","randomSongs":{"song":[{"id":"1","title":"t"})",
                R"(,{"id":"0123456789","title":"夜曲","coverArt":"mf-0123456789","duration":180})", songs,
                "]}}}", json));
        const Heartbeat heartbeat;
        QVERIFY(await(bench.service->loadDefaultSongs()));
        QCOMPARE(bench.service->errorText(), QString());
        QCOMPARE(bench.service->songs().size(), songs + 1);
        QVERIFY2(heartbeat.longestMs() < 1000, QByteArray::number(heartbeat.longestMs()));
    }

    void aServerThatSaysNothingLeavesTheServiceFree()
    {
        Bench bench;
        QVERIFY(bench.connectToServer());
        bench.server.answer(randomSongs, ServerAnswer::silence());
        bench.server.answer("/rest/search3.view", ServerAnswer::ok(search3Answer({u"夜曲"_s}), json));
        auto silent = bench.service->loadDefaultSongs();
        QTRY_COMPARE(bench.server.requestCount(randomSongs), 1);
        QVERIFY(bench.service->isSearching());
        // Whoever is tired of waiting searches for something.
        QVERIFY(await(bench.service->searchSongs(u"夜曲"_s)));
        QCOMPARE(bench.service->songs().size(), 1);
        QVERIFY(!bench.service->isSearching());
        QVERIFY(await(std::move(silent)));
        QCOMPARE(bench.service->songs().size(), 1);
        QCOMPARE(bench.service->errorText(), QString());
    }

    void theClientMayGoInTheMiddle()
    {
        Bench bench;
        QVERIFY(bench.connectToServer());
        bench.server.answer(randomSongs, ServerAnswer::silence());
        auto silent = bench.service->loadDefaultSongs();
        QTRY_COMPARE(bench.server.requestCount(randomSongs), 1);
        bench.home.platform.httpClient.reset();
        QVERIFY(await(std::move(silent)));
        QVERIFY(!bench.service->isSearching());
    }
};

QTEST_GUILESS_MAIN(TestNavidromeNetwork)
#include "tst_navidrome_network.moc"
