// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/NetworkHttpClient.h"
#include "Platform/Network/WebTest.h"
#include "Servers/MisbehavingServer.h"

#include <QElapsedTimer>
#include <QTest>

using namespace cadorel;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

/// Whether the server stops sending: no byte more for half a second.
bool serverStalls(const MisbehavingServer &server)
{
    constexpr qint64 calm = 500;
    qint64 sent = -1;
    QElapsedTimer since;
    since.start();
    return QTest::qWaitFor(
        [&] {
            if (server.bytesSent() != sent) {
                sent = server.bytesSent();
                since.start();
            }
            return sent > 0 && since.elapsed() > calm;
        },
        20000);
}

HttpRequest get(const QUrl &url)
{
    HttpRequest request;
    request.url = url;
    return request;
}

} // namespace

/// Time-outs, cancelling and pausing.
class TestHttpSteering : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void silenceFailsTheRequest_data();
    void silenceFailsTheRequest();
    void aSlowServerIsNotSilent();
    void theWholeTimeIsLimitedToo();
    void cancelEndsTheRequest_data();
    void cancelEndsTheRequest();
    void cancelledBeforeItIsSentNothingIsSent();
    void cancelledAfterTheAnswerItIsStillCancelled();
    void cancellingTheEndedDoesNothing();
    void cancelEndsOneOfMany();
    void aPauseHoldsTheServerBack_data();
    void aPauseHoldsTheServerBack();
    void theIdleTimeRestsWhilePaused();
    void afterAPauseSilenceCountsAgain();
    void aPauseAcrossTheEndKeepsTheRest();
    void cancelledWhilePaused();
};

void TestHttpSteering::silenceFailsTheRequest_data()
{
    QTest::addColumn<int>("held");
    QTest::newRow("before the head") << -1;
    QTest::newRow("after the head") << 0;
    QTest::newRow("in the body") << 500;
}

void TestHttpSteering::silenceFailsTheRequest()
{
    QFETCH(const int, held);
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok(QByteArray(1000, 'm')).holdingAt(held));
    NetworkHttpClient client;
    HttpRequest request = get(server.url());
    request.idleTimeout = 200ms;
    QElapsedTimer time;
    time.start();
    const HttpResult result = fetch(client, request);
    COMPARE_FAILURE(result, timeout);
    QCOMPARE(result.error().description, u"连接超时"_s);
    QVERIFY(time.elapsed() >= 200);
    QTRY_COMPARE(server.openConnections(), 0);
}

void TestHttpSteering::aSlowServerIsNotSilent()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok(QByteArray(20, 'm')).trickling(1, 100ms));
    NetworkHttpClient client;
    HttpRequest request = get(server.url());
    request.idleTimeout = 1s;
    QElapsedTimer time;
    time.start();
    COMPARE_STATUS(fetch(client, request), 200);
    QVERIFY(time.elapsed() > 1000);
}

void TestHttpSteering::theWholeTimeIsLimitedToo()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok(QByteArray(100'000, 'm')).trickling(1, 10ms));
    NetworkHttpClient client;
    HttpRequest request = get(server.url());
    request.totalTimeout = 300ms;
    COMPARE_FAILURE(fetch(client, request), timeout);
    request.ownConnection = true;
    COMPARE_FAILURE(fetch(client, request), timeout);
    QTRY_COMPARE(server.openConnections(), 0);
}

void TestHttpSteering::cancelEndsTheRequest_data()
{
    QTest::addColumn<int>("held");
    QTest::addColumn<bool>("isOwn");
    for (const bool isOwn : {false, true}) {
        const char *connection = isOwn ? "own" : "shared";
        QTest::addRow("before the head, %s", connection) << -1 << isOwn;
        QTest::addRow("after the head, %s", connection) << 0 << isOwn;
        QTest::addRow("in the body, %s", connection) << 500'000 << isOwn;
    }
}

void TestHttpSteering::cancelEndsTheRequest()
{
    QFETCH(const int, held);
    QFETCH(const bool, isOwn);
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok(QByteArray(1'000'000, 'm')).holdingAt(held));
    NetworkHttpClient client;
    HttpRequest request = get(server.url());
    request.ownConnection = isOwn;
    const SentRequest sent = sendRequest(client, request);
    QTRY_COMPARE(server.requestCount(), 1);
    QTRY_VERIFY(server.bytesSent() > held);
    sent.transfer->cancel();
    QVERIFY(!sent.hasEnded()); // never in the middle of the caller's own call
    const auto result = sent.wait();
    QVERIFY(result.has_value());
    COMPARE_FAILURE(*result, cancelled);
    QTRY_COMPARE(server.openConnections(), 0);
}

