// SPDX-License-Identifier: GPL-3.0-or-later
// The engine without its sound device, at and past the end of its song, and put together as in the program.
#include "Fakes/FakeAudioEngine.h"
#include "Platform/SharedServices.h"
#include "Services/EqualizerService.h"
#include "Services/EqualizerSwitchBench.h"

#include <QScopeGuard>
#include <QTest>

using namespace cadorel;

class AudioPlayerEqualizerDeviceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void deviceThatGoesAwayStopsTheSong();
    void deviceThatGoesAwayWhilePausedIsNoError();
    void songThatLostItsDevicePlaysOnOnceThereIsOne();
    void repeatedSongWithoutADeviceStops();
    void soughtPastTheEndIsSilentUntilTheClockEndsIt();
    void seekThatIsNoTimeIsTheStart();
    void thePlayerOfTheProcessPlaysThroughTheEqualizer_data();
    void thePlayerOfTheProcessPlaysThroughTheEqualizer();
};

void AudioPlayerEqualizerDeviceTest::deviceThatGoesAwayStopsTheSong()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    bench.equalizer.playing = false;
    bench.home.clock().advance(tick);
    QVERIFY(showsPlaying(bench, false));
    QCOMPARE(player.playError(), std::optional(u"音频设备已断开"_s));
    QCOMPARE(player.currentTime(), 42.5);
    QCOMPARE(bench.playbackTimers(), 0);
    QVERIFY(bench.snapshot().contains("\"position\":42.5,"));
}

void AudioPlayerEqualizerDeviceTest::deviceThatGoesAwayWhilePausedIsNoError()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    player.pause();
    bench.home.clock().advance(4 * tick);
    QVERIFY(!player.playError());
}

void AudioPlayerEqualizerDeviceTest::songThatLostItsDevicePlaysOnOnceThereIsOne()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    bench.equalizer.playing = false;
    bench.home.clock().advance(tick);
    bench.equalizer.playFailure = "没有可用的音频设备";
    player.play();
    QCOMPARE(player.playError(), std::optional(u"没有可用的音频设备"_s));
    QVERIFY(showsPlaying(bench, false));
    QCOMPARE(bench.playbackTimers(), 0);
    bench.equalizer.playFailure.clear();
    player.play();
    QVERIFY(showsPlaying(bench, true));
    QCOMPARE(player.currentTime(), 42.5);
    bench.equalizer.position = 43;
    bench.home.clock().advance(tick);
    QCOMPARE(player.currentTime(), 43.0);
}

void AudioPlayerEqualizerDeviceTest::repeatedSongWithoutADeviceStops()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    player.setPlayMode(PlayMode::repeatOne);
    bench.equalizer.playFailure = "没有可用的音频设备";
    bench.equalizer.position = 199.6;
    bench.home.clock().advance(tick);
    QVERIFY(showsPlaying(bench, false));
    QVERIFY(player.playError());
    QCOMPARE(bench.playbackTimers(), 0);
}

void AudioPlayerEqualizerDeviceTest::soughtPastTheEndIsSilentUntilTheClockEndsIt()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    player.seek(250);
    QCOMPARE(songOf(player).id(), u"a"_s);
    QVERIFY(player.isPlaying());
    bench.home.clock().advance(tick);
    QCOMPARE(songOf(player).id(), u"b"_s);
    QVERIFY(showsPlaying(bench, true));
}

void AudioPlayerEqualizerDeviceTest::seekThatIsNoTimeIsTheStart()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    for (const double time : {-1.0, qQNaN(), qInf()}) {
        player.seek(30);
        player.seek(time);
        QCOMPARE(player.currentTime(), 0.0);
        QCOMPARE(bench.equalizer.position, 0.0);
    }
}

void AudioPlayerEqualizerDeviceTest::thePlayerOfTheProcessPlaysThroughTheEqualizer_data()
{
    QTest::addColumn<bool>("machineHasOne");
    QTest::newRow("with an engine") << true;
    QTest::newRow("without") << false;
}

void AudioPlayerEqualizerDeviceTest::thePlayerOfTheProcessPlaysThroughTheEqualizer()
{
    QFETCH(bool, machineHasOne);
    const ConsoleLines console;
    TestPlatform home;
    home.platform.preferences->setBool(u"equalizer_enabled"_s, true);
    if (machineHasOne)
        home.platform.makeAudioEngine = [] { return std::make_unique<FakeAudioEngine>(); };
    setProcessPlatform(&home.platform);
    const auto release = qScopeGuard([&] {
        if (home.streamPlayer())
            home.streamPlayer()->lastItem()->answerDuration(std::unexpected(u"the test has ended"_s));
        settle();
        releaseSharedServices();
        setProcessPlatform(nullptr);
    });
    AudioPlayerService &player = AudioPlayerService::shared();
    QVERIFY(EqualizerService::shared().isEnabled());
    player.playSong(fileSong(u"a"_s), {});
    QCOMPARE(player.usingEqualizerEngine(), machineHasOne);
    QVERIFY(player.isPlaying());
    EqualizerService::shared().setEnabled(false);
    settle();
    QVERIFY(!player.usingEqualizerEngine());
}

QTEST_GUILESS_MAIN(AudioPlayerEqualizerDeviceTest)
#include "tst_audio_player_equalizer_device.moc"
