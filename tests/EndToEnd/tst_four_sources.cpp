// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/AccessibleWindow.h"
#include "EndToEnd/PressInWindow.h"
#include "EndToEnd/RunningPlayer.h"
#include "EndToEnd/SecretWatch.h"
#include "EndToEnd/VirtualDisplay.h"
#include "Fixtures/Keyring/KeyringSession.h"
#include "Fixtures/MadeSong.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/Mpris/MprisClient.h"
#include "Servers/DavTree.h"
#include "Servers/OnlineApiServer.h"
#include "Servers/SubsonicServer.h"
#include "Servers/WebDAVServer.h"

#include <QDir>
#include <QTest>
#include <QTimer>
#include <QUrlQuery>

#include <algorithm>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Item = AccessibleWindow::Item;

const QString davUser = u"lauscher"_s;
const QString davPassword = u"Kp7Zxw9@Qd4Tvmc/Hb2Rsnf密钥"_s;
const QString subsonicUser = u"hoerer"_s;
const QString subsonicPassword = u"Rt9Bhs4Ju7Eaxw+Ld3Mqvp音"_s;

/// A song of each source, and what it sounds like.
struct Source
{
    QString title;
    int hertz;
};
const Source imported{u"海边的歌"_s, 500};
const Source dav{u"云上的歌"_s, 700};
const Source subsonic{u"家里的歌"_s, 1100};
constexpr double seconds = 120;

/// Value of a query item in a request line, as it was sent.
QString sent(const QByteArray &request, const QString &name)
{
    const QByteArray target = request.split(' ').value(1);
    return QUrlQuery(QUrl::fromEncoded(target).query(QUrl::FullyEncoded)).queryItemValue(name);
}

} // namespace

/// One listener, one session, songs of every source: each is heard, liked, and known again the next day.
class FourSourcesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everySourceIsHeardLikedAndFoundAgain();

private:
    void startServers();
    bool startPlayer();
    /// Presses something as soon as it can be pressed.
    bool press(const AccessibleWindow::Matches &matches);
    bool press(const QString &name) { return press(isNamed(name)); }
    bool pressTab(const QString &name) { return press(isNamed(name, u"page tab"_s)); }
    bool pressBeginning(const QString &beginning)
    {
        return press([&beginning](const Item &item) { return item.name.startsWith(beginning); });
    }
    /// Writes over what a field holds.
    bool fill(const QString &label, const QString &text);
    bool isLiked(const QString &title);
    /// Plays the song of a row, hears it and likes it.
    void hearAndLike(const Source &song);
    void useImportedSong();
    void useWebDAVServer();
    void useSubsonicServer();
    void useOnlineMusic();
    void findEverythingAgain();
    void lookForSecrets();

    Source m_onlineSong;
    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<VirtualDisplay> m_display;
    std::unique_ptr<SoundServer> m_sound;
    std::unique_ptr<Recorder> m_recorder;
    std::unique_ptr<KeyringSession> m_keyring;
    std::unique_ptr<AccessibleWindow> m_window;
    std::unique_ptr<DavTree> m_tree;
    std::unique_ptr<WebDAVServer> m_dav;
    std::unique_ptr<QTemporaryDir> m_music;
    std::unique_ptr<SubsonicServer> m_subsonic;
    std::unique_ptr<OnlineApiServer> m_online;
    std::unique_ptr<SecretWatch> m_watch;
    std::unique_ptr<SecretWatch> m_addresses;
    std::unique_ptr<MprisClient> m_desktop;
    std::unique_ptr<RunningPlayer> m_player;
    QString m_output;
    QByteArray m_titles;
    QTimer m_sampling;
};

void FourSourcesTest::init()
{
    const OnlineApiServer::Song online = OnlineApiServer::songWithAddress(u"netease"_s, u"redirect"_s);
    m_onlineSong = {online.name, online.frequency};
    m_home = std::make_unique<QTemporaryDir>();
    m_display = std::make_unique<VirtualDisplay>();
    QVERIFY(m_display->start());
    QVERIFY(m_display->addKeys(u"密钥音"_s + online.name));
    m_sound = std::make_unique<SoundServer>();
    QVERIFY(m_sound->start());
    m_recorder = std::make_unique<Recorder>(*m_sound);
    m_keyring = std::make_unique<KeyringSession>();
    QVERIFY(m_keyring->start());
    m_window = std::make_unique<AccessibleWindow>();
    QVERIFY(m_window->start(m_keyring->bus()));
    m_watch = std::make_unique<SecretWatch>(QStringList{davPassword, subsonicPassword});
    QVERIFY(m_watch->watchBus(m_keyring->bus()));
    startServers();
    // The player keeps addresses in its files, but the desktop has no use for them.
    m_addresses = std::make_unique<SecretWatch>(QStringList{
        m_dav->address().authority(), m_subsonic->address().authority(), m_online->address().authority()});
    QVERIFY(m_addresses->watchBus(m_keyring->bus()));
    m_desktop = std::make_unique<MprisClient>(m_keyring->bus());
    const auto look = [this] {
        if (!m_player || !m_player->isRunning())
            return;
        m_watch->lookAtProcess(m_player->processId());
        m_watch->lookAtWindows(m_player->environment());
        m_titles += m_player->windowTitle().toUtf8() + '\n';
    };
    m_sampling.callOnTimeout(this, look);
}

