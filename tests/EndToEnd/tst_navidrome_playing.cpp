// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/EverythingSaid.h"
#include "EndToEnd/LivePlayer.h"
#include "EndToEnd/SecretWatch.h"
#include "Fakes/Await.h"
#include "Fixtures/MadePicture.h"
#include "Fixtures/MadeSong.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Servers/MisbehavingServer.h"
#include "Servers/SubsonicServer.h"

#include <QFile>
#include <QTest>
#include <QUrlQuery>

#include <algorithm>
#include <clocale>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto soundLimit = 20s;
constexpr int firstHertz = 500;
constexpr int secondHertz = 1100;
const QString first = u"第一首 & +"_s;
const QString second = u"第二首"_s;
const QString user = u"lauscher@heim"_s;
const QString password = u"Kp7Zxw9@Qd4Tvmc/Hb2%41密码"_s;

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

NavidromeConfig configOf(const QUrl &address)
{
    NavidromeConfig config;
    config.name = u"NAS"_s;
    config.serverURL = address.toString();
    config.username = user;
    return config;
}

QByteArray answerOk(const QByteArray &rest = {})
{
    return R"({"subsonic-response":{"status":"ok","version":"1.16.1")" + rest + "}}";
}

} // namespace

/// Songs of a Subsonic server from the listing to the loudspeaker, with nothing but real parts.
class NavidromePlayingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { m_server.stop(); }
    void init();
    void cleanup();

    void aSongIsHeardSoughtAndFollowedByTheNext();
    void theEndOfASongLeadsToTheNext();
    void nothingOfAServerIsKeptForTheNextStart();
    void aTokenThatNoLongerHoldsFailsThePlay();
    void whatIsNotTheSongFails_data();
    void whatIsNotTheSongFails();
    void aServerThatGoesInTheMiddleLeavesThePlayerUsable();

private:
    /// Connects to a server and lists its songs.
    bool list(const QUrl &address);
    Song song(const QString &title) const;
    void play(const Song &song);
    bool hears(int hertz) { return m_recorder->hearTone(hertz, soundLimit); }
    /// The server of songs "bad" and "good" whose first one answers so.
    void serve(MisbehavingServer &server, const ServerAnswer &bad) const;

    QTemporaryDir m_music;
    SubsonicServer m_server;
    std::unique_ptr<SoundServer> m_sound;
    std::unique_ptr<Recorder> m_recorder;
    std::unique_ptr<EverythingSaid> m_said;
    std::unique_ptr<LivePlayer> m_live;
    /// The signatures of all listed songs.
    QStringList m_secrets;
};

void NavidromePlayingTest::initTestCase()
{
    std::setlocale(LC_NUMERIC, "C");
    QVERIFY(makeSong(m_music.filePath(u"1 首.mp3"_s), {.title = first,
                                                       .artist = u"歌手"_s,
                                                       .track = u"1"_s,
                                                       .cover = madeJpeg(),
                                                       .seconds = 30,
                                                       .frequency = firstHertz}));
    QVERIFY(makeSong(m_music.filePath(u"2 首.flac"_s),
                     {.title = second, .artist = u"歌手"_s, .seconds = 30, .frequency = secondHertz}));
    QVERIFY(m_server.start(m_music.path(), user, password));
}

void NavidromePlayingTest::init()
{
    m_sound = std::make_unique<SoundServer>();
    QVERIFY(m_sound->start());
    m_recorder = std::make_unique<Recorder>(*m_sound);
    m_said = std::make_unique<EverythingSaid>();
    m_live = std::make_unique<LivePlayer>();
    m_secrets.clear();
}

/// What opens the server is nowhere: not in what was said or shown, not on the disk.
void NavidromePlayingTest::cleanup()
{
    SecretWatch watch(m_secrets + QStringList{password});
    watch.lookAt(u"lines"_s, m_live->lines().join(u'\n').toUtf8());
    watch.lookAt(u"messages"_s, m_said->text());
    watch.lookAt(u"errors"_s, (m_live->player().playErrorText() + m_live->navidrome().errorText()).toUtf8());
    m_live->player().persistPlaybackSnapshot();
    watch.lookAtFiles(m_live->home(), {m_live->passwordFile()});
    m_live.reset();
    m_said.reset();
    m_recorder.reset();
    m_sound.reset();
    QVERIFY(!m_secrets.isEmpty());
    QCOMPARE(watch.findings(), QStringList());
}

