// SPDX-License-Identifier: GPL-3.0-or-later
// Listings, searches, and what comes late.
#include "Services/Navidrome/NavidromeFixture.h"

#include <QSet>
#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString randomSongs = u"getRandomSongs.view"_s;
const QString search3 = u"search3.view"_s;

QStringList manyTitles(int count)
{
    QStringList titles;
    for (int i = 0; i < count; ++i)
        titles.append(u"歌 "_s + QString::number(i));
    return titles;
}

} // namespace

class TestNavidromeSongs : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<NavidromeFixture> m_fixture;
    NavidromeConfig m_config;

    NavidromeService &service() { return m_fixture->service(); }
    FakeHttpClient &web() { return m_fixture->web(); }
    bool load() { return m_fixture->serve(service().loadDefaultSongs()).has_value(); }
    bool search(const QString &query) { return m_fixture->serve(service().searchSongs(query)).has_value(); }

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<NavidromeFixture>();
        m_config = m_fixture->startConnected();
        web().sent.clear();
    }
    void cleanup() { m_fixture.reset(); }

    void randomSongsAreAskedForAsTold()
    {
        m_fixture->addAnswer(randomSongs, webAnswer(randomSongsAnswer({})));
        QVERIFY(load());
        QCOMPARE(m_fixture->askedEndpoints(), QStringList{randomSongs});
        const QString query = web().sent.constLast().url.query();
        QVERIFY(query.startsWith(u"u=listener&t="_s));
        QVERIFY(query.endsWith(u"&v=1.16.1&c=TarnovaPlayer&size=200&f=json"_s));
        QCOMPARE(web().sent.constLast().idleTimeout, 30s);
        QCOMPARE(web().sent.constLast().totalTimeout, 60s);
        QVERIFY(m_fixture->serve(service().loadDefaultSongs(7)));
        QCOMPARE(m_fixture->lastQuery().queryItemValue(u"size"_s), u"7"_s);
    }

    void aSearchIsAskedForAsTold()
    {
        m_fixture->addAnswer(search3, webAnswer(search3Answer({})));
        QVERIFY(search(u" \n夜曲 + 周\t"_s));
        QVERIFY(web().sent.constLast().url.toEncoded().endsWith(
            "&c=TarnovaPlayer&query=%E5%A4%9C%E6%9B%B2%20%2B%20%E5%91%A8&songCount=120&f=json"));
        QVERIFY(m_fixture->serve(service().searchSongs(u"x"_s, 5)));
        QCOMPARE(m_fixture->lastQuery().queryItemValue(u"songCount"_s), u"5"_s);
    }

    void aListingReplacesTheSongs()
    {
        m_fixture->machine().clock().setNow(QDateTime(QDate(2024, 5, 1), QTime(12, 0), Qt::UTC));
        m_fixture->addAnswer(randomSongs, webAnswer(randomSongsAnswer({u"一"_s, u"二"_s})));
        m_fixture->addAnswer(search3, webAnswer(search3Answer({u"三"_s})));
        QVERIFY(load());
        QCOMPARE(m_fixture->titles(), (QStringList{u"一"_s, u"二"_s}));
        const Song song = service().songs().constFirst();
        QCOMPARE(song.id(), u"navidrome_"_s + m_config.uuidText() + u"_id-一"_s);
        QCOMPARE(song.dateAdded(), m_fixture->machine().clock().now());
        QCOMPARE(song.duration(), 180.0);
        QVERIFY(song.assetURL()->toString().startsWith(u"http://home.test/rest/stream.view?u=listener&t="_s));
        QVERIFY(song.artworkURL()->toString().startsWith(u"http://home.test/rest/getCoverArt.view?"_s));
        QVERIFY(search(u"三"_s));
        QCOMPARE(m_fixture->titles(), QStringList{u"三"_s});
        QVERIFY(!service().error());
    }

    void aListingWithNothingEmptiesTheSongs_data()
    {
        QTest::addColumn<QByteArray>("members");
        QTest::newRow("no list") << QByteArray();
        QTest::newRow("an empty list")
            << QByteArray(R"(,"randomSongs":{"song":[]},"searchResult3":{"song":[]})");
        QTest::newRow("no songs") << QByteArray(R"(,"randomSongs":{},"searchResult3":{})");
    }
    void aListingWithNothingEmptiesTheSongs()
    {
        QFETCH(const QByteArray, members);
        m_fixture->addAnswer(randomSongs, webAnswer(randomSongsAnswer({u"一"_s})));
        m_fixture->addAnswer(search3, webAnswer(subsonicAnswer(members)));
        QVERIFY(load());
        QVERIFY(search(u"x"_s));
        QVERIFY(service().songs().isEmpty());
        QVERIFY(!service().error());
        QVERIFY(load());
        m_fixture->addAnswer(randomSongs, webAnswer(subsonicAnswer(members)));
        QVERIFY(load());
        QVERIFY(service().songs().isEmpty());
    }

    void theSameSongsAgainHaveNewAddresses()
    {
        m_fixture->addAnswer(randomSongs, webAnswer(randomSongsAnswer({u"一"_s})));
        QVERIFY(load());
        const std::optional<QUrl> before = service().songs().constFirst().assetURL();
        QSignalSpy changes(&service(), &NavidromeService::songsChanged);
        m_fixture->machine().random().indexes = QList<int>(100, 5);
        QVERIFY(load());
        QCOMPARE(changes.count(), 1);
        QVERIFY(service().songs().constFirst().assetURL() != before);
    }

    void everyAddressOfAListingHasASignatureOfItsOwn()
    {
        // So many different salts: that of the request, and two for each song.
        QList<int> picks;
        for (int salt = 0; salt < 5; ++salt)
            picks += QList<int>(12, salt);
        m_fixture->machine().random().indexes = picks;
        m_fixture->addAnswer(randomSongs, webAnswer(randomSongsAnswer({u"一"_s, u"二"_s})));
        QVERIFY(load());
        QSet<QString> salts{m_fixture->lastQuery().queryItemValue(u"s"_s)};
        QSet<QString> tokens{m_fixture->lastQuery().queryItemValue(u"t"_s)};
        for (const Song &song : service().songs()) {
            for (const std::optional<QUrl> &url : {song.artworkURL(), song.assetURL()}) {
                salts.insert(QUrlQuery(*url).queryItemValue(u"s"_s));
                tokens.insert(QUrlQuery(*url).queryItemValue(u"t"_s));
            }
        }
        QCOMPARE(salts.size(), 5);
        QCOMPARE(tokens.size(), 5);
    }

    void aFailureIsToldAndLeavesTheSongs_data()
    {
        QTest::addColumn<bool>("isSearch");
        QTest::addColumn<MadeAnswer>("answer");
        QTest::addColumn<QString>("message");
        for (const bool isSearch : {false, true}) {
            const auto row = [isSearch](const char *name, const FakeHttpClient::Result &answer,
                                        const QString &message) {
                QTest::addRow("%s: %s", isSearch ? "search" : "random songs", name)
                    << isSearch << MadeAnswer{answer} << message;
            };
            const QString badStatus = isSearch ? u"搜索失败"_s : u"拉取歌曲失败"_s;
            const QString unreadable = u"无法识别服务器的回答"_s;
            const QByteArray list = isSearch ? "searchResult3" : "randomSongs";
            const auto listOf = [list](const QByteArray &song) {
                return webAnswer(subsonicAnswer(",\"" + list + "\":{\"song\":" + song + "}"));
            };
            row("a fault of the server", webAnswer(randomSongsAnswer({u"x"_s}), 500), badStatus);
            row("not found", webAnswer("no", 404), badStatus);
            row("unauthorized", webAnswer({}, 401), badStatus);
            row("a status before 200", webAnswer({}, 199), badStatus);
            row("a status from 300", webAnswer({}, 300), badStatus);
            row("refused", webAnswer(subsonicRefusal("No such user")), u"No such user"_s);
            row("refused without a word", webAnswer(R"({"subsonic-response":{"status":"failed"}})"),
                u"请求失败"_s);
            row("empty", webAnswer({}), unreadable);
            row("a page", webAnswer("<!DOCTYPE html><title>登录</title>"), unreadable);
            row("no UTF-8", listOf("[{\"id\":\"1\",\"title\":\"\xff\"}]"), unreadable);
            row("an object in place of the list", listOf(R"({"id":"1","title":"t"})"), unreadable);
            row("a number as id", listOf(R"([{"id":"1","title":"t"},{"id":2,"title":"t"}])"), unreadable);
            row("null as title", listOf(R"([{"id":"1","title":null}])"), unreadable);
            row("part of a second", listOf(R"([{"id":"1","title":"t","duration":180.5}])"), unreadable);
            row("a text as duration", listOf(R"([{"id":"1","title":"t","duration":"180"}])"), unreadable);
            row("the connection breaks", noAnswer(u"连接中断，内容不完整"_s), u"连接中断，内容不完整"_s);
            row("silence", noAnswer(u"连接超时"_s, HttpError::Kind::timeout), u"连接超时"_s);
        }
    }
    void aFailureIsToldAndLeavesTheSongs()
    {
        QFETCH(const bool, isSearch);
        QFETCH(const MadeAnswer, answer);
        QFETCH(const QString, message);
        m_fixture->addAnswer(randomSongs, webAnswer(randomSongsAnswer({u"一"_s})));
        QVERIFY(load());
        m_fixture->addAnswer(isSearch ? search3 : randomSongs, answer.result);
        QVERIFY(isSearch ? search(u"x"_s) : load());
        QCOMPARE(service().error(), message);
        QCOMPARE(m_fixture->titles(), QStringList{u"一"_s});
        QVERIFY(!service().isSearching());
        QVERIFY(service().isConnected());
    }

    void aServerThatRepeatsTheAddressGivesNoSignatureAway()
    {
        auto loading = service().loadDefaultSongs();
        QVERIFY(m_fixture->waitForPending(1));
        const QUrl asked = web().sent.constLast().url;
        const QUrlQuery query(asked);
        web().answer(webAnswer(subsonicRefusal("no such request: " + asked.toEncoded())));
        QVERIFY(await(std::move(loading)));
        const QString error = service().errorText();
        QVERIFY2(error.startsWith(u"no such request: http://home.test/"_s), qPrintable(error));
        QVERIFY(!error.contains(query.queryItemValue(u"t"_s)));
        QVERIFY(!error.contains(query.queryItemValue(u"s"_s)));
    }

    void aListingClearsTheErrorWhenItBegins()
    {
        QVERIFY(load());
        QCOMPARE(service().error(), u"拉取歌曲失败"_s);
        auto loading = service().loadDefaultSongs();
        QVERIFY(m_fixture->waitForPending(1));
        QVERIFY(!service().error());
        QVERIFY(service().isSearching());
        web().answer(webAnswer(randomSongsAnswer({})));
        QVERIFY(await(std::move(loading)));
        QVERIFY(!service().isSearching());
    }

    void withoutAConnectionNothingIsAsked()
    {
        service().disconnectFromServer();
        QSignalSpy searching(&service(), &NavidromeService::isSearchingChanged);
        QVERIFY(load());
        QCOMPARE(service().error(), u"请先连接 Navidrome"_s);
        QVERIFY(search(u"x"_s));
        QCOMPARE(service().error(), u"请先连接 Navidrome"_s);
        QVERIFY(search(u" "_s));
        QVERIFY(web().sent.isEmpty());
        QCOMPARE(searching.count(), 0);
    }

    void withoutAPasswordNothingIsAsked()
    {
        m_fixture->addAnswer(randomSongs, webAnswer(randomSongsAnswer({u"一"_s})));
        QVERIFY(load());
        web().sent.clear();
        m_fixture->machine().secrets().refuseAll(SecretStatus::interactionNotAllowed);
        QVERIFY(load());
        QCOMPARE(service().error(), u"请先连接 Navidrome"_s);
        QVERIFY(search(u" "_s));
        QVERIFY(web().sent.isEmpty());
        QCOMPARE(m_fixture->titles(), QStringList{u"一"_s});
        QVERIFY(!service().isSearching());
    }

    void aQueryOfBlanksEmptiesTheSongsAndAsksNobody_data()
    {
        QTest::addColumn<QString>("query");
        QTest::newRow("nothing") << QString();
        QTest::newRow("blanks") << u" \t\r\n"_s;
        QTest::newRow("a wide blank") << u"\u3000"_s;
    }
    void aQueryOfBlanksEmptiesTheSongsAndAsksNobody()
    {
        QFETCH(const QString, query);
        m_fixture->addAnswer(randomSongs, webAnswer(randomSongsAnswer({u"一"_s})));
        QVERIFY(load());
        web().sent.clear();
        QVERIFY(search(query));
        QVERIFY(service().songs().isEmpty());
        QVERIFY(web().sent.isEmpty());
        QVERIFY(!service().isSearching());
    }

    void anOlderSearchIsGivenUp()
    {
        auto older = service().searchSongs(u"older"_s);
        QVERIFY(m_fixture->waitForPending(1));
        const std::shared_ptr<HttpTransfer> olderTransfer = web().sent.constFirst().transfer;
        auto newer = service().searchSongs(u"newer"_s);
        QVERIFY(olderTransfer->isCancelled());
        QVERIFY(await(std::move(older)));
        QTRY_COMPARE(web().sent.size(), 2);
        QVERIFY(service().isSearching());
        QVERIFY(!service().error());
        web().answer(webAnswer(search3Answer({u"新"_s})));
        QVERIFY(await(std::move(newer)));
        QCOMPARE(m_fixture->titles(), QStringList{u"新"_s});
        QVERIFY(!service().isSearching());
    }

    void anAnswerThatIsOnItsWayWhenANewerSearchIsAskedForChangesNothing()
    {
        auto older = service().searchSongs(u"older"_s);
        QVERIFY(m_fixture->waitForPending(1));
        web().answer(webAnswer(search3Answer({u"旧"_s})));
        auto newer = service().loadDefaultSongs();
        QVERIFY(await(std::move(older)));
        QVERIFY(service().songs().isEmpty());
        QVERIFY(m_fixture->waitForPending(1));
        QVERIFY(service().isSearching());
        web().answer(noAnswer(u"连接被拒绝"_s));
        QVERIFY(await(std::move(newer)));
        QVERIFY(service().songs().isEmpty());
        QCOMPARE(service().error(), u"连接被拒绝"_s);
    }

    void anAnswerThatIsBeingReadWhenANewerSearchIsAskedForChangesNothing()
    {
        // Long enough to be read by a worker.
        auto older = service().searchSongs(u"older"_s);
        QVERIFY(m_fixture->waitForPending(1));
        web().answer(webAnswer(search3Answer(manyTitles(5000))));
        QCoreApplication::processEvents();
        QVERIFY(service().songs().isEmpty());
        m_fixture->addAnswer(randomSongs, webAnswer(randomSongsAnswer({u"新"_s})));
        QVERIFY(load());
        QVERIFY(await(std::move(older)));
        QCOMPARE(m_fixture->titles(), QStringList{u"新"_s});
    }

    void aBlankSearchGivesUpAListing()
    {
        auto loading = service().loadDefaultSongs();
        QVERIFY(m_fixture->waitForPending(1));
        QVERIFY(search(u" "_s));
        QVERIFY(await(std::move(loading)));
        QVERIFY(service().songs().isEmpty());
        QVERIFY(!service().isSearching());
        QVERIFY(!service().error());
    }

    void disconnectingGivesUpAListing()
    {
        auto loading = service().loadDefaultSongs();
        QVERIFY(m_fixture->waitForPending(1));
        web().answer(webAnswer(randomSongsAnswer({u"一"_s})));
        service().disconnectFromServer();
        QVERIFY(!service().isSearching());
        QVERIFY(await(std::move(loading)));
        QVERIFY(service().songs().isEmpty());
        QVERIFY(!service().error());
    }

    void deletingTheServerGivesUpItsListing()
    {
        auto loading = service().loadDefaultSongs();
        QVERIFY(m_fixture->waitForPending(1));
        QVERIFY(await(service().deleteConfig(m_config)));
        QVERIFY(await(std::move(loading)));
        QVERIFY(!service().isSearching());
        QVERIFY(!service().error());
    }

    void anotherServerGivesUpTheListingOfTheOneBefore()
    {
        auto loading = service().loadDefaultSongs();
        QVERIFY(m_fixture->waitForPending(1));
        auto connecting = service().connectTo(m_fixture->makeConfig(u"other"_s));
        QVERIFY(m_fixture->waitForPending(2));
        QVERIFY(web().answer(u"other.test"_s, webAnswer(subsonicAnswer())));
        QVERIFY(await(std::move(connecting))->has_value());
        QVERIFY(await(std::move(loading)));
        QVERIFY(service().songs().isEmpty());
        QVERIFY(!service().isSearching());
        QVERIFY(!service().error());
    }

    void aListingThatIsAskedForByWhoHearsOfTheSongsRunsOn()
    {
        std::vector<QCoro::Task<void>> more;
        connect(&service(), &NavidromeService::songsChanged, this, [this, &more] {
            if (more.empty())
                more.push_back(service().searchSongs(u"x"_s));
        });
        auto loading = service().loadDefaultSongs();
        QVERIFY(m_fixture->waitForPending(1));
        web().answer(webAnswer(randomSongsAnswer({u"一"_s})));
        QVERIFY(await(std::move(loading)));
        QVERIFY(m_fixture->waitForPending(1));
        QVERIFY(service().isSearching());
        web().answer(webAnswer(search3Answer({u"二"_s})));
        QVERIFY(await(std::move(more.front())));
        QCOMPARE(m_fixture->titles(), QStringList{u"二"_s});
        QVERIFY(!service().isSearching());
    }

    void thousandsOfSongsComeInOrder()
    {
        m_fixture->addAnswer(randomSongs, webAnswer(randomSongsAnswer(manyTitles(5000))));
        QVERIFY(load());
        QCOMPARE(m_fixture->titles(), manyTitles(5000));
        QVERIFY(!service().isSearching());
    }

    void whatAnIdHoldsArrivesInTheAddresses_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"a_b", "a/b", "a#b?c", "100%41", "a b+c&d", "夜曲", "🎵", "'\"<>"})
            QTest::newRow(name) << QString::fromUtf8(name);
    }
    void whatAnIdHoldsArrivesInTheAddresses()
    {
        QFETCH(const QString, name);
        m_fixture->addAnswer(randomSongs, webAnswer(randomSongsAnswer({name})));
        QVERIFY(load());
        const Song song = service().songs().constFirst();
        QCOMPARE(song.title(), name);
        const auto idIn = [](const std::optional<QUrl> &url) {
            return QUrlQuery(*url).queryItemValue(u"id"_s, QUrl::FullyDecoded);
        };
        QCOMPARE(idIn(song.assetURL()), u"id-"_s + name);
        QCOMPARE(idIn(song.artworkURL()), u"cover-"_s + name);
    }
};

QTEST_GUILESS_MAIN(TestNavidromeSongs)
#include "tst_navidrome_songs.moc"
