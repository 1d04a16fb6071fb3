// SPDX-License-Identifier: GPL-3.0-or-later
// The equalizer switched on while a song is there, and what is no switch: the song changes engines and keeps
// its place.
#include "Services/EqualizerSwitchBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;

class AudioPlayerEqualizerSwitchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hearsOfTheSwitchFromTheEventLoop();
    void switchAtStartIsNoChange();
    void withoutAnEqualizerNothingIsObserved();
    void switchedOnTheEngineTakesThePlaceOver();
    void switchedOnAtTheStartSeeksNowhere();
    void placeHandedToTheEngineIsTheOneHeardNow();
    void streamPlayerIsSilentBeforeTheEngineSounds();
    void nobodyIsToldOfAPauseOnTheWay();
    void engineSongShowsItsOwnDuration();
    void engineSongEndsByTheClock();
    void whatTheStreamPlayerTellsAfterwardsIsLate();
    void switchedOnWhilePausedKeepsPlaceAndStaysPaused();
    void switchedOnAtTheLastInstantWhilePausedStaysPaused();
    void switchedOnDuringASeekGoesWhereItLeads();
    void switchedOnDuringASeekOfAPausedSongStaysPaused();
    void restoredSongIsTakenOverPaused();
    void songThatEndedIsTakenOverAtItsStart();
    void engineThatFailsLeavesTheStreamPlayerPaused();
    void engineThatFailsToSoundLeavesTheStreamPlayerPaused();
    void engineThatFailsWhilePausedIsOnlyLogged();
    void afterAFailureTheStreamPlayerPlaysOn();
    void afterAFailureDuringASeekItDoesNotResumeByItself();
    void switchedOnAgainOnTheWayBackResumes();
    void offAndOnInOneGoEndsOnTheEngine();
    void onAndOffInOneGoEndsOnTheStreamPlayer();
    void theSameAgainSwitchesNothing();
    void streamFromAServerIsNotSwitchedAndTheNextFileUsesTheEngine();
    void webSongIsNotSwitched();
    void onlineSongWhoseAddressIsFetchedIsNotSwitched();
    void noSongIsNotSwitched();
};

void AudioPlayerEqualizerSwitchTest::hearsOfTheSwitchFromTheEventLoop()
{
    PlayerBench bench;
    playStream(bench, 5);
    bench.equalizer.setEnabled(true);
    QCOMPARE(bench.equalizer.calls, QStringList());
    settle();
    QVERIFY(bench.player().usingEqualizerEngine());
}

void AudioPlayerEqualizerSwitchTest::switchAtStartIsNoChange()
{
    PlayerBench bench;
    bench.equalizer.enabled = true;
    bench.start();
    settle();
    QCOMPARE(bench.console.take(), QStringList());
}

void AudioPlayerEqualizerSwitchTest::withoutAnEqualizerNothingIsObserved()
{
    PlayerBench bench;
    LocalMusicImportService importService(bench.home.platform);
    AudioPlayerService player(bench.home.platform, importService, {});
    bench.equalizer.setEnabled(true);
    settle();
    QVERIFY(!player.usingEqualizerEngine());
}

void AudioPlayerEqualizerSwitchTest::switchedOnTheEngineTakesThePlaceOver()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 42.5);
    player.setVolume(0.5F);
    setEqualizer(bench, true);
    QCOMPARE(bench.console.take(), (QStringList{switchedOn(u"42.5"_s), u"🎛️ 切换到均衡器引擎，位置: 42.5"_s,
                                                u"✅ 已切换到均衡器引擎"_s}));
    QCOMPARE(bench.stream().calls, QStringList{u"pause"_s});
    QCOMPARE(bench.equalizer.calls, (QStringList{u"prepare a.mp3"_s, u"seek 42.5"_s, u"play"_s}));
    QCOMPARE(bench.equalizer.volume, 0.5F);
    QVERIFY(player.usingEqualizerEngine());
    QVERIFY(showsPlaying(bench, true));
    QCOMPARE(player.currentTime(), 42.5);
    QCOMPARE(songOf(player).id(), u"a"_s);
    QCOMPARE(bench.playbackTimers(), 1);
    bench.equalizer.position = 43;
    bench.home.clock().advance(tick);
    QCOMPARE(player.currentTime(), 43.0);
    player.pause();
    QCOMPARE(bench.equalizer.calls.constLast(), u"pause"_s);
}

