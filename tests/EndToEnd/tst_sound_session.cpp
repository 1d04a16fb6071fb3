// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/Await.h"
#include "Fakes/ConsoleLines.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Models/PlaybackSnapshot.h"
#include "Platform/EqualizerEngine/OutputAudioEngine.h"
#include "Platform/EqualizerEngine/PulseOutput.h"
#include "Platform/Linux/LinuxSystem.h"
#include "Platform/Linux/PulseAudioSession.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Linux/SystemRandom.h"
#include "Platform/Linux/Tags/FileAssetReader.h"
#include "Platform/Machine/FakeLogind.h"
#include "Platform/Mpv/MpvStreamPlayer.h"
#include "Platform/Pulse/MediaRole.h"
#include "Platform/Sql/SqlitePreferences.h"
#include "Services/AudioPlayerService.h"
#include "Services/EqualizerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/SystemMediaCenter.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

#include <memory>
#include <optional>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr double tone = 440;
constexpr double otherTone = 1320;

/// A player of real parts, between a sound server and a logind of the test's own.
class Listener
{
public:
    explicit Listener(bool usesEqualizer)
    {
        const auto folder = [this](const QString &name) {
            QDir().mkpath(m_home.filePath(name));
            return m_home.filePath(name);
        };
        m_platform.directories = {.documents = folder(u"music"_s),
                                  .applicationSupport = folder(u"data"_s),
                                  .caches = folder(u"caches"_s)};
        m_platform.preferences =
            std::make_unique<SqlitePreferences>(m_home.filePath(u"data/preferences.sqlite"_s));
        m_platform.clock = std::make_unique<SystemClock>();
        m_platform.random = std::make_unique<SystemRandom>();
        m_platform.system = std::make_unique<LinuxSystem>(m_platform.directories.applicationSupport);
        m_platform.assetReader = std::make_unique<FileAssetReader>();
        m_platform.makeStreamPlayer = [this] {
            return std::make_unique<MpvStreamPlayer>(*m_platform.assetReader,
                                                     QList<MpvHandle::Option>{{"ao", "pulse"}});
        };
        m_platform.audioSession = std::make_unique<PulseAudioSession>(logind.client());
        const auto link = std::make_shared<PulseLink>();
        const auto makeOutput = [link] { return std::make_unique<PulseOutput>(link); };
        m_equalizer = std::make_unique<EqualizerService>(*m_platform.preferences,
                                                         std::make_unique<OutputAudioEngine>(makeOutput));
        m_equalizer->setEnabled(usesEqualizer);
    }
    ~Listener()
    {
        m_player.reset();
        m_mediaCenter.reset();
        m_importService.reset();
        QThreadPool::globalInstance()->waitForDone();
    }
    Q_DISABLE_COPY_MOVE(Listener)

    FakeLogind logind;
    SoundServer server;

    AudioPlayerService &start()
    {
        m_mediaCenter = std::make_unique<SystemMediaCenter>(m_platform);
        m_importService = std::make_unique<LocalMusicImportService>(m_platform);
        m_player = std::make_unique<AudioPlayerService>(
            m_platform, *m_importService,
            AudioPlayerParts{.equalizer = m_equalizer.get(), .mediaCenter = m_mediaCenter.get()});
        return *m_player;
    }
    AudioPlayerService &player() const { return *m_player; }
    /// Plays a file and waits until time passes in it. @return whether it does
    bool play(const QString &file)
    {
        m_player->playSong(song(file), {});
        return isGoingOn();
    }
    bool isGoingOn()
    {
        const double from = m_player->currentTime();
        return QTest::qWaitFor([&] { return m_player->isPlaying() && m_player->currentTime() > from + 0.3; },
                               patienceMs);
    }
    static Song song(const QString &file)
    {
        SongFields fields;
        fields.id = file;
        fields.title = u"Song"_s;
        fields.assetURL = QUrl::fromLocalFile(file);
        return Song(fields);
    }
    bool hasStored() const { return m_platform.preferences->contains(u"lastPlaybackState"_s); }
    void forgetStored() { m_platform.preferences->remove(u"lastPlaybackState"_s); }

private:
    QTemporaryDir m_home;
    ConsoleLines m_console;
    Platform m_platform;
    std::unique_ptr<EqualizerService> m_equalizer;
    std::unique_ptr<SystemMediaCenter> m_mediaCenter;
    std::unique_ptr<LocalMusicImportService> m_importService;
    std::unique_ptr<AudioPlayerService> m_player;
};

} // namespace

