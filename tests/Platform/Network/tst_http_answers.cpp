// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/HttpFailure.h"
#include "Platform/Network/NetworkHttpClient.h"
#include "Platform/Network/WebTest.h"
#include "Servers/MisbehavingServer.h"
#include "Servers/TestCertificate.h"

#include <QScopeGuard>
#include <QSslConfiguration>
#include <QTest>

using namespace cadorel;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

/// What becomes of answers, good and bad.
class TestHttpAnswers : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void anyStatusIsAResponse_data();
    void anyStatusIsAResponse();
    void everyFramingBringsTheWholeBody_data();
    void everyFramingBringsTheWholeBody();
    void aLargeBodyArrives();
    void aLargePageBesideA401MayBeCut();
    void brokenAnswersAreFailures_data();
    void brokenAnswersAreFailures();
    void bytesBeyondTheAnnouncedLengthAreNotTheBody();
    void headHasNoBody();
    void aServerThatIsGoneRefuses();
    void everyTransportErrorHasItsDescription();

    void anUntrustedCertificateIsRefused();
    void aTrustedCertificateIsAccepted();
    void aServerWithoutEncryptionIsNotUntrusted();

    void aBodyBeyondTheLimitIsRefused_data();
    void aBodyBeyondTheLimitIsRefused();
    void aBodyOfJustTheLimitIsTaken();
    void ofALongBodyOnlyTheBeginningIsTaken_data();
    void ofALongBodyOnlyTheBeginningIsTaken();

    void asksPlainly();
    void theCallersHeadersGoFirst();
    void sendsBodies_data();
    void sendsBodies();
    void keepsNoCookies();
    void neverUnpacks();
};

void TestHttpAnswers::anyStatusIsAResponse_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {200, 201, 206, 207, 300, 400, 401, 403, 404, 405, 407, 408,
                             409, 410, 418, 423, 429, 500, 501, 502, 503, 507, 599})
        QTest::addRow("%d", status) << status;
}

void TestHttpAnswers::anyStatusIsAResponse()
{
    QFETCH(const int, status);
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::status(status, "the page"_ba).with("Retry-After"_ba, "7"_ba));
    NetworkHttpClient client;
    const HttpResult result = fetch(client, server.url());
    COMPARE_STATUS(result, status);
    QCOMPARE(result->body, "the page"_ba);
    QCOMPARE(result->bodySize, 8);
    QCOMPARE(result->mimeType(), u"text/html"_s);
    QCOMPARE(result->header("retry-after"_ba), "7"_ba);
    QCOMPARE(result->url, server.url());
    QCOMPARE(server.requestCount(), 1);
}

