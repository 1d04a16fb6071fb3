// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/LivePlayer.h"
#include "Fakes/Await.h"
#include "Fixtures/MadePicture.h"
#include "Fixtures/MadeSong.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Servers/DavTree.h"
#include "Servers/MisbehavingServer.h"
#include "Servers/WebDAVServer.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr float audible = 0.01F;
constexpr auto soundLimit = 20s;
constexpr int firstHertz = 500;
constexpr int secondHertz = 1100;

const QString user = u"ann@home"_s;
const QString password = u"Kp7Zxw9@Qd4/Hb2%41密码"_s;

WebDAVConfig configOf(quint16 port)
{
    WebDAVConfig config;
    config.name = u"NAS"_s;
    config.serverURL = u"http://127.0.0.1"_s;
    config.port = port;
    config.username = user;
    return config;
}

/// A listing of the root with these file names, which are part of an address.
QByteArray listing(const QList<QByteArray> &names)
{
    QByteArray xml = R"(<?xml version="1.0"?><D:multistatus xmlns:D="DAV:">)";
    for (const QByteArray &name : names)
        xml += "<D:response><D:href>/" + name +
               "</D:href><D:propstat><D:prop><D:resourcetype/></D:prop></D:propstat></D:response>";
    return xml + "</D:multistatus>";
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// Songs of servers from the scan to the loudspeaker, with nothing but real parts.
class WebDAVPlayingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void aSongIsHeardCachedAndKnownByItsTags_data();
    void aSongIsHeardCachedAndKnownByItsTags();
    void theNextSongDoesNotWaitForTheFirst();
    void whatIsNotTheSongFailsAndIsNotCached_data();
    void whatIsNotTheSongFailsAndIsNotCached();
    void aPasswordThatNoLongerHoldsFailsThePlay();
    void anotherHostGetsNoCredentials();
    void namesLeadNowhereElse();
    void anUntrustedServerIsRefusedAndSaysSo();
    void aListingOf200MegabytesIsRefused();
    void aServerDeletedDuringItsScanLeavesNothing();

private:
    /// A song of so many hertz as bytes.
    QByteArray made(const QString &title, int hertz);

    QTemporaryDir m_files;
    std::unique_ptr<SoundServer> m_sound;
    std::unique_ptr<Recorder> m_recorder;
    std::unique_ptr<LivePlayer> m_live;
};

void WebDAVPlayingTest::initTestCase()
{
    std::setlocale(LC_NUMERIC, "C");
}

void WebDAVPlayingTest::init()
{
    m_sound = std::make_unique<SoundServer>();
    QVERIFY(m_sound->start());
    m_recorder = std::make_unique<Recorder>(*m_sound);
    m_live = std::make_unique<LivePlayer>();
}

void WebDAVPlayingTest::cleanup()
{
    if (m_live) {
        for (const QString &line : m_live->lines())
            QVERIFY2(!line.contains(u"Kp7Zxw9"_s), "a line holds the password");
    }
    m_live.reset();
    m_recorder.reset();
    m_sound.reset();
}

QByteArray WebDAVPlayingTest::made(const QString &title, int hertz)
{
    const QString path = m_files.filePath(title + u".mp3"_s);
    const bool isMade = makeSong(path, {.title = title + u" 标题"_s,
                                        .artist = u"歌手"_s,
                                        .album = u"专辑"_s,
                                        .lyrics = {u"[00:01.00]歌词"_s},
                                        .cover = madeJpeg(),
                                        .seconds = 30,
                                        .frequency = hertz});
    return isMade ? bytesOf(path) : QByteArray();
}

void WebDAVPlayingTest::aSongIsHeardCachedAndKnownByItsTags_data()
{
    QTest::addColumn<QString>("kind");
    for (const QString &kind : WebDAVServer::kinds())
        QTest::newRow(qPrintable(kind)) << kind;
}

