// SPDX-License-Identifier: GPL-3.0-or-later
// The Navidrome service against a real server of the Subsonic API.
#include "EndToEnd/EverythingSaid.h"
#include "EndToEnd/SecretForms.h"
#include "Fakes/Await.h"
#include "Fakes/ConsoleLines.h"
#include "Fixtures/MadePicture.h"
#include "Services/Navidrome/LiveNavidrome.h"

#include <QImage>
#include <QLoggingCategory>
#include <QSet>
#include <QTest>
#include <QUrlQuery>

#include <cstdio>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString covered = u"夜航星"_s;
const QString lyrics = u"[00:01.00]第一句\n[00:02.50]第二句 & more\n"_s;
const QString wrongPasswordText = u"Wrong username or password."_s;

/// Titles with everything that a query can stumble over; the song of each is found by what stands behind it.
const QStringList &awkwardTitles()
{
    static const QStringList titles{u"1 + 1 = 2"_s,
                                    u"你 & 我"_s,
                                    u"100% 爱"_s,
                                    u"%41%2B"_s,
                                    u"为什么?"_s,
                                    u"#1 単曲"_s,
                                    u"a;b/c\\d"_s,
                                    u"\"引\" 'q'"_s,
                                    u"<标签> ~ ^`|"_s,
                                    u"😀 笑脸"_s,
                                    u"Ｆｕｌｌ　ｗｉｄｔｈ"_s,
                                    u"naïve é"_s,
                                    u"under_score *"_s,
                                    u"[00:01.00]行"_s};
    return titles;
}

/// The values of a query item in everything that the server was asked.
QStringList itemsOf(const QList<QByteArray> &requests, const QString &name)
{
    QStringList values;
    for (const QByteArray &request : requests) {
        const qsizetype query = request.indexOf('?');
        if (query >= 0)
            values += QUrlQuery(QString::fromUtf8(request.sliced(query + 1))).allQueryItemValues(name);
    }
    return values;
}

QStringList endpointsOf(const QList<QByteArray> &requests)
{
    QStringList endpoints;
    for (const QByteArray &request : requests) {
        const QByteArray path = request.first(request.indexOf('?'));
        endpoints.append(QString::fromUtf8(path.sliced(path.lastIndexOf('/') + 1)));
    }
    return endpoints;
}

} // namespace

class TestNavidromeServers : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void whateverIsSaidIsSearched();
    void aRightPasswordPassesTheTest();
    void aWrongPasswordGivesTheServersMessage();
    void aServerThatKnowsNoTokensSaysSoItself();
    void connectsWithTheStoredPassword();
    void aStoredPasswordThatIsWrongDoesNotConnect();
    void theBaseOfTheApi_data();
    void theBaseOfTheApi();

    void listsRandomSongs();
    void listsNoMoreThanAskedFor();
    void findsChineseTitles();
    void findsAwkwardTitles_data();
    void findsAwkwardTitles();
    void aQueryOfBlanksAsksNothing();

    void aCoverDecodesAtTheSizeAskedFor();
    void anAddressGivesTheSound();
    void lyricsFallBackToArtistAndTitle();
    void lyricsComeFromTheSongsOwnServer();
    void aDeletedServerGivesNoLyrics();

    void aServerThatIsGoneKeepsTheSongs();
    void aServerThatCameBackKnowsTheSongs();
    void aPasswordThatNoLongerHoldsKeepsTheSongs();
    void everyAddressIsSignedAfresh();

private:
    SubsonicMusic m_music;
    SubsonicServer m_server;
    SubsonicServer m_behindProxy;
    /// What the tests before have asked.
    qsizetype m_asked = 0;
    std::unique_ptr<EverythingSaid> m_said;
    std::unique_ptr<ConsoleLines> m_console;
    std::unique_ptr<LiveNavidrome> m_live;
};

void TestNavidromeServers::initTestCase()
{
    QVERIFY(m_music.add(u"夜航星.mp3"_s, {.title = covered,
                                          .artist = u"不才/甲"_s,
                                          .album = u"不才作品集"_s,
                                          .track = u"7/12"_s,
                                          .cover = madeJpeg(Qt::red, 600),
                                          .seconds = 3}));
    QVERIFY(m_music.addLyrics(u"夜航星.mp3"_s, lyrics));
    QVERIFY(m_music.add(u"small.flac"_s, {.title = u"夜 small"_s, .cover = madePng(Qt::blue, 64)}));
    for (qsizetype i = 0; i < awkwardTitles().size(); ++i) {
        const QString name = u"awkward %1.mp3"_s.arg(i);
        QVERIFY(m_music.add(name, {.title = awkwardTitles()[i], .artist = u"A & B + C"_s}));
        QVERIFY(m_music.addLyrics(name, u"歌词 %1"_s.arg(i)));
    }
    QVERIFY(m_server.start(m_music.path(), LiveNavidrome::user(), LiveNavidrome::password()));
}

