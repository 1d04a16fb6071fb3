// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/LivePlayer.h"
#include "Fakes/Await.h"
#include "Fixtures/MadeSong.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Servers/MisbehavingServer.h"
#include "Servers/OnlineApiServer.h"

#include <QFile>
#include <QTest>
#include <QUrlQuery>

#include <clocale>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr float audible = 0.01F;
constexpr auto soundLimit = 20s;
constexpr int firstHertz = 500;
constexpr int secondHertz = 1100;
constexpr int thirdHertz = 2300;

const QByteArray apiPath = "/secret/api/"_ba;

OnlineSong songOf(const QString &id)
{
    return {.id = id,
            .name = u"歌曲 "_s + id,
            .artist = u"歌手"_s,
            .album = {},
            .platform = MusicPlatform::netease,
            .picUrl = {},
            .lrcUrl = {}};
}

/// Of what the API is asked for.
QByteArray idOf(const ServedRequest &request)
{
    return QUrlQuery(QUrl::fromEncoded(request.target)).queryItemValue(u"id"_s).toUtf8();
}

ServerAnswer json(const QUrl &address)
{
    return ServerAnswer::ok("{\"code\":200,\"url\":\"" + address.toEncoded() + "\"}", "application/json");
}

} // namespace

/// Online songs from the API to the loudspeaker, with nothing but real parts.
class OnlinePlayingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void theOnlineApiPlaysInEveryFormAndQuality();
    void anAddressInEveryFormIsHeard_data();
    void anAddressInEveryFormIsHeard();
    void audioInPlaceOfAnAnswerIsNotTakenWhole();
    void withoutAnyAddressThereIsAnError();
    void whatIsNoSongEndsInAnError_data();
    void whatIsNoSongEndsInAnError();
    void nextAndPreviousFetchAnew();
    void theNextSongFollowsTheEnd();
    void aSongLeftWhileItsAddressIsFetchedNeverStarts();
    void aServerThatGoesInMidSongLeavesThePlayerAlive();
    void anIdOfAnyCharactersDoesNoHarm();

private:
    /// A song of so many hertz and seconds as bytes.
    QByteArray made(int hertz, double seconds = 30);
    ServerAnswer sound(int hertz, double seconds = 30);
    void play(const QString &id, const QStringList &queue = {});
    bool hears(int hertz) { return m_recorder->hearTone(hertz, soundLimit); }

    QTemporaryDir m_files;
    std::unique_ptr<SoundServer> m_sound;
    std::unique_ptr<Recorder> m_recorder;
    std::unique_ptr<MisbehavingServer> m_server;
    std::unique_ptr<LivePlayer> m_live;
};

void OnlinePlayingTest::initTestCase()
{
    std::setlocale(LC_NUMERIC, "C");
}

void OnlinePlayingTest::init()
{
    m_sound = std::make_unique<SoundServer>();
    QVERIFY(m_sound->start());
    m_recorder = std::make_unique<Recorder>(*m_sound);
    m_server = std::make_unique<MisbehavingServer>();
    m_live = std::make_unique<LivePlayer>();
    m_live->api().setBaseURL(m_server->url("/secret").toString());
}

void OnlinePlayingTest::cleanup()
{
    if (m_live) {
        for (const QString &line : m_live->lines())
            QVERIFY2(!line.contains(u"secret"_s), "a line holds the address of the API");
    }
    m_live.reset();
    m_server.reset();
    m_recorder.reset();
    m_sound.reset();
}

