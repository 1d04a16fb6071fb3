// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/TestPlatform.h"
#include "Services/APIConfigService.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString key = u"api_base_url"_s;

QByteArray encoded(const std::optional<QUrl> &url)
{
    return url ? url->toEncoded() : QByteArray("none");
}

} // namespace

class APIConfigServiceTest : public QObject
{
    Q_OBJECT

private:
    TestPlatform m_machine;
    std::unique_ptr<APIConfigService> m_api;

private Q_SLOTS:
    void init()
    {
        m_machine.preferences().remove(key);
        m_api = std::make_unique<APIConfigService>(m_machine.platform);
        m_api->setBaseURL(u"https://api.test"_s);
    }

    void theDefaultStandsUntilAnAddressIsStored()
    {
        m_machine.preferences().remove(key);
        const APIConfigService fresh(m_machine.platform);
        QCOMPARE(fresh.baseURL(), APIConfigService::defaultBaseURL);
        QVERIFY(APIConfigService::isValidURL(fresh.baseURL()));
        QVERIFY(fresh.baseURL().startsWith("https://"_L1));
        QVERIFY(!m_machine.preferences().contains(key));
    }

    void aChangeIsWrittenAtOnceAndToldOnce()
    {
        const QSignalSpy told(m_api.get(), &APIConfigService::baseURLChanged);
        m_api->setBaseURL(u"http://other.test/"_s);
        QCOMPARE(m_machine.preferences().stringValue(key), std::optional(u"http://other.test/"_s));
        m_api->setBaseURL(u"http://other.test/"_s);
        QCOMPARE(told.size(), 1);
        QCOMPARE(APIConfigService(m_machine.platform).baseURL(), u"http://other.test/"_s);
    }

    void theDefaultCanBeBroughtBack()
    {
        m_api->resetToDefault();
        QCOMPARE(m_api->baseURL(), APIConfigService::defaultBaseURL);
        QCOMPARE(m_machine.preferences().stringValue(key), std::optional(APIConfigService::defaultBaseURL));
    }

    void anEmptyStoredAddressIsNoMissingOne()
    {
        m_machine.preferences().setString(key, QString());
        QCOMPARE(APIConfigService(m_machine.platform).baseURL(), QString());
    }

    void theEndpointIsTheSameWithAndWithoutASlash()
    {
        QCOMPARE(m_api->apiEndpoint(), u"https://api.test/api/"_s);
        m_api->setBaseURL(u"https://api.test/"_s);
        QCOMPARE(m_api->apiEndpoint(), u"https://api.test/api/"_s);
        m_api->setBaseURL(u"https://api.test/music"_s);
        QCOMPARE(m_api->apiEndpoint(), u"https://api.test/music/api/"_s);
    }