void WebDAVPlayingTest::aSongIsHeardCachedAndKnownByItsTags()
{
    QFETCH(QString, kind);
    DavTree tree;
    tree.addFile(u"音乐 1/第一首 #1.mp3"_s, made(u"a"_s, firstHertz));
    tree.addFile(u"第二首.mp3"_s, made(u"b"_s, secondHertz));
    const auto server = WebDAVServer::make(kind);
    QVERIFY(server->start(tree.root(), user, password));
    QVERIFY(m_live->scan(configOf(server->port()), password));
    QCOMPARE(m_live->servers().webDAVSongs().size(), 2);

    m_live->play(u"第一首 #1"_s);
    QVERIFY(m_recorder->hearSound(audible, soundLimit));
    QVERIFY(m_recorder->hearTone(firstHertz));
    QVERIFY(m_live->says(u"🎵 元数据解析完成: a 标题 - 歌手"_s));
    QCOMPARE(m_live->copies(), QStringList{u"第一首 #1.mp3"_s});
    const auto knowsTags = [](const Song &song) {
        return song.artist() == u"歌手"_s && song.album() == u"专辑"_s &&
               song.embeddedLyrics().value_or(QString()).contains(u"歌词"_s) &&
               song.artworkData().isPresent() && song.duration() > 29;
    };
    QCOMPARE(m_live->current(), u"a 标题"_s);
    QVERIFY(knowsTags(*m_live->player().currentSong()));
    QVERIFY(knowsTags(m_live->song(u"a 标题"_s)));

    // From now on there is no network.
    server->stop();
    m_live->player().pause();
    QVERIFY(m_recorder->hearSilence(500ms, soundLimit));
    m_live->play(u"a 标题"_s);
    QVERIFY(m_recorder->hearTone(firstHertz));

    m_live->restart();
    QCOMPARE(m_live->servers().webDAVSongs().size(), 2);
    QVERIFY(knowsTags(m_live->song(u"a 标题"_s)));
    m_live->play(u"a 标题"_s);
    QVERIFY(m_recorder->hearTone(firstHertz));
    QVERIFY(!m_live->player().playError());
    m_live->play(u"第二首"_s);
    QTRY_VERIFY_WITH_TIMEOUT(m_live->player().playError().has_value(), patienceMs);
    QVERIFY(!m_live->player().playErrorText().contains(u"Kp7Zxw9"_s));
    QCOMPARE(m_live->copies(), QStringList{u"第一首 #1.mp3"_s});
}

void WebDAVPlayingTest::theNextSongDoesNotWaitForTheFirst()
{
    MisbehavingServer server;
    server.requireBasic(user, password);
    server.answer("/", ServerAnswer::ok(listing({"slow.mp3", "quick.mp3"}), "application/xml"));
    server.answer("/slow.mp3",
                  ServerAnswer::ok(made(u"s"_s, firstHertz), "audio/mpeg").trickling(500, 100ms));
    server.answer("/quick.mp3", ServerAnswer::ok(made(u"q"_s, secondHertz), "audio/mpeg"));
    QVERIFY(m_live->scan(configOf(server.port()), password));
    m_live->play(u"slow"_s);
    QTRY_VERIFY(server.requestCount("/slow.mp3") > 0);
    m_live->player().next();
    // The first would take minutes.
    QVERIFY(m_recorder->hearTone(secondHertz));
    // Nor does its copy wait for a stream that nobody listens to.
    QTRY_VERIFY_WITH_TIMEOUT(m_live->copies().contains(u"quick.mp3"_s), 20000);
    QVERIFY(!m_live->copies().contains(u"slow.mp3"_s));
}