void FourSourcesTest::startServers()
{
    const QString folder = RunningPlayer::musicFolder(m_home->path());
    QVERIFY(QDir().mkpath(folder));
    const auto made = [](const QString &path, const Source &song) {
        return makeSong(path, {.title = song.title,
                               .artist = u"歌手"_s,
                               .album = u"专辑"_s,
                               .lyrics = {u"[00:01.00]词"_s},
                               .seconds = seconds,
                               .frequency = song.hertz});
    };
    QVERIFY(made(folder + u"/imported.mp3"_s, imported));
    m_tree = std::make_unique<DavTree>();
    QVERIFY(made(m_tree->pathOnDisk(dav.title + u".mp3"_s), dav));
    m_tree->adopt(dav.title + u".mp3"_s);
    m_dav = WebDAVServer::make(u"apache"_s);
    QVERIFY(m_dav->start(m_tree->root(), davUser, davPassword));
    m_music = std::make_unique<QTemporaryDir>();
    QVERIFY(made(m_music->filePath(u"home.mp3"_s), subsonic));
    m_subsonic = std::make_unique<SubsonicServer>();
    QVERIFY(m_subsonic->start(m_music->path(), subsonicUser, subsonicPassword));
    m_online = std::make_unique<OnlineApiServer>();
    QVERIFY(m_online->start({u"--seconds"_s, QString::number(seconds)}));
}

void FourSourcesTest::cleanup()
{
    m_sampling.stop();
    m_sampling.disconnect();
    m_player.reset();
    m_desktop.reset();
    m_addresses.reset();
    m_watch.reset();
    m_online.reset();
    m_subsonic.reset();
    m_music.reset();
    m_dav.reset();
    m_tree.reset();
    m_window.reset();
    m_keyring.reset();
    m_recorder.reset();
    m_sound.reset();
    m_display.reset();
    m_home.reset();
}

bool FourSourcesTest::startPlayer()
{
    m_player = std::make_unique<RunningPlayer>(m_display->name(), m_home->path());
    m_player->setVariable(u"DBUS_SESSION_BUS_ADDRESS"_s, QString::fromUtf8(m_keyring->busAddress()));
    const QString temporary = m_home->filePath(u"temporary"_s);
    m_player->setVariable(u"TMPDIR"_s, temporary);
    return QDir().mkpath(temporary) && m_player->start();
}

bool FourSourcesTest::press(const AccessibleWindow::Matches &matches)
{
    return pressInWindow(*m_window, *m_player, matches);
}

bool FourSourcesTest::fill(const QString &label, const QString &text)
{
    if (!press(isField(label)))
        return false;
    m_player->key(u"ctrl+a"_s);
    m_player->type(text);
    return true;
}

bool FourSourcesTest::isLiked(const QString &title)
{
    const auto isMeant = [&title](const Item &item) {
        return isRowOf(title)(item) && item.name.endsWith(u"，已喜欢"_s);
    };
    return m_window->find(isMeant).has_value();
}

void FourSourcesTest::hearAndLike(const Source &song)
{
    QVERIFY(press(isRowOf(song.title)));
    QVERIFY(m_recorder->hearTone(song.hertz));
    QTRY_COMPARE(m_player->windowTitle(), song.title);
    // The desktop shows it too: it has gone over the bus that is watched.
    QTRY_COMPARE(m_desktop->metadata().value(u"xesam:title"_s).toString(), song.title);
    QCOMPARE(m_desktop->get(u"PlaybackStatus"_s).toString(), u"Playing"_s);
    const std::optional<Item> place = m_window->find(isRowOf(song.title));
    QVERIFY(place.has_value());
    m_player->rightClick(place->place.center().x(), place->place.center().y());
    QVERIFY(press(u"喜欢"_s));
    QVERIFY(isLiked(song.title));
    // It is still this song.
    QVERIFY(m_recorder->hearTone(song.hertz));
}

void FourSourcesTest::useImportedSong()
{
    QVERIFY(m_player->says(u"💾 已更新歌曲索引"_s));
    hearAndLike(imported);
}

void FourSourcesTest::useWebDAVServer()
{
    QVERIFY(pressTab(u"网盘"_s));
    QVERIFY(press(u"添加服务器"_s));
    QVERIFY(press(u"添加 WebDAV"_s));
    QVERIFY(fill(u"名称"_s, u"NAS"_s));
    QVERIFY(fill(u"服务器地址"_s, m_dav->address().toString()));
    QVERIFY(fill(u"用户名"_s, davUser));
    QVERIFY(fill(u"密码"_s, davPassword));
    QVERIFY(press(u"保存"_s));
    QVERIFY(pressBeginning(u"NAS，"_s));
    QVERIFY(press(u"扫描"_s));
    hearAndLike(dav);
}

