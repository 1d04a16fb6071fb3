// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Online/OnlineBench.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray ownAddress = "http://music.test/api/?source=kuwo&id=7&type=url&br=320k";

QByteArray told(const QByteArray &url)
{
    return R"({"url":")" + url + R"("})";
}

} // namespace

class OnlineLookupsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<OnlineBench> m_bench;

    OnlineMusicService &service() { return *m_bench->service; }
    /// The address that comes of an answer; "none" for none.
    QByteArray address(const OnlineBench::Answer &answer)
    {
        const auto url = m_bench->answered(service().getPlayUrl(OnlineBench::song()), answer);
        return url && *url ? (*url)->toEncoded() : QByteArray("none");
    }

private Q_SLOTS:
    void init() { m_bench = std::make_unique<OnlineBench>(); }
    void cleanup() { m_bench.reset(); }

    void theQuestionNamesTheQuality()
    {
        const auto a = service().getPlayUrl(OnlineBench::song());
        const auto b = service().getPlayUrl(OnlineBench::song(), u"flac"_s);
        const QList<HttpRequest> sent = m_bench->web().sent;
        QCOMPARE(sent.at(0).url.toEncoded(), ownAddress);
        QCOMPARE(sent.at(1).url.toEncoded(), "http://music.test/api/?source=kuwo&id=7&type=url&br=flac");
        QCOMPARE(sent.at(0).idleTimeout, 30s);
        QCOMPARE(sent.at(0).totalTimeout, 60s);
        // What answers with the audio itself is not fetched to its end.
        QVERIFY(sent.at(0).cutsAtLimit);
        QVERIFY(sent.at(0).sizeLimit > 0 && sent.at(0).sizeLimit <= 64 * 1024);
    }

    void theAddressIsFoundInTheAnswer_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QByteArray>("address");
        const QByteArray audio = "http://cdn.test/a.mp3?key=%2B%20x";
        QTest::newRow("JSON") << QByteArray(R"({"url":")" + audio + R"("})") << audio;
        QTest::newRow("JSON, more texts") << QByteArray(R"({"br":"320k","url":")" + audio + R"("})") << audio;
        QTest::newRow("JSON, escaped slashes")
            << QByteArray(R"({"url":"https:\/\/cdn.test\/a.mp3"})") << QByteArray("https://cdn.test/a.mp3");
        QTest::newRow("JSON, blank and Chinese")
            << told("http://cdn.test/歌 a.mp3") << QByteArray("http://cdn.test/%E6%AD%8C%20a.mp3");
        QTest::newRow("text") << audio << audio;
        QTest::newRow("text and a line break") << audio + "\n" << audio;
        QTest::newRow("text between blanks") << " \t\r\n" + audio + " \r\n" << audio;
        QTest::newRow("text in Chinese")
            << QByteArray("http://cdn.test/歌.mp3") << QByteArray("http://cdn.test/%E6%AD%8C.mp3");
        // The rest is no address, and the player asks the API itself.
        QTest::newRow("empty") << QByteArray() << ownAddress;
        QTest::newRow("blanks") << QByteArray(" \n") << ownAddress;
        QTest::newRow("numeric url") << QByteArray(R"({"url":1})") << ownAddress;
        QTest::newRow("null url") << QByteArray(R"({"url":null})") << ownAddress;
        QTest::newRow("not only texts")
            << QByteArray(R"({"code":200,"url":")" + audio + R"("})") << ownAddress;
        QTest::newRow("a null beside it")
            << QByteArray(R"({"type":null,"url":")" + audio + R"("})") << ownAddress;
        QTest::newRow("JSON without url") << QByteArray(R"({"error":"none"})") << ownAddress;
        QTest::newRow("empty object") << QByteArray("{}") << ownAddress;
        QTest::newRow("list") << '[' + told(audio) + ']' << ownAddress;
        QTest::newRow("JSON text") << '"' + audio + '"' << ownAddress;
        QTest::newRow("page") << QByteArray("<html><body>404</body></html>") << ownAddress;
        QTest::newRow("a word") << QByteArray("error") << ownAddress;
        QTest::newRow("a message") << QByteArray("no such song") << ownAddress;
        QTest::newRow("two lines") << audio + "\n" + audio << ownAddress;
        QTest::newRow("blank in a text") << QByteArray("http://cdn.test/a b.mp3") << ownAddress;
        QTest::newRow("no UTF-8") << QByteArray("http://cdn.test/\xff.mp3") << ownAddress;
        QTest::newRow("file") << QByteArray("file:///etc/passwd") << ownAddress;
        QTest::newRow("no server") << QByteArray("http:///a.mp3") << ownAddress;
        QTest::newRow("audio") << QByteArray("ID3\x04\0\0\xff\xfb", 8) + QByteArray(100'000, '\xff')
                               << ownAddress;
        QTest::newRow("address that was cut off")
            << "http://cdn.test/" + QByteArray(100'000, 'a') << ownAddress;
        // A told text that is no address is an answer all the same.
        QTest::newRow("empty url") << QByteArray(R"({"url":""})") << QByteArray("none");
        QTest::newRow("url without a server") << QByteArray(R"({"url":"a.mp3"})") << QByteArray("none");
        QTest::newRow("broken url") << told("http://[::1/a.mp3") << QByteArray("none");
        QTest::newRow("url of a file") << told("file:///etc/passwd") << QByteArray("none");
    }
    void theAddressIsFoundInTheAnswer()
    {
        QFETCH(QByteArray, body);
        QTEST(address(OnlineBench::ok(body)), "address");
        QVERIFY(m_bench->console.take().isEmpty());
    }

    void theStatusIsNotLookedAt()
    {
        QCOMPARE(address(OnlineBench::ok("http://cdn.test/a.mp3", 500)), "http://cdn.test/a.mp3");
    }

    void aFailedQuestionLeadsToTheAPI()
    {
        QCOMPARE(address(OnlineBench::failed(u"断了"_s)), ownAddress);
        QCOMPARE(m_bench->console.take(), QStringList{u"Failed to get play URL: 断了"_s});
    }

    void theFallbackIsOfTheEndpointOfTheMoment()
    {
        auto task = service().getPlayUrl(OnlineBench::song(), u"flac"_s);
        m_bench->api.setBaseURL(u"http://new.test"_s);
        const auto url = m_bench->answered(std::move(task), OnlineBench::ok(""));
        QVERIFY(url && *url);
        QCOMPARE((*url)->toEncoded(), "http://new.test/api/?source=kuwo&id=7&type=url&br=flac");
    }

    void withoutAnAddressThereIsNothing()
    {
        m_bench->api.setBaseURL(u"http://[::1"_s);
        const auto url = await(service().getPlayUrl(OnlineBench::song()));
        QVERIFY(url && !*url);
        const auto lines = await(service().getLyrics(OnlineBench::song()));
        QVERIFY(lines && lines->isEmpty());
        QVERIFY(!service().getCoverUrl(OnlineBench::song()));
        QVERIFY(m_bench->web().sent.isEmpty());
    }

    void lyricsAreParsed()
    {
        auto task = service().getLyrics(OnlineBench::song());
        QCOMPARE(m_bench->web().sent.constFirst().url.toEncoded(),
                 "http://music.test/api/?source=kuwo&id=7&type=lrc");
        const auto lines =
            m_bench->answered(std::move(task), OnlineBench::ok("[00:01.50]第一行\n[00:03.00]第二行\n", 404));
        QVERIFY(lines);
        QCOMPARE(lines->size(), 2);
        QCOMPARE(lines->at(0).timeMs, 1500);
        QCOMPARE(lines->at(1).text, u"第二行"_s);
        QCOMPARE(m_bench->console.take(), QStringList());
    }

    void lyricsThatAreNoTextAreNone_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no UTF-8") << QByteArray("[00:01.00]\xff\xfe\n[00:02.00]b");
        QTest::newRow("in the middle of a character") << QByteArray("[00:01.00]雨").chopped(1);
    }
    void lyricsThatAreNoTextAreNone()
    {
        QFETCH(QByteArray, body);
        const auto lines = m_bench->answered(service().getLyrics(OnlineBench::song()), OnlineBench::ok(body));
        QVERIFY(lines && lines->isEmpty());
    }

    void aFailedQuestionForLyricsIsLogged()
    {
        const auto lines =
            m_bench->answered(service().getLyrics(OnlineBench::song()), OnlineBench::failed(u"断了"_s));
        QVERIFY(lines && lines->isEmpty());
        QCOMPARE(m_bench->console.take(), QStringList{u"Failed to get lyrics: 断了"_s});
    }

    void theCoverIsTheAPIItself()
    {
        QCOMPARE(service().getCoverUrl(OnlineBench::song())->toEncoded(),
                 "http://music.test/api/?source=kuwo&id=7&type=pic");
        QVERIFY(m_bench->web().sent.isEmpty());
    }

    void aServiceThatGoesEndsItsLookups()
    {
        auto url = service().getPlayUrl(OnlineBench::song());
        auto lyrics = service().getLyrics(OnlineBench::song());
        m_bench->service.reset();
        QVERIFY(m_bench->web().pending.empty());
        QVERIFY(await(std::move(url)));
        const auto lines = await(std::move(lyrics));
        QVERIFY(lines && lines->isEmpty());
        QCOMPARE(m_bench->console.take(), QStringList());
    }
};

QTEST_GUILESS_MAIN(OnlineLookupsTest)
#include "tst_online_lookups.moc"
