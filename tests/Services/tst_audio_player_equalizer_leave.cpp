// SPDX-License-Identifier: GPL-3.0-or-later
// The equalizer switched off while a song is on its engine: the stream player takes the place over.
#include "Services/EqualizerSwitchBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;

class AudioPlayerEqualizerLeaveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void switchedOffTheStreamPlayerTakesThePlaceOver();
    void placeHandedToTheStreamPlayerIsTheOneHeardNow();
    void engineIsSilentBeforeTheStreamPlayerSounds();
    void streamPlayerWaitsUntilTheEngineHasFadedOut();
    void pausedWhileTheEngineFadesOutStaysPaused();
    void leftWhileTheEngineFadesOutPlaysTheOtherSong();
    void stateStaysWhileTheStreamPlayerLoads();
    void ticksOnTheWayMoveNothing();
    void switchedOffWhilePausedKeepsPlaceAndStaysPaused();
    void pausedOnTheWayStaysPaused();
    void playedOnTheWayPlays();
    void soughtOnTheWayGoesThere();
    void leftOnTheWayPlaysTheOtherSong();
    void streamPlayerThatCannotLoadShowsItsError();
    void songOnTheStreamPlayerEndsAndIsFollowed();
    void unknownDurationIsAskedForAgain();
};

void AudioPlayerEqualizerLeaveTest::switchedOffTheStreamPlayerTakesThePlaceOver()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    player.setVolume(0.5F);
    setEqualizer(bench, false);
    QCOMPARE(bench.console.take(),
             (QStringList{switchedOff(u"42.5"_s), u"🎛️ 切换回 AVPlayer，位置: 42.5"_s,
                          u"⏳ PlayerItem 状态: unknown (加载中...)"_s, u"✅ 已切换回 AVPlayer"_s}));
    QCOMPARE(bench.equalizer.calls, QStringList{u"stop"_s});
    QCOMPARE(bench.stream().calls, (QStringList{u"replace a.mp3"_s, u"seek 42.5"_s}));
    QVERIFY(bench.item().asset().prefersPreciseDuration);
    QCOMPARE(bench.stream().seeks.constFirst().toleranceBefore, 0.0);
    QCOMPARE(bench.stream().seeks.constFirst().toleranceAfter, 0.0);
    QCOMPARE(bench.stream().volume, 0.5F);
    QVERIFY(!player.usingEqualizerEngine());
    QCOMPARE(bench.playbackTimers(), 0);
    bench.item().becomeReady();
    arrive(bench);
    QCOMPARE(bench.stream().calls.constLast(), u"play"_s);
    QVERIFY(showsPlaying(bench, true));
    QCOMPARE(player.currentTime(), 42.5);
    QCOMPARE(player.duration(), 200.0);
    bench.stream().tick(43);
    QCOMPARE(player.currentTime(), 43.0);
    // The player's own state is observed again.
    bench.stream().setState(0, StreamPlayer::TimeControlStatus::paused);
    QVERIFY(showsPlaying(bench, false));
}

void AudioPlayerEqualizerLeaveTest::placeHandedToTheStreamPlayerIsTheOneHeardNow()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    bench.equalizer.position = 42.7001;
    setEqualizer(bench, false);
    // Rounded to the six hundredth part of a second.
    QCOMPARE(bench.stream().seeks.constFirst().time, 42.7);
    QCOMPARE(player.currentTime(), 42.7001);
}

void AudioPlayerEqualizerLeaveTest::engineIsSilentBeforeTheStreamPlayerSounds()
{
    PlayerBench bench;
    playEngine(bench, 10);
    setEqualizer(bench, false);
    QVERIFY(!bench.equalizer.playing);
    QCOMPARE(bench.stream().rate(), 0.0);
    arrive(bench);
    QCOMPARE(bench.stream().rate(), 1.0);
    QVERIFY(!bench.equalizer.playing);
}

void AudioPlayerEqualizerLeaveTest::streamPlayerWaitsUntilTheEngineHasFadedOut()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    setEqualizer(bench, false);
    bench.home.clock().advance(10ms);
    bench.item().becomeReady();
    bench.stream().finishSeek();
    QCOMPARE(bench.stream().rate(), 0.0);
    QVERIFY(showsPlaying(bench, true));
    bench.home.clock().advance(39ms);
    bench.stream().tick(42.5);
    QCOMPARE(bench.stream().rate(), 0.0);
    bench.home.clock().advance(1ms);
    QCOMPARE(bench.stream().rate(), 1.0);
    QVERIFY(showsPlaying(bench, true));
    QCOMPARE(player.currentTime(), 42.5);
    QCOMPARE(bench.playbackTimers(), 0);
}

void AudioPlayerEqualizerLeaveTest::pausedWhileTheEngineFadesOutStaysPaused()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    setEqualizer(bench, false);
    bench.stream().finishSeek();
    player.pause();
    bench.home.clock().advance(100ms);
    QCOMPARE(bench.stream().rate(), 0.0);
    QVERIFY(showsPlaying(bench, false));
    // No seek is under way any more.
    bench.stream().tick(42.6);
    QCOMPARE(player.currentTime(), 42.6);
}