void AudioPlayerEqualizerSwitchTest::switchedOnAtTheStartSeeksNowhere()
{
    PlayerBench bench;
    playStream(bench, 0);
    setEqualizer(bench, true);
    QCOMPARE(bench.equalizer.calls, (QStringList{u"prepare a.mp3"_s, u"play"_s}));
}

void AudioPlayerEqualizerSwitchTest::placeHandedToTheEngineIsTheOneHeardNow()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 42.5);
    // The sound has gone on since the last tick.
    bench.item().position = 42.7;
    QCOMPARE(player.currentTime(), 42.5);
    setEqualizer(bench, true);
    QVERIFY(bench.equalizer.calls.contains(u"seek 42.7"_s));
    QCOMPARE(player.currentTime(), 42.7);
    QVERIFY(bench.console.take().contains(switchedOn(u"42.7"_s)));
}

void AudioPlayerEqualizerSwitchTest::streamPlayerIsSilentBeforeTheEngineSounds()
{
    PlayerBench bench;
    playStream(bench, 10);
    double rate = -1;
    bench.equalizer.onPlay = [&] { rate = bench.stream().rate(); };
    setEqualizer(bench, true);
    QVERIFY(bench.equalizer.playing);
    QCOMPARE(rate, 0.0);
}

void AudioPlayerEqualizerSwitchTest::nobodyIsToldOfAPauseOnTheWay()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 10);
    QSignalSpy states(&player, &AudioPlayerService::isPlayingChanged);
    setEqualizer(bench, true);
    setEqualizer(bench, false);
    arrive(bench);
    QCOMPARE(states.size(), 0);
    QVERIFY(showsPlaying(bench, true));
    QVERIFY(!bench.player().playError());
}

void AudioPlayerEqualizerSwitchTest::engineSongShowsItsOwnDuration()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 10);
    QCOMPARE(player.duration(), 199.5);
    setEqualizer(bench, true);
    QCOMPARE(player.duration(), 200.0);
}

void AudioPlayerEqualizerSwitchTest::engineSongEndsByTheClock()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    const QList<Song> queue = fileSongs({u"a"_s, u"b"_s});
    // Its length is not known yet.
    player.playSong(queue[0], queue);
    setEqualizer(bench, true);
    bench.equalizer.position = 199.5;
    bench.home.clock().advance(tick);
    QCOMPARE(songOf(player).id(), u"b"_s);
    QVERIFY(player.usingEqualizerEngine());
    QVERIFY(player.isPlaying());
}

void AudioPlayerEqualizerSwitchTest::whatTheStreamPlayerTellsAfterwardsIsLate()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    const std::shared_ptr<FakePlayerItem> item = bench.stream().lastItem();
    setEqualizer(bench, true);
    QCOMPARE(bench.stream().timeObservers(), 0);
    item->answerDuration(5);
    item->reachEnd();
    item->fail(u"late"_s);
    settle();
    QCOMPARE(player.duration(), 200.0);
    QCOMPARE(songOf(player).id(), u"a"_s);
    QVERIFY(!player.playError());
    QVERIFY(showsPlaying(bench, true));
}

