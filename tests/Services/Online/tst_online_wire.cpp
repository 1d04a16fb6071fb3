// SPDX-License-Identifier: GPL-3.0-or-later
// What of keywords and ids reaches a server, byte for byte.
#include "Platform/Network/NetworkHttpClient.h"
#include "Servers/MisbehavingServer.h"
#include "Services/Online/OnlineBench.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class OnlineWireTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<OnlineBench> m_bench;
    std::unique_ptr<MisbehavingServer> m_server;

    QByteArray lastTarget() const { return m_server->requests().constLast().target; }

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<MisbehavingServer>();
        m_server->answer("/api/", ServerAnswer::ok("{}", "application/json"));
        m_bench = std::make_unique<OnlineBench>();
        m_bench->machine.platform.httpClient = std::make_unique<NetworkHttpClient>();
        m_bench->api.setBaseURL(m_server->url().toString());
    }
    void cleanup()
    {
        m_bench->service.reset();
        m_bench->machine.platform.httpClient = std::make_unique<FakeHttpClient>();
        m_bench.reset();
        m_server.reset();
    }

    void keywordsArrive_data()
    {
        QTest::addColumn<QString>("keyword");
        QTest::addColumn<QByteArray>("sent");
        const QString marks = u"-._~!$&'()*+,;=:@/?"_s;
        QTest::newRow("what a query allows") << marks << marks.toLatin1();
        QTest::newRow("Chinese and blanks")
            << u"晚风 渡口"_s << QByteArray("%E6%99%9A%E9%A3%8E%20%E6%B8%A1%E5%8F%A3");
        QTest::newRow("emoji") << u"🎵"_s << QByteArray("%F0%9F%8E%B5");
        QTest::newRow("number sign") << u"#1"_s << QByteArray("%231");
        QTest::newRow("percent") << u"100% %2B"_s << QByteArray("100%25%20%252B");
        QTest::newRow("brackets and quotes")
            << u"[](){}<>\"'\\^`|"_s << QByteArray("%5B%5D()%7B%7D%3C%3E%22'%5C%5E%60%7C");
        QTest::newRow("steps up") << u"../../x/./y"_s << QByteArray("../../x/./y");
        QTest::newRow("line breaks and zero") << u"a\r\n\t"_s + QChar(0) << QByteArray("a%0D%0A%09%00");
        QTest::newRow("long") << u"雨"_s.repeated(1000) << QByteArray("%E9%9B%A8").repeated(1000);
    }
    void keywordsArrive()
    {
        QFETCH(QString, keyword);
        QFETCH(QByteArray, sent);
        QVERIFY(await(m_bench->service->search(keyword, MusicPlatform::qq)));
        QCOMPARE(lastTarget(), "/api/?source=qq&type=search&keyword=" + sent + "&limit=20");
        QVERIFY(m_bench->console.take().constFirst().endsWith(QString::fromLatin1(lastTarget())));
        QVERIFY(await(m_bench->service->aggregateSearch(keyword)));
        QCOMPARE(lastTarget(), "/api/?type=aggregateSearch&keyword=" + sent + "&limit=100");
        QVERIFY(m_bench->console.take().constFirst().endsWith(QString::fromLatin1(lastTarget())));
    }

    void idsArrive_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("plain") << u"MUSIC_186016"_s << QByteArray("MUSIC_186016");
        QTest::newRow("marks") << u"a+b/c?d=e:f@g,h;i!$'()*~"_s << QByteArray("a+b/c?d=e:f@g,h;i!$'()*~");
        QTest::newRow("escaped already") << u"%2B%23%25%E6%AD%8C"_s << QByteArray("%2B%23%25%E6%AD%8C");
        QTest::newRow("blank and Chinese") << u"歌 1"_s << QByteArray("%E6%AD%8C%201");
        QTest::newRow("quotes and brackets")
            << u"\"<>\\^`{|}[]"_s << QByteArray("%22%3C%3E%5C%5E%60%7B%7C%7D[]");
        QTest::newRow("percent") << u"100%"_s << QByteArray("100%25");
        QTest::newRow("steps up") << u"../x"_s << QByteArray("../x");
        QTest::newRow("line break") << u"a\r\nHost: x"_s << QByteArray("a%0D%0AHost:%20x");
    }
    void idsArrive()
    {
        QFETCH(QString, id);
        QFETCH(QByteArray, sent);
        const OnlineSong song = OnlineBench::song(id);
        QVERIFY(await(m_bench->service->getPlayUrl(song, u"flac"_s)));
        QCOMPARE(lastTarget(), "/api/?source=kuwo&id=" + sent + "&type=url&br=flac");
        QVERIFY(await(m_bench->service->getLyrics(song)));
        QCOMPARE(lastTarget(), "/api/?source=kuwo&id=" + sent + "&type=lrc");
        const TopList chart{.id = id, .name = {}, .updateFrequency = {}, .platform = MusicPlatform::netease};
        QVERIFY(await(m_bench->service->getTopListSongs(chart)));
        QCOMPARE(lastTarget(), "/api/?source=netease&id=" + sent + "&type=toplist");
    }

    void titlesComeBackAsTheyWere()
    {
        // Everything that JSON, a log or a list could stumble over.
        const QString title = u"\"\\/<&>%2B#\u0085\u2028\t🎵👩‍👩‍👧e\u0301\u202E"_s;
        const QByteArray body =
            QJsonDocument(
                QJsonObject{
                    {u"data"_s, QJsonObject{{u"results"_s, QJsonArray{QJsonObject{{u"id"_s, title},
                                                                                  {u"name"_s, title},
                                                                                  {u"artist"_s, title},
                                                                                  {u"album"_s, title}}}}}}})
                .toJson();
        m_server->answer("/api/", ServerAnswer::ok(body, "application/json"));
        QVERIFY(await(m_bench->service->search(u"a"_s, MusicPlatform::qq)));
        QCOMPARE(m_bench->service->searchResults().size(), 1);
        const OnlineSong song = m_bench->service->searchResults().constFirst();
        QCOMPARE(song.id, title);
        QCOMPARE(song.name, title);
        QCOMPARE(song.artist, title);
        QCOMPARE(song.album, title);
    }

    void theEndpointOfTheMomentIsAsked()
    {
        MisbehavingServer other;
        other.answer("/music/api/", ServerAnswer::ok("{}", "application/json"));
        m_bench->api.setBaseURL(other.url("/music").toString());
        QVERIFY(await(m_bench->service->getTopLists(MusicPlatform::qq)));
        QCOMPARE(other.requests().constLast().target, "/music/api/?source=qq&type=toplists");
        QCOMPARE(m_server->requestCount(), 0);
    }
};

QTEST_GUILESS_MAIN(OnlineWireTest)
#include "tst_online_wire.moc"
