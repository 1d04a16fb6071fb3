// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/AccessibleWindow.h"
#include "EndToEnd/PressInWindow.h"
#include "EndToEnd/RunningPlayer.h"
#include "EndToEnd/VirtualDisplay.h"
#include "Fixtures/Keyring/PrivateBus.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Fixtures/Sound/Spectrum.h"

#include <QDBusMessage>
#include <QDir>
#include <QStandardPaths>
#include <QTest>

#include <cmath>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Item = AccessibleWindow::Item;

constexpr double seconds = 120;
constexpr int firstHertz = 1000;
constexpr int secondHertz = 440;

} // namespace

/// The equalizer and the desktop's controls in the real program, found by their names and heard.
class EqualizingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void aBandIsTurnedDownInMidSongAndStaysSoTheNextDay();
    void playerctlDrivesTheRunningProgram();

private:
    bool startPlayer();
    bool press(const AccessibleWindow::Matches &matches);
    /// Amplitude of the tone that is heard from now on.
    double amplitudeNow(int hertz);
    /// Waits until it is so, to half a decibel.
    bool hearAmplitude(int hertz, double amplitude);
    /// What playerctl answers; nothing when it fails.
    std::optional<QString> ask(const QStringList &arguments);

    SoundFiles m_files;
    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<VirtualDisplay> m_display;
    std::unique_ptr<SoundServer> m_server;
    std::unique_ptr<Recorder> m_recorder;
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<AccessibleWindow> m_window;
    std::unique_ptr<RunningPlayer> m_player;
};

void EqualizingTest::initTestCase()
{
    QVERIFY(!m_files.make(u"a.flac"_s, {{firstHertz, seconds}}).isEmpty());
    QVERIFY(!m_files.make(u"b.flac"_s, {{secondHertz, seconds}}).isEmpty());
}

void EqualizingTest::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    m_display = std::make_unique<VirtualDisplay>();
    QVERIFY(m_display->start());
    m_server = std::make_unique<SoundServer>();
    QVERIFY(m_server->start());
    m_recorder = std::make_unique<Recorder>(*m_server);
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->start());
    m_window = std::make_unique<AccessibleWindow>();
    QVERIFY(m_window->start(*m_bus));
    const QString folder = RunningPlayer::musicFolder(m_home->path());
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(QFile::copy(m_files.path(u"a.flac"_s), folder + u"/甲.flac"_s));
    QVERIFY(QFile::copy(m_files.path(u"b.flac"_s), folder + u"/乙.flac"_s));
}

void EqualizingTest::cleanup()
{
    m_player.reset();
    m_window.reset();
    m_bus.reset();
    m_recorder.reset();
    m_server.reset();
    m_display.reset();
    m_home.reset();
}