void AudioPlayerEqualizerSwitchTest::switchedOnWhilePausedKeepsPlaceAndStaysPaused()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 42.5);
    player.pause();
    drop(bench);
    setEqualizer(bench, true);
    QCOMPARE(bench.equalizer.calls, (QStringList{u"prepare a.mp3"_s, u"seek 42.5"_s}));
    QVERIFY(player.usingEqualizerEngine());
    QVERIFY(showsPlaying(bench, false));
    QCOMPARE(player.currentTime(), 42.5);
    // An idle player runs no timer.
    QCOMPARE(bench.playbackTimers(), 0);
    player.play();
    QCOMPARE(bench.equalizer.calls.constLast(), u"play"_s);
    QVERIFY(showsPlaying(bench, true));
    QCOMPARE(bench.playbackTimers(), 1);
    QCOMPARE(bench.stream().rate(), 0.0);
}

void AudioPlayerEqualizerSwitchTest::switchedOnAtTheLastInstantWhilePausedStaysPaused()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 199.4);
    player.pause();
    setEqualizer(bench, true);
    bench.home.clock().advance(4 * tick);
    QCOMPARE(songOf(player).id(), u"a"_s);
    QCOMPARE(player.currentTime(), 199.4);
    QVERIFY(showsPlaying(bench, false));
}

void AudioPlayerEqualizerSwitchTest::switchedOnDuringASeekGoesWhereItLeads()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 10);
    player.seek(120);
    QVERIFY(!player.isPlaying());
    drop(bench);
    setEqualizer(bench, true);
    QCOMPARE(bench.equalizer.calls, (QStringList{u"prepare a.mp3"_s, u"seek 120"_s, u"play"_s}));
    QVERIFY(showsPlaying(bench, true));
    QCOMPARE(player.currentTime(), 120.0);
    // It lands after all.
    bench.stream().finishSeek();
    QCOMPARE(bench.stream().rate(), 0.0);
    QCOMPARE(bench.stream().calls, QStringList{u"pause"_s});
    QCOMPARE(player.currentTime(), 120.0);
    QVERIFY(bench.player().usingEqualizerEngine());
}

void AudioPlayerEqualizerSwitchTest::switchedOnDuringASeekOfAPausedSongStaysPaused()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 10);
    player.pause();
    player.seek(120);
    setEqualizer(bench, true);
    QCOMPARE(bench.equalizer.calls, (QStringList{u"prepare a.mp3"_s, u"seek 120"_s}));
    QVERIFY(showsPlaying(bench, false));
    QCOMPARE(player.currentTime(), 120.0);
}

void AudioPlayerEqualizerSwitchTest::restoredSongIsTakenOverPaused()
{
    PlayerBench bench;
    const Song song = bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    bench.start().playSong(song, {song});
    bench.answerDuration(150);
    bench.stream().tick(33.5);
    bench.player().pause();
    bench.restart();
    QCOMPARE(bench.player().currentTime(), 33.5);
    drop(bench);
    // Its item is not loaded yet.
    setEqualizer(bench, true);
    QCOMPARE(bench.equalizer.calls, (QStringList{u"prepare a.mp3"_s, u"seek 33.5"_s}));
    QCOMPARE(bench.player().currentTime(), 33.5);
    QCOMPARE(bench.player().duration(), 200.0);
    QVERIFY(showsPlaying(bench, false));
    bench.player().play();
    QVERIFY(bench.equalizer.playing);
    QCOMPARE(bench.stream().rate(), 0.0);
}

void AudioPlayerEqualizerSwitchTest::songThatEndedIsTakenOverAtItsStart()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {fileSong(u"a"_s)});
    bench.item().becomeReady();
    bench.answerDuration(200);
    bench.stream().tick(199.9);
    bench.reachEnd();
    QVERIFY(!player.isPlaying());
    drop(bench);
    setEqualizer(bench, true);
    QCOMPARE(bench.equalizer.calls, QStringList{u"prepare a.mp3"_s});
    QVERIFY(showsPlaying(bench, false));
    QCOMPARE(player.currentTime(), 0.0);
    QCOMPARE(player.duration(), 200.0);
}