void FourSourcesTest::useSubsonicServer()
{
    QVERIFY(pressBeginning(u"返回"_s));
    QVERIFY(press(u"添加服务器"_s));
    QVERIFY(press(u"添加 Navidrome"_s));
    QVERIFY(fill(u"名称"_s, u"Home"_s));
    QVERIFY(fill(u"服务器地址"_s, m_subsonic->address().toString()));
    QVERIFY(fill(u"用户名"_s, subsonicUser));
    QVERIFY(fill(u"密码"_s, subsonicPassword));
    QVERIFY(press(u"保存"_s));
    QVERIFY(pressBeginning(u"Home，"_s));
    hearAndLike(subsonic);
}

void FourSourcesTest::useOnlineMusic()
{
    QVERIFY(pressTab(u"搜索"_s));
    QVERIFY(press(u"在线"_s));
    QVERIFY(press(u"API 服务器"_s));
    QVERIFY(fill(u"API 服务器地址"_s, m_online->address().toString()));
    QVERIFY(press(u"保存设置"_s));
    QVERIFY(press(u"关闭"_s));
    QVERIFY(fill(u"搜索歌曲、艺术家、专辑"_s, m_onlineSong.title));
    m_player->key(u"Return"_s);
    QVERIFY(m_player->says(u"Found 1 results"_s));
    hearAndLike(m_onlineSong);
}

void FourSourcesTest::findEverythingAgain()
{
    QVERIFY(isLiked(imported.title));
    QVERIFY(isLiked(dav.title));
    QVERIFY(pressTab(u"网盘"_s));
    QVERIFY(pressBeginning(u"NAS，"_s));
    QVERIFY(isLiked(dav.title));
    QVERIFY(pressBeginning(u"返回"_s));
    QVERIFY(pressBeginning(u"Home，"_s));
    QVERIFY(isLiked(subsonic.title));

    // The playlists keep what the library can find again by its id alone, and online songs whole.
    QVERIFY(pressTab(u"歌单"_s));
    QVERIFY(pressBeginning(u"我喜欢的音乐，"_s));
    QVERIFY(isLiked(imported.title));
    std::optional<QList<Item>> shown;
    QTRY_VERIFY((shown = m_window->items()));
    const auto isShown = [&shown](const Source &song) {
        return std::ranges::any_of(*shown, isRowOf(song.title));
    };
    QVERIFY(isShown(imported));
    QVERIFY(!isShown(dav));
    QVERIFY(!isShown(subsonic));
    QVERIFY(pressBeginning(u"返回"_s));
    QVERIFY(pressBeginning(u"我喜欢的音乐(在线)，"_s));
    QVERIFY(press(isRowOf(m_onlineSong.title)));
    QVERIFY(m_recorder->hearTone(m_onlineSong.hertz));
}

void FourSourcesTest::lookForSecrets()
{
    // What signs a request is worth as much as the password.
    const QList<QByteArray> requests = m_subsonic->requests();
    QVERIFY(!requests.isEmpty());
    for (const QByteArray &request : requests) {
        for (const QString &name : {u"t"_s, u"s"_s}) {
            const QString value = sent(request, name);
            QVERIFY(!value.isEmpty());
            m_watch->add(value);
        }
    }
    // They can be found where they are.
    SecretWatch control({sent(requests.constFirst(), u"t"_s)});
    control.lookAt(u"requests"_s, requests.join('\n'));
    QVERIFY(!control.findings().isEmpty());
    m_watch->lookAt(u"output"_s, m_output.toUtf8());
    m_watch->lookAt(u"title of the window"_s, m_titles);
    m_watch->lookAtFiles(m_home->path());
    QVERIFY(m_watch->lookAtBus());
    QCOMPARE(m_watch->findings(), QStringList());
    QVERIFY(m_addresses->lookAtBus());
    QCOMPARE(m_addresses->findings(), QStringList());
}

void FourSourcesTest::everySourceIsHeardLikedAndFoundAgain()
{
    QVERIFY(startPlayer());
    m_sampling.start(500ms);
    const auto steps = {&FourSourcesTest::useImportedSong, &FourSourcesTest::useWebDAVServer,
                        &FourSourcesTest::useSubsonicServer, &FourSourcesTest::useOnlineMusic};
    for (const auto step : steps) {
        (this->*step)();
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(m_player->stop());
    m_output = m_player->output();

    QVERIFY(startPlayer());
    findEverythingAgain();
    if (QTest::currentTestFailed())
        return;
    QVERIFY(m_player->stop());
    m_output += m_player->output();
    lookForSecrets();
}

QTEST_GUILESS_MAIN(FourSourcesTest)
#include "tst_four_sources.moc"