void TestNavidromeServers::init()
{
    m_asked = m_server.requests().size();
    m_said = std::make_unique<EverythingSaid>();
    m_console = std::make_unique<ConsoleLines>();
    m_live = std::make_unique<LiveNavidrome>();
}

/// Nothing that was said, shown or stored may hold what opens the server.
void TestNavidromeServers::cleanup()
{
    const QList<QByteArray> requests = m_server.requests().sliced(m_asked);
    QStringList secrets{LiveNavidrome::password()};
    secrets += itemsOf(requests, u"t"_s) + itemsOf(requests, u"s"_s);
    for (const Song &song : m_live->service().songs()) {
        const QUrlQuery query(song.assetURL().value_or(QUrl()));
        secrets += {query.queryItemValue(u"t"_s), query.queryItemValue(u"s"_s)};
    }
    const QByteArray said = m_said->text() + m_console->take().join(u'\n').toUtf8() +
                            m_live->service().errorText().toUtf8() + m_live->storedConfigs();
    m_live.reset();
    m_console.reset();
    m_said.reset();
    for (const QString &secret : std::as_const(secrets))
        QCOMPARE(SecretForms(secret).in(said), QStringList());
    // The password itself never goes over the wire either.
    QCOMPARE(SecretForms(LiveNavidrome::password()).in(requests.join('\n')), QStringList());
}

void TestNavidromeServers::cleanupTestCase()
{
    m_server.stop();
    m_behindProxy.stop();
}

void TestNavidromeServers::whateverIsSaidIsSearched()
{
    static const QLoggingCategory category("cadorel.test.said", QtCriticalMsg);
    qCDebug(category) << "a diagnostic";
    std::fputs("a library\n", stderr);
    QVERIFY(m_said->text().contains("a diagnostic"));
    QVERIFY(m_said->text().contains("a library"));
}

// MARK: connections

void TestNavidromeServers::aRightPasswordPassesTheTest()
{
    QCOMPARE(m_live->test(LiveNavidrome::config(m_server)), QString());
    QVERIFY(!m_live->service().isTesting());
    QVERIFY(!m_live->service().isConnected());
}

void TestNavidromeServers::aWrongPasswordGivesTheServersMessage()
{
    const NavidromeConfig config = LiveNavidrome::config(m_server);
    QCOMPARE(m_live->test(config, u"wrong"_s), wrongPasswordText);
    NavidromeConfig stranger = config;
    stranger.username = u"stranger"_s;
    QCOMPARE(m_live->test(stranger), wrongPasswordText);
    QVERIFY(!m_live->service().isTesting());
}

void TestNavidromeServers::aServerThatKnowsNoTokensSaysSoItself()
{
    SubsonicServer plain;
    QVERIFY(plain.start(m_music.path(), LiveNavidrome::user(), LiveNavidrome::password(),
                        {.knowsTokens = false}));
    const QString message = u"A required parameter is missing."_s;
    QCOMPARE(m_live->test(LiveNavidrome::config(plain)), message);
    QCOMPARE(m_live->connectTo(LiveNavidrome::config(plain)), message);
    QCOMPARE(m_live->service().errorText(), message);
    QVERIFY(!m_live->service().isConnected());
    QCOMPARE(SecretForms(LiveNavidrome::password()).in(plain.requests().join('\n')), QStringList());
}

void TestNavidromeServers::connectsWithTheStoredPassword()
{
    const NavidromeConfig config = LiveNavidrome::config(m_server);
    QCOMPARE(m_live->connectTo(config), QString());
    QVERIFY(m_live->service().isConnected());
    QVERIFY(m_live->service().currentConfig() == config);
    QVERIFY(!m_live->service().error());
    m_live->service().disconnectFromServer();
    QVERIFY(!m_live->service().isConnected());
    QVERIFY(await(m_live->service().loadDefaultSongs()));
    QCOMPARE(m_live->service().errorText(), u"请先连接 Navidrome"_s);
}

void TestNavidromeServers::aStoredPasswordThatIsWrongDoesNotConnect()
{
    const NavidromeConfig config = LiveNavidrome::config(m_server);
    QCOMPARE(m_live->connectTo(config), QString());
    QCOMPARE(m_live->connectTo(config, u"wrong"_s), wrongPasswordText);
    QVERIFY(!m_live->service().isConnected());
    QVERIFY(!m_live->service().currentConfig());
    QCOMPARE(m_live->service().errorText(), wrongPasswordText);
}