bool EqualizingTest::startPlayer()
{
    m_player = std::make_unique<RunningPlayer>(m_display->name(), m_home->path());
    m_player->setVariable(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus->address());
    m_player->setVariable(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    return m_player->start();
}

bool EqualizingTest::press(const AccessibleWindow::Matches &matches)
{
    return pressInWindow(*m_window, *m_player, matches);
}

double EqualizingTest::amplitudeNow(int hertz)
{
    m_recorder->clear();
    if (!m_recorder->hear(400ms))
        return -1;
    const Spectrum::Peak peak = Spectrum(m_recorder->samples(), Recorder::sampleRate).loudest();
    return std::abs(peak.hertz - hertz) < 5 ? peak.amplitude : 0;
}

bool EqualizingTest::hearAmplitude(int hertz, double amplitude)
{
    constexpr double tolerance = 0.5; // decibels
    double heard = 0;
    const auto isSo = [&] {
        heard = amplitudeNow(hertz);
        return heard > 0 && std::abs(Spectrum::decibels(heard / amplitude)) <= tolerance;
    };
    for (int attempt = 0; attempt < 20; ++attempt) {
        if (isSo())
            return true;
    }
    qWarning() << "the amplitude is" << heard << "instead of" << amplitude;
    return false;
}

std::optional<QString> EqualizingTest::ask(const QStringList &arguments)
{
    QProcess tool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus->address());
    tool.setProcessEnvironment(environment);
    tool.start(u"playerctl"_s, QStringList{u"--player=cadorel"_s} + arguments);
    if (!tool.waitForFinished() || tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}

void EqualizingTest::aBandIsTurnedDownInMidSongAndStaysSoTheNextDay()
{
    QVERIFY(startPlayer());
    QVERIFY(m_player->says(u"💾 已更新歌曲索引"_s));
    QVERIFY(press(isRowOf(u"甲"_s)));
    QVERIFY(m_recorder->hearTone(firstHertz));
    const double plain = amplitudeNow(firstHertz);
    QVERIFY(plain > 0.1);

    QVERIFY(press(isDisc));
    QVERIFY(press(isNamed(u"均衡器：去开启"_s)));
    QVERIFY(press(isNamed(u"启用均衡器"_s)));
    QVERIFY(m_player->says(u"✅ 已切换到均衡器引擎"_s));
    QVERIFY(hearAmplitude(firstHertz, plain)); // flat: nobody hears the change

    const std::optional<Item> band = m_window->find(isNamed(u"1000 赫兹"_s));
    QVERIFY(band);
    QCOMPARE(band->role, u"slider"_s);
    QCOMPARE(m_window->value(*band), 0.0);
    m_window->setValue(*band, -12);
    QVERIFY(hearAmplitude(firstHertz, plain * std::pow(10, -12.0 / 20)));
    QCOMPARE(m_window->value(*band), -12.0);
    const std::optional<Item> moved = m_window->find(isNamed(u"1000 赫兹"_s));
    QVERIFY(moved);
    QCOMPARE(moved->description, u"-12 分贝"_s);

    // Off and on again: the song goes on.
    QVERIFY(press(isNamed(u"启用均衡器"_s)));
    QVERIFY(hearAmplitude(firstHertz, plain));
    QVERIFY(press(isNamed(u"启用均衡器"_s)));
    QVERIFY(hearAmplitude(firstHertz, plain * std::pow(10, -12.0 / 20)));
    QVERIFY(m_player->stop());

    QVERIFY(startPlayer());
    QVERIFY(press(isRowOf(u"甲"_s)));
    QVERIFY(m_player->says(u"🎛️ 均衡器引擎播放开始"_s));
    QVERIFY(hearAmplitude(firstHertz, plain * std::pow(10, -12.0 / 20)));
    QVERIFY(m_player->stop());
}

void EqualizingTest::playerctlDrivesTheRunningProgram()
{
    QVERIFY2(!QStandardPaths::findExecutable(u"playerctl"_s).isEmpty(),
             "no playerctl: scripts/setup installs it");
    QVERIFY(startPlayer());
    QVERIFY(m_player->says(u"💾 已更新歌曲索引"_s));
    QVERIFY(press(isRowOf(u"甲"_s)));
    QVERIFY(m_recorder->hearTone(firstHertz));
    QTRY_COMPARE(ask({u"status"_s}), std::optional(u"Playing"_s));
    QTRY_COMPARE(ask({u"metadata"_s, u"title"_s}), std::optional(u"甲"_s));

    QVERIFY(ask({u"pause"_s}).has_value());
    QVERIFY(m_recorder->hearSilence(500ms, 10s));
    QTRY_COMPARE(ask({u"status"_s}), std::optional(u"Paused"_s));
    QVERIFY(ask({u"play"_s}).has_value());
    QVERIFY(m_recorder->hearTone(firstHertz));
    QVERIFY(ask({u"play-pause"_s}).has_value());
    QVERIFY(m_recorder->hearSilence(500ms, 10s));
    QVERIFY(ask({u"play-pause"_s}).has_value());
    QVERIFY(m_recorder->hearTone(firstHertz));
    QVERIFY(ask({u"next"_s}).has_value());
    QVERIFY(m_recorder->hearTone(secondHertz));
    QTRY_COMPARE(ask({u"metadata"_s, u"title"_s}), std::optional(u"乙"_s));
    QVERIFY(ask({u"previous"_s}).has_value());
    QVERIFY(m_recorder->hearTone(firstHertz));

    QVERIFY(ask({u"position"_s, u"60"_s}).has_value());
    QTRY_VERIFY(ask({u"position"_s}).value_or(QString()).toDouble() >= 60);
    QVERIFY(ask({u"position"_s, u"10-"_s}).has_value());
    QTRY_VERIFY(ask({u"position"_s}).value_or(QString()).toDouble() < 60);
    QVERIFY(m_recorder->hearTone(firstHertz));
    const double loud = amplitudeNow(firstHertz);
    QVERIFY(ask({u"volume"_s, u"0.5"_s}).has_value());
    QVERIFY(hearAmplitude(firstHertz, loud / 2));
    QVERIFY(ask({u"loop"_s, u"Track"_s}).has_value());
    QTRY_COMPARE(ask({u"loop"_s}), std::optional(u"Track"_s));
    QVERIFY(ask({u"loop"_s, u"Playlist"_s}).has_value());
    QTRY_COMPARE(ask({u"loop"_s}), std::optional(u"Playlist"_s));
    QVERIFY(ask({u"shuffle"_s, u"On"_s}).has_value());
    QTRY_COMPARE(ask({u"shuffle"_s}), std::optional(u"On"_s));

    QVERIFY(ask({u"stop"_s}).has_value());
    QVERIFY(m_recorder->hearSilence(500ms, 10s));
    QVERIFY(ask({u"play"_s}).has_value());
    QVERIFY(m_recorder->hearTone(firstHertz));

    // Asked to quit, the program ends, and the desktop shows it no more.
    const QDBusMessage quit =
        QDBusMessage::createMethodCall(u"org.mpris.MediaPlayer2.cadorel"_s, u"/org/mpris/MediaPlayer2"_s,
                                       u"org.mpris.MediaPlayer2"_s, u"Quit"_s);
    QVERIFY(m_bus->connection(u"desktop"_s).send(quit));
    QTRY_VERIFY_WITH_TIMEOUT(!m_player->isRunning(), 20'000);
    QVERIFY(!m_bus->hasService(u"org.mpris.MediaPlayer2.cadorel"_s));
    QVERIFY(QDir(m_home->path() + u"/.cache/cadorel/NowPlaying"_s).isEmpty());
}

QTEST_GUILESS_MAIN(EqualizingTest)
#include "tst_equalizing.moc"