void WebDAVPlayingTest::whatIsNotTheSongFailsAndIsNotCached_data()
{
    QTest::addColumn<ServerAnswer>("answer");
    const QByteArray song = made(u"f"_s, firstHertz);
    const ServerAnswer whole = ServerAnswer::ok(song, "audio/mpeg");
    for (const int status : {401, 403, 404, 429, 500})
        QTest::addRow("%d", status) << ServerAnswer::status(status);
    QTest::newRow("206") << ServerAnswer::status(206, song);
    QTest::newRow("endless redirects") << ServerAnswer::redirect(302, "/song.mp3");
    QTest::newRow("redirect to a file") << ServerAnswer::redirect(302, "file:///etc/hostname");
    QTest::newRow("stops in the middle") << whole.endingAfter(song.size() / 2);
    QTest::newRow("longer than it is") << whole.announcing(song.size() + 1000).endingAfter(song.size());
    QTest::newRow("hangs up") << ServerAnswer::hangUp();
    QTest::newRow("sign-in page") << ServerAnswer::ok("<html><body>Sign in</body></html>", "text/html");
}

void WebDAVPlayingTest::whatIsNotTheSongFailsAndIsNotCached()
{
    QFETCH(ServerAnswer, answer);
    MisbehavingServer server;
    server.answer("/", ServerAnswer::ok(listing({"song.mp3"}), "application/xml"));
    server.answer("/song.mp3", answer);
    QVERIFY(m_live->scan(configOf(server.port()), password));
    m_live->play(u"song"_s);
    QTRY_VERIFY_WITH_TIMEOUT(m_live->player().playError().has_value(), patienceMs);
    QVERIFY(!m_live->player().playErrorText().contains(u"Kp7Zxw9"_s));
    // The copy is asked for behind the stream, and comes to nothing too.
    QVERIFY(m_live->says(u"⚠️ WebDAV: 后台缓存失败 - "_s));
    QCOMPARE(m_live->copies(), QStringList());
    QCOMPARE(m_recorder->firstAbove(audible), -1);
}

void WebDAVPlayingTest::aPasswordThatNoLongerHoldsFailsThePlay()
{
    MisbehavingServer server;
    server.requireBasic(user, password);
    server.answer("/", ServerAnswer::ok(listing({"song.mp3"}), "application/xml"));
    server.answer("/song.mp3", ServerAnswer::ok(made(u"p"_s, firstHertz), "audio/mpeg"));
    const WebDAVConfig config = configOf(server.port());
    QVERIFY(m_live->scan(config, password));
    server.requireBasic(user, u"another"_s);
    m_live->play(u"song"_s);
    QTRY_VERIFY_WITH_TIMEOUT(m_live->player().playError().has_value(), patienceMs);
    QVERIFY(m_live->says(u"❌ WebDAV Streaming: HTTP 401"_s));
    // With the new one in place the same song plays.
    QVERIFY(await(m_live->servers().saveConfig(config, u"another"_s)));
    QVERIFY(await(m_live->servers().refreshSongURLs(config)));
    m_live->play(u"song"_s);
    QVERIFY(m_recorder->hearTone(firstHertz));
}

void WebDAVPlayingTest::anotherHostGetsNoCredentials()
{
    MisbehavingServer other;
    other.answer("/stolen.mp3", ServerAnswer::ok(made(u"o"_s, firstHertz), "audio/mpeg"));
    MisbehavingServer server;
    const QByteArray foreign = other.url("/stolen.mp3").toEncoded();
    server.answer("/", ServerAnswer::ok("<D:multistatus xmlns:D=\"DAV:\"><D:response><D:href>" + foreign +
                                            "</D:href></D:response><D:response><D:href>/moved.mp3</D:href>"
                                            "</D:response></D:multistatus>",
                                        "application/xml"));
    server.answer("/moved.mp3", ServerAnswer::redirect(302, foreign));
    QVERIFY(m_live->scan(configOf(server.port()), password));
    // An entry that lies elsewhere is asked of this server, if at all.
    m_live->play(u"stolen"_s);
    QTRY_VERIFY_WITH_TIMEOUT(m_live->player().playError().has_value(), patienceMs);
    QCOMPARE(other.requestCount(), 0);
    // A redirect is followed, but the credentials stay behind.
    m_live->play(u"moved"_s);
    QTRY_VERIFY_WITH_TIMEOUT(other.requestCount() > 0, patienceMs);
    QVERIFY(m_live->says(u"💾 WebDAV: 后台缓存完成 - "_s));
    for (const ServedRequest &request : other.requests()) {
        QVERIFY(!request.hasHeader("Authorization"));
        QVERIFY(!request.target.contains("Kp7Zxw9"));
    }
}