void TestNavidromeServers::theBaseOfTheApi_data()
{
    QTest::addColumn<QString>("behindHost");
    QTest::addColumn<QString>("apiBasePath");
    QTest::addColumn<QString>("problem");
    const QString ok;
    const QString notThere = u"连接失败"_s;
    QTest::newRow("server with its prefix") << u"/music/api"_s << u"/rest"_s << ok;
    QTest::newRow("prefix in the base") << QString() << u"/music/api/rest"_s << ok;
    QTest::newRow("no slash in front") << u"/music/api"_s << u"rest"_s << ok;
    QTest::newRow("slashes behind") << u"/music/api/"_s << u"/rest/"_s << ok;
    QTest::newRow("empty base") << u"/music/api"_s << QString() << ok;
    QTest::newRow("blanks around") << u"/music/api \n"_s << u" rest\n"_s << ok;
    QTest::newRow("without the prefix") << QString() << u"/rest"_s << notThere;
    QTest::newRow("another base") << u"/music/api"_s << u"/api"_s << notThere;
}

void TestNavidromeServers::theBaseOfTheApi()
{
    QFETCH(const QString, behindHost);
    QFETCH(const QString, apiBasePath);
    QFETCH(const QString, problem);
    if (m_behindProxy.address().isEmpty())
        QVERIFY(m_behindProxy.start(m_music.path(), LiveNavidrome::user(), LiveNavidrome::password(),
                                    {.prefix = u"/music/api"_s}));
    NavidromeConfig config = LiveNavidrome::config(m_behindProxy);
    config.serverURL = u"http://127.0.0.1:%1"_s.arg(m_behindProxy.address().port()) + behindHost;
    config.apiBasePath = apiBasePath;
    QCOMPARE(m_live->connectTo(config), problem);
    if (!problem.isEmpty())
        return;
    QCOMPARE(m_live->search(covered), QStringList{covered});
    QCOMPARE(m_live->fetch(m_live->song(covered).assetURL()).body, m_music.bytes(u"夜航星.mp3"_s));
}

// MARK: listings

void TestNavidromeServers::listsRandomSongs()
{
    const NavidromeConfig config = LiveNavidrome::config(m_server);
    QCOMPARE(m_live->connectTo(config), QString());
    QVERIFY(await(m_live->service().loadDefaultSongs()));
    QVERIFY(!m_live->service().error());
    QVERIFY(!m_live->service().isSearching());
    QSet<QString> titles;
    for (const Song &song : m_live->service().songs())
        titles.insert(song.title());
    QSet<QString> expected(awkwardTitles().cbegin(), awkwardTitles().cend());
    expected += {covered, u"夜 small"_s};
    QCOMPARE(titles, expected);

    const Song song = m_live->song(covered);
    const QString start = u"navidrome_"_s + config.uuidText();
    QVERIFY(song.id().startsWith(start + u'_'));
    QVERIFY(song.albumId().startsWith(start + u"_album_"_s));
    QCOMPARE(song.artist(), u"不才/甲"_s);
    QCOMPARE(song.album(), u"不才作品集"_s);
    QCOMPARE(song.trackNumber(), 7);
    QCOMPARE(song.duration(), 3.0);
    QVERIFY(song.artworkURL());
    QVERIFY(!m_live->song(u"为什么?"_s).artworkURL());
}

void TestNavidromeServers::listsNoMoreThanAskedFor()
{
    QCOMPARE(m_live->connectTo(LiveNavidrome::config(m_server)), QString());
    QVERIFY(await(m_live->service().loadDefaultSongs(3)));
    QCOMPARE(m_live->service().songs().size(), 3);
    QVERIFY(await(m_live->service().searchSongs(u"夜"_s, 1)));
    QCOMPARE(m_live->service().songs().size(), 1);
}

void TestNavidromeServers::findsChineseTitles()
{
    QCOMPARE(m_live->connectTo(LiveNavidrome::config(m_server)), QString());
    QCOMPARE(m_live->search(u" 航星\n"_s), QStringList{covered});
    QCOMPARE(m_live->search(u"夜"_s), (QStringList{u"夜 small"_s, covered}));
    QCOMPARE(m_live->search(u"没有这首歌"_s), QStringList());
    QVERIFY(!m_live->service().error());
}

