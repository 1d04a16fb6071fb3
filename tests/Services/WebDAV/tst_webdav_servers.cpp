// SPDX-License-Identifier: GPL-3.0-or-later
// The WebDAV service against real servers.
#include "Fakes/Await.h"
#include "Fakes/ConsoleLines.h"
#include "Fakes/FakeHttpClient.h"
#include "Fixtures/MadePicture.h"
#include "Fixtures/MadeSong.h"
#include "Servers/HrefWalk.h"
#include "Services/WebDAV/LiveWebDAV.h"
#include "Services/WebDAV/WebDAVSongs.h"

#include <QFileInfo>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int deepestWalk = 15;

/// What the walk must find and in which order, told by the server's addresses alone.
QStringList expectedAudio(const LiveWebDAV &live)
{
    const QStringList audio =
        live.server->listsHiddenFiles() ? live.tree.audioFiles() : live.tree.visibleAudioFiles();
    QStringList paths = walkByHrefs(*live.server, LiveWebDAV::user(), LiveWebDAV::password(), deepestWalk);
    paths.removeIf([&audio](const QString &path) { return !audio.contains(path.sliced(1)); });
    if (paths.size() != audio.size())
        qFatal("the server does not list what it was given");
    return paths;
}

/// Every line of the log, once; nothing in it may tell the password.
QStringList linesWithoutPassword(ConsoleLines &console)
{
    QStringList lines = console.take();
    const QByteArray encoded = QUrl::toPercentEncoding(LiveWebDAV::password(), {}, "");
    for (const QString &line : std::as_const(lines))
        if (line.contains(LiveWebDAV::password()) || line.contains(QString::fromLatin1(encoded)))
            return {u"a line of the log holds the password"_s};
    return lines;
}

} // namespace

class TestWebDAVServers : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aRightPasswordPassesTheTest_data() { kinds(); }
    void aRightPasswordPassesTheTest();
    void aWrongPasswordFailsTheTest_data() { kinds(); }
    void aWrongPasswordFailsTheTest();
    void aMissingFolderFailsTheTest_data() { kinds(); }
    void aMissingFolderFailsTheTest();
    void aStoppedServerFailsTheTest_data() { kinds(); }
    void aStoppedServerFailsTheTest();
    void connectsWithTheStoredPassword_data() { kinds(); }
    void connectsWithTheStoredPassword();

    void findsEveryAudioFileInWalkOrder_data() { kinds(); }
    void findsEveryAudioFileInWalkOrder();
    void everyAddressGivesTheFile_data() { kinds(); }
    void everyAddressGivesTheFile();
    void walksABaseFolder_data();
    void walksABaseFolder();
    void stopsAtDepthFifteen_data() { kinds(); }
    void stopsAtDepthFifteen();
    void anEmptyFolderRemovesTheSongs_data() { kinds(); }
    void anEmptyFolderRemovesTheSongs();
    void aStoppedServerKeepsTheSongs_data() { kinds(); }
    void aStoppedServerKeepsTheSongs();
    void theNextRunNeedsNoServer_data() { kinds(); }
    void theNextRunNeedsNoServer();
    void aFolderThatTheServerMayNotRead_data();
    void aFolderThatTheServerMayNotRead();
    void aFolderNameThatIsNoUtf8_data();
    void aFolderNameThatIsNoUtf8();
    void blanksAroundAFolderName_data();
    void blanksAroundAFolderName();

private:
    static void kinds();
};

void TestWebDAVServers::kinds()
{
    QTest::addColumn<QString>("kind");
    for (const QString &kind : WebDAVServer::kinds())
        QTest::newRow(qPrintable(kind)) << kind;
}

// MARK: connection

void TestWebDAVServers::aRightPasswordPassesTheTest()
{
    QFETCH(const QString, kind);
    LiveWebDAV live(kind);
    QVERIFY(live.startServer());
    QCOMPARE(live.test(live.config(), LiveWebDAV::password()), QString());
    QVERIFY(!live.service().isTesting());
    QVERIFY(!live.service().isConnected());
}

void TestWebDAVServers::aWrongPasswordFailsTheTest()
{
    QFETCH(const QString, kind);
    LiveWebDAV live(kind);
    QVERIFY(live.startServer());
    QCOMPARE(live.test(live.config(), u"wrong"_s), u"认证失败，请检查用户名和密码"_s);
    QVERIFY(!live.service().isTesting());
}

