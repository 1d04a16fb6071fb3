// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/NetworkHttpClient.h"
#include "Platform/Network/Redirect.h"
#include "Platform/Network/WebTest.h"
#include "Servers/MisbehavingServer.h"
#include "Servers/TestCertificate.h"

#include <QScopeGuard>
#include <QSslConfiguration>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QByteArray credentials = "Basic dXNlcjpzZWNyZXQ="_ba;

HttpRequest authorized(const QUrl &url)
{
    HttpRequest request;
    request.url = url;
    request.headers = {{"authorization"_ba, credentials}, {"Cookie"_ba, "a=b"_ba}, {"Depth"_ba, "1"_ba}};
    return request;
}

} // namespace

/// Where redirects lead, and what goes along.
class TestHttpRedirects : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void methodAndBodyFollowTheStatus_data();
    void methodAndBodyFollowTheStatus();
    void credentialsStayAtTheirOrigin_data();
    void credentialsStayAtTheirOrigin();
    void credentialsDoNotComeBack();
    void credentialsStayWithinOneServer();
    void fromEncryptedToPlainTheyAreDropped();
    void credentialsInALocationAreDropped();
    void theAddressThatAnsweredIsTold_data();
    void theAddressThatAnsweredIsTold();
    void wrongLocationsAreFailures_data();
    void wrongLocationsAreFailures();
    void twentyAreFollowedAndNoMore();
    void aLoopEnds();
    void aLongPageBesideARedirectIsNotRead();
    void withoutLocationItIsAResponse();
    void aCutPageBesideARedirectIsAFailure();
};

void TestHttpRedirects::methodAndBodyFollowTheStatus_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray get = "GET"_ba;
    for (const QByteArray &method : {"GET"_ba, "POST"_ba, "PUT"_ba, "PROPFIND"_ba, "DELETE"_ba}) {
        for (const int status : {301, 302})
            QTest::addRow("%d %s", status, method.constData())
                << status << method << (method == "POST" ? get : method);
        QTest::addRow("303 %s", method.constData()) << 303 << method << get;
        for (const int status : {307, 308})
            QTest::addRow("%d %s", status, method.constData()) << status << method << method;
    }
    QTest::newRow("303 HEAD") << 303 << "HEAD"_ba << "HEAD"_ba;
}

