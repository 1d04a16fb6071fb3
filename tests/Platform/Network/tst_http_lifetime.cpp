// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/NetworkHttpClient.h"
#include "Platform/Network/WebTest.h"
#include "Servers/MisbehavingServer.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 longestEnd = 100;

/// What a service does: asks, and looks whether it is still there before it goes on.
class Asker : public QObject
{
public:
    QCoro::Task<> ask(HttpClient *client, HttpRequest request, int *resumed, int *alive)
    {
        const QPointer<Asker> self(this);
        const auto result = co_await client->send(std::move(request));
        ++*resumed;
        if (self && !result)
            ++*alive;
    }
};

} // namespace

/// The end of a client with requests under way.
class TestHttpLifetime : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void unusedItEndsAtOnce();
    void requestsUnderWayEndWithTheClient_data();
    void requestsUnderWayEndWithTheClient();
    void filesUnderWayAreGone();
    void anAnswerThatHadArrivedIsNotLost();
    void whoAsksFromItsEndIsRefused();
    void theAskerMayGoFirst();
    void aTransferMayOutliveTheClient();
};

void TestHttpLifetime::unusedItEndsAtOnce()
{
    QElapsedTimer time;
    time.start();
    {
        const NetworkHttpClient client;
    }
    QVERIFY2(time.elapsed() < longestEnd, qPrintable(QString::number(time.elapsed())));
}

void TestHttpLifetime::requestsUnderWayEndWithTheClient_data()
{
    QTest::addColumn<bool>("isEncrypted");
    QTest::addColumn<bool>("isOwn");
    QTest::addColumn<int>("held");
    QTest::newRow("never answered") << false << false << -1;
    QTest::newRow("in the body") << false << false << 500'000;
    QTest::newRow("own connections, never answered") << false << true << -1;
    QTest::newRow("own connections, in the body") << false << true << 500'000;
    QTest::newRow("encrypted") << true << false << -1;
}

void TestHttpLifetime::requestsUnderWayEndWithTheClient()
{
    QFETCH(const bool, isEncrypted);
    QFETCH(const bool, isOwn);
    QFETCH(const int, held);
    MisbehavingServer server({.isEncrypted = isEncrypted});
    server.answer("/"_ba, ServerAnswer::ok(QByteArray(1'000'000, 'm')).holdingAt(held));
    auto client = std::make_unique<NetworkHttpClient>();
    HttpRequest request;
    request.url = server.url();
    request.ownConnection = isOwn;
    QList<SentRequest> sent;
    for (int i = 0; i < 12; ++i)
        sent.append(sendRequest(*client, request));
    QTRY_VERIFY(server.connectionCount() >= 6);
    QElapsedTimer time;
    time.start();
    client.reset();
    const qint64 spent = time.elapsed();
    for (const SentRequest &ended : sent) {
        QVERIFY(ended.hasEnded());
        if (!isEncrypted) // else the certificate may have been refused before
            COMPARE_FAILURE(**ended.result, cancelled);
    }
    QTRY_COMPARE(server.openConnections(), 0);
    QVERIFY2(spent < longestEnd, qPrintable(QString::number(spent)));
}

void TestHttpLifetime::filesUnderWayAreGone()
{
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok(QByteArray(1'000'000, 'm')).holdingAt(500'000));
    auto client = std::make_unique<NetworkHttpClient>();
    HttpRequest request;
    request.url = server.url();
    request.outputFile = folder.filePath(u"song"_s);
    const SentRequest sent = sendRequest(*client, request);
    QTRY_VERIFY(QFile::exists(request.outputFile));
    client.reset();
    QVERIFY(sent.hasEnded());
    QVERIFY(QDir(folder.path()).isEmpty());
}

void TestHttpLifetime::anAnswerThatHadArrivedIsNotLost()
{
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("music"_ba));
    auto client = std::make_unique<NetworkHttpClient>();
    HttpRequest request;
    request.url = server.url();
    request.outputFile = folder.filePath(u"song"_s);
    const SentRequest sent = sendRequest(*client, request);
    // Without this thread's event loop.
    QElapsedTimer time;
    time.start();
    while (fileContent(request.outputFile) != "music" && time.elapsed() < 20000)
        QThread::yieldCurrentThread();
    client.reset();
    QVERIFY(sent.hasEnded());
    // Either way the file and what is told of it agree.
    QCOMPARE(QFile::exists(request.outputFile), (*sent.result)->has_value());
}

void TestHttpLifetime::whoAsksFromItsEndIsRefused()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::silence());
    auto client = std::make_unique<NetworkHttpClient>();
    int refused = 0;
    const auto askTwice = [](HttpClient *web, QUrl url, int *refusals) -> QCoro::Task<> {
        for (int i = 0; i < 2; ++i) {
            HttpRequest request;
            request.url = url;
            const auto result = co_await web->send(request);
            *refusals += !result && result.error().kind == HttpError::Kind::cancelled ? 1 : 0;
        }
    };
    askTwice(client.get(), server.url(), &refused);
    QTRY_COMPARE(server.requestCount(), 1);
    client.reset();
    QCOMPARE(refused, 2);
}

void TestHttpLifetime::theAskerMayGoFirst()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::silence());
    auto client = std::make_unique<NetworkHttpClient>();
    auto asker = std::make_unique<Asker>();
    HttpRequest request;
    request.url = server.url();
    int resumed = 0;
    int alive = 0;
    asker->ask(client.get(), request, &resumed, &alive);
    asker->ask(client.get(), request, &resumed, &alive);
    QTRY_COMPARE(server.requestCount(), 2);
    asker.reset();
    client.reset();
    QCOMPARE(resumed, 2);
    QCOMPARE(alive, 0);
}

void TestHttpLifetime::aTransferMayOutliveTheClient()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::silence());
    auto client = std::make_unique<NetworkHttpClient>();
    HttpRequest request;
    request.url = server.url();
    const SentRequest sent = sendRequest(*client, request);
    client.reset();
    QVERIFY(sent.hasEnded());
    sent.transfer->setPaused(true);
    sent.transfer->cancel();
}

QTEST_GUILESS_MAIN(TestHttpLifetime)
#include "tst_http_lifetime.moc"