void TestWebDAVServers::aMissingFolderFailsTheTest()
{
    QFETCH(const QString, kind);
    LiveWebDAV live(kind);
    QVERIFY(live.startServer());
    QCOMPARE(live.test(live.config(u"/没有"_s), LiveWebDAV::password()), u"文件不存在"_s);
}

void TestWebDAVServers::aStoppedServerFailsTheTest()
{
    QFETCH(const QString, kind);
    LiveWebDAV live(kind);
    QVERIFY(live.startServer());
    const WebDAVConfig config = live.config();
    live.server->stop();
    const QString failure = live.test(config, LiveWebDAV::password());
    QVERIFY2(failure.startsWith(u"网络错误: "_s), qPrintable(failure));
}

void TestWebDAVServers::connectsWithTheStoredPassword()
{
    QFETCH(const QString, kind);
    LiveWebDAV live(kind);
    QVERIFY(live.startServer());
    const WebDAVConfig config = live.config();
    QVERIFY(await(live.service().saveConfig(config, LiveWebDAV::password())));
    ConsoleLines console;
    QCOMPARE(live.connectTo(config), QString());
    QVERIFY(live.service().isConnected());
    QCOMPARE(live.service().currentConfig(), std::optional(config));
    QVERIFY(linesWithoutPassword(console).contains(u"✓ WebDAV: 连接成功 - 家里的服务器"_s));

    QVERIFY(await(live.service().saveConfig(config, u"wrong"_s)));
    QCOMPARE(live.connectTo(config), u"认证失败，请检查用户名和密码"_s);
    QVERIFY(!live.service().isConnected());
    QVERIFY(!live.service().currentConfig());
}

// MARK: walk

void TestWebDAVServers::findsEveryAudioFileInWalkOrder()
{
    QFETCH(const QString, kind);
    LiveWebDAV live(kind);
    live.tree.addAwkwardNames();
    QVERIFY(live.startServer());
    ConsoleLines console;
    const WebDAVConfig config = live.config();
    QVERIFY(live.scan(config));

    QCOMPARE(live.service().error(), std::nullopt);
    const QStringList expected = expectedAudio(live);
    QCOMPARE(live.songPaths(), expected);
    const QStringList lines = linesWithoutPassword(console);
    QVERIFY(lines.contains(u"🎵 WebDAV: 其中 %1 个音频文件"_s.arg(expected.size())));
    QVERIFY(lines.contains(u"✅ WebDAV: 扫描完成，共 %1 首歌曲"_s.arg(expected.size())));

    const QList<Song> songs = live.service().webDAVSongs();
    for (const Song &song : songs) {
        const QString path = extractFilePath(song.id()).value_or(QString());
        QCOMPARE(song.title(), QFileInfo(path).completeBaseName());
        QCOMPARE(extractConfigId(song.id()), std::optional(config.uuidText()));
        QCOMPARE(song.id().count(u'_'), 2);
        QCOMPARE(webDAVSongId(config, path), song.id());
    }
}

void TestWebDAVServers::everyAddressGivesTheFile()
{
    QFETCH(const QString, kind);
    LiveWebDAV live(kind);
    live.tree.addAwkwardNames();
    live.tree.addFolder(u"周末 & 夜"_s);
    for (const QString &ending : {u"mp3"_s, u"flac"_s, u"m4a"_s}) {
        const QString path = u"周末 & 夜/夜曲 (带标签)."_s + ending;
        MadeSong song;
        song.title = u"夜曲"_s;
        song.artist = u"示例歌手"_s;
        song.album = u"示例专辑"_s;
        song.lyrics = {u"[00:01.00]第一行\n[00:02.00]第二行"_s};
        song.cover = madeJpeg();
        QVERIFY(makeSong(live.tree.pathOnDisk(path), song));
        live.tree.adopt(path);
    }
    QVERIFY(live.startServer());
    QVERIFY(live.scan(live.config()));

    const QList<Song> songs = live.service().webDAVSongs();
    QCOMPARE(songs.size(), expectedAudio(live).size());
    for (const Song &song : songs) {
        const QString path = extractFilePath(song.id()).value_or(QString()).sliced(1);
        QVERIFY2(live.fetch(song) == live.tree.content(path), qPrintable(path));
    }
}

