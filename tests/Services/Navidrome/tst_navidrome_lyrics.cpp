// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Navidrome/NavidromeFixture.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString byId = u"getLyricsBySongId.view"_s;
const QString byTitle = u"getLyrics.view"_s;

Song songOf(const NavidromeConfig &config, const QString &serverId)
{
    SongFields fields;
    fields.id = u"navidrome_"_s + config.uuidText() + u'_' + serverId;
    fields.title = u"夜曲 & 雨"_s;
    fields.artist = u"周杰伦"_s;
    return Song(fields);
}

} // namespace

class TestNavidromeLyrics : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<NavidromeFixture> m_fixture;
    NavidromeConfig m_config;

    NavidromeService &service() { return m_fixture->service(); }
    /// Nothing at all when the request does not end.
    std::optional<std::optional<QString>> lyrics(const QString &serverId = u"1"_s)
    {
        return m_fixture->serve(service().lyrics(songOf(m_config, serverId)));
    }
    void compareLyrics(const std::optional<QString> &expected)
    {
        const auto found = lyrics();
        QVERIFY(found);
        QCOMPARE(*found, expected);
    }

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<NavidromeFixture>();
        m_config = m_fixture->makeConfig();
        m_fixture->store({m_config});
        m_fixture->start();
    }
    void cleanup() { m_fixture.reset(); }

    void theyAreAskedForByTheIdFirst()
    {
        m_fixture->addAnswer(byId, webAnswer(lyricsAnswer("[00:01.00]词")));
        const auto found = lyrics(u"a_b/c"_s);
        QVERIFY(found);
        QCOMPARE(*found, u"[00:01.00]词"_s);
        QCOMPARE(m_fixture->askedEndpoints(), QStringList{byId});
        QVERIFY(
            m_fixture->web().sent.constLast().url.toEncoded().endsWith("&c=TarnovaPlayer&id=a_b%2Fc&f=json"));
    }

    void anEmptyTextIsAnAnswerToo()
    {
        m_fixture->addAnswer(byId, webAnswer(lyricsAnswer("")));
        m_fixture->addAnswer(byTitle, webAnswer(lyricsAnswer("词")));
        compareLyrics(QString(u""_s));
        QCOMPARE(m_fixture->askedEndpoints(), QStringList{byId});
    }

    void withoutThemTheyAreAskedForByArtistAndTitle_data()
    {
        QTest::addColumn<MadeAnswer>("answer");
        const auto row = [](const char *name, const FakeHttpClient::Result &answer) {
            QTest::newRow(name) << MadeAnswer{answer};
        };
        row("a server that does not know the request", webAnswer("not found", 404));
        row("a fault of the server", webAnswer({}, 500));
        row("refused", webAnswer(subsonicRefusal("no such request")));
        row("no lyrics", webAnswer(subsonicAnswer()));
        row("no text", webAnswer(subsonicAnswer(R"(,"lyrics":{"artist":"a"})")));
        row("null", webAnswer(subsonicAnswer(R"(,"lyrics":{"value":null})")));
        row("another shape",
            webAnswer(subsonicAnswer(R"(,"lyricsList":{"structuredLyrics":[{"line":[{"value":"x"}]}]})")));
        row("a number", webAnswer(subsonicAnswer(R"(,"lyrics":{"value":7})")));
        row("a page", webAnswer("<html></html>"));
        row("nobody there", noAnswer(u"连接被拒绝"_s));
    }
    void withoutThemTheyAreAskedForByArtistAndTitle()
    {
        QFETCH(const MadeAnswer, answer);
        m_fixture->addAnswer(byId, answer.result);
        m_fixture->addAnswer(byTitle, webAnswer(lyricsAnswer("词")));
        compareLyrics(u"词"_s);
        QCOMPARE(m_fixture->askedEndpoints(), (QStringList{byId, byTitle}));
        QVERIFY(m_fixture->web().sent.constLast().url.toEncoded().endsWith(
            "&c=TarnovaPlayer&artist=%E5%91%A8%E6%9D%B0%E4%BC%A6&title=%E5%A4%9C%E6%9B%B2%20%26%20%E9%9B%A8"
            "&f=json"));
        QVERIFY(!service().error());

        m_fixture->addAnswer(byTitle, answer.result);
        compareLyrics(std::nullopt);
        QVERIFY(!service().error());
    }

    void aSongAsksItsOwnServerWhileAnotherIsConnected()
    {
        const NavidromeConfig other = m_fixture->makeConfig(u"other"_s);
        m_fixture->addAnswer(u"ping.view"_s, webAnswer(subsonicAnswer()));
        QVERIFY(m_fixture->serve(service().connectTo(other)));
        QVERIFY(service().isConnected());
        m_fixture->addAnswer(byId, webAnswer(lyricsAnswer("词")));
        compareLyrics(u"词"_s);
        QCOMPARE(m_fixture->web().sent.constLast().url.host(), u"home.test"_s);
    }

    void aSongOfADeletedServerHasNone()
    {
        QVERIFY(await(service().deleteConfig(m_config)));
        compareLyrics(std::nullopt);
        QVERIFY(m_fixture->web().sent.isEmpty());
        QVERIFY(!service().error());
    }

    void aSongWhosePasswordIsNotToldHasNone()
    {
        m_fixture->machine().secrets().refuseAll(SecretStatus::interactionNotAllowed);
        compareLyrics(std::nullopt);
        QVERIFY(m_fixture->web().sent.isEmpty());
        QVERIFY(!service().error());
    }

    void aSongOfAServerWithoutAnAddressHasNone()
    {
        m_config.serverURL = u"nowhere"_s;
        m_fixture->store({m_config});
        m_fixture->start();
        compareLyrics(std::nullopt);
        QVERIFY(m_fixture->web().sent.isEmpty());
        QVERIFY(!service().error());
    }

    void aSongOfAnotherKindHasNone()
    {
        SongFields fields;
        fields.id = u"webdav_"_s + m_config.uuidText() + u"_1"_s;
        const auto found = m_fixture->serve(service().lyrics(Song(fields)));
        QVERIFY(found);
        QVERIFY(!*found);
        QVERIFY(m_fixture->web().sent.isEmpty());
    }

    void aServiceThatGoesAnswersNothing()
    {
        auto asking = service().lyrics(songOf(m_config, u"1"_s));
        QVERIFY(m_fixture->waitForPending(1));
        m_fixture->stop();
        const auto found = await(std::move(asking));
        QVERIFY(found);
        QVERIFY(!*found);
        QCOMPARE(m_fixture->askedEndpoints(), QStringList{byId});
    }
};

QTEST_GUILESS_MAIN(TestNavidromeLyrics)
#include "tst_navidrome_lyrics.moc"
