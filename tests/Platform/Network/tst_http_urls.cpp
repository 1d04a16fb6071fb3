// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/NetworkHttpClient.h"
#include "Platform/Network/WebTest.h"
#include "Servers/MisbehavingServer.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// What of an address goes over the wire.
class TestHttpUrls : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void sendsTheAddressAsItIsEncoded_data();
    void sendsTheAddressAsItIsEncoded();
    void sendsPathsThatAreMadeOfText_data();
    void sendsPathsThatAreMadeOfText();
    void makesNoCredentialsOfAnAddress();
    void refusesWhatIsNoWebAddress_data();
    void refusesWhatIsNoWebAddress();
};

void TestHttpUrls::sendsTheAddressAsItIsEncoded_data()
{
    QTest::addColumn<QByteArray>("asked");
    QTest::addColumn<QByteArray>("sent");
    const auto unchanged = [](const char *name, const QByteArray &target) {
        QTest::newRow(name) << target << target;
    };
    unchanged("plain", "/dav/a.mp3"_ba);
    unchanged("number sign", "/dav/a%23b.mp3"_ba);
    unchanged("per cent", "/dav/100%25.mp3"_ba);
    unchanged("per cent and digits", "/dav/%2541.mp3"_ba);
    unchanged("question mark", "/dav/why%3F.mp3"_ba);
    unchanged("plus", "/dav/a+b.mp3"_ba);
    unchanged("encoded plus", "/dav/a%2Bb.mp3"_ba);
    unchanged("ampersand", "/dav/a&b%26c.mp3"_ba);
    unchanged("semicolon", "/dav/a;b%3Bc.mp3"_ba);
    unchanged("encoded slash", "/dav/a%2Fb.mp3"_ba);
    unchanged("space", "/dav/a%20b.mp3"_ba);
    unchanged("brackets", "/dav/%5Ba%5D%7Bb%7D%7C.mp3"_ba);
    unchanged("Chinese", "/dav/%E9%9F%B3%E4%B9%90.mp3"_ba);
    unchanged("emoji", "/dav/%F0%9F%8E%B5.mp3"_ba);
    unchanged("no UTF-8", "/dav/%C4%E3.mp3"_ba);
    unchanged("query", "/rest/ping?u=a%26b&t=%E4%B9%90+x&x=%2B"_ba);
    unchanged("empty query", "/dav/?"_ba);
    unchanged("two slashes within", "/dav//a//b/"_ba);
    unchanged("two slashes at the start", "//dav/a.mp3"_ba);
    unchanged("three slashes at the start", "///dav/a.mp3"_ba);
    unchanged("dots in names", "/dav/..a/b../...mp3"_ba);
    QTest::newRow("nothing") << ""_ba << "/"_ba;
    QTest::newRow("query without path") << "?a=b"_ba << "/?a=b"_ba;
    QTest::newRow("fragment") << "/dav/a.mp3#part"_ba << "/dav/a.mp3"_ba;
    QTest::newRow("raw Chinese") << "/dav/音乐.mp3"_ba << "/dav/%E9%9F%B3%E4%B9%90.mp3"_ba;
    // QUrl writes these two in one way; both forms mean the same address.
    QTest::newRow("lower-case digits") << "/dav/a%2fb.mp3"_ba << "/dav/a%2Fb.mp3"_ba;
    QTest::newRow("encoded letter") << "/dav/%61.mp3"_ba << "/dav/a.mp3"_ba;
    QTest::newRow("segment of a dot") << "/dav/./a.mp3"_ba << "/dav/a.mp3"_ba;
    QTest::newRow("segment up") << "/dav/b/../a.mp3"_ba << "/dav/a.mp3"_ba;
    QTest::newRow("encoded segment up") << "/dav/b/%2E%2E/a.mp3"_ba << "/dav/a.mp3"_ba;
    QTest::newRow("slashes and a segment up") << "//dav//b/../a.mp3"_ba << "//dav//a.mp3"_ba;
}