void TestWebDAVServers::walksABaseFolder_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("basePath");
    QTest::addColumn<QStringList>("expected");
    const QStringList chinese{u"/中文专辑/Disc 2/第二首.m4a"_s, u"/中文专辑/歌曲 一.flac"_s};
    for (const QString &kind : WebDAVServer::kinds()) {
        const auto row = [&kind](const char *name) -> QTestData & {
            return QTest::addRow("%s, %s", qPrintable(kind), name) << kind;
        };
        row("Chinese") << u"/中文专辑"_s << chinese;
        row("without the first slash") << u"中文专辑"_s << chinese;
        row("with a last slash") << u"/中文专辑/"_s << chinese;
        row("number sign") << u"/#1 Hits"_s << QStringList{u"/#1 Hits/#1 song.mp3"_s};
        row("percent") << u"/100% Pure"_s
                       << QStringList{u"/100% Pure/%41 literal.mp3"_s, u"/100% Pure/50% off.mp3"_s};
        row("plus") << u"/A+B"_s << QStringList{u"/A+B/C+D.ogg"_s};
        row("ampersand") << u"/R&B"_s << QStringList{u"/R&B/Soul & Blues.m4a"_s};
        row("question mark") << u"/What?"_s << QStringList{u"/What?/Why?.mp3"_s};
        row("composed") << u"/Café"_s << QStringList{u"/Café/composed.mp3"_s};
        row("decomposed") << u"/Cafe\u0301"_s << QStringList{u"/Cafe\u0301/decomposed.mp3"_s};
    }
}

void TestWebDAVServers::walksABaseFolder()
{
    QFETCH(const QString, kind);
    QFETCH(const QString, basePath);
    QFETCH(const QStringList, expected);
    LiveWebDAV live(kind);
    live.tree.addAwkwardNames();
    QVERIFY(live.startServer());
    QVERIFY(live.scan(live.config(basePath)));
    QCOMPARE(live.service().error(), std::nullopt);
    QStringList paths = live.songPaths();
    paths.sort();
    QCOMPARE(paths, expected);
}

void TestWebDAVServers::stopsAtDepthFifteen()
{
    QFETCH(const QString, kind);
    constexpr int levels = 16;
    LiveWebDAV live(kind);
    live.tree.addChain(levels);
    QVERIFY(live.startServer());
    ConsoleLines console;
    QVERIFY(live.scan(live.config()));

    QStringList expected;
    for (int level = 1; level < deepestWalk; ++level)
        expected.append(u'/' + DavTree::chainFile(level));
    QStringList paths = live.songPaths();
    paths.sort();
    expected.sort();
    QCOMPARE(paths, expected);
    QCOMPARE(live.service().error(), std::nullopt);
    const QString folder = DavTree::chainFile(deepestWalk).section(u'/', 0, -2);
    QCOMPARE(console.take().filter(u"⚠️"_s), QStringList{u"⚠️ WebDAV: 达到最大递归深度 - "_s + folder});
}

void TestWebDAVServers::anEmptyFolderRemovesTheSongs()
{
    QFETCH(const QString, kind);
    LiveWebDAV live(kind);
    live.tree.addAwkwardNames();
    QVERIFY(live.startServer());
    WebDAVConfig config = live.config();
    QVERIFY(live.scan(config));
    QVERIFY(!live.service().webDAVSongs().isEmpty());

    config.basePath = u"/Empty"_s;
    config.lastSyncDate.reset();
    QVERIFY(live.scan(config));
    QCOMPARE(live.service().error(), std::nullopt);
    QCOMPARE(live.songPaths(), QStringList());
    QVERIFY(live.service().configs().constFirst().lastSyncDate);
}

void TestWebDAVServers::aStoppedServerKeepsTheSongs()
{
    QFETCH(const QString, kind);
    LiveWebDAV live(kind);
    live.tree.addAwkwardNames();
    QVERIFY(live.startServer());
    const WebDAVConfig config = live.config();
    QVERIFY(live.scan(config));
    const QStringList before = live.songPaths();
    live.server->stop();
    QVERIFY(await(live.service().scanMusic(config)));
    QVERIFY(live.service().error());
    QVERIFY(!live.service().isScanning());
    QCOMPARE(live.songPaths(), before);
}

void TestWebDAVServers::theNextRunNeedsNoServer()
{
    QFETCH(const QString, kind);
    LiveWebDAV live(kind);
    live.tree.addAwkwardNames();
    QVERIFY(live.startServer());
    QVERIFY(live.scan(live.config()));
    const QList<Song> before = live.service().webDAVSongs();
    QCOMPARE(before.size(), expectedAudio(live).size());
    live.server->stop();

    auto silent = std::make_unique<FakeHttpClient>();
    const FakeHttpClient &web = *silent;
    QVERIFY(live.restartService(std::move(silent)));
    const QList<Song> after = live.service().webDAVSongs();
    QCOMPARE(after, before);
    for (qsizetype i = 0; i < after.size(); ++i) {
        QCOMPARE(after[i].title(), before[i].title());
        QVERIFY(after[i].assetURL().has_value());
        QVERIFY(after[i].assetURL() == before[i].assetURL());
    }
    QCOMPARE(web.sent.size(), 0);
}