void AudioPlayerEqualizerSwitchTest::engineThatFailsLeavesTheStreamPlayerPaused()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 42.5);
    bench.equalizer.failure = "无法读取此文件";
    setEqualizer(bench, true);
    QCOMPARE(bench.console.take(), (QStringList{switchedOn(u"42.5"_s), u"🎛️ 切换到均衡器引擎，位置: 42.5"_s,
                                                u"❌ 切换到均衡器引擎失败: 无法读取此文件"_s}));
    QVERIFY(!player.usingEqualizerEngine());
    QCOMPARE(bench.stream().rate(), 0.0);
    QVERIFY(showsPlaying(bench, false));
    QCOMPARE(player.playError(), std::optional(u"无法读取此文件"_s));
    QCOMPARE(player.currentTime(), 42.5);
    QCOMPARE(bench.playbackTimers(), 0);
}

void AudioPlayerEqualizerSwitchTest::engineThatFailsToSoundLeavesTheStreamPlayerPaused()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 42.5);
    bench.equalizer.playFailure = "没有可用的音频设备";
    setEqualizer(bench, true);
    QCOMPARE(bench.equalizer.calls.constLast(), u"stop"_s);
    QVERIFY(!player.usingEqualizerEngine());
    QVERIFY(showsPlaying(bench, false));
    QCOMPARE(player.playError(), std::optional(u"没有可用的音频设备"_s));
}

void AudioPlayerEqualizerSwitchTest::engineThatFailsWhilePausedIsOnlyLogged()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 42.5);
    player.pause();
    bench.console.take();
    bench.equalizer.failure = "无法读取此文件";
    setEqualizer(bench, true);
    QCOMPARE(bench.console.take().constLast(), u"❌ 切换到均衡器引擎失败: 无法读取此文件"_s);
    QVERIFY(!player.playError());
    QVERIFY(showsPlaying(bench, false));
}

void AudioPlayerEqualizerSwitchTest::afterAFailureTheStreamPlayerPlaysOn()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 42.5);
    bench.equalizer.failure = "无法读取此文件";
    setEqualizer(bench, true);
    player.play();
    QVERIFY(showsPlaying(bench, true));
    QCOMPARE(bench.stream().rate(), 1.0);
    bench.stream().tick(43);
    QCOMPARE(player.currentTime(), 43.0);
    // Switched off again there is nothing to switch back.
    drop(bench);
    setEqualizer(bench, false);
    QCOMPARE(bench.stream().calls, QStringList());
    QCOMPARE(bench.console.take(), QStringList{switchedOff(u"43.0"_s)});
    bench.reachEnd();
    QCOMPARE(songOf(player).id(), u"b"_s);
}

void AudioPlayerEqualizerSwitchTest::afterAFailureDuringASeekItDoesNotResumeByItself()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 10);
    player.seek(120);
    bench.equalizer.failure = "无法读取此文件";
    setEqualizer(bench, true);
    bench.stream().finishSeek();
    QCOMPARE(bench.stream().rate(), 0.0);
    QVERIFY(showsPlaying(bench, false));
    QVERIFY(player.playError());
    player.play();
    QCOMPARE(bench.stream().rate(), 1.0);
}

void AudioPlayerEqualizerSwitchTest::switchedOnAgainOnTheWayBackResumes()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    setEqualizer(bench, false);
    bench.equalizer.calls.clear();
    setEqualizer(bench, true);
    QCOMPARE(bench.equalizer.calls, (QStringList{u"prepare a.mp3"_s, u"seek 42.5"_s, u"play"_s}));
    QVERIFY(showsPlaying(bench, true));
    // The stream player arrives too late.
    arrive(bench);
    QCOMPARE(bench.stream().rate(), 0.0);
    QVERIFY(player.usingEqualizerEngine());
}

void AudioPlayerEqualizerSwitchTest::offAndOnInOneGoEndsOnTheEngine()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    bench.equalizer.setEnabled(false);
    bench.equalizer.setEnabled(true);
    settle();
    QVERIFY(player.usingEqualizerEngine());
    QVERIFY(bench.equalizer.playing);
    QVERIFY(showsPlaying(bench, true));
    QCOMPARE(bench.equalizer.position, 42.5);
    arrive(bench);
    QCOMPARE(bench.stream().rate(), 0.0);
    QCOMPARE(bench.playbackTimers(), 1);
}