void TestHttpRedirects::methodAndBodyFollowTheStatus()
{
    QFETCH(const int, status);
    QFETCH(const QByteArray, method);
    QFETCH(const QByteArray, expected);
    MisbehavingServer server;
    server.answer("/old"_ba, ServerAnswer::redirect(status, "/new"_ba));
    server.answer("/new"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    HttpRequest request;
    request.url = server.url("/old"_ba);
    request.method = method;
    if (method != "GET" && method != "HEAD") {
        request.body = "<body/>"_ba;
        request.headers = {{"content-type"_ba, "application/xml"_ba}};
    }
    COMPARE_STATUS(fetch(client, request), 200);
    QCOMPARE(server.requestCount(), 2);
    const ServedRequest last = server.requests().constLast();
    QCOMPARE(last.target, "/new"_ba);
    QCOMPARE(last.method, expected);
    const bool keepsBody = expected == method;
    QCOMPARE(last.body, keepsBody ? request.body : QByteArray());
    QCOMPARE(last.hasHeader("Content-Type"_ba), keepsBody && !request.body.isEmpty());
}

void TestHttpRedirects::credentialsStayAtTheirOrigin_data()
{
    QTest::addColumn<QUrl>("from");
    QTest::addColumn<QByteArray>("location");
    QTest::addColumn<bool>("areKept");
    const QUrl http(u"http://music.example/dav"_s);
    const QUrl https(u"https://music.example/dav"_s);
    QTest::newRow("relative") << http << "other"_ba << true;
    QTest::newRow("same host") << http << "http://music.example/x"_ba << true;
    QTest::newRow("same host in capitals") << http << "HTTP://MUSIC.example/x"_ba << true;
    QTest::newRow("usual port written out") << http << "http://music.example:80/x"_ba << true;
    QTest::newRow("encrypted, usual port written out") << https << "https://music.example:443/x"_ba << true;
    QTest::newRow("no scheme, same host") << http << "//music.example/x"_ba << true;
    QTest::newRow("other host") << http << "http://other.example/x"_ba << false;
    QTest::newRow("host within the host") << http << "http://a.music.example/x"_ba << false;
    QTest::newRow("host around the host") << http << "http://example/x"_ba << false;
    QTest::newRow("other port") << http << "http://music.example:8080/x"_ba << false;
    QTest::newRow("encrypted to plain") << https << "http://music.example/x"_ba << false;
    QTest::newRow("encrypted to plain, same port") << https << "http://music.example:443/x"_ba << false;
    QTest::newRow("plain to encrypted, other port") << http << "https://music.example/x"_ba << false;
    QTest::newRow("the host as a user") << http << "http://music.example@other.example/x"_ba << false;
    QTest::newRow("no scheme, other host") << http << "//other.example/x"_ba << false;
}

void TestHttpRedirects::credentialsStayAtTheirOrigin()
{
    QFETCH(const QUrl, from);
    QFETCH(const QByteArray, location);
    QFETCH(const bool, areKept);
    const auto next = redirected(authorized(from), 302, location);
    QVERIFY(next.has_value());
    QList<QByteArray> names;
    for (const auto &[name, value] : next->headers)
        names.append(name);
    QCOMPARE(names, areKept ? QList<QByteArray>({"authorization", "Cookie", "Depth"})
                            : QList<QByteArray>({"Depth"}));
    QVERIFY(next->url.userInfo().isEmpty());
}

void TestHttpRedirects::credentialsDoNotComeBack()
{
    MisbehavingServer home;
    MisbehavingServer abroad;
    home.answer("/a"_ba, ServerAnswer::redirect(302, abroad.url("/b"_ba).toEncoded()));
    abroad.answer("/b"_ba, ServerAnswer::redirect(302, home.url("/c"_ba).toEncoded()));
    home.answer("/c"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    COMPARE_STATUS(fetch(client, authorized(home.url("/a"_ba))), 200);
    QCOMPARE(home.requests().constFirst().header("Authorization"_ba), credentials);
    for (const ServedRequest &request : {abroad.requests().constFirst(), home.requests().constLast()}) {
        QVERIFY(!request.hasHeader("Authorization"_ba));
        QVERIFY(!request.hasHeader("Cookie"_ba));
        QCOMPARE(request.header("Depth"_ba), "1"_ba);
    }
}

void TestHttpRedirects::credentialsStayWithinOneServer()
{
    MisbehavingServer server;
    server.answer("/a"_ba, ServerAnswer::redirect(301, "/b/"_ba));
    server.answer("/b/"_ba, ServerAnswer::redirect(307, server.url("/c"_ba).toEncoded()));
    server.answer("/c"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    COMPARE_STATUS(fetch(client, authorized(server.url("/a"_ba))), 200);
    QCOMPARE(server.requestCount(), 3);
    QCOMPARE(server.requests().constLast().header("Authorization"_ba), credentials);
}

void TestHttpRedirects::fromEncryptedToPlainTheyAreDropped()
{
    const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
    const auto restore = qScopeGuard([before] { QSslConfiguration::setDefaultConfiguration(before); });
    QSslConfiguration trusting = before;
    trusting.addCaCertificate(TestCertificate::shared().certificate);
    QSslConfiguration::setDefaultConfiguration(trusting);
    MisbehavingServer encrypted({.isEncrypted = true});
    MisbehavingServer plain;
    encrypted.answer("/"_ba, ServerAnswer::redirect(302, plain.url().toEncoded()));
    plain.answer("/"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    const HttpResult result = fetch(client, authorized(encrypted.url()));
    COMPARE_STATUS(result, 200);
    QCOMPARE(result->url, plain.url());
    QCOMPARE(encrypted.requests().constFirst().header("Authorization"_ba), credentials);
    QVERIFY(!plain.requests().constFirst().hasHeader("Authorization"_ba));
}

void TestHttpRedirects::credentialsInALocationAreDropped()
{
    MisbehavingServer server;
    QUrl target = server.url("/b"_ba);
    target.setUserInfo(u"user:secret"_s);
    server.answer("/a"_ba, ServerAnswer::redirect(302, target.toEncoded()));
    server.answer("/b"_ba, ServerAnswer::unauthorized());
    NetworkHttpClient client;
    const HttpResult result = fetch(client, server.url("/a"_ba));
    COMPARE_STATUS(result, 401);
    QCOMPARE(result->url, server.url("/b"_ba));
    QVERIFY(!server.requests().constLast().hasHeader("Authorization"_ba));
}

void TestHttpRedirects::theAddressThatAnsweredIsTold_data()
{
    QTest::addColumn<QByteArray>("location");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("absolute path") << "/new/a.mp3"_ba << "/new/a.mp3"_ba;
    QTest::newRow("relative path") << "b.mp3"_ba << "/dav/b.mp3"_ba;
    QTest::newRow("one up") << "../b.mp3"_ba << "/b.mp3"_ba;
    QTest::newRow("query alone") << "?x=1"_ba << "/dav/a.mp3?x=1"_ba;
    QTest::newRow("escapes") << "/%E9%9F%B3%23%2525/?a=%26"_ba << "/%E9%9F%B3%23%2525/?a=%26"_ba;
    QTest::newRow("raw UTF-8") << "/音乐/"_ba << "/%E9%9F%B3%E4%B9%90/"_ba;
    QTest::newRow("space") << "/a b"_ba << "/a%20b"_ba;
    QTest::newRow("slash added") << "/dav/a.mp3/"_ba << "/dav/a.mp3/"_ba;
}

void TestHttpRedirects::theAddressThatAnsweredIsTold()
{
    QFETCH(const QByteArray, location);
    QFETCH(const QByteArray, expected);
    MisbehavingServer server;
    server.answer("/dav/a.mp3"_ba, {ServerAnswer::redirect(302, location), ServerAnswer::status(404)});
    NetworkHttpClient client;
    const HttpResult result = fetch(client, server.url("/dav/a.mp3"_ba));
    COMPARE_STATUS(result, 404);
    QCOMPARE(server.requests().constLast().target, expected);
    QCOMPARE(result->url.toEncoded(), server.url(expected).toEncoded());
}

void TestHttpRedirects::wrongLocationsAreFailures_data()
{
    QTest::addColumn<QByteArray>("location");
    for (const QByteArray &location :
         {"file:///etc/passwd"_ba, "ftp://127.0.0.1/a"_ba, "data:text/plain,a"_ba, "javascript:alert(1)"_ba,
          "http://"_ba, "http://[::zz]/"_ba, "webdavstream://127.0.0.1/"_ba, "qrc:/a"_ba, "http:///a"_ba})
        QTest::newRow(location.constData()) << location;
}

void TestHttpRedirects::wrongLocationsAreFailures()
{
    QFETCH(const QByteArray, location);
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::redirect(302, location));
    NetworkHttpClient client;
    COMPARE_FAILURE(fetch(client, server.url()), redirect);
    QCOMPARE(server.requestCount(), 1);
}

void TestHttpRedirects::twentyAreFollowedAndNoMore()
{
    MisbehavingServer server;
    server.answerEverything([](const ServedRequest &request) {
        const int left = request.target.mid(1).toInt();
        return left == 0 ? ServerAnswer::ok("music"_ba)
                         : ServerAnswer::redirect(302, "/" + QByteArray::number(left - 1));
    });
    NetworkHttpClient client;
    COMPARE_STATUS(fetch(client, server.url("/20"_ba)), 200);
    COMPARE_FAILURE(fetch(client, server.url("/21"_ba)), redirect);
    // A long way costs no connection for each step.
    QVERIFY2(server.connectionCount() <= 3, qPrintable(QString::number(server.connectionCount())));
}

void TestHttpRedirects::aLoopEnds()
{
    MisbehavingServer server;
    server.answer("/a"_ba, ServerAnswer::redirect(307, "/b"_ba));
    server.answer("/b"_ba, ServerAnswer::redirect(307, "/a"_ba));
    NetworkHttpClient client;
    const HttpResult result = fetch(client, authorized(server.url("/a"_ba)));
    COMPARE_FAILURE(result, redirect);
    QVERIFY(!result.error().description.contains(u"127.0.0.1"_s));
    QCOMPARE(server.requestCount(), 21);
}

void TestHttpRedirects::aLongPageBesideARedirectIsNotRead()
{
    MisbehavingServer server;
    server.answer("/a"_ba,
                  ServerAnswer::status(302, QByteArray(50'000'000, 'x')).with("Location"_ba, "/b"_ba));
    server.answer("/b"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    COMPARE_STATUS(fetch(client, server.url("/a"_ba)), 200);
    QVERIFY2(server.bytesSent() < 20'000'000, qPrintable(QString::number(server.bytesSent())));
}

void TestHttpRedirects::withoutLocationItIsAResponse()
{
    MisbehavingServer server;
    NetworkHttpClient client;
    for (const int status : {301, 302, 303, 307, 308}) {
        server.answer("/"_ba, ServerAnswer::status(status, "where?"_ba));
        const HttpResult result = fetch(client, server.url());
        COMPARE_STATUS(result, status);
        QCOMPARE(result->body, "where?"_ba);
    }
    for (const int status : {300, 304}) {
        server.answer("/"_ba, ServerAnswer::redirect(status, "/b"_ba));
        COMPARE_STATUS(fetch(client, server.url()), status);
    }
}

void TestHttpRedirects::aCutPageBesideARedirectIsAFailure()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::redirect(302, "/b"_ba).endingAfter(3));
    NetworkHttpClient client;
    COMPARE_FAILURE(fetch(client, server.url()), connection);
}

QTEST_GUILESS_MAIN(TestHttpRedirects)
#include "tst_http_redirects.moc"