/// Calls, sleep and devices that go, from the sound server and logind through the player to what is heard, on
/// each of the two engines.
class TestSoundSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup() { m_listener.reset(); }

    void a_device_that_goes_pauses_and_it_stays_so_data() { engines(); }
    void a_device_that_goes_pauses_and_it_stays_so();
    void a_call_pauses_and_its_end_goes_on_data() { engines(); }
    void a_call_pauses_and_its_end_goes_on();
    void a_mute_by_the_listener_pauses_nothing_data() { engines(); }
    void a_mute_by_the_listener_pauses_nothing();
    void the_machine_sleeps_after_the_pause_and_wakes_in_silence_data() { engines(); }
    void the_machine_sleeps_after_the_pause_and_wakes_in_silence();
    void a_call_that_is_slept_through_does_not_go_on_data() { engines(); }
    void a_call_that_is_slept_through_does_not_go_on();
    void without_a_server_it_says_so_and_plays_once_there_is_one_data();
    void without_a_server_it_says_so_and_plays_once_there_is_one();

private:
    static void engines();
    /// Makes the listener for the row of data, and the player in front of a server that makes way for calls.
    bool start();
    bool isOnTheRightEngine() const
    {
        QFETCH(bool, usesEqualizer);
        return m_listener->player().usingEqualizerEngine() == usesEqualizer;
    }

    SoundFiles m_files;
    QString m_song;
    QString m_other;
    std::optional<Listener> m_listener;
};

void TestSoundSession::engines()
{
    QTest::addColumn<bool>("usesEqualizer");
    QTest::newRow("stream player") << false;
    QTest::newRow("equalizer engine") << true;
}

void TestSoundSession::initTestCase()
{
    QVERIFY2(SoundServer::available(), "no PulseAudio: scripts/setup installs it");
    declareMusic();
    m_song = m_files.make(u"song.flac"_s, {{tone, 60}});
    m_other = m_files.make(u"other.flac"_s, {{otherTone, 60}});
    QVERIFY(!m_song.isEmpty() && !m_other.isEmpty());
}

bool TestSoundSession::start()
{
    QFETCH(bool, usesEqualizer);
    m_listener.emplace(usesEqualizer);
    if (!m_listener->logind.appear() || !m_listener->server.start() ||
        m_listener->server.ask({u"load-module"_s, u"module-role-cork"_s}).isEmpty())
        return false;
    m_listener->start();
    return QTest::qWaitFor([this] { return m_listener->logind.isHeldUp(); }, patienceMs);
}

void TestSoundSession::a_device_that_goes_pauses_and_it_stays_so()
{
    QVERIFY(start());
    const QByteArray headphones = m_listener->server.plugIn(u"headphones"_s);
    QVERIFY(!headphones.isEmpty());
    QVERIFY(m_listener->play(m_song));
    QVERIFY(isOnTheRightEngine());
    Recorder speaker(m_listener->server);
    QVERIFY(m_listener->server.unload(headphones));
    QTRY_VERIFY_WITH_TIMEOUT(!m_listener->player().isPlaying(), patienceMs);
    QVERIFY(m_listener->hasStored());
    // What was under way when they were pulled is all that the speaker gets.
    QVERIFY(speaker.hearSilence(1s, 20s));
    QVERIFY(!m_listener->server.plugIn(u"others"_s).isEmpty());
    QVERIFY(speaker.hearSilence(500ms, 20s));
    QVERIFY(!m_listener->player().isPlaying());
    // The listener decides to go on, aloud.
    m_listener->player().play();
    QVERIFY(m_listener->isGoingOn());
}

void TestSoundSession::a_call_pauses_and_its_end_goes_on()
{
    QVERIFY(start());
    QVERIFY(m_listener->play(m_song));
    QVERIFY(isOnTheRightEngine());
    Recorder speaker(m_listener->server);
    QVERIFY(speaker.hearTone(tone));
    auto call = m_listener->server.other(u"phone"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!m_listener->player().isPlaying(), patienceMs);
    QVERIFY(m_listener->hasStored());
    QVERIFY(speaker.hearSilence(500ms, 20s));
    const double place = m_listener->player().currentTime();
    call->kill();
    QVERIFY(m_listener->isGoingOn());
    QVERIFY(isOnTheRightEngine());
    QVERIFY(m_listener->player().currentTime() < place + 20);
    QVERIFY(speaker.hearTone(tone));
}