bool NavidromePlayingTest::list(const QUrl &address)
{
    NavidromeService &service = m_live->navidrome();
    const NavidromeConfig config = configOf(address);
    const bool isListed = await(service.saveConfig(config, password)) &&
                          await(service.connectTo(config)).has_value() && await(service.loadDefaultSongs());
    for (const Song &listed : service.songs()) {
        for (const QUrl &url : {listed.assetURL().value_or(QUrl()), listed.artworkURL().value_or(QUrl())}) {
            const QUrlQuery query(url);
            for (const QString &name : {u"t"_s, u"s"_s}) {
                if (query.hasQueryItem(name))
                    m_secrets.append(query.queryItemValue(name));
            }
        }
    }
    return isListed && !service.error() && service.songs().size() == 2;
}

Song NavidromePlayingTest::song(const QString &title) const
{
    const QList<Song> songs = m_live->navidrome().songs();
    const auto found = std::ranges::find(songs, title, &Song::title);
    if (found == songs.end())
        qFatal("there is no song with the title %s", qPrintable(title));
    return *found;
}

void NavidromePlayingTest::play(const Song &song)
{
    QList<Song> queue = m_live->navidrome().songs();
    std::ranges::sort(queue, {}, &Song::title);
    m_live->player().playSong(song, queue);
}

void NavidromePlayingTest::aSongIsHeardSoughtAndFollowedByTheNext()
{
    QVERIFY(list(m_server.address()));
    AudioPlayerService &player = m_live->player();
    play(song(first));
    QCOMPARE(player.duration(), 30.0); // as the server tells it, before anything is loaded
    QVERIFY(hears(firstHertz));
    QVERIFY(m_live->says(u"▶️ 播放: stream.view"_s));
    QVERIFY(m_live->says(u"✅ PlayerItem 状态: readyToPlay"_s));
    QVERIFY(player.isPlaying());

    player.seek(20);
    QVERIFY(m_live->says(u"✅ Seek finished: true"_s));
    QVERIFY(player.currentTime() >= 19.4 && player.currentTime() < 25);
    QVERIFY(hears(firstHertz));

    player.next();
    QCOMPARE(m_live->current(), second);
    QVERIFY(hears(secondHertz));
    player.seek(15);
    QTRY_VERIFY_WITH_TIMEOUT(player.isPlaying() && player.currentTime() >= 15.2, patienceMs);
    QVERIFY(hears(secondHertz));
    player.next();
    QCOMPARE(m_live->current(), first);
    QVERIFY(hears(firstHertz));
    player.pause();
    QVERIFY(m_recorder->hearSilence(500ms, soundLimit));
    player.play();
    QVERIFY(hears(firstHertz));
    QVERIFY(!player.playError());
}

void NavidromePlayingTest::theEndOfASongLeadsToTheNext()
{
    QVERIFY(list(m_server.address()));
    play(song(first));
    QVERIFY(hears(firstHertz));
    m_live->player().seek(28);
    QTRY_COMPARE_WITH_TIMEOUT(m_live->current(), second, patienceMs);
    QVERIFY(hears(secondHertz));
}

void NavidromePlayingTest::nothingOfAServerIsKeptForTheNextStart()
{
    QVERIFY(list(m_server.address()));
    play(song(first));
    QVERIFY(hears(firstHertz));
    m_live->player().pause();
    m_live->player().persistPlaybackSnapshot();
    QVERIFY(!m_live->preferences().contains(u"lastPlaybackState"_s));
    m_live->restart();
    QVERIFY(!m_live->preferences().contains(u"lastPlaybackState"_s));
    QVERIFY(!m_live->player().currentSong());
    QVERIFY(m_live->navidrome().songs().isEmpty());
    // The server itself is there again, and its songs play.
    QCOMPARE(m_live->navidrome().configs().size(), 1);
    QVERIFY(list(m_server.address()));
    play(song(second));
    QVERIFY(hears(secondHertz));
}