void AudioPlayerEqualizerSwitchTest::onAndOffInOneGoEndsOnTheStreamPlayer()
{
    PlayerBench bench;
    AudioPlayerService &player = playStream(bench, 42.5);
    bench.equalizer.setEnabled(true);
    bench.equalizer.setEnabled(false);
    settle();
    arrive(bench);
    QVERIFY(!player.usingEqualizerEngine());
    QVERIFY(!bench.equalizer.playing);
    QCOMPARE(bench.stream().rate(), 1.0);
    QVERIFY(showsPlaying(bench, true));
    QCOMPARE(player.currentTime(), 42.5);
    QCOMPARE(bench.playbackTimers(), 0);
}

void AudioPlayerEqualizerSwitchTest::theSameAgainSwitchesNothing()
{
    PlayerBench bench;
    playEngine(bench, 42.5);
    setEqualizer(bench, true);
    QCOMPARE(bench.equalizer.calls, QStringList());
    QCOMPARE(bench.console.take(), QStringList{switchedOn(u"42.5"_s)});
}

void AudioPlayerEqualizerSwitchTest::streamFromAServerIsNotSwitchedAndTheNextFileUsesTheEngine()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(serverSong(u"s"_s, 100), {serverSong(u"s"_s, 100), fileSong(u"a"_s)});
    drop(bench);
    setEqualizer(bench, true);
    QCOMPARE(bench.console.take(), QStringList{u"🎛️ 均衡器状态变化: 非本地文件，无需切换引擎"_s});
    QCOMPARE(bench.equalizer.calls, QStringList());
    QCOMPARE(bench.stream().calls, QStringList());
    QVERIFY(!player.usingEqualizerEngine());
    QVERIFY(player.isPlaying());
    player.next();
    QVERIFY(player.usingEqualizerEngine());
    QCOMPARE(bench.equalizer.calls, (QStringList{u"prepare a.mp3"_s, u"play"_s}));
}

void AudioPlayerEqualizerSwitchTest::webSongIsNotSwitched()
{
    PlayerBench bench;
    bench.start().playSong(webSong(u"w"_s, 100), {});
    drop(bench);
    setEqualizer(bench, true);
    QCOMPARE(bench.console.take(), QStringList{u"🎛️ 均衡器状态变化: 非本地文件，无需切换引擎"_s});
    QVERIFY(!bench.player().usingEqualizerEngine());
}

void AudioPlayerEqualizerSwitchTest::onlineSongWhoseAddressIsFetchedIsNotSwitched()
{
    PlayerBench bench;
    AudioPlayerService &player = playEngine(bench, 42.5);
    // The song before plays on meanwhile.
    player.playOnlineSong(onlineSong(u"o"_s), {});
    drop(bench);
    setEqualizer(bench, false);
    QCOMPARE(bench.console.take(), QStringList{u"🎛️ 均衡器状态变化: 非本地文件，无需切换引擎"_s});
    QCOMPARE(bench.equalizer.calls, QStringList());
    QVERIFY(bench.equalizer.playing);
    player.playSong(fileSong(u"b"_s), {});
    QVERIFY(!player.usingEqualizerEngine());
    QVERIFY(!bench.equalizer.playing);
}

void AudioPlayerEqualizerSwitchTest::noSongIsNotSwitched()
{
    PlayerBench bench;
    bench.start();
    setEqualizer(bench, true);
    QCOMPARE(bench.console.take(), QStringList{u"🎛️ 均衡器状态变化: 非本地文件，无需切换引擎"_s});
    QCOMPARE(bench.equalizer.calls, QStringList());
    QCOMPARE(bench.home.streamPlayersMade(), 0);
}

QTEST_GUILESS_MAIN(AudioPlayerEqualizerSwitchTest)
#include "tst_audio_player_equalizer_switch.moc"