void TestHttpSteering::cancelledBeforeItIsSentNothingIsSent()
{
    MisbehavingServer server;
    NetworkHttpClient client;
    HttpRequest request = get(server.url());
    request.transfer = std::make_shared<HttpTransfer>();
    request.transfer->cancel();
    COMPARE_FAILURE(fetch(client, request), cancelled);
    COMPARE_STATUS(fetch(client, server.url("/next"_ba)), 404);
    QCOMPARE(server.requestCount(), 1);
}

void TestHttpSteering::cancelledAfterTheAnswerItIsStillCancelled()
{
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    HttpRequest request = get(server.url());
    request.outputFile = folder.filePath(u"song"_s);
    const SentRequest sent = sendRequest(client, request);
    // The answer comes to this thread as an event, which is not looked for here.
    QElapsedTimer time;
    time.start();
    while (fileContent(request.outputFile) != "music" && time.elapsed() < 20000)
        QThread::yieldCurrentThread();
    QCOMPARE(fileContent(request.outputFile), "music"_ba);
    sent.transfer->cancel();
    const auto result = sent.wait();
    QVERIFY(result.has_value());
    COMPARE_FAILURE(*result, cancelled);
    QVERIFY(!QFile::exists(request.outputFile));
}

void TestHttpSteering::cancellingTheEndedDoesNothing()
{
    MisbehavingServer server;
    NetworkHttpClient client;
    HttpRequest request = get(server.url());
    request.transfer = std::make_shared<HttpTransfer>();
    COMPARE_STATUS(fetch(client, request), 404);
    request.transfer->setPaused(true);
    request.transfer->cancel();
    COMPARE_STATUS(fetch(client, server.url()), 404);
}

void TestHttpSteering::cancelEndsOneOfMany()
{
    MisbehavingServer server;
    server.answer("/held"_ba, ServerAnswer::silence());
    NetworkHttpClient client;
    const SentRequest first = sendRequest(client, get(server.url("/held"_ba)));
    const SentRequest second = sendRequest(client, get(server.url("/held"_ba)));
    QTRY_COMPARE(server.requestCount(), 2);
    first.transfer->cancel();
    QVERIFY(first.wait().has_value());
    QVERIFY(!second.hasEnded());
    server.release();
    const auto result = second.wait();
    QVERIFY(result.has_value());
    COMPARE_STATUS(*result, 200);
}

void TestHttpSteering::aPauseHoldsTheServerBack_data()
{
    QTest::addColumn<bool>("isFile");
    QTest::addColumn<bool>("isChunked");
    QTest::newRow("memory") << false << false;
    QTest::newRow("file") << true << false;
    QTest::newRow("chunked") << true << true;
}