void NavidromePlayingTest::aTokenThatNoLongerHoldsFailsThePlay()
{
    QVERIFY(list(m_server.address()));
    Song stale = song(first);
    QUrl url = *stale.assetURL();
    QUrlQuery query(url);
    query.removeAllQueryItems(u"s"_s);
    query.addQueryItem(u"s"_s, u"anothersalt"_s);
    url.setQuery(query);
    stale.setAssetURL(url);
    play(stale);
    QTRY_VERIFY_WITH_TIMEOUT(m_live->player().playError().has_value(), patienceMs);
    QVERIFY(!m_live->player().isPlaying());
    m_live->player().next();
    QVERIFY(hears(secondHertz));
}

void NavidromePlayingTest::serve(MisbehavingServer &server, const ServerAnswer &bad) const
{
    server.answer("/rest/ping.view", ServerAnswer::ok(answerOk(), "application/json"));
    server.answer("/rest/getRandomSongs.view",
                  ServerAnswer::ok(answerOk(R"(,"randomSongs":{"song":[{"id":"bad","title":"bad"},)"
                                            R"({"id":"good","title":"good"}]})"),
                                   "application/json"));
    const QByteArray whole = bytesOf(m_music.filePath(u"2 首.flac"_s));
    server.answer("/rest/stream.view", [bad, whole](const ServedRequest &request) {
        return request.target.contains("id=bad") ? bad : ServerAnswer::ok(whole, "audio/flac");
    });
}

void NavidromePlayingTest::whatIsNotTheSongFails_data()
{
    QTest::addColumn<ServerAnswer>("answer");
    for (const int status : {401, 403, 404, 429, 500})
        QTest::addRow("%d", status) << ServerAnswer::status(status);
    QTest::newRow("an error in JSON")
        << ServerAnswer::ok(R"({"subsonic-response":{"status":"failed","error":{"code":70,"message":"no"}}})",
                            "application/json");
    QTest::newRow("an error in XML") << ServerAnswer::ok(
        R"(<subsonic-response status="failed"><error code="70" message="no"/></subsonic-response>)",
        "text/xml");
    QTest::newRow("nothing") << ServerAnswer::ok({}, "audio/mpeg");
    QTest::newRow("hangs up") << ServerAnswer::hangUp();
    QTest::newRow("endless redirects") << ServerAnswer::redirect(302, "/rest/stream.view?id=bad");
    QTest::newRow("redirect to a file") << ServerAnswer::redirect(302, "file:///etc/hostname");
    QTest::newRow("sign-in page") << ServerAnswer::ok("<html><body>Sign in</body></html>", "text/html");
}

void NavidromePlayingTest::whatIsNotTheSongFails()
{
    QFETCH(const ServerAnswer, answer);
    MisbehavingServer server;
    serve(server, answer);
    QVERIFY(list(server.url("")));
    play(song(u"bad"_s));
    QTRY_VERIFY_WITH_TIMEOUT(m_live->player().playError().has_value(), patienceMs);
    QVERIFY(!m_live->player().isPlaying());
    QVERIFY(m_live->says(u"❌ PlayerItem 状态: failed - "_s));
    m_live->player().next();
    QCOMPARE(m_live->current(), u"good"_s);
    QVERIFY(hears(secondHertz));
}

void NavidromePlayingTest::aServerThatGoesInTheMiddleLeavesThePlayerUsable()
{
    const QByteArray whole = bytesOf(m_music.filePath(u"1 首.mp3"_s));
    MisbehavingServer server;
    serve(server, ServerAnswer::ok(whole, "audio/mpeg").holdingAt(whole.size() / 4));
    auto gone = std::make_unique<MisbehavingServer>();
    serve(*gone, ServerAnswer::ok(whole, "audio/mpeg").holdingAt(whole.size() / 4));
    QVERIFY(list(server.url("")));
    const Song good = song(u"good"_s);
    QVERIFY(list(gone->url("")));
    m_live->player().playSong(song(u"bad"_s), {});
    QVERIFY(hears(firstHertz));
    gone.reset();
    // What has arrived is still heard; then the song ends, one way or another.
    QTRY_VERIFY_WITH_TIMEOUT(!m_live->player().isPlaying(), patienceMs);
    QVERIFY(m_recorder->hearSilence(500ms, soundLimit));
    m_live->player().playSong(good, {});
    QVERIFY(hears(secondHertz));
}

QTEST_GUILESS_MAIN(NavidromePlayingTest)
#include "tst_navidrome_playing.moc"