void TestNavidromeServers::findsAwkwardTitles_data()
{
    QTest::addColumn<int>("number");
    for (int i = 0; i < awkwardTitles().size(); ++i)
        QTest::addRow("%s", qPrintable(awkwardTitles()[i])) << i;
}

void TestNavidromeServers::findsAwkwardTitles()
{
    QFETCH(const int, number);
    const QString title = awkwardTitles()[number];
    QCOMPARE(m_live->connectTo(LiveNavidrome::config(m_server)), QString());
    QCOMPARE(m_live->search(title), QStringList{title});
    const Song song = m_live->song(title);
    QCOMPARE(m_live->fetch(song.assetURL()).body, m_music.bytes(u"awkward %1.mp3"_s.arg(number)));
    const auto text = await(m_live->service().lyrics(song));
    QVERIFY(text);
    QCOMPARE(*text, std::optional(u"歌词 %1"_s.arg(number)));
}

void TestNavidromeServers::aQueryOfBlanksAsksNothing()
{
    QCOMPARE(m_live->connectTo(LiveNavidrome::config(m_server)), QString());
    QCOMPARE(m_live->search(u"夜"_s).size(), 2);
    const qsizetype before = m_server.requests().size();
    QCOMPARE(m_live->search(u" \n\t"_s), QStringList());
    QCOMPARE(m_server.requests().size(), before);
}

// MARK: what songs lead to

void TestNavidromeServers::aCoverDecodesAtTheSizeAskedFor()
{
    QCOMPARE(m_live->connectTo(LiveNavidrome::config(m_server)), QString());
    QCOMPARE(m_live->search(u"夜"_s).size(), 2);
    const HttpResponse large = m_live->fetch(m_live->song(covered).artworkURL());
    QCOMPARE(large.status, 200);
    QCOMPARE(large.mimeType(), u"image/jpeg"_s);
    QCOMPARE(QImage::fromData(large.body).size(), QSize(400, 400));
    QCOMPARE(QImage::fromData(m_live->fetch(m_live->song(u"夜 small"_s).artworkURL()).body).size(),
             QSize(64, 64));
}

void TestNavidromeServers::anAddressGivesTheSound()
{
    QCOMPARE(m_live->connectTo(LiveNavidrome::config(m_server)), QString());
    QCOMPARE(m_live->search(u"夜"_s).size(), 2);
    const HttpResponse sound = m_live->fetch(m_live->song(covered).assetURL());
    QCOMPARE(sound.status, 200);
    QCOMPARE(sound.mimeType(), u"audio/mpeg"_s);
    QCOMPARE(sound.body, m_music.bytes(u"夜航星.mp3"_s));
    QCOMPARE(m_live->fetch(m_live->song(u"夜 small"_s).assetURL()).body, m_music.bytes(u"small.flac"_s));
}

void TestNavidromeServers::lyricsFallBackToArtistAndTitle()
{
    QCOMPARE(m_live->connectTo(LiveNavidrome::config(m_server)), QString());
    QCOMPARE(m_live->search(u"夜"_s).size(), 2);
    const qsizetype before = m_server.requests().size();
    const auto found = await(m_live->service().lyrics(m_live->song(covered)));
    QVERIFY(found);
    QCOMPARE(*found, std::optional(lyrics));
    QCOMPARE(endpointsOf(m_server.requests().sliced(before)),
             (QStringList{u"getLyricsBySongId.view"_s, u"getLyrics.view"_s}));
    const auto none = await(m_live->service().lyrics(m_live->song(u"夜 small"_s)));
    QVERIFY(none);
    QVERIFY(!*none);
    QVERIFY(!m_live->service().error());
}

void TestNavidromeServers::lyricsComeFromTheSongsOwnServer()
{
    const NavidromeConfig config = LiveNavidrome::config(m_server);
    QCOMPARE(m_live->connectTo(config), QString());
    QCOMPARE(m_live->search(covered).size(), 1);
    const Song song = m_live->song(covered);
    SubsonicServer other;
    QVERIFY(other.start(m_music.path(), u"other"_s, u"another word"_s));
    NavidromeConfig otherConfig = LiveNavidrome::config(other);
    otherConfig.username = u"other"_s;
    QCOMPARE(m_live->connectTo(otherConfig, u"another word"_s), QString());
    const qsizetype before = other.requests().size();
    QCOMPARE(await(m_live->service().lyrics(song)).value_or(std::nullopt), std::optional(lyrics));
    QCOMPARE(other.requests().size(), before);
}