QByteArray OnlinePlayingTest::made(int hertz, double seconds)
{
    const QString path = m_files.filePath(u"%1-%2.mp3"_s.arg(hertz).arg(seconds));
    if (!QFile::exists(path) && !makeSong(path, {.seconds = seconds, .frequency = hertz}))
        return {};
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

ServerAnswer OnlinePlayingTest::sound(int hertz, double seconds)
{
    return ServerAnswer::ok(made(hertz, seconds), "audio/mpeg");
}

void OnlinePlayingTest::play(const QString &id, const QStringList &queue)
{
    QList<OnlineSong> songs;
    for (const QString &each : queue)
        songs.append(songOf(each));
    m_live->player().playOnlineSong(songOf(id), songs);
}

void OnlinePlayingTest::theOnlineApiPlaysInEveryFormAndQuality()
{
    OnlineApiServer api;
    QVERIFY(api.start({u"--seconds"_s, u"20"_s}));
    m_live->api().setBaseURL(api.address().toString());
    const auto playSong = [this](const OnlineApiServer::Song &song) {
        const OnlineSong online{.id = song.id,
                                .name = song.name,
                                .artist = song.artist,
                                .album = song.album,
                                .platform = musicPlatform(song.platform).value_or(MusicPlatform::netease),
                                .picUrl = {},
                                .lrcUrl = {}};
        m_live->player().playOnlineSong(online, {online});
    };
    for (const QString &form : {u"redirect"_s, u"json"_s, u"text"_s, u"audio"_s}) {
        for (const QString &platform : {u"netease"_s, u"kuwo"_s, u"qq"_s}) {
            const OnlineApiServer::Song song = OnlineApiServer::songWithAddress(platform, form);
            playSong(song);
            QVERIFY2(hears(song.frequency), qPrintable(platform + u' ' + form));
            QVERIFY(!m_live->player().playError());
        }
    }
    playSong(OnlineApiServer::songWithAddress(u"netease"_s, u"none"_s));
    QTRY_VERIFY_WITH_TIMEOUT(m_live->player().playError().has_value(), patienceMs);
    QVERIFY(!m_live->player().isLoading());
    for (const QString &quality : {u"128k"_s, u"320k"_s, u"flac"_s}) {
        m_live->preferences().setString(u"audioQuality"_s, quality);
        const OnlineApiServer::Song song = OnlineApiServer::songWithAddress(u"netease"_s, u"redirect"_s);
        playSong(song);
        QVERIFY2(hears(song.frequency), qPrintable(quality));
        QVERIFY(!api.requests().filter(u"&type=url&br="_s + quality).isEmpty());
    }
}

void OnlinePlayingTest::anAddressInEveryFormIsHeard_data()
{
    QTest::addColumn<QString>("form");
    for (const QString &form : {u"redirect"_s, u"redirect to another server"_s, u"JSON"_s, u"text"_s,
                                u"audio at the API address"_s, u"JSON without the server"_s})
        QTest::newRow(qPrintable(form)) << form;
}

void OnlinePlayingTest::anAddressInEveryFormIsHeard()
{
    QFETCH(QString, form);
    MisbehavingServer other;
    other.answer("/%E6%AD%8C.mp3", sound(firstHertz));
    m_server->answer("/%E6%AD%8C.mp3", sound(firstHertz));
    const QUrl audio = m_server->url("/%E6%AD%8C.mp3?sign=a%2Bb");
    const QHash<QString, ServerAnswer> answers{
        {u"redirect"_s, ServerAnswer::redirect(302, audio.toEncoded())},
        {u"redirect to another server"_s,
         ServerAnswer::redirect(301, other.url("/%E6%AD%8C.mp3").toEncoded())},
        {u"JSON"_s, json(audio)},
        {u"text"_s, ServerAnswer::ok(" " + audio.toEncoded() + "\r\n", "text/plain")},
        {u"audio at the API address"_s, sound(firstHertz)},
        {u"JSON without the server"_s, ServerAnswer::ok(R"({"url":"/%E6%AD%8C.mp3"})", "application/json")}};
    m_server->answer(apiPath, answers.value(form));
    play(u"1"_s);
    QVERIFY(m_live->player().isLoading());
    QVERIFY(hears(firstHertz));
    QVERIFY(m_live->player().isPlaying());
    QVERIFY(!m_live->player().isLoading());
    QVERIFY(!m_live->player().playError());
    QTRY_VERIFY_WITH_TIMEOUT(std::abs(m_live->player().duration() - 30) < 0.5, patienceMs);
    const bool isAtApi = form.startsWith(u"audio"_s);
    QVERIFY(m_live->says(isAtApi ? u"▶️ 播放: api"_s : u"▶️ 播放: 歌.mp3"_s));
    if (!isAtApi)
        QCOMPARE(m_server->requestCount(apiPath), 1);
    for (const ServedRequest &request : m_server->requests())
        QVERIFY(request.path() == apiPath || form.startsWith(u"JSON w"_s) ||
                request.target == "/%E6%AD%8C.mp3?sign=a%2Bb");
}

void OnlinePlayingTest::audioInPlaceOfAnAnswerIsNotTakenWhole()
{
    const ServerAnswer huge = ServerAnswer::streamed("fLaC", QByteArray(1 << 20, 'x'), 200, {}, "audio/flac");
    m_server->answer(apiPath, {huge, sound(firstHertz)});
    play(u"1"_s);
    QVERIFY(hears(firstHertz));
    QVERIFY2(m_server->bytesSent() < 20'000'000, qPrintable(QString::number(m_server->bytesSent())));
}

void OnlinePlayingTest::withoutAnyAddressThereIsAnError()
{
    m_live->api().setBaseURL(u"http://["_s);
    play(u"1"_s);
    QTRY_COMPARE(m_live->player().playError(), std::optional(u"无法获取播放链接"_s));
    QVERIFY(!m_live->player().isLoading());
    QVERIFY(!m_live->player().isPlaying());
    QCOMPARE(m_server->requestCount(), 0);
}

void OnlinePlayingTest::whatIsNoSongEndsInAnError_data()
{
    QTest::addColumn<ServerAnswer>("answer");
    for (const int status : {401, 403, 404, 429, 500, 503})
        QTest::addRow("%d", status) << ServerAnswer::status(status);
    QTest::newRow("HTML") << ServerAnswer::ok("<html><body>Sign in</body></html>", "text/html");
    QTest::newRow("nothing") << ServerAnswer::ok({}, "audio/mpeg");
    QTest::newRow("JSON error") << ServerAnswer::ok(R"({"code":500,"message":"没有版权"})",
                                                    "application/json");
    QTest::newRow("JSON null") << ServerAnswer::ok(R"({"url":null})", "application/json");
    QTest::newRow("JSON to nowhere") << json(QUrl(u"http://127.0.0.1:1/song.mp3"_s));
    QTest::newRow("JSON to 404") << ServerAnswer::ok(R"({"url":"/gone.mp3"})", "application/json");
    QTest::newRow("a file of this machine")
        << ServerAnswer::ok(R"({"url":"file:///etc/hostname"})", "application/json");
    QTest::newRow("invalid UTF-8") << ServerAnswer::ok("http://127.0.0.1/\xff\xfe");
    QTest::newRow("redirect to a file") << ServerAnswer::redirect(302, "file:///etc/hostname");
    QTest::newRow("endless redirects") << ServerAnswer::redirect(302, apiPath + "?again");
    QTest::newRow("hangs up") << ServerAnswer::hangUp();
    QTest::newRow("50 MB of nothing") << ServerAnswer::streamed({}, QByteArray(1 << 20, '\0'), 50, {});
    QTest::newRow("no HTTP") << ServerAnswer::raw("\x16\x03\x01\x02");
}

void OnlinePlayingTest::whatIsNoSongEndsInAnError()
{
    QFETCH(ServerAnswer, answer);
    m_server->answer(apiPath, answer);
    play(u"1"_s);
    QTRY_VERIFY_WITH_TIMEOUT(m_live->player().playError().has_value(), patienceMs);
    QVERIFY(!m_live->player().playErrorText().isEmpty());
    QVERIFY(!m_live->player().playErrorText().contains(u"secret"_s));
    QVERIFY(!m_live->player().isLoading());
    QTRY_VERIFY(!m_live->player().isPlaying());
    QCOMPARE(m_recorder->firstAbove(audible), -1);
    // The player is none the worse for it.
    m_server->answer(apiPath, sound(secondHertz));
    play(u"2"_s);
    QVERIFY(hears(secondHertz));
    QVERIFY(!m_live->player().playError());
}

void OnlinePlayingTest::nextAndPreviousFetchAnew()
{
    const QHash<QByteArray, ServerAnswer> songs{
        {"1", sound(firstHertz)}, {"2", sound(secondHertz)}, {"3", sound(thirdHertz)}};
    m_server->answerEverything([songs](const ServedRequest &request) {
        return request.path() == apiPath ? ServerAnswer::redirect(302, "/audio/" + idOf(request))
                                         : songs.value(request.target.right(1));
    });
    play(u"1"_s, {u"1"_s, u"2"_s, u"3"_s});
    QVERIFY(hears(firstHertz));
    m_live->player().next();
    QVERIFY(hears(secondHertz));
    // Just begun, so that it is left and not restarted.
    m_live->player().seek(0);
    QTRY_VERIFY(m_live->player().currentTime() < 3);
    m_live->player().previous();
    QVERIFY(hears(firstHertz));
    m_live->player().seek(0);
    QTRY_VERIFY(m_live->player().currentTime() < 3);
    m_live->player().previous();
    QVERIFY(hears(thirdHertz));
    QCOMPARE(m_live->player().currentOnlineSong(), std::optional(songOf(u"3"_s)));
    QCOMPARE(m_server->requestCount(apiPath), 4);
}

void OnlinePlayingTest::theNextSongFollowsTheEnd()
{
    const QHash<QByteArray, ServerAnswer> songs{{"1", sound(firstHertz, 2)}, {"2", sound(secondHertz)}};
    m_server->answer(apiPath, [songs](const ServedRequest &request) { return songs.value(idOf(request)); });
    play(u"1"_s, {u"1"_s, u"2"_s});
    QVERIFY(m_recorder->hearSound(audible, soundLimit));
    QVERIFY(hears(secondHertz));
    QCOMPARE(m_live->player().currentIndex(), 1);
    QVERIFY(!m_live->player().isLoading());
}

void OnlinePlayingTest::aSongLeftWhileItsAddressIsFetchedNeverStarts()
{
    m_server->answer("/audio/1", sound(firstHertz));
    m_server->answer("/audio/2", sound(secondHertz));
    m_server->answer(apiPath, [](const ServedRequest &request) {
        return idOf(request) == "1" ? ServerAnswer::silence() : ServerAnswer::redirect(302, "/audio/2");
    });
    play(u"1"_s);
    QTRY_COMPARE(m_server->requestCount(apiPath), 1);
    QVERIFY(m_live->player().isLoading());
    play(u"2"_s);
    QVERIFY(hears(secondHertz));
    // Even when its address arrives after all.
    m_server->release();
    QVERIFY(m_recorder->hear(1s));
    QVERIFY(hears(secondHertz));
    QCOMPARE(m_server->requestCount("/audio/1"), 0);

    // A song of another kind wins just so.
    play(u"1"_s);
    QTRY_COMPARE(m_server->requestCount(apiPath), 3);
    QVERIFY(m_live->player().isLoading());
    SongFields fields;
    fields.id = u"navidrome_1"_s;
    fields.assetURL = m_server->url("/stream?t=signature");
    m_server->answer("/stream", sound(thirdHertz));
    m_live->player().playSong(Song(fields), {});
    QVERIFY(!m_live->player().isLoading());
    QVERIFY(hears(thirdHertz));
    m_server->release();
    QVERIFY(m_recorder->hear(1s));
    QVERIFY(hears(thirdHertz));
    QVERIFY(!m_live->player().isLoading());
    QCOMPARE(m_server->requestCount("/audio/1"), 0);
}

void OnlinePlayingTest::aServerThatGoesInMidSongLeavesThePlayerAlive()
{
    m_server->answer(apiPath, [](const ServedRequest &request) {
        return ServerAnswer::redirect(302, "/audio/" + idOf(request));
    });
    m_server->answer("/audio/1", sound(firstHertz).holdingAt(made(firstHertz).size() / 10));
    play(u"1"_s);
    QVERIFY(hears(firstHertz));
    m_server->answer("/audio/1", ServerAnswer::hangUp());
    m_server->breakConnections();
    QTRY_VERIFY_WITH_TIMEOUT(!m_live->player().isPlaying(), patienceMs);
    QVERIFY(!m_live->player().isLoading());
    m_server->answer("/audio/2", sound(secondHertz));
    play(u"2"_s);
    QVERIFY(hears(secondHertz));
}

void OnlinePlayingTest::anIdOfAnyCharactersDoesNoHarm()
{
    const QStringList ids{u"a&b=c"_s,
                          u"a#b"_s,
                          u"a b"_s,
                          u"100%"_s,
                          u"%41%2F%zz"_s,
                          u"歌曲"_s,
                          u"🎵"_s,
                          u"a+b?c/d"_s,
                          u"../../etc/passwd"_s,
                          u"a\r\nHost: evil.example\r\n\r\nGET /x HTTP/1.1"_s,
                          u"\"<>\\^`{|}"_s,
                          QString(QChar(0xd800)),
                          u"a\0b"_s,
                          QString(5000, u'x')};
    m_server->answer(apiPath, json(m_server->url("/audio")));
    m_server->answer("/audio", sound(firstHertz, 5));
    for (const QString &id : ids) {
        const auto asked = [this] { return m_server->requestCount("/audio"); };
        const int before = asked();
        play(id, {id, u"2"_s});
        const auto hasEnded = [&] { return m_live->player().playError() || asked() > before; };
        QVERIFY2(QTest::qWaitFor(hasEnded, patienceMs), qPrintable(id));
        QVERIFY2(!m_live->player().isLoading(), qPrintable(id));
    }
    for (const ServedRequest &request : m_server->requests()) {
        QVERIFY2(request.path() == apiPath || request.path() == "/audio", request.target);
        QVERIFY(std::ranges::all_of(request.target, [](char c) { return c > ' ' && c < 127; }));
        QVERIFY(request.header("Host").startsWith("127.0.0.1"));
    }
    m_live->player().next();
    QVERIFY(hears(firstHertz));
}

QTEST_GUILESS_MAIN(OnlinePlayingTest)
#include "tst_online_playing.moc"
