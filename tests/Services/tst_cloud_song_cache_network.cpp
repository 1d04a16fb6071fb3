// SPDX-License-Identifier: GPL-3.0-or-later
// The cache over real connections to a server that does well or badly.
#include "Fakes/TestPlatform.h"
#include "Platform/Network/NetworkHttpClient.h"
#include "Servers/MisbehavingServer.h"
#include "Services/Cloud/CloudSongCache.h"

#include <QDir>
#include <QScopeGuard>
#include <QTest>

#include <QCoroTask>

#include <csignal>
#include <sys/resource.h>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QByteArray song = QByteArray(300'000, 's') + "end";
const QByteArray path = "/music/%E6%AD%8C.mp3";

class Bench
{
public:
    Bench() { home.platform.httpClient = std::make_unique<NetworkHttpClient>(); }
    ~Bench()
    {
        cache.reset();
        home.platform.httpClient = std::make_unique<FakeHttpClient>();
    }
    Q_DISABLE_COPY_MOVE(Bench)

    TestPlatform home;
    MisbehavingServer server;
    std::unique_ptr<CloudSongCache> cache = std::make_unique<CloudSongCache>(home.platform);

    QUrl url() const
    {
        QUrl url = server.url(path);
        url.setUserName(u"用户"_s);
        url.setPassword(u"p:a/s@s%41"_s, QUrl::DecodedMode);
        return url;
    }
    QDir folder() const { return QDir(home.platform.directories.caches + u"/WebDAVCache"_s); }
    QStringList entries() const
    {
        return folder().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    QByteArray copy() const
    {
        QFile file(folder().filePath(u"歌.mp3"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

} // namespace

class CloudSongCacheNetworkTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void songIsStored_data();
    void songIsStored();
    void whatIsNotTheWholeSongIsNotStored_data();
    void whatIsNotTheWholeSongIsNotStored();
    void fullDiskLeavesNothing();
    void cacheThatGoesInTheMiddleLeavesNothing();
    void heldDownloadGoesOnLater();
};

void CloudSongCacheNetworkTest::songIsStored_data()
{
    QTest::addColumn<ServerAnswer>("answer");
    QTest::newRow("length told") << ServerAnswer::ok(song, "audio/mpeg");
    QTest::newRow("chunked") << ServerAnswer::ok(song).chunked();
}

void CloudSongCacheNetworkTest::songIsStored()
{
    QFETCH(ServerAnswer, answer);
    Bench bench;
    bench.server.requireBasic(u"用户"_s, u"p:a/s@s%41"_s);
    bench.server.answer(path, answer);
    QVERIFY(QCoro::waitFor(bench.cache->download(bench.url())));
    QCOMPARE(bench.copy(), song);
    QCOMPARE(bench.entries().size(), 1);
    // A chunked body is checked.
    QCOMPARE(bench.server.requestCount(), answer.framing() == ServerAnswer::Framing::chunked ? 2 : 1);
}

void CloudSongCacheNetworkTest::whatIsNotTheWholeSongIsNotStored_data()
{
    QTest::addColumn<ServerAnswer>("answer");
    QTest::newRow("short") << ServerAnswer::ok(song).endingAfter(1000);
    QTest::newRow("short, chunked") << ServerAnswer::ok(song).chunked().endingAfter(1000);
    QTest::newRow("page") << ServerAnswer::ok(song, "text/html; charset=utf-8");
    QTest::newRow("part") << ServerAnswer::status(206, song);
    QTest::newRow("refused") << ServerAnswer::unauthorized();
    QTest::newRow("empty") << ServerAnswer::ok("");
    QTest::newRow("packed") << ServerAnswer::ok(song).with("Content-Encoding", "gzip");
    QTest::newRow("hung up") << ServerAnswer::hangUp();
}

void CloudSongCacheNetworkTest::whatIsNotTheWholeSongIsNotStored()
{
    QFETCH(ServerAnswer, answer);
    Bench bench;
    bench.server.answer(path, answer);
    const CloudSongCache::Result copy = QCoro::waitFor(bench.cache->download(bench.url()));
    QVERIFY(!copy);
    QVERIFY(!copy.error().description.isEmpty());
    QVERIFY(!copy.error().description.contains(u"p:a"_s));
    QCOMPARE(bench.entries(), QStringList());
}

void CloudSongCacheNetworkTest::fullDiskLeavesNothing()
{
    Bench bench;
    bench.server.answer(path, ServerAnswer::ok(song));
    rlimit before = {};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const auto restore = qScopeGuard([&] {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    });
    const rlimit small{.rlim_cur = 100'000, .rlim_max = before.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    const CloudSongCache::Result copy = QCoro::waitFor(bench.cache->download(bench.url()));
    QVERIFY(!copy);
    QCOMPARE(copy.error().kind, CloudSongCache::Failure::Kind::storage);
    QVERIFY(!copy.error().description.isEmpty());
    QCOMPARE(bench.entries(), QStringList());
}

void CloudSongCacheNetworkTest::cacheThatGoesInTheMiddleLeavesNothing()
{
    Bench bench;
    bench.server.answer(path, ServerAnswer::ok(song).holdingAt(100'000));
    auto task = bench.cache->download(bench.url());
    QTRY_VERIFY(bench.entries().size() == 1);
    bench.cache.reset();
    QVERIFY(!QCoro::waitFor(std::move(task)));
    QCOMPARE(bench.entries(), QStringList());
    QTRY_COMPARE(bench.server.openConnections(), 0);
}

void CloudSongCacheNetworkTest::heldDownloadGoesOnLater()
{
    Bench bench;
    bench.server.answer(path, ServerAnswer::ok(song).holdingAt(1000));
    auto task = bench.cache->download(bench.url());
    QTRY_VERIFY(bench.entries().size() == 1);
    auto hold = bench.cache->holdDownloads();
    bench.server.release();
    hold.reset();
    QVERIFY(QCoro::waitFor(std::move(task)));
    QCOMPARE(bench.copy(), song);
}

QTEST_GUILESS_MAIN(CloudSongCacheNetworkTest)
#include "tst_cloud_song_cache_network.moc"