void TestNavidromeServers::aDeletedServerGivesNoLyrics()
{
    const NavidromeConfig config = LiveNavidrome::config(m_server);
    QCOMPARE(m_live->connectTo(config), QString());
    QCOMPARE(m_live->search(covered).size(), 1);
    QVERIFY(await(m_live->service().deleteConfig(config)));
    QVERIFY(!m_live->service().isConnected());
    QCOMPARE(m_live->service().songs().size(), 1);
    const qsizetype before = m_server.requests().size();
    const auto none = await(m_live->service().lyrics(m_live->song(covered)));
    QVERIFY(none && !*none);
    QCOMPARE(m_server.requests().size(), before);
    QVERIFY(!m_live->service().error());
}

// MARK: servers that change

void TestNavidromeServers::aServerThatIsGoneKeepsTheSongs()
{
    SubsonicServer server;
    QVERIFY(server.start(m_music.path(), LiveNavidrome::user(), LiveNavidrome::password()));
    const NavidromeConfig config = LiveNavidrome::config(server);
    QCOMPARE(m_live->connectTo(config), QString());
    QCOMPARE(m_live->search(covered).size(), 1);
    server.stop();
    QVERIFY(await(m_live->service().loadDefaultSongs()));
    QVERIFY(!m_live->service().errorText().isEmpty());
    QCOMPARE(m_live->service().songs().size(), 1);
    QVERIFY(!m_live->service().isSearching());
    QVERIFY(m_live->service().isConnected());
    const auto none = await(m_live->service().lyrics(m_live->song(covered)));
    QVERIFY(none && !*none);
    QVERIFY(!m_live->test(config).isEmpty());
    QVERIFY(!m_live->connectTo(config).isEmpty());
    QVERIFY(!m_live->service().isConnected());
}

void TestNavidromeServers::aServerThatCameBackKnowsTheSongs()
{
    SubsonicServer server;
    SubsonicMusic music;
    QVERIFY(music.add(u"bleibt.mp3"_s, {.title = u"留下"_s}));
    QVERIFY(music.add(u"geht.mp3"_s, {.title = u"离开"_s}));
    QVERIFY(server.start(music.path(), LiveNavidrome::user(), LiveNavidrome::password()));
    QCOMPARE(m_live->connectTo(LiveNavidrome::config(server)), QString());
    QVERIFY(await(m_live->service().loadDefaultSongs()));
    const Song stays = m_live->song(u"留下"_s);
    const Song goes = m_live->song(u"离开"_s);
    server.stop();
    QCOMPARE(m_live->fetch(stays.assetURL()).status, 0);
    QVERIFY(music.remove(u"geht.mp3"_s));
    QVERIFY(server.startAgain());
    QCOMPARE(m_live->fetch(stays.assetURL()).body, music.bytes(u"bleibt.mp3"_s));
    // The server says no with status 200.
    QVERIFY(m_live->fetch(goes.assetURL()).body.contains("Track not found"));
    QCOMPARE(m_live->search(u"留"_s), QStringList{u"留下"_s});
    QVERIFY(!m_live->service().error());
}

void TestNavidromeServers::aPasswordThatNoLongerHoldsKeepsTheSongs()
{
    const NavidromeConfig config = LiveNavidrome::config(m_server);
    QCOMPARE(m_live->connectTo(config), QString());
    QCOMPARE(m_live->search(covered).size(), 1);
    QVERIFY(await(m_live->service().saveConfig(config, u"no longer"_s)));
    QVERIFY(await(m_live->service().loadDefaultSongs()));
    QCOMPARE(m_live->service().errorText(), wrongPasswordText);
    QCOMPARE(m_live->search(u"别的"_s), QStringList{covered});
    QCOMPARE(m_live->service().errorText(), wrongPasswordText);
}

void TestNavidromeServers::everyAddressIsSignedAfresh()
{
    QCOMPARE(m_live->connectTo(LiveNavidrome::config(m_server)), QString());
    QVERIFY(await(m_live->service().loadDefaultSongs()));
    QStringList salts = itemsOf(m_server.requests().sliced(m_asked), u"s"_s);
    for (const Song &song : m_live->service().songs()) {
        salts.append(QUrlQuery(*song.assetURL()).queryItemValue(u"s"_s));
        if (song.artworkURL())
            salts.append(QUrlQuery(*song.artworkURL()).queryItemValue(u"s"_s));
    }
    QVERIFY(salts.size() > m_live->service().songs().size());
    QCOMPARE(QSet<QString>(salts.cbegin(), salts.cend()).size(), salts.size());
}

QTEST_GUILESS_MAIN(TestNavidromeServers)

#include "tst_navidrome_servers.moc"