void AudioPlayerEqualizerLeaveTest::leftWhileTheEngineFadesOutPlaysTheOtherSong()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    setEqualizer(bench, false);
    bench.stream().finishSeek();
    setEqualizer(bench, true);
    player.next();
    bench.home.clock().advance(100ms);
    QVERIFY(player.usingEqualizerEngine());
    QCOMPARE(songOf(player).id(), u"b"_s);
    QCOMPARE(bench.stream().rate(), 0.0);
    QVERIFY(showsPlaying(bench, true));
}

void AudioPlayerEqualizerLeaveTest::stateStaysWhileTheStreamPlayerLoads()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    QSignalSpy states(&player, &AudioPlayerService::isPlayingChanged);
    QSignalSpy times(&player, &AudioPlayerService::currentTimeChanged);
    QSignalSpy durations(&player, &AudioPlayerService::durationChanged);
    setEqualizer(bench, false);
    QVERIFY(showsPlaying(bench, true));
    arrive(bench);
    QCOMPARE(states.size(), 0);
    QCOMPARE(times.size(), 0);
    QCOMPARE(durations.size(), 0);
}

void AudioPlayerEqualizerLeaveTest::ticksOnTheWayMoveNothing()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    setEqualizer(bench, false);
    bench.stream().tick(0);
    QCOMPARE(player.currentTime(), 42.5);
    arrive(bench);
    bench.stream().tick(42.75);
    QCOMPARE(player.currentTime(), 42.75);
}

void AudioPlayerEqualizerLeaveTest::switchedOffWhilePausedKeepsPlaceAndStaysPaused()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    // Heard after the last tick, before the pause.
    bench.equalizer.position = 42.6;
    player.pause();
    setEqualizer(bench, false);
    bench.item().becomeReady();
    arrive(bench);
    QVERIFY(!bench.stream().calls.contains(u"play"_s));
    QCOMPARE(bench.stream().calls.constLast(), u"seek 42.6"_s);
    QVERIFY(showsPlaying(bench, false));
    QCOMPARE(player.currentTime(), 42.6);
    player.play();
    QCOMPARE(bench.stream().rate(), 1.0);
    QVERIFY(showsPlaying(bench, true));
}

void AudioPlayerEqualizerLeaveTest::pausedOnTheWayStaysPaused()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    setEqualizer(bench, false);
    player.pause();
    arrive(bench);
    QCOMPARE(bench.stream().rate(), 0.0);
    QVERIFY(showsPlaying(bench, false));
    QCOMPARE(player.currentTime(), 42.5);
}

void AudioPlayerEqualizerLeaveTest::playedOnTheWayPlays()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    player.pause();
    setEqualizer(bench, false);
    player.play();
    arrive(bench);
    QCOMPARE(bench.stream().rate(), 1.0);
    QVERIFY(showsPlaying(bench, true));
}

void AudioPlayerEqualizerLeaveTest::soughtOnTheWayGoesThere()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    setEqualizer(bench, false);
    player.seek(150);
    arrive(bench);
    QCOMPARE(bench.stream().rate(), 1.0);
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(player.currentTime(), 150.0);
    QVERIFY(bench.stream().seeks.isEmpty());
}

void AudioPlayerEqualizerLeaveTest::leftOnTheWayPlaysTheOtherSong()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    setEqualizer(bench, false);
    player.next();
    settle();
    QCOMPARE(songOf(player).id(), u"b"_s);
    QCOMPARE(player.currentTime(), 0.0);
    QVERIFY(showsPlaying(bench, true));
    QCOMPARE(bench.stream().calls,
             (QStringList{u"replace a.mp3"_s, u"seek 42.5"_s, u"replace b.mp3"_s, u"play"_s}));
}

void AudioPlayerEqualizerLeaveTest::streamPlayerThatCannotLoadShowsItsError()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    setEqualizer(bench, false);
    bench.item().fail(u"没有可用的音频设备"_s);
    settle();
    QCOMPARE(player.playError(), std::optional(u"没有可用的音频设备"_s));
    QVERIFY(!player.isPlaying());
    QVERIFY(!bench.stream().calls.contains(u"play"_s));
}

void AudioPlayerEqualizerLeaveTest::songOnTheStreamPlayerEndsAndIsFollowed()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    setEqualizer(bench, false);
    arrive(bench);
    bench.reachEnd();
    QCOMPARE(songOf(player).id(), u"b"_s);
    QVERIFY(!player.usingEqualizerEngine());
    QVERIFY(showsPlaying(bench, true));
}

void AudioPlayerEqualizerLeaveTest::unknownDurationIsAskedForAgain()
{
    PlayerBench bench;
    bench.equalizer.enabled = true;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {fileSong(u"a"_s)});
    bench.equalizer.position = 199.6;
    bench.home.clock().advance(tick);
    // The end took the duration away.
    QCOMPARE(player.duration(), 0.0);
    setEqualizer(bench, false);
    arrive(bench);
    bench.answerDuration(200);
    QCOMPARE(player.duration(), 200.0);
    QCOMPARE(player.currentTime(), 0.0);
    QVERIFY(showsPlaying(bench, false));
}

QTEST_GUILESS_MAIN(AudioPlayerEqualizerLeaveTest)
#include "tst_audio_player_equalizer_leave.moc"