void TestHttpUrls::sendsTheAddressAsItIsEncoded()
{
    QFETCH(const QByteArray, asked);
    QFETCH(const QByteArray, sent);
    MisbehavingServer server;
    server.answerEverything([](const ServedRequest &) { return ServerAnswer::ok("music"_ba); });
    NetworkHttpClient client;
    HttpRequest propfind;
    propfind.url = server.url(asked);
    propfind.method = "PROPFIND"_ba;
    propfind.body = "<propfind/>"_ba;
    for (const HttpResult &result : {fetch(client, server.url(asked)), fetch(client, propfind)}) {
        COMPARE_STATUS(result, 200);
        const QByteArray fragment = asked.contains('#') ? asked.mid(asked.indexOf('#')) : QByteArray();
        const QByteArray path = asked.isEmpty() || asked.startsWith('?') ? asked : sent + fragment;
        QCOMPARE(result->url.toEncoded(), server.url(path).toEncoded());
    }
    QCOMPARE(server.requests().constFirst().target, sent);
    QCOMPARE(server.requests().constLast().target, sent);
}

void TestHttpUrls::sendsPathsThatAreMadeOfText_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("encoded");
    QTest::newRow("number sign") << u"a#b"_s << "a%23b"_ba;
    QTest::newRow("per cent") << u"100%"_s << "100%25"_ba;
    QTest::newRow("per cent and digits") << u"%41"_s << "%2541"_ba;
    QTest::newRow("question mark") << u"why?"_s << "why%3F"_ba;
    QTest::newRow("plus, ampersand, semicolon") << u"a+b&c;d"_s << "a+b&c;d"_ba;
    QTest::newRow("space and Chinese") << u"晴 天"_s << "%E6%99%B4%20%E5%A4%A9"_ba;
    QTest::newRow("emoji") << u"🎵"_s << "%F0%9F%8E%B5"_ba;
}

void TestHttpUrls::sendsPathsThatAreMadeOfText()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, encoded);
    MisbehavingServer server;
    NetworkHttpClient client;
    QUrl url = server.url();
    url.setPath(u"/dav/"_s + name, QUrl::DecodedMode);
    COMPARE_STATUS(fetch(client, url), 404);
    QCOMPARE(server.requests().constFirst().target, "/dav/"_ba + encoded);
}

void TestHttpUrls::makesNoCredentialsOfAnAddress()
{
    MisbehavingServer server;
    server.requireBasic(u"user"_s, u"secret"_s);
    NetworkHttpClient client;
    QUrl url = server.url();
    url.setUserInfo(u"user:secret"_s);
    const HttpResult result = fetch(client, url);
    COMPARE_STATUS(result, 401);
    QVERIFY(result->body.contains("<html>"));
    QCOMPARE(result->url, server.url());
    QCOMPARE(server.requestCount(), 1);
    QVERIFY(!server.requests().constFirst().hasHeader("Authorization"_ba));
}

void TestHttpUrls::refusesWhatIsNoWebAddress_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::newRow("empty") << QUrl();
    QTest::newRow("file") << QUrl(u"file:///etc/passwd"_s);
    QTest::newRow("relative") << QUrl(u"dav/a.mp3"_s);
    QTest::newRow("no host") << QUrl(u"http:///a.mp3"_s);
    QTest::newRow("ftp") << QUrl(u"ftp://127.0.0.1/"_s);
    QTest::newRow("data") << QUrl(u"data:text/plain,hello"_s);
    QTest::newRow("resource") << QUrl(u"qrc:/qt/qml"_s);
}

void TestHttpUrls::refusesWhatIsNoWebAddress()
{
    QFETCH(const QUrl, url);
    NetworkHttpClient client;
    COMPARE_FAILURE(fetch(client, url), notHttp);
}

QTEST_GUILESS_MAIN(TestHttpUrls)
#include "tst_http_urls.moc"