void TestHttpSteering::aPauseHoldsTheServerBack()
{
    QFETCH(const bool, isFile);
    QFETCH(const bool, isChunked);
    const QTemporaryDir folder;
    const ServerAnswer answer = ServerAnswer::streamed({}, QByteArray(1000, 'm'), 60'000, {});
    MisbehavingServer server;
    server.answer("/"_ba, isChunked ? answer.chunked() : answer);
    NetworkHttpClient client;
    HttpRequest request = get(server.url());
    request.transfer = std::make_shared<HttpTransfer>();
    request.transfer->setPaused(true);
    if (isFile)
        request.outputFile = folder.filePath(u"song"_s);
    const SentRequest sent = sendRequest(client, request);
    QVERIFY(serverStalls(server));
    // Buffers of the system and of both ends, no more.
    QVERIFY2(server.bytesSent() < 20'000'000, qPrintable(QString::number(server.bytesSent())));
    QVERIFY(!sent.hasEnded());

    const qint64 before = server.bytesSent();
    sent.transfer->setPaused(false);
    QTRY_VERIFY(server.bytesSent() > before);
    sent.transfer->setPaused(true);
    sent.transfer->setPaused(false);
    const auto result = sent.wait();
    QVERIFY(result.has_value());
    COMPARE_STATUS(*result, 200);
    QCOMPARE(result.value()->bodySize, answer.bodySize());
}

void TestHttpSteering::theIdleTimeRestsWhilePaused()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::streamed({}, QByteArray(1000, 'm'), 60'000, {}));
    server.answer("/silent"_ba, ServerAnswer::silence());
    NetworkHttpClient client;
    HttpRequest request = get(server.url());
    request.transfer = std::make_shared<HttpTransfer>();
    request.transfer->setPaused(true);
    request.idleTimeout = 200ms;
    const SentRequest paused = sendRequest(client, request);
    // Another one with the same time-out tells that the time has passed.
    HttpRequest silent = get(server.url("/silent"_ba));
    silent.idleTimeout = 400ms;
    COMPARE_FAILURE(fetch(client, silent), timeout);
    QVERIFY(!paused.hasEnded());
    paused.transfer->setPaused(false);
    const auto result = paused.wait();
    QVERIFY(result.has_value());
    COMPARE_STATUS(*result, 200);
    QCOMPARE(result.value()->bodySize, 60'000'000);
}

void TestHttpSteering::afterAPauseSilenceCountsAgain()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::silence());
    NetworkHttpClient client;
    HttpRequest request = get(server.url());
    request.transfer = std::make_shared<HttpTransfer>();
    request.transfer->setPaused(true);
    request.idleTimeout = 200ms;
    const SentRequest sent = sendRequest(client, request);
    QTRY_COMPARE(server.requestCount(), 1);
    sent.transfer->setPaused(false);
    const auto result = sent.wait();
    QVERIFY(result.has_value());
    COMPARE_FAILURE(*result, timeout);
}

void TestHttpSteering::aPauseAcrossTheEndKeepsTheRest()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("music"_ba).untilClose());
    NetworkHttpClient client;
    HttpRequest request = get(server.url());
    request.transfer = std::make_shared<HttpTransfer>();
    request.transfer->setPaused(true);
    const SentRequest sent = sendRequest(client, request);
    // Perhaps asked twice: an answer and the end of its connection that come at once look to Qt like a
    // failure.
    QTRY_VERIFY(server.requestCount() > 0);
    QTRY_COMPARE(server.openConnections(), 0); // the answer is over for the server
    // A second request behind it has passed the same threads.
    COMPARE_STATUS(fetch(client, server.url("/next"_ba)), 404);
    QVERIFY(!sent.hasEnded());
    sent.transfer->setPaused(false);
    const auto result = sent.wait();
    QVERIFY(result.has_value());
    COMPARE_STATUS(*result, 200);
    QCOMPARE(result.value()->body, "music"_ba);
}

void TestHttpSteering::cancelledWhilePaused()
{
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok(QByteArray(5'000'000, 'm')).holdingAt(4'000'000));
    NetworkHttpClient client;
    HttpRequest request = get(server.url());
    request.outputFile = folder.filePath(u"song"_s);
    const SentRequest sent = sendRequest(client, request);
    QTRY_VERIFY(QFile::exists(request.outputFile));
    sent.transfer->setPaused(true);
    sent.transfer->cancel();
    const auto result = sent.wait();
    QVERIFY(result.has_value());
    COMPARE_FAILURE(*result, cancelled);
    QVERIFY(!QFile::exists(request.outputFile));
}

QTEST_GUILESS_MAIN(TestHttpSteering)
#include "tst_http_steering.moc"
