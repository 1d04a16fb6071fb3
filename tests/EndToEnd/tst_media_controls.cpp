// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/AccessibleWindow.h"
#include "EndToEnd/PressInWindow.h"
#include "EndToEnd/RunningPlayer.h"
#include "EndToEnd/VirtualDisplay.h"
#include "Fixtures/Keyring/PrivateBus.h"
#include "Fixtures/MadePicture.h"
#include "Fixtures/MadeSong.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/Mpris/MprisClient.h"

#include <QDir>
#include <QImage>
#include <QStandardPaths>
#include <QTest>
#include <QUrl>

#include <algorithm>
#include <cmath>

#include <sys/stat.h>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr double seconds = 120;

/// A song, what it sounds like and what its cover looks like.
struct Made
{
    QString title;
    int hertz;
    QColor cover;
};
const Made red{u"红色的歌"_s, 500, Qt::red};
const Made green{u"绿色的歌"_s, 900, Qt::green};
const Made blue{u"蓝色的歌"_s, 1300, Qt::blue};
const QList<Made> songs{red, green, blue};
/// One tone for a minute, then the other.
const QString twoTones = u"两个音"_s;
constexpr int lowTone = 300;
constexpr int highTone = 2100;

Made madeSong(const QString &title)
{
    const auto found = std::ranges::find(songs, title, &Made::title);
    return found == songs.end() ? Made{title, lowTone, QColor()} : *found;
}

uint mode(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777U : 0;
}

} // namespace

/// The running program under the desktop's controls: playerctl presses, and what is heard tells.
class TestMediaControls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void playingAndPausing();
    void stoppingAndPlayingAnew();
    void nextAndPrevious();
    void positions();
    void volume();
    void modes();
    void coversArePrivateFiles();
    void withoutASongNothingHappens();
    void theSongOfTheLastRunIsThere();
    void raisingAndQuitting();

private:
    /// What playerctl says to that; with its error.
    QString ask(const QStringList &arguments);
    QString title() { return ask({u"metadata"_s, u"xesam:title"_s}); }
    QString status() { return ask({u"status"_s}); }
    double position() { return ask({u"position"_s}).toDouble(); }
    bool startPlayer();
    bool play(const QString &title);
    /// The song that is shown is the one that is heard.
    bool hearsWhatIsShown();
    float loudness();

    SoundFiles m_files;
    QString m_twoTones;
    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<VirtualDisplay> m_display;
    std::unique_ptr<SoundServer> m_sound;
    std::unique_ptr<Recorder> m_recorder;
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<AccessibleWindow> m_window;
    std::unique_ptr<MprisClient> m_client;
    std::unique_ptr<RunningPlayer> m_player;
};

void TestMediaControls::initTestCase()
{
    QVERIFY2(!QStandardPaths::findExecutable(u"playerctl"_s).isEmpty(), "scripts/setup installs playerctl");
    m_twoTones = m_files.make(u"tones.flac"_s, {{lowTone, seconds / 2}, {highTone, seconds / 2}});
    QVERIFY(!m_twoTones.isEmpty());
}

void TestMediaControls::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    m_display = std::make_unique<VirtualDisplay>();
    QVERIFY(m_display->start());
    m_sound = std::make_unique<SoundServer>();
    QVERIFY(m_sound->start());
    m_recorder = std::make_unique<Recorder>(*m_sound);
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->start());
    m_window = std::make_unique<AccessibleWindow>();
    QVERIFY(m_window->start(*m_bus));
    m_client = std::make_unique<MprisClient>(*m_bus);
    const QString folder = RunningPlayer::musicFolder(m_home->path());
    QVERIFY(QDir().mkpath(folder));
    for (const Made &song : songs)
        QVERIFY(makeSong(u"%1/%2.mp3"_s.arg(folder, song.title), {.title = song.title,
                                                                  .artist = u"歌手 & 朋友"_s,
                                                                  .album = u"专辑"_s,
                                                                  .cover = madeJpeg(song.cover),
                                                                  .seconds = seconds,
                                                                  .frequency = song.hertz}));
    QVERIFY(QFile::copy(m_twoTones, u"%1/%2.flac"_s.arg(folder, twoTones)));
    QVERIFY(startPlayer());
}

void TestMediaControls::cleanup()
{
    if (QTest::currentTestFailed() && m_player)
        qWarning().noquote() << m_player->output();
    m_player.reset();
    m_client.reset();
    m_window.reset();
    m_bus.reset();
    m_recorder.reset();
    m_sound.reset();
    m_display.reset();
    m_home.reset();
}

