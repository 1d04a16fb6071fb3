// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/TestPlatform.h"
#include "Services/Cloud/CoverRequest.h"
#include "ViewModels/RemoteCovers.h"

#include <QTest>
#include <QThread>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QUrl addressOf(const QString &key)
{
    return QUrl(u"https://music.example/cover/"_s + key + u"?t=secret"_s);
}

HttpResponse picture(const QByteArray &bytes, int status = 200)
{
    return {.url = {}, .status = status, .headers = {}, .body = bytes};
}

FakeHttpClient::Result failed(HttpError::Kind kind)
{
    return std::unexpected(HttpError{kind, u"failed"_s});
}

/// Covers of a web that answers when the test says so.
class Bench
{
public:
    TestPlatform home;
    std::unique_ptr<RemoteCovers> covers =
        std::make_unique<RemoteCovers>(*home.platform.httpClient, *home.platform.clock);
    /// What was given out, in order: the cover's key, and its bytes.
    QList<std::pair<QString, QByteArray>> given;

    quint64 wish(const QString &key)
    {
        const auto taken = [this, key](const QByteArray &bytes) { given.append({key, bytes}); };
        const quint64 id = covers->wish(key, addressOf(key), taken);
        settle();
        return id;
    }
    /// A cover for each letter.
    QList<quint64> wishEach(const QString &keys)
    {
        QList<quint64> ids;
        for (const QChar key : keys)
            ids.append(wish(key));
        return ids;
    }
    void withdraw(quint64 id)
    {
        covers->withdraw(id);
        settle();
    }
    /// Answers the request for a cover that is under way.
    bool answer(const QString &key, const FakeHttpClient::Result &result)
    {
        const bool isPending = home.web().answer(u"/cover/"_s + key + u'?', result);
        settle();
        return isPending;
    }
    /// Keys of the covers whose requests are under way.
    QStringList asked()
    {
        QStringList keys;
        for (const FakeHttpClient::Pending &pending : home.web().pending)
            keys.append(pending.request.url.fileName());
        return keys;
    }
    qsizetype sent() { return home.web().sent.size(); }
};

} // namespace

class RemoteCoversTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void asksForTheAddressWithLimits();
    void equalWishesShareOneRequest();
    void whatArrivedIsNotFetchedAgain();
    void fewAreUnderWayAtATime();
    void theNewestWishComesFirst();
    void aWishRepeatedIsTheNewest();
    void theLatestAddressIsAsked();
    void whatIsWithdrawnBeforeItsTurnIsNeverAsked();
    void aSharedCoverIsFetchedForWhoeverIsLeft();
    void whatIsWithdrawnUnderWayGoesOnWhereThereIsRoom();
    void whatIsWithdrawnUnderWayMakesRoom();
    void aCoverThatIsWantedAgainAfterAllIsAskedAgain();
    void whatCouldNotBeHadIsLeftAloneForAWhile_data();
    void whatCouldNotBeHadIsLeftAloneForAWhile();
    void whatIsDiscardedIsLeftAloneForAWhile();
    void memoryIsBounded();
    void failuresDoNotStopTheOthers();
    void noTimerRuns();
    void itsRequestsEndWithIt();
    void wishesComeFromAnyThread();
};

void RemoteCoversTest::asksForTheAddressWithLimits()
{
    Bench bench;
    bench.wish(u"a"_s);
    const HttpRequest request = bench.home.web().sent.constFirst();
    QCOMPARE(request.url, addressOf(u"a"_s));
    QCOMPARE(request.method, "GET"_ba);
    QVERIFY(request.headers.isEmpty());
    QVERIFY(request.outputFile.isEmpty());
    QCOMPARE(request.idleTimeout, 30s);
    QVERIFY(request.totalTimeout > request.idleTimeout);
    QCOMPARE(request.sizeLimit, 10 * 1024 * 1024);
    QVERIFY(bench.given.isEmpty());
    QVERIFY(bench.answer(u"a"_s, picture("bytes")));
    QCOMPARE(bench.given, (QList<std::pair<QString, QByteArray>>{{u"a"_s, "bytes"_ba}}));
}

void RemoteCoversTest::equalWishesShareOneRequest()
{
    Bench bench;
    for (int i = 0; i < 3; ++i)
        bench.wish(u"a"_s);
    QCOMPARE(bench.sent(), 1);
    bench.answer(u"a"_s, picture("bytes"));
    QCOMPARE(bench.given.size(), 3);
    for (const auto &[key, bytes] : bench.given)
        QCOMPARE(bytes, "bytes"_ba);
}