void WebDAVPlayingTest::namesLeadNowhereElse()
{
    const QList<QByteArray> names{"%2e%2e%2f%2e%2e%2fup.mp3", "a%2Fb.mp3", "line%0Abreak.mp3",
                                  "null%00byte.mp3", "..%5Cback.mp3"};
    MisbehavingServer server;
    server.answer("/", ServerAnswer::ok(listing(names), "application/xml"));
    const QByteArray song = made(u"n"_s, firstHertz);
    server.answerEverything([song](const ServedRequest &) { return ServerAnswer::ok(song, "audio/mpeg"); });
    QVERIFY(m_live->scan(configOf(server.port()), password));
    const QStringList before = m_live->everythingElse();
    for (const Song &listed : m_live->servers().webDAVSongs()) {
        if (!listed.assetURL())
            continue;
        const qsizetype already = m_live->copies().size();
        m_live->player().playSong(listed, {listed});
        QTRY_VERIFY_WITH_TIMEOUT(
            m_live->copies().filter(u".mp3"_s).size() > already || m_live->player().playError(), patienceMs);
    }
    QVERIFY(!m_live->copies().isEmpty());
    QCOMPARE(m_live->everythingElse(), before);
}

void WebDAVPlayingTest::anUntrustedServerIsRefusedAndSaysSo()
{
    MisbehavingServer server({.isEncrypted = true, .address = QHostAddress::LocalHost, .port = 0});
    server.answer("/", ServerAnswer::ok(listing({"song.mp3"}), "application/xml"));
    WebDAVConfig config = configOf(server.port());
    config.serverURL = u"https://127.0.0.1"_s;
    QVERIFY(!m_live->scan(config, password));
    QVERIFY2(m_live->servers().errorText().contains(u"证书"_s), qPrintable(m_live->servers().errorText()));
    QCOMPARE(server.requestCount(), 0);
}

void WebDAVPlayingTest::aListingOf200MegabytesIsRefused()
{
    MisbehavingServer server;
    server.answer("/", ServerAnswer::streamed("<D:multistatus xmlns:D=\"DAV:\">", QByteArray(1 << 20, ' '),
                                              200, "</D:multistatus>"));
    QVERIFY(!m_live->scan(configOf(server.port()), password));
    QVERIFY(!m_live->servers().errorText().isEmpty());
    QVERIFY(!m_live->servers().isScanning());
}

void WebDAVPlayingTest::aServerDeletedDuringItsScanLeavesNothing()
{
    MisbehavingServer server;
    server.answer("/", ServerAnswer::ok(listing({"song.mp3"}), "application/xml").holdingAt(10));
    const WebDAVConfig config = configOf(server.port());
    QVERIFY(await(m_live->servers().saveConfig(config, password)));
    QCoro::Task<void> scan = m_live->servers().scanMusic(config);
    QTRY_COMPARE(server.requestCount(), 1);
    QVERIFY(await(m_live->servers().deleteConfig(config)));
    server.release();
    QVERIFY(await(std::move(scan)));
    m_live->restart();
    QCOMPARE(m_live->servers().configs().size(), 0);
    QCOMPARE(m_live->servers().webDAVSongs().size(), 0);
}

QTEST_GUILESS_MAIN(WebDAVPlayingTest)
#include "tst_webdav_playing.moc"
