// SPDX-License-Identifier: GPL-3.0-or-later
// Servers that answer badly, late or not at all, over real connections.
#include "Platform/Network/NetworkHttpClient.h"
#include "Servers/MisbehavingServer.h"
#include "Services/Online/OnlineBench.h"

#include <QTest>
#include <QTimer>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// The real client, whose patience is shorter than what is asked of it.
class ImpatientClient : public HttpClient
{
public:
    QCoro::Task<std::expected<HttpResponse, HttpError>> send(HttpRequest request) override
    {
        request.idleTimeout = 200ms;
        return m_client.send(request);
    }

private:
    NetworkHttpClient m_client;
};

ServerAnswer json(const QByteArray &body)
{
    return ServerAnswer::ok(body, "application/json; charset=utf-8");
}

} // namespace

class OnlineFaultsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<OnlineBench> m_bench;
    std::unique_ptr<MisbehavingServer> m_server;

    OnlineMusicService &service() { return *m_bench->service; }
    bool search() { return await(service().search(u"雨"_s, MusicPlatform::qq)).has_value(); }
    QStringList shown() { return OnlineBench::titles(service().searchResults()); }
    /// Everything that asks the server, each failing in its own way.
    void checkNothingCameOfIt()
    {
        QVERIFY(search());
        QVERIFY(shown().isEmpty());
        QVERIFY2(service().searchErrorText().startsWith(u"搜索失败: "_s),
                 qPrintable(service().searchErrorText()));
        QVERIFY(!service().isSearching());
        QVERIFY(await(service().aggregateSearch(u"雨"_s)));
        QVERIFY(service().searchErrorText().startsWith(u"搜索失败: "_s));
        QVERIFY(await(service().getTopLists(MusicPlatform::qq)));
        QVERIFY(service().topLists().isEmpty());
        QVERIFY(!service().isLoadingTopLists());
        QVERIFY(await(service().getTopListSongs({.id = u"1"_s, .name = {}, .updateFrequency = {}})));
        QVERIFY(service().topListSongs().isEmpty());
        QVERIFY(!service().isLoadingTopListSongs());
        const OnlineSong song = OnlineBench::song();
        const auto url = await(service().getPlayUrl(song));
        QVERIFY(url);
        QCOMPARE(*url, m_bench->api.getPlayUrl(song, u"320k"_s));
    }

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<MisbehavingServer>();
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

    void anyStatusWithABodyThatCanBeReadCounts_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {200, 201, 206, 300, 400, 401, 402, 403, 404, 405, 407,
                                 409, 410, 418, 429, 451, 500, 501, 502, 503, 504, 599})
            QTest::addRow("%d", status) << status;
    }
    void anyStatusWithABodyThatCanBeReadCounts()
    {
        QFETCH(int, status);
        m_server->answer("/api/", ServerAnswer::status(status, OnlineBench::found("晚风")));
        QVERIFY(search());
        QCOMPARE(shown(), QStringList{u"晚风"_s});
        QVERIFY(!service().searchError());
        QVERIFY(m_bench->console.take().contains(u"Response status: %1"_s.arg(status)));
    }

    void aRedirectLeadsToTheAnswer_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {301, 302, 303, 307, 308})
            QTest::addRow("%d", status) << status;
    }
    void aRedirectLeadsToTheAnswer()
    {
        QFETCH(int, status);
        m_server->answer("/api/", ServerAnswer::redirect(status, "/elsewhere?a=b"));
        m_server->answer("/elsewhere", json(OnlineBench::found("晚风")));
        QVERIFY(search());
        QCOMPARE(shown(), QStringList{u"晚风"_s});
    }

    void redirectsInACircleFail()
    {
        m_server->answer("/api/", ServerAnswer::redirect(302, "/api/"));
        checkNothingCameOfIt();
    }

    void whatIsNoAnswerFails_data()
    {
        QTest::addColumn<ServerAnswer>("answer");
        QTest::newRow("empty") << json("");
        QTest::newRow("no content") << ServerAnswer::status(204, "");
        QTest::newRow("page") << ServerAnswer::status(404);
        QTest::newRow("no UTF-8") << json("{\"message\":\"\xc3\x28\xff\"}");
        QTest::newRow("UTF-16") << json(QByteArray("{\0}\0", 4));
        QTest::newRow("number for a text") << json(
            R"({"data":{"results":[{"id":1,"name":"a","artist":"b"}],"list":[{"id":1,"name":"a"}]}})");
        QTest::newRow("null for a text") << json(
            R"({"data":{"results":[{"id":null,"name":"a","artist":"b"}],"list":[{"id":null,"name":"a"}]}})");
        QTest::newRow("text for a number") << json(R"({"code":"200","data":{}})");
        QTest::newRow("nested without end") << json(QByteArray(200'000, '['));
        QTest::newRow("nested and closed")
            << json(R"({"data":)" + QByteArray(50'000, '[') + QByteArray(50'000, ']') + "}");
        QTest::newRow("cut") << json(OnlineBench::found("晚风")).endingAfter(20);
        QTest::newRow("cut, chunked") << json(OnlineBench::found("晚风")).chunked().endingAfter(20);
        QTest::newRow("hung up") << ServerAnswer::hangUp();
        QTest::newRow("garbage") << ServerAnswer::raw("\x16\x03\x01 garbage\r\n\r\n");
        QTest::newRow("leads nowhere") << ServerAnswer::redirect(302, "file:///etc/passwd");
    }
    void whatIsNoAnswerFails()
    {
        QFETCH(ServerAnswer, answer);
        m_server->answer("/api/", answer);
        checkNothingCameOfIt();
    }

    void nobodyListens()
    {
        m_server.reset();
        checkNothingCameOfIt();
    }

    void anAnswerInPiecesIsReadWhole()
    {
        m_server->answer("/api/", json(OnlineBench::found("晚风")).chunked().trickling(7, 1ms));
        QVERIFY(search());
        QCOMPARE(shown(), QStringList{u"晚风"_s});
    }

    void aMarkOfTheEncodingIsNoFault()
    {
        m_server->answer("/api/", json("\xef\xbb\xbf" + OnlineBench::found("晚风")));
        QVERIFY(search());
        QCOMPARE(shown(), QStringList{u"晚风"_s});
    }

    void fiftyMegabytesAreTooMany()
    {
        int turns = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&turns] { ++turns; });
        timer.start(1ms);
        const QByteArray item = R"({"id":"1","name":"歌","artist":"手"},)";
        const auto fiftyMegabytes =
            ServerAnswer::streamed(R"({"data":{"results":[)", item, 50'000'000 / item.size(),
                                   R"({"id":"2","name":"歌","artist":"手"}]}})");
        m_server->answer("/api/", fiftyMegabytes);
        checkNothingCameOfIt();
        // Also where the length is not told beforehand.
        m_server->answer("/api/", fiftyMegabytes.chunked());
        checkNothingCameOfIt();
        QVERIFY(turns > 10);
    }

    void aLongAnswerIsReadWhileTheWindowLives()
    {
        constexpr int count = 100'000;
        const QByteArray item = R"({"id":"1","name":"歌","artist":"手","album":"辑"},)";
        m_server->answer("/api/", ServerAnswer::streamed(R"({"data":{"results":[)", item, count - 1,
                                                         R"({"id":"2","name":"末","artist":"手"}]}})"));
        int turns = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&turns] { ++turns; });
        timer.start(1ms);
        QVERIFY(search());
        QCOMPARE(service().searchResults().size(), count);
        QCOMPARE(service().searchResults().constLast().name, u"末"_s);
        QVERIFY(turns > 10);
    }

    void aServerThatNeverAnswersIsGivenUp()
    {
        m_bench->machine.platform.httpClient = std::make_unique<ImpatientClient>();
        m_server->answer("/api/", ServerAnswer::silence());
        checkNothingCameOfIt();
    }

    void aServerThatFallsSilentIsGivenUp()
    {
        m_bench->machine.platform.httpClient = std::make_unique<ImpatientClient>();
        m_server->answer("/api/", json(OnlineBench::found("晚风")).holdingAt(30));
        checkNothingCameOfIt();
    }

    void answersInReverseOrder()
    {
        m_server->answer("/api/", [](const ServedRequest &request) {
            const bool isFirst = request.target.contains("keyword=first");
            const ServerAnswer answer = json(OnlineBench::found(isFirst ? "第一" : "第二"));
            return isFirst ? answer.holdingAt(-1) : answer;
        });
        auto first = service().search(u"first"_s, MusicPlatform::qq);
        QTRY_COMPARE(m_server->requestCount(), 1);
        QVERIFY(await(service().search(u"second"_s, MusicPlatform::qq)));
        QCOMPARE(shown(), QStringList{u"第二"_s});
        QVERIFY(!service().isSearching());
        m_server->release();
        QVERIFY(await(std::move(first)));
        QCOMPARE(shown(), QStringList{u"第一"_s});
        QVERIFY(!service().isSearching());
    }

    void aServiceMayGoWhileAServerIsSilent()
    {
        m_server->answer("/api/", ServerAnswer::silence());
        auto task = service().search(u"雨"_s, MusicPlatform::qq);
        QTRY_COMPARE(m_server->requestCount(), 1);
        m_bench->service.reset();
        QVERIFY(await(std::move(task)));
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void audioInPlaceOfAnAddressIsNotFetchedToItsEnd()
    {
        const QByteArray frame = QByteArray(100'000, '\xff');
        m_server->answer("/api/", ServerAnswer::streamed("ID3", frame, 2000, "", "audio/mpeg"));
        const OnlineSong song = OnlineBench::song();
        const auto url = await(service().getPlayUrl(song));
        QVERIFY(url);
        QCOMPARE(*url, m_bench->api.getPlayUrl(song, u"320k"_s));
        QVERIFY(m_server->bytesSent() < 100'000'000);
    }
};

QTEST_GUILESS_MAIN(OnlineFaultsTest)
#include "tst_online_faults.moc"