void RemoteCoversTest::whatArrivedIsNotFetchedAgain()
{
    Bench bench;
    bench.wish(u"a"_s);
    bench.answer(u"a"_s, picture("bytes"));
    bench.wish(u"a"_s);
    QCOMPARE(bench.sent(), 1);
    QCOMPARE(bench.given.size(), 2);
    QCOMPARE(bench.given.constLast().second, "bytes"_ba);
}

void RemoteCoversTest::fewAreUnderWayAtATime()
{
    Bench bench;
    for (int i = 0; i < 20; ++i)
        bench.wish(QString::number(i));
    QCOMPARE(bench.asked(), (QStringList{u"0"_s, u"1"_s, u"2"_s, u"3"_s}));
    QCOMPARE(bench.covers->waitingCovers(), 16);
    int most = 0;
    while (!bench.asked().isEmpty()) {
        most = std::max(most, static_cast<int>(bench.asked().size()));
        bench.answer(bench.asked().constFirst(), picture("bytes"));
    }
    QCOMPARE(most, 4);
    QCOMPARE(bench.sent(), 20);
    QCOMPARE(bench.given.size(), 20);
    QCOMPARE(bench.covers->runningRequests(), 0);
}

void RemoteCoversTest::theNewestWishComesFirst()
{
    Bench bench;
    bench.wishEach(u"abcdefg"_s);
    bench.answer(u"b"_s, picture("bytes"));
    QCOMPARE(bench.asked(), (QStringList{u"a"_s, u"c"_s, u"d"_s, u"g"_s}));
    bench.answer(u"a"_s, picture("bytes"));
    QCOMPARE(bench.asked().constLast(), u"f"_s);
}

void RemoteCoversTest::aWishRepeatedIsTheNewest()
{
    Bench bench;
    bench.wishEach(u"abcdefge"_s);
    bench.answer(u"a"_s, picture("bytes"));
    QCOMPARE(bench.asked().constLast(), u"e"_s);
    QCOMPARE(bench.covers->waitingCovers(), 2);
}

void RemoteCoversTest::theLatestAddressIsAsked()
{
    Bench bench;
    bench.wishEach(u"abcde"_s);
    const QUrl signedAnew(u"https://music.example/cover/e?t=other"_s);
    bench.covers->wish(u"e"_s, signedAnew, [](const QByteArray &) {});
    settle();
    bench.answer(u"a"_s, picture("bytes"));
    QCOMPARE(bench.home.web().sent.constLast().url, signedAnew);
    QCOMPARE(bench.sent(), 5);
}

void RemoteCoversTest::whatIsWithdrawnBeforeItsTurnIsNeverAsked()
{
    Bench bench;
    QList<quint64> ids;
    for (int i = 0; i < 100; ++i)
        ids.append(bench.wish(QString::number(i)));
    for (int i = 4; i < 98; ++i)
        bench.covers->withdraw(ids.at(i));
    settle();
    QCOMPARE(bench.covers->waitingCovers(), 2);
    while (!bench.asked().isEmpty())
        bench.answer(bench.asked().constFirst(), picture("bytes"));
    QCOMPARE(bench.sent(), 6);
    QCOMPARE(bench.given.size(), 6);
    // What was granted, and what never was, may be withdrawn too.
    bench.withdraw(ids.constLast());
    bench.withdraw(123456);
    QCOMPARE(bench.sent(), 6);
}

void RemoteCoversTest::aSharedCoverIsFetchedForWhoeverIsLeft()
{
    Bench bench;
    bench.wishEach(u"abcd"_s);
    const quint64 first = bench.wish(u"e"_s);
    bench.wish(u"e"_s);
    bench.withdraw(first);
    bench.answer(u"a"_s, picture("bytes"));
    QCOMPARE(bench.asked().constLast(), u"e"_s);
    bench.answer(u"e"_s, picture("e"));
    QCOMPARE(bench.given.size(), 2);
    QCOMPARE(bench.given.constLast().second, "e"_ba);
}