bool TestMediaControls::startPlayer()
{
    m_player = std::make_unique<RunningPlayer>(m_display->name(), m_home->path());
    m_player->setVariable(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus->address());
    return m_player->start() && m_client->findsPlayer();
}

QString TestMediaControls::ask(const QStringList &arguments)
{
    QProcess tool;
    tool.setProcessEnvironment(m_player->environment());
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(u"playerctl"_s, QStringList{u"--player=cadorel"_s} + arguments);
    const bool ended = QTest::qWaitFor([&tool] { return tool.state() == QProcess::NotRunning; }, 20'000);
    const QString said = QString::fromUtf8(tool.readAll()).trimmed();
    return ended ? said : u"no answer"_s;
}

bool TestMediaControls::play(const QString &title)
{
    return pressInWindow(*m_window, *m_player, isRowOf(title)) &&
           m_recorder->hearTone(madeSong(title).hertz) &&
           QTest::qWaitFor([this] { return status() == "Playing"_L1; }, 20'000);
}

bool TestMediaControls::hearsWhatIsShown()
{
    return m_recorder->hearTone(madeSong(title()).hertz);
}

float TestMediaControls::loudness()
{
    m_recorder->clear();
    if (!m_recorder->hear(500ms))
        return -1;
    return *std::ranges::max_element(m_recorder->samples());
}

void TestMediaControls::playingAndPausing()
{
    QCOMPARE(ask({u"--list-all"_s}), u"cadorel"_s);
    QVERIFY(play(red.title));
    QCOMPARE(title(), red.title);
    QCOMPARE(ask({u"metadata"_s, u"artist"_s}), u"歌手 & 朋友"_s);
    QCOMPARE(ask({u"metadata"_s, u"album"_s}), u"专辑"_s);
    QTRY_VERIFY(std::abs((ask({u"metadata"_s, u"mpris:length"_s}).toDouble() / 1e6) - seconds) < 0.2);

    QCOMPARE(ask({u"pause"_s}), QString());
    QTRY_COMPARE(status(), u"Paused"_s);
    QVERIFY(m_recorder->hearSilence(500ms, 10s));
    const double paused = position();
    QVERIFY(paused > 0);
    QCOMPARE(ask({u"pause"_s}), QString()); // once more changes nothing
    QCOMPARE(status(), u"Paused"_s);
    QCOMPARE(position(), paused);

    QCOMPARE(ask({u"play"_s}), QString());
    QTRY_COMPARE(status(), u"Playing"_s);
    QVERIFY(m_recorder->hearTone(red.hertz));
    QTRY_VERIFY(position() > paused);

    QCOMPARE(ask({u"play-pause"_s}), QString());
    QTRY_COMPARE(status(), u"Paused"_s);
    QVERIFY(m_recorder->hearSilence(500ms, 10s));
    QCOMPARE(ask({u"play-pause"_s}), QString());
    QTRY_COMPARE(status(), u"Playing"_s);
    QVERIFY(m_recorder->hearTone(red.hertz));

    // An address of somebody else's is not opened.
    QVERIFY(!ask({u"open"_s, u"https://127.0.0.1/a.mp3"_s}).isEmpty());
    QCOMPARE(title(), red.title);
    QCOMPARE(status(), u"Playing"_s);
    QVERIFY(m_player->stop());
}

void TestMediaControls::stoppingAndPlayingAnew()
{
    QVERIFY(play(twoTones));
    QCOMPARE(ask({u"position"_s, u"90"_s}), QString());
    QVERIFY(m_recorder->hearTone(highTone));
    QCOMPARE(ask({u"stop"_s}), QString());
    QTRY_COMPARE(status(), u"Stopped"_s);
    QVERIFY(m_recorder->hearSilence(500ms, 10s));
    QTRY_COMPARE(position(), 0.0);
    QCOMPARE(title(), twoTones);
    QCOMPARE(ask({u"play"_s}), QString());
    QTRY_COMPARE(status(), u"Playing"_s);
    QVERIFY(m_recorder->hearTone(lowTone)); // from the start
    QVERIFY(position() < seconds / 2);
    QVERIFY(m_player->stop());
}

void TestMediaControls::nextAndPrevious()
{
    QVERIFY(play(red.title));
    QCOMPARE(ask({u"next"_s}), QString());
    QTRY_VERIFY(title() != red.title);
    const QString second = title();
    QVERIFY(hearsWhatIsShown());
    // From within the first seconds it goes to the song before. Paused, the machine may take its time.
    QCOMPARE(ask({u"pause"_s}), QString());
    QTRY_COMPARE(status(), u"Paused"_s);
    QCOMPARE(ask({u"position"_s, u"1"_s}), QString());
    const auto hasJustBegun = [this] { return position() > 0 && position() < 2; };
    QTRY_VERIFY(hasJustBegun()); // seeking is not exact
    QCOMPARE(ask({u"previous"_s}), QString());
    QTRY_COMPARE(title(), red.title);
    QTRY_COMPARE(status(), u"Playing"_s);
    QVERIFY(m_recorder->hearTone(red.hertz));
    // Later it goes to the start of this one.
    QCOMPARE(ask({u"position"_s, u"60"_s}), QString());
    QTRY_VERIFY(position() >= 60);
    QCOMPARE(ask({u"previous"_s}), QString());
    QTRY_VERIFY(position() < 50);
    QCOMPARE(title(), red.title);
    QVERIFY(second != title());
    QVERIFY(m_player->stop());
}

void TestMediaControls::positions()
{
    QVERIFY(play(twoTones));
    m_client->takeJumps();
    QCOMPARE(ask({u"position"_s, u"80"_s}), QString());
    QVERIFY(m_recorder->hearTone(highTone));
    QVERIFY(position() >= 80);
    QCOMPARE(ask({u"position"_s, u"40-"_s}), QString());
    QVERIFY(m_recorder->hearTone(lowTone));
    QVERIFY(position() >= 40);
    QVERIFY(position() < 60);
    QCOMPARE(ask({u"position"_s, u"30+"_s}), QString());
    QVERIFY(m_recorder->hearTone(highTone));
    const QList<qlonglong> jumps = m_client->takeJumps();
    QVERIFY2(jumps.size() >= 3, qPrintable(QString::number(jumps.size())));
    QVERIFY(std::ranges::any_of(jumps, [](qlonglong jump) { return std::abs(jump - 80'000'000) < 500'000; }));

    // Time goes by: nobody is told, but who asks hears it.
    m_client->takeChanges();
    m_client->takeJumps();
    const double before = position();
    QTRY_VERIFY(position() > before + 2);
    QCOMPARE(m_client->takeChanges(), QList<QVariantMap>());
    QCOMPARE(m_client->takeJumps(), QList<qlonglong>());

    // Beyond the end there is the next song.
    QCOMPARE(ask({u"position"_s, u"500+"_s}), QString());
    QTRY_VERIFY(title() != twoTones);
    QVERIFY(hearsWhatIsShown());
    QVERIFY(m_player->stop());
}

void TestMediaControls::volume()
{
    QVERIFY(play(red.title));
    QCOMPARE(ask({u"volume"_s, u"1"_s}), QString());
    QTRY_COMPARE(ask({u"volume"_s}).toDouble(), 1.0);
    QVERIFY(m_recorder->hear(1s));
    const float loud = loudness();
    QVERIFY(loud > 0.05F);
    QCOMPARE(ask({u"volume"_s, u"0.75-"_s}), QString());
    QTRY_COMPARE(ask({u"volume"_s}).toDouble(), 0.25);
    QTRY_VERIFY(std::abs((loudness() / loud) - 0.25F) < 0.03F);
    QCOMPARE(ask({u"volume"_s, u"0"_s}), QString());
    QVERIFY(m_recorder->hearSilence(500ms, 10s));
    QCOMPARE(status(), u"Playing"_s);
    QCOMPARE(ask({u"volume"_s, u"7"_s}), QString());
    QTRY_COMPARE(ask({u"volume"_s}).toDouble(), 1.0);
    QTRY_VERIFY(std::abs((loudness() / loud) - 1) < 0.03F);
    QVERIFY(m_player->stop());
}

void TestMediaControls::modes()
{
    QVERIFY(play(red.title));
    QCOMPARE(ask({u"loop"_s}), u"None"_s);
    QCOMPARE(ask({u"shuffle"_s}), u"Off"_s);
    for (const QString &loop : {u"Track"_s, u"Playlist"_s, u"None"_s}) {
        QCOMPARE(ask({u"loop"_s, loop}), QString());
        QTRY_COMPARE(ask({u"loop"_s}), loop);
        QCOMPARE(ask({u"shuffle"_s}), u"Off"_s);
    }
    QCOMPARE(ask({u"shuffle"_s, u"On"_s}), QString());
    QTRY_COMPARE(ask({u"shuffle"_s}), u"On"_s);
    QCOMPARE(ask({u"loop"_s}), u"Playlist"_s);
    QCOMPARE(ask({u"shuffle"_s, u"Off"_s}), QString());
    QTRY_COMPARE(ask({u"shuffle"_s}), u"Off"_s);
    QCOMPARE(ask({u"loop"_s}), u"Playlist"_s);
    // It does what it says: the next of a repeated song is that song.
    QCOMPARE(ask({u"loop"_s, u"Track"_s}), QString());
    QTRY_COMPARE(ask({u"loop"_s}), u"Track"_s);
    QCOMPARE(ask({u"position"_s, u"60"_s}), QString());
    QTRY_VERIFY(position() >= 60);
    QCOMPARE(ask({u"next"_s}), QString());
    QTRY_VERIFY(position() < 50);
    QCOMPARE(title(), red.title);
    QVERIFY(m_player->stop());
}

void TestMediaControls::coversArePrivateFiles()
{
    const QString folder = m_home->filePath(u".cache/cadorel/NowPlaying"_s);
    const auto cover = [this] { return QUrl(ask({u"metadata"_s, u"mpris:artUrl"_s})); };
    QStringList paths;
    for (const Made &song : songs) {
        QVERIFY(play(song.title));
        QTRY_VERIFY(cover().isLocalFile());
        const QString path = cover().toLocalFile();
        QCOMPARE(QFileInfo(path).path(), folder);
        QCOMPARE(mode(path), 0600U);
        QVERIFY2(!paths.contains(path), qPrintable(path));
        paths.append(path);
        const QColor shown = QImage(path).pixelColor(10, 10);
        for (const auto [is, should] :
             {std::pair{shown.red(), song.cover.red()}, std::pair{shown.green(), song.cover.green()},
              std::pair{shown.blue(), song.cover.blue()}})
            QVERIFY(std::abs(is - should) < 20);
    }
    QCOMPARE(mode(folder), 0700U);
    QTRY_VERIFY(!QFile::exists(paths.constFirst()));
    QVERIFY(QFile::exists(paths.constLast()));
    // A song without one has none.
    QVERIFY(play(twoTones));
    QTRY_VERIFY(ask({u"metadata"_s}).contains(twoTones));
    QVERIFY(!ask({u"metadata"_s}).contains("artUrl"_L1));
    QVERIFY(m_player->stop());
    QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList());
}

void TestMediaControls::withoutASongNothingHappens()
{
    QCOMPARE(status(), u"Stopped"_s);
    for (const QString &command :
         {u"play"_s, u"pause"_s, u"play-pause"_s, u"stop"_s, u"next"_s, u"previous"_s})
        ask({command});
    ask({u"position"_s, u"10"_s});
    QCOMPARE(status(), u"Stopped"_s);
    QCOMPARE(m_client->metadata().keys(), QStringList{u"mpris:trackid"_s});
    QCOMPARE(m_recorder->hertzNow(), 0.0);
    QVERIFY(play(red.title));
    QVERIFY(m_player->stop());
}

void TestMediaControls::theSongOfTheLastRunIsThere()
{
    QVERIFY(play(blue.title));
    QCOMPARE(ask({u"position"_s, u"60"_s}), QString());
    QTRY_VERIFY(position() >= 60);
    QCOMPARE(ask({u"pause"_s}), QString());
    QTRY_COMPARE(status(), u"Paused"_s);
    const double left = position();
    QVERIFY(m_player->stop());
    QTRY_VERIFY(!m_bus->hasService(MprisBus::busName));

    QVERIFY(startPlayer());
    QTRY_COMPARE(status(), u"Paused"_s);
    QCOMPARE(title(), blue.title);
    QTRY_VERIFY(std::abs(position() - left) < 0.5);
    QTRY_VERIFY(QUrl(ask({u"metadata"_s, u"mpris:artUrl"_s})).isLocalFile());
    QCOMPARE(ask({u"play"_s}), QString());
    QVERIFY(m_recorder->hearTone(blue.hertz));
    QVERIFY(position() >= left - 0.5);
    QVERIFY(m_player->stop());
}

void TestMediaControls::raisingAndQuitting()
{
    const QString name = m_player->windowTitle();
    QVERIFY(!name.isEmpty());
    QCOMPARE(m_client->call(MprisClient::rootInterface, u"Raise"_s).errorName(), QString());
    QCOMPARE(m_player->windowTitle(), name);
    QCOMPARE(m_client->call(MprisClient::rootInterface, u"Quit"_s).errorName(), QString());
    QTRY_VERIFY(!m_player->isRunning());
    QVERIFY(m_player->stop()); // it ended without error
}

QTEST_GUILESS_MAIN(TestMediaControls)
#include "tst_media_controls.moc"