    void isValidURL_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::newRow("https") << u"https://api.test"_s << true;
        QTest::newRow("http with port and path") << u"http://192.168.1.2:8080/music/"_s << true;
        QTest::newRow("numbers of the newer kind") << u"http://[::1]:80"_s << true;
        QTest::newRow("Chinese host") << u"https://音乐.example"_s << true;
        QTest::newRow("scheme in capitals") << u"HTTP://api.test"_s << false;
        QTest::newRow("scheme with one capital") << u"Https://api.test"_s << false;
        QTest::newRow("ftp") << u"ftp://api.test"_s << false;
        QTest::newRow("file") << u"file:///etc/passwd"_s << false;
        QTest::newRow("longer scheme") << u"httpsx://api.test"_s << false;
        QTest::newRow("no scheme") << u"api.test"_s << false;
        QTest::newRow("the newer scheme alone") << u"https"_s << false;
        QTest::newRow("scheme alone") << u"http"_s << false;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("blank before") << u" http://api.test"_s << false;
        QTest::newRow("blank in the host") << u"http://api test"_s << false;
        QTest::newRow("open bracket") << u"http://[::1"_s << false;
        QTest::newRow("port too high") << u"http://api.test:99999"_s << false;
        QTest::newRow("line break") << u"http://api.test\n"_s << false;
    }
    void isValidURL()
    {
        QFETCH(QString, text);
        QTEST(APIConfigService::isValidURL(text), "valid");
    }

    void addressesHaveTheirForms()
    {
        QCOMPARE(encoded(m_api->buildURL(u"qq"_s, u"007"_s, u"url"_s, {{u"br"_s, u"flac"_s}})),
                 "https://api.test/api/?source=qq&id=007&type=url&br=flac");
        QCOMPARE(encoded(m_api->buildURL(u"qq"_s, u"007"_s, u"pic"_s)),
                 "https://api.test/api/?source=qq&id=007&type=pic");
        QCOMPARE(encoded(m_api->buildSearchURL(u"kuwo"_s, u"rain"_s, 20)),
                 "https://api.test/api/?source=kuwo&type=search&keyword=rain&limit=20");
        QCOMPARE(encoded(m_api->buildAggregateSearchURL(u"rain"_s, 100)),
                 "https://api.test/api/?type=aggregateSearch&keyword=rain&limit=100");
        QCOMPARE(encoded(m_api->buildTopListsURL(u"netease"_s)),
                 "https://api.test/api/?source=netease&type=toplists");
        QCOMPARE(encoded(m_api->buildTopListSongsURL(u"netease"_s, u"19"_s)),
                 "https://api.test/api/?source=netease&id=19&type=toplist");
    }

    void addressesOfASong()
    {
        OnlineSong song;
        song.id = u"42"_s;
        song.platform = MusicPlatform::qq;
        QCOMPARE(encoded(m_api->getPlayUrl(song, APIConfigService::defaultQuality)),
                 "https://api.test/api/?source=qq&id=42&type=url&br=320k");
        QCOMPARE(encoded(m_api->getCoverUrl(song)), "https://api.test/api/?source=qq&id=42&type=pic");
        QCOMPARE(encoded(m_api->getLyricUrl(song)), "https://api.test/api/?source=qq&id=42&type=lrc");
        // A song that is listed already follows a new endpoint.
        m_api->setBaseURL(u"http://new.test/"_s);
        QCOMPARE(encoded(m_api->getCoverUrl(song)), "http://new.test/api/?source=qq&id=42&type=pic");
    }

    void keywordsAreEscaped_data()
    {
        QTest::addColumn<QString>("keyword");
        QTest::addColumn<QByteArray>("sent");
        const QString unescaped = u"AZaz09-._~!$&'()*+,;=:@/?"_s;
        QTest::newRow("what a query allows") << unescaped << unescaped.toLatin1();
        QTest::newRow("blank") << u"a b"_s << QByteArray("a%20b");
        QTest::newRow("Chinese") << u"晚风"_s << QByteArray("%E6%99%9A%E9%A3%8E");
        QTest::newRow("emoji") << u"🎵"_s << QByteArray("%F0%9F%8E%B5");
        QTest::newRow("accent, not joined") << u"e\u0301"_s << QByteArray("e%CC%81");
        QTest::newRow("the rest of ASCII")
            << u"#%[]{}<>\"\\^`|"_s << QByteArray("%23%25%5B%5D%7B%7D%3C%3E%22%5C%5E%60%7C");
        QTest::newRow("escapes, as typed") << u"%2B%41%zz"_s << QByteArray("%252B%2541%25zz");
        QTest::newRow("line breaks and zero") << u"a\r\n\t"_s + QChar(0) << QByteArray("a%0D%0A%09%00");
        QTest::newRow("blanks at the ends") << u" a "_s << QByteArray("%20a%20");
    }
    void keywordsAreEscaped()
    {
        QFETCH(QString, keyword);
        QFETCH(QByteArray, sent);
        QCOMPARE(encoded(m_api->buildSearchURL(u"qq"_s, keyword, 5)),
                 "https://api.test/api/?source=qq&type=search&keyword=" + sent + "&limit=5");
        QCOMPARE(encoded(m_api->buildAggregateSearchURL(keyword, 5)),
                 "https://api.test/api/?type=aggregateSearch&keyword=" + sent + "&limit=5");
    }

    void aKeywordWithoutAUtf8FormGoesInAsItIs()
    {
        const QString keyword = u"a"_s + QChar(0xD800) + u"b"_s;
        const std::optional<QUrl> url = m_api->buildSearchURL(u"qq"_s, keyword, 5);
        QVERIFY(url);
        QVERIFY(url->toEncoded().startsWith("https://api.test/api/?source=qq&type=search&keyword=a"));
        QVERIFY(url->toEncoded().endsWith("b&limit=5"));
    }

    void idsGoInAsTheyAre_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("marks") << u"a+b/c?d=e:f@g,h;i!$'()*"_s << QByteArray("a+b/c?d=e:f@g,h;i!$'()*");
        QTest::newRow("escaped already") << u"a%2Bb%23%25"_s << QByteArray("a%2Bb%23%25");
        QTest::newRow("more of the query") << u"1&br=x"_s << QByteArray("1&br=x");
        // No address can hold these: they are escaped, and the server gets them whole.
        QTest::newRow("blank") << u"a b"_s << QByteArray("a%20b");
        QTest::newRow("Chinese") << u"歌"_s << QByteArray("%E6%AD%8C");
        QTest::newRow("quotes") << u"\"<>\\^`{|}"_s << QByteArray("%22%3C%3E%5C%5E%60%7B%7C%7D");
        QTest::newRow("a percent sign alone") << u"100%"_s << QByteArray("100%25");
        QTest::newRow("line break") << u"a\nb"_s << QByteArray("a%0Ab");
        QTest::newRow("empty") << QString() << QByteArray();
    }
    void idsGoInAsTheyAre()
    {
        QFETCH(QString, id);
        QFETCH(QByteArray, sent);
        QCOMPARE(encoded(m_api->buildURL(u"qq"_s, id, u"url"_s, {{u"br"_s, u"320k"_s}})),
                 "https://api.test/api/?source=qq&id=" + sent + "&type=url&br=320k");
        QCOMPARE(encoded(m_api->buildURL(u"qq"_s, u"1"_s, u"url"_s, {{u"br"_s, id}})),
                 "https://api.test/api/?source=qq&id=1&type=url&br=" + sent);
        QCOMPARE(encoded(m_api->buildTopListSongsURL(u"qq"_s, id)),
                 "https://api.test/api/?source=qq&id=" + sent + "&type=toplist");
    }

    void thereIsNoAddressWhereTheTextIsNone_data()
    {
        QTest::addColumn<QString>("baseURL");
        QTest::newRow("open bracket") << u"http://[::1"_s;
        QTest::newRow("blank in the host") << u"http://api test"_s;
        QTest::newRow("port too high") << u"http://api.test:99999"_s;
        QTest::newRow("blank before") << u" http://api.test"_s;
    }
    void thereIsNoAddressWhereTheTextIsNone()
    {
        QFETCH(QString, baseURL);
        m_api->setBaseURL(baseURL);
        QVERIFY(!m_api->buildURL(u"qq"_s, u"1"_s, u"url"_s));
        QVERIFY(!m_api->buildSearchURL(u"qq"_s, u"a"_s, 1));
        QVERIFY(!m_api->buildAggregateSearchURL(u"a"_s, 1));
        QVERIFY(!m_api->buildTopListsURL(u"qq"_s));
        QVERIFY(!m_api->buildTopListSongsURL(u"qq"_s, u"1"_s));
        QVERIFY(!m_api->getPlayUrl({}, u"320k"_s));
        QVERIFY(!m_api->getCoverUrl({}));
        QVERIFY(!m_api->getLyricUrl({}));
    }
};

QTEST_GUILESS_MAIN(APIConfigServiceTest)
#include "tst_api_config_service.moc"