void TestHttpAnswers::everyFramingBringsTheWholeBody_data()
{
    QTest::addColumn<int>("framing");
    QTest::addColumn<int>("size");
    for (const int size : {0, 1, 1000, 70'000, 3'000'000}) {
        QTest::addRow("length, %d", size) << 0 << size;
        QTest::addRow("chunked, %d", size) << 1 << size;
        QTest::addRow("until close, %d", size) << 2 << size;
    }
    QTest::newRow("trickling") << 3 << 20;
}

void TestHttpAnswers::everyFramingBringsTheWholeBody()
{
    QFETCH(const int, framing);
    QFETCH(const int, size);
    QByteArray body(size, 'x');
    for (qsizetype i = 0; i < body.size(); ++i)
        body[i] = static_cast<char>(i * 7 + i / 251);
    const ServerAnswer answer = ServerAnswer::ok(body);
    const QList<ServerAnswer> framings{answer, answer.chunked(), answer.untilClose(),
                                       answer.trickling(1, 10ms)};
    MisbehavingServer server;
    server.answer("/"_ba, framings.at(framing));
    NetworkHttpClient client;
    const HttpResult result = fetch(client, server.url());
    COMPARE_STATUS(result, 200);
    QCOMPARE(result->bodySize, size);
    QVERIFY(result->body == body);
}

void TestHttpAnswers::aLargeBodyArrives()
{
    constexpr qint64 responses = 2'000'000;
    const QByteArray response = "<D:response><D:href>/dav/%E9%9F%B3%E4%B9%90/a.mp3</D:href>"
                                "<D:propstat><D:prop/></D:propstat></D:response>"_ba;
    const ServerAnswer answer =
        ServerAnswer::streamed("<D:multistatus>"_ba, response, responses, "</D:multistatus>"_ba);
    QVERIFY(answer.bodySize() > 200'000'000);
    MisbehavingServer server;
    server.answer("/"_ba, answer.chunked());
    NetworkHttpClient client;
    const HttpResult result = fetch(client, server.url());
    COMPARE_STATUS(result, 200);
    QCOMPARE(result->bodySize, answer.bodySize());
    QCOMPARE(result->body.size(), answer.bodySize());
    QVERIFY(result->body.endsWith("</D:response></D:multistatus>"));
}

void TestHttpAnswers::aLargePageBesideA401MayBeCut()
{
    const QByteArray page(2'000'000, 'x');
    MisbehavingServer server;
    server.answer("/"_ba,
                  ServerAnswer::status(401, page).with("WWW-Authenticate"_ba, "Basic realm=\"x\""_ba));
    NetworkHttpClient client;
    const HttpResult result = fetch(client, server.url());
    COMPARE_STATUS(result, 401);
    QVERIFY(page.startsWith(result->body) && result->bodySize > 100'000);
    QCOMPARE(server.requestCount(), 1);
    server.answer("/"_ba, ServerAnswer::ok("music"_ba));
    const HttpResult next = fetch(client, server.url());
    COMPARE_STATUS(next, 200);
    QCOMPARE(next->body, "music"_ba);
}

void TestHttpAnswers::brokenAnswersAreFailures_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<QString>("description");
    const QString incomplete = u"连接中断，内容不完整"_s;
    QTest::newRow("stops in the middle of the body") << 0 << incomplete;
    QTest::newRow("stops after the head") << 1 << incomplete;
    QTest::newRow("announces more than it sends") << 2 << incomplete;
    QTest::newRow("stops in the middle of an error page") << 3 << incomplete;
    QTest::newRow("no HTTP") << 4 << QString();
    QTest::newRow("hangs up") << 5 << u"服务器关闭了连接"_s;
    QTest::newRow("hangs up in the head") << 6 << QString();
}

void TestHttpAnswers::brokenAnswersAreFailures()
{
    QFETCH(const int, which);
    QFETCH(const QString, description);
    const ServerAnswer music = ServerAnswer::ok(QByteArray(500'000, 'm'));
    const ServerAnswer page = ServerAnswer::status(404, QByteArray(5000, 'p'));
    const QList<ServerAnswer> answers{
        music.endingAfter(300'000),
        music.endingAfter(0),
        music.announcing(500'001),
        page.endingAfter(100),
        ServerAnswer::raw("220 ftp.example.org ready\r\n"_ba),
        ServerAnswer::hangUp(),
        ServerAnswer::raw("HTTP/1.1 200 OK\r\nContent-Le"_ba),
    };
    MisbehavingServer server;
    server.answer("/"_ba, answers.at(which));
    NetworkHttpClient client;
    const HttpResult result = fetch(client, server.url());
    COMPARE_FAILURE(result, connection);
    if (!description.isEmpty())
        QCOMPARE(result.error().description, description);
}

void TestHttpAnswers::bytesBeyondTheAnnouncedLengthAreNotTheBody()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("music and more"_ba).announcing(5));
    server.answer("/next"_ba, ServerAnswer::ok("next"_ba));
    NetworkHttpClient client;
    const HttpResult result = fetch(client, server.url());
    COMPARE_STATUS(result, 200);
    QCOMPARE(result->body, "music"_ba);
    // What is left on the connection does not become the next answer.
    const HttpResult next = fetch(client, server.url("/next"_ba));
    COMPARE_STATUS(next, 200);
    QCOMPARE(next->body, "next"_ba);
}

void TestHttpAnswers::headHasNoBody()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    HttpRequest head;
    head.url = server.url();
    head.method = "HEAD"_ba;
    head.sizeLimit = 2;
    const HttpResult result = fetch(client, head);
    COMPARE_STATUS(result, 200);
    QCOMPARE(result->header("content-length"_ba), "5"_ba);
    QCOMPARE(result->bodySize, 0);
    QCOMPARE(server.requests().constFirst().method, "HEAD"_ba);
}

void TestHttpAnswers::aServerThatIsGoneRefuses()
{
    QUrl url;
    {
        const MisbehavingServer server;
        url = server.url();
    }
    NetworkHttpClient client;
    const HttpResult result = fetch(client, url);
    COMPARE_FAILURE(result, connection);
    QCOMPARE(result.error().description, u"连接被拒绝"_s);
}

void TestHttpAnswers::everyTransportErrorHasItsDescription()
{
    const auto describe = [](QNetworkReply::NetworkError error) {
        return transportFailure(error, false, false).description;
    };
    QCOMPARE(describe(QNetworkReply::HostNotFoundError), u"找不到服务器"_s);
    QCOMPARE(describe(QNetworkReply::ConnectionRefusedError), u"连接被拒绝"_s);
    QCOMPARE(describe(QNetworkReply::SslHandshakeFailedError), u"无法建立安全连接"_s);
    QCOMPARE(describe(QNetworkReply::UnknownNetworkError), u"无法连接到服务器"_s);
    QCOMPARE(describe(QNetworkReply::ProxyNotFoundError), u"无法连接到代理服务器"_s);
    const HttpError timeout = transportFailure(QNetworkReply::TimeoutError, false, true);
    QVERIFY(timeout.kind == HttpError::Kind::timeout);
    QCOMPARE(timeout.description, u"连接超时"_s);
}

void TestHttpAnswers::anUntrustedCertificateIsRefused()
{
    MisbehavingServer server({.isEncrypted = true});
    server.answer("/"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    for (int i = 0; i < 2; ++i) {
        const HttpResult result = fetch(client, server.url());
        COMPARE_FAILURE(result, untrusted);
        QCOMPARE(result.error().description, u"服务器的证书不受信任"_s);
    }
    QCOMPARE(server.requestCount(), 0);
}

void TestHttpAnswers::aTrustedCertificateIsAccepted()
{
    const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
    const auto restore = qScopeGuard([before] { QSslConfiguration::setDefaultConfiguration(before); });
    QSslConfiguration trusting = before;
    trusting.addCaCertificate(TestCertificate::shared().certificate);
    QSslConfiguration::setDefaultConfiguration(trusting);
    MisbehavingServer server({.isEncrypted = true});
    server.answer("/"_ba, ServerAnswer::ok(QByteArray(1'000'000, 'm')));
    NetworkHttpClient client;
    const HttpResult result = fetch(client, server.url());
    COMPARE_STATUS(result, 200);
    QCOMPARE(result->bodySize, 1'000'000);

    // Trusted is the certificate, not the name.
    MisbehavingServer other({.isEncrypted = true, .address = QHostAddress(u"127.0.0.3"_s)});
    COMPARE_FAILURE(fetch(client, other.url()), untrusted);
}

void TestHttpAnswers::aServerWithoutEncryptionIsNotUntrusted()
{
    MisbehavingServer server;
    NetworkHttpClient client;
    QUrl url = server.url();
    url.setScheme(u"https"_s);
    const HttpResult result = fetch(client, url);
    COMPARE_FAILURE(result, connection);
}

void TestHttpAnswers::aBodyBeyondTheLimitIsRefused_data()
{
    QTest::addColumn<bool>("isAnnounced");
    QTest::newRow("announced") << true;
    QTest::newRow("not announced") << false;
}

void TestHttpAnswers::aBodyBeyondTheLimitIsRefused()
{
    QFETCH(const bool, isAnnounced);
    const ServerAnswer answer =
        ServerAnswer::streamed("<a>"_ba, QByteArray(1000, 'b'), 100'000, "</a>"_ba).holdingAt(2'000'000);
    MisbehavingServer server;
    server.answer("/"_ba, isAnnounced ? answer : answer.chunked());
    NetworkHttpClient client;
    HttpRequest request;
    request.url = server.url();
    request.sizeLimit = 1'000'000;
    COMPARE_FAILURE(fetch(client, request), tooLarge);
    QTRY_COMPARE(server.openConnections(), 0);
}

void TestHttpAnswers::aBodyOfJustTheLimitIsTaken()
{
    MisbehavingServer server;
    server.answer("/"_ba, {ServerAnswer::ok("music"_ba), ServerAnswer::ok("music"_ba).chunked()});
    NetworkHttpClient client;
    HttpRequest request;
    request.url = server.url();
    request.sizeLimit = 5;
    COMPARE_STATUS(fetch(client, request), 200);
    COMPARE_STATUS(fetch(client, request), 200);
    request.sizeLimit = 4;
    COMPARE_FAILURE(fetch(client, request), tooLarge);
}

void TestHttpAnswers::ofALongBodyOnlyTheBeginningIsTaken_data()
{
    aBodyBeyondTheLimitIsRefused_data();
}

void TestHttpAnswers::ofALongBodyOnlyTheBeginningIsTaken()
{
    QFETCH(const bool, isAnnounced);
    const ServerAnswer answer =
        ServerAnswer::streamed("<a>"_ba, QByteArray(1000, 'b'), 100'000, "</a>"_ba).holdingAt(200'000);
    MisbehavingServer server;
    server.answer("/"_ba, isAnnounced ? answer : answer.chunked());
    NetworkHttpClient client;
    HttpRequest request;
    request.url = server.url();
    request.sizeLimit = 100'000;
    request.cutsAtLimit = true;
    const auto response = fetch(client, request);
    COMPARE_STATUS(response, 200);
    QCOMPARE(response->body, "<a>" + QByteArray(99'997, 'b'));
    QCOMPARE(response->bodySize, 100'000);
    QTRY_COMPARE(server.openConnections(), 0);
}

void TestHttpAnswers::asksPlainly()
{
    MisbehavingServer server;
    NetworkHttpClient client;
    COMPARE_STATUS(fetch(client, server.url()), 404);
    const ServedRequest request = server.requests().constFirst();
    QCOMPARE(request.method, "GET"_ba);
    QVERIFY(request.header("User-Agent"_ba).startsWith("TarnovaPlayer/"));
    QCOMPARE(request.header("Accept-Encoding"_ba), "identity"_ba);
    QCOMPARE(request.header("Host"_ba), "127.0.0.1:" + QByteArray::number(server.port()));
    for (const auto *absent : {"Authorization", "Cookie", "Expect", "Range", "Content-Type", "Content-Length",
                               "Cache-Control", "Upgrade", "Referer"})
        QVERIFY2(!request.hasHeader(absent), absent);
}

void TestHttpAnswers::theCallersHeadersGoFirst()
{
    MisbehavingServer server;
    NetworkHttpClient client;
    HttpRequest request;
    request.url = server.url();
    request.headers = {{"user-agent"_ba, "other"_ba},
                       {"Accept-Encoding"_ba, "gzip"_ba},
                       {"Authorization"_ba, "Basic dTpw"_ba},
                       {"Depth"_ba, "1"_ba}};
    COMPARE_STATUS(fetch(client, request), 404);
    const ServedRequest served = server.requests().constFirst();
    for (const auto &[name, value] : request.headers)
        QCOMPARE(served.header(name), value);
}

void TestHttpAnswers::sendsBodies_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QByteArray>("body");
    for (const QByteArray &method : {"GET"_ba, "POST"_ba, "PUT"_ba, "DELETE"_ba, "PROPFIND"_ba, "MKCOL"_ba}) {
        QTest::addRow("%s with a body", method.constData()) << method << "<body/>"_ba;
        QTest::addRow("%s without a body", method.constData()) << method << ""_ba;
    }
    QTest::newRow("large") << "POST"_ba << QByteArray(3'000'000, 'b');
}

void TestHttpAnswers::sendsBodies()
{
    QFETCH(const QByteArray, method);
    QFETCH(const QByteArray, body);
    MisbehavingServer server;
    server.answer("/a"_ba, ServerAnswer::ok("fine"_ba));
    NetworkHttpClient client;
    HttpRequest request;
    request.url = server.url("/a?b=c"_ba);
    request.method = method;
    request.body = body;
    request.headers = {{"Content-Type"_ba, "application/xml"_ba}};
    const HttpResult result = fetch(client, request);
    COMPARE_STATUS(result, 200);
    QCOMPARE(result->body, "fine"_ba);
    const ServedRequest served = server.requests().constFirst();
    QCOMPARE(served.method, method);
    QCOMPARE(served.target, "/a?b=c"_ba);
    QVERIFY(served.body == body);
    QCOMPARE(served.header("content-type"_ba), "application/xml"_ba);
}

void TestHttpAnswers::keepsNoCookies()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("a"_ba).with("Set-Cookie"_ba, "session=1; Path=/"_ba));
    NetworkHttpClient client;
    COMPARE_STATUS(fetch(client, server.url()), 200);
    COMPARE_STATUS(fetch(client, server.url()), 200);
    QVERIFY(!server.requests().constLast().hasHeader("Cookie"_ba));
}

void TestHttpAnswers::neverUnpacks()
{
    const QByteArray packed = QByteArray::fromHex("1f8b0800000000000003cb2d2d2e4c06005e2ea1ad05000000");
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok(packed).with("Content-Encoding"_ba, "gzip"_ba));
    NetworkHttpClient client;
    HttpRequest request;
    request.url = server.url();
    for (const bool asksForIt : {false, true}) {
        if (asksForIt)
            request.headers = {{"Accept-Encoding"_ba, "gzip"_ba}};
        const HttpResult result = fetch(client, request);
        COMPARE_STATUS(result, 200);
        QCOMPARE(result->body, packed);
    }
}

QTEST_GUILESS_MAIN(TestHttpAnswers)
#include "tst_http_answers.moc"