void TestWebDAVServers::aFolderThatTheServerMayNotRead_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("isListed");
    QTest::newRow("apache breaks the connection") << u"apache"_s << false;
    QTest::newRow("rclone lists it as empty") << u"rclone"_s << true;
    QTest::newRow("lighttpd lists it as empty") << u"lighttpd"_s << true;
    QTest::newRow("nginx answers with an error") << u"nginx"_s << false;
}

void TestWebDAVServers::aFolderThatTheServerMayNotRead()
{
    QFETCH(const QString, kind);
    QFETCH(const bool, isListed);
    LiveWebDAV live(kind);
    live.tree.addFile(u"open.mp3"_s);
    live.tree.addFile(u"closed/inside.mp3"_s);
    QVERIFY(live.startServer());
    const WebDAVConfig config = live.config();
    QVERIFY(live.scan(config));
    QCOMPARE(live.songPaths().size(), 2);

    const QString closed = live.tree.pathOnDisk(u"closed"_s);
    const QFile::Permissions before = QFile::permissions(closed);
    QVERIFY(QFile::setPermissions(closed, {}));
    QVERIFY(await(live.service().scanMusic(config)));
    QVERIFY(QFile::setPermissions(closed, before));
    QCOMPARE(!live.service().error(), isListed);
    QCOMPARE(live.songPaths().size(), isListed ? 1 : 2);
}

// MARK: what servers tell of names

void TestWebDAVServers::aFolderNameThatIsNoUtf8_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("error");
    QTest::addColumn<qsizetype>("songs");
    // Its address cannot be decoded, so that the walk asks for a folder with a percent sign in its name.
    const QString missing = u"文件不存在"_s;
    QTest::newRow("apache") << u"apache"_s << missing << qsizetype{1};
    QTest::newRow("rclone") << u"rclone"_s << missing << qsizetype{1};
    QTest::newRow("lighttpd") << u"lighttpd"_s << missing << qsizetype{1};
    // It writes the name as it is, so that its whole answer is no text: an empty listing.
    QTest::newRow("nginx") << u"nginx"_s << QString() << qsizetype{0};
}

void TestWebDAVServers::aFolderNameThatIsNoUtf8()
{
    QFETCH(const QString, kind);
    QFETCH(const QString, error);
    QFETCH(const qsizetype, songs);
    LiveWebDAV live(kind);
    live.tree.addFile(u"song.mp3"_s);
    QVERIFY(live.startServer());
    const WebDAVConfig config = live.config();
    QVERIFY(live.scan(config));
    QCOMPARE(live.songPaths(), QStringList{u"/song.mp3"_s});

    const QByteArray latin1 = QFile::encodeName(live.tree.root()) + "/caf\xe9"_ba;
    QCOMPARE(::mkdir(latin1.constData(), 0755), 0);
    QVERIFY(await(live.service().scanMusic(config)));
    ::rmdir(latin1.constData());
    QCOMPARE(live.service().errorText(), error);
    QCOMPARE(live.songPaths().size(), songs);
}

void TestWebDAVServers::blanksAroundAFolderName_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("isFound");
    // Blanks at the ends of a display name are not part of it, and the walk goes by display names.
    QTest::newRow("apache, no display names") << u"apache"_s << true;
    QTest::newRow("lighttpd, no display names") << u"lighttpd"_s << true;
    QTest::newRow("rclone") << u"rclone"_s << false;
    QTest::newRow("nginx") << u"nginx"_s << false;
}

void TestWebDAVServers::blanksAroundAFolderName()
{
    QFETCH(const QString, kind);
    QFETCH(const bool, isFound);
    LiveWebDAV live(kind);
    live.tree.addFile(u" padded /song.mp3"_s);
    QVERIFY(live.startServer());
    QVERIFY(live.scan(live.config()));
    QCOMPARE(live.songPaths(), isFound ? QStringList{u"/ padded /song.mp3"_s} : QStringList());
    QCOMPARE(live.service().error(), isFound ? std::nullopt : std::optional(u"文件不存在"_s));
}

QTEST_GUILESS_MAIN(TestWebDAVServers)

#include "tst_webdav_servers.moc"