void RemoteCoversTest::whatIsWithdrawnUnderWayGoesOnWhereThereIsRoom()
{
    Bench bench;
    bench.withdraw(bench.wish(u"a"_s));
    QCOMPARE(bench.asked(), QStringList{u"a"_s});
    bench.answer(u"a"_s, picture("bytes"));
    QVERIFY(bench.given.isEmpty());
    bench.wish(u"a"_s);
    QCOMPARE(bench.given.size(), 1);
    QCOMPARE(bench.sent(), 1);
}

void RemoteCoversTest::whatIsWithdrawnUnderWayMakesRoom()
{
    Bench bench;
    const QList<quint64> ids = bench.wishEach(u"abcd"_s);
    bench.withdraw(ids.at(1));
    QCOMPARE(bench.asked(), (QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
    bench.wish(u"e"_s);
    QCOMPARE(bench.asked(), (QStringList{u"a"_s, u"c"_s, u"d"_s, u"e"_s}));
    // The other way round: one that waits, and then one is withdrawn.
    bench.wish(u"f"_s);
    bench.withdraw(ids.at(0));
    QCOMPARE(bench.asked(), (QStringList{u"c"_s, u"d"_s, u"e"_s, u"f"_s}));
    // It failed in nobody's eyes.
    bench.answer(u"c"_s, picture("bytes"));
    bench.wish(u"a"_s);
    QCOMPARE(bench.asked().constLast(), u"a"_s);
}

void RemoteCoversTest::aCoverThatIsWantedAgainAfterAllIsAskedAgain()
{
    Bench bench;
    const QList<quint64> ids = bench.wishEach(u"abcd"_s);
    const auto taken = [&bench](const QByteArray &bytes) { bench.given.append({u"a"_s, bytes}); };
    // All in one turn of the event loop: "a" is being ended when it is wanted again.
    bench.covers->withdraw(ids.at(0));
    bench.covers->wish(u"e"_s, addressOf(u"e"_s), [](const QByteArray &) {});
    bench.covers->wish(u"a"_s, addressOf(u"a"_s), taken);
    settle();
    bench.answer(u"b"_s, picture("bytes"));
    bench.answer(u"c"_s, picture("bytes"));
    QVERIFY(bench.answer(u"a"_s, picture("again")));
    QCOMPARE(bench.given.constLast(), (std::pair<QString, QByteArray>{u"a"_s, "again"_ba}));
}

void RemoteCoversTest::whatCouldNotBeHadIsLeftAloneForAWhile_data()
{
    QTest::addColumn<std::function<FakeHttpClient::Result()>>("answer");
    QTest::addColumn<std::chrono::seconds>("memory");
    const auto row = [](const char *name, std::chrono::seconds memory, const auto &answer) {
        QTest::newRow(name) << std::function<FakeHttpClient::Result()>(answer) << memory;
    };
    for (const int status : {204, 301, 401, 403, 404, 429, 500, 503}) {
        row(qPrintable(QString::number(status)), 300s,
            [status] { return FakeHttpClient::Result(picture("no", status)); });
    }
    row("nothing", 300s, [] { return FakeHttpClient::Result(picture({})); });
    row("larger than a cover", 300s,
        [] { return FakeHttpClient::Result(picture(QByteArray(largestCover + 1, 'x'))); });
    row("redirect", 300s, [] { return failed(HttpError::Kind::redirect); });
    row("untrusted", 300s, [] { return failed(HttpError::Kind::untrusted); });
    row("no connection", 30s, [] { return failed(HttpError::Kind::connection); });
    row("time-out", 30s, [] { return failed(HttpError::Kind::timeout); });
}

void RemoteCoversTest::whatCouldNotBeHadIsLeftAloneForAWhile()
{
    QFETCH(std::function<FakeHttpClient::Result()>, answer);
    QFETCH(std::chrono::seconds, memory);
    Bench bench;
    bench.wish(u"a"_s);
    FakeHttpClient::Result result = answer();
    if (result && result->status == 204)
        result->body.clear();
    bench.answer(u"a"_s, result);
    QCOMPARE(bench.given.size(), 1);
    QCOMPARE(bench.given.constFirst().second, QByteArray());
    bench.home.clock().advance(memory - 1s);
    bench.wish(u"a"_s);
    QCOMPARE(bench.sent(), 1);
    QCOMPARE(bench.given.size(), 2);
    QCOMPARE(bench.given.constLast().second, QByteArray());
    bench.home.clock().advance(1s);
    bench.wish(u"a"_s);
    QCOMPARE(bench.sent(), 2);
    bench.answer(u"a"_s, picture("bytes"));
    QCOMPARE(bench.given.constLast().second, "bytes"_ba);
    QCOMPARE(bench.covers->cachedBytes(), 5);
}

void RemoteCoversTest::whatIsDiscardedIsLeftAloneForAWhile()
{
    Bench bench;
    bench.wish(u"a"_s);
    bench.answer(u"a"_s, picture("{\"error\":1}"));
    bench.covers->discard(u"a"_s);
    settle();
    QCOMPARE(bench.covers->cachedBytes(), 0);
    bench.wish(u"a"_s);
    QCOMPARE(bench.sent(), 1);
    QCOMPARE(bench.given.constLast().second, QByteArray());
    bench.home.clock().advance(5min);
    bench.wish(u"a"_s);
    QCOMPARE(bench.sent(), 2);
}

void RemoteCoversTest::memoryIsBounded()
{
    Bench bench;
    constexpr int size = 100'000;
    constexpr int count = 1000;
    for (int i = 0; i < count; ++i) {
        bench.wish(QString::number(i));
        QVERIFY(bench.answer(QString::number(i), picture(QByteArray(size, 'x'))));
        QVERIFY(bench.covers->cachedBytes() <= 32 * 1024 * 1024);
        bench.given.clear();
    }
    QVERIFY(bench.covers->cachedBytes() > 32 * 1024 * 1024 - 2 * size);
    // The newest are there, the oldest are not.
    bench.wish(QString::number(count - 1));
    QCOMPARE(bench.sent(), count);
    bench.wish(u"0"_s);
    QCOMPARE(bench.sent(), count + 1);
}

void RemoteCoversTest::failuresDoNotStopTheOthers()
{
    Bench bench;
    for (int i = 0; i < 12; ++i)
        bench.wish(QString::number(i));
    while (!bench.asked().isEmpty())
        bench.answer(bench.asked().constFirst(), failed(HttpError::Kind::connection));
    QCOMPARE(bench.sent(), 12);
    QCOMPARE(bench.given.size(), 12);
    QCOMPARE(bench.covers->runningRequests(), 0);
}

void RemoteCoversTest::noTimerRuns()
{
    Bench bench;
    bench.wish(u"a"_s);
    bench.wish(u"b"_s);
    bench.answer(u"a"_s, failed(HttpError::Kind::connection));
    QCOMPARE(bench.home.clock().activeTimers(), 0);
}

void RemoteCoversTest::itsRequestsEndWithIt()
{
    Bench bench;
    for (int i = 0; i < 10; ++i)
        bench.wish(QString::number(i));
    QCOMPARE(bench.asked().size(), 4);
    const auto never = [](const QByteArray &) { QFAIL("a cover for nobody"); };
    bench.covers->wish(u"late"_s, addressOf(u"late"_s), never);
    bench.covers.reset();
    settle();
    QCOMPARE(bench.asked(), QStringList());
    QCOMPARE(bench.sent(), 4);
    QVERIFY(bench.given.isEmpty());
}

void RemoteCoversTest::wishesComeFromAnyThread()
{
    Bench bench;
    QThread *const mainThread = QThread::currentThread();
    std::atomic<int> elsewhere = 0;
    std::vector<std::unique_ptr<QThread>> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back(QThread::create([&, thread] {
            for (int i = 0; i < 50; ++i) {
                const QString key = QString::number(i);
                const auto taken = [&, key](const QByteArray &bytes) {
                    elsewhere += QThread::currentThread() == mainThread ? 0 : 1;
                    bench.given.append({key, bytes});
                };
                const quint64 id = bench.covers->wish(key, addressOf(key), taken);
                if (thread % 2 == 1)
                    bench.covers->withdraw(id);
            }
        }));
        threads.back()->start();
    }
    for (const std::unique_ptr<QThread> &thread : threads)
        QVERIFY(thread->wait());
    settle();
    while (!bench.asked().isEmpty())
        bench.answer(bench.asked().constFirst(), picture("bytes"));
    QCOMPARE(bench.given.size(), 100);
    QCOMPARE(elsewhere, 0);
    QVERIFY(bench.sent() >= 50);
}

QTEST_GUILESS_MAIN(RemoteCoversTest)
#include "tst_remote_covers.moc"