void TestSoundSession::a_mute_by_the_listener_pauses_nothing()
{
    QVERIFY(start());
    QVERIFY(m_listener->play(m_song));
    static const QRegularExpression number(u"Sink Input #(\\d+)"_s);
    const QString stream = number.match(QString::fromUtf8(m_listener->server.streams())).captured(1);
    QVERIFY(!m_listener->server.ask({u"set-sink-input-mute"_s, stream, u"1"_s}).isNull());
    Recorder speaker(m_listener->server);
    QVERIFY(speaker.hearSilence(500ms, 20s));
    QVERIFY(m_listener->isGoingOn());
    QVERIFY(!m_listener->server.ask({u"set-sink-input-mute"_s, stream, u"0"_s}).isNull());
    QVERIFY(speaker.hearTone(tone));
    QVERIFY(m_listener->isGoingOn());
}

void TestSoundSession::the_machine_sleeps_after_the_pause_and_wakes_in_silence()
{
    QVERIFY(start());
    QVERIFY(m_listener->play(m_song));
    m_listener->forgetStored();
    m_listener->logind.prepareForSleep(true);
    QVERIFY(QTest::qWaitFor([this] { return !m_listener->logind.isHeldUp(); }, patienceMs));
    QVERIFY(!m_listener->player().isPlaying());
    QVERIFY(m_listener->hasStored());
    m_listener->logind.prepareForSleep(false);
    QVERIFY(QTest::qWaitFor([this] { return m_listener->logind.isHeldUp(); }, patienceMs));
    Recorder speaker(m_listener->server);
    QVERIFY(speaker.hearSilence(500ms, 20s));
    QVERIFY(!m_listener->player().isPlaying());
    m_listener->player().play();
    QVERIFY(speaker.hearTone(tone));
    QVERIFY(isOnTheRightEngine());
}

void TestSoundSession::a_call_that_is_slept_through_does_not_go_on()
{
    QVERIFY(start());
    QVERIFY(m_listener->play(m_song));
    auto call = m_listener->server.other(u"phone"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!m_listener->player().isPlaying(), patienceMs);
    m_listener->logind.prepareForSleep(true);
    QVERIFY(QTest::qWaitFor([this] { return !m_listener->logind.isHeldUp(); }, patienceMs));
    m_listener->logind.prepareForSleep(false);
    QVERIFY(QTest::qWaitFor([this] { return m_listener->logind.isHeldUp(); }, patienceMs));
    call->kill();
    QVERIFY(
        QTest::qWaitFor([this] { return !m_listener->server.streams().contains("\"phone\""); }, patienceMs));
    Recorder speaker(m_listener->server);
    QVERIFY(speaker.hearSilence(500ms, 20s));
    QVERIFY(!m_listener->player().isPlaying());
}

void TestSoundSession::without_a_server_it_says_so_and_plays_once_there_is_one_data()
{
    QTest::addColumn<bool>("usesEqualizer");
    QTest::addColumn<bool>("isSameSong");
    QTest::newRow("stream player, the same song") << false << true;
    QTest::newRow("stream player, another song") << false << false;
    QTest::newRow("equalizer engine, the same song") << true << true;
    QTest::newRow("equalizer engine, another song") << true << false;
}

void TestSoundSession::without_a_server_it_says_so_and_plays_once_there_is_one()
{
    QFETCH(bool, usesEqualizer);
    QFETCH(bool, isSameSong);
    m_listener.emplace(usesEqualizer);
    AudioPlayerService &player = m_listener->start();
    player.playSong(Listener::song(m_song), {});
    QTRY_COMPARE_WITH_TIMEOUT(player.playError(), std::optional(u"没有可用的音频设备"_s), patienceMs);
    QVERIFY(!player.isPlaying());
    QVERIFY(m_listener->server.start());
    if (isSameSong)
        player.play();
    else
        player.playSong(Listener::song(m_other), {});
    QVERIFY(m_listener->isGoingOn());
    QVERIFY(isOnTheRightEngine());
    Recorder speaker(m_listener->server);
    QVERIFY(speaker.hearTone(isSameSong ? tone : otherTone));
    // And it is watched from now on.
    QVERIFY(!m_listener->server.ask({u"load-module"_s, u"module-role-cork"_s}).isEmpty());
    auto call = m_listener->server.other(u"phone"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!player.isPlaying(), patienceMs);
    call->kill();
    QVERIFY(m_listener->isGoingOn());
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestSoundSession)
#include "tst_sound_session.moc"
