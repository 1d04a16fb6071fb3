// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/PlayerBench.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto tick = 250ms;

/// Song "a" of three plays on the engine, 200 seconds long; the lines and calls so far are dropped.
void play(PlayerBench &bench, PlayMode mode = PlayMode::sequential, int index = 0)
{
    bench.equalizer.enabled = true;
    AudioPlayerService &player = bench.start();
    while (player.playMode() != mode)
        player.togglePlayMode();
    const QList<Song> queue = fileSongs({u"a"_s, u"b"_s, u"c"_s});
    player.playSong(queue[index], queue);
    bench.equalizer.calls.clear();
    bench.console.take();
}

/// The engine reaches a position and the next tick sees it.
void reach(PlayerBench &bench, double position)
{
    bench.equalizer.position = position;
    bench.home.clock().advance(tick);
}

} // namespace

class AudioPlayerEqualizerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void filePlaysOnTheEngineWithItsLogLines();
    void streamPlayerIsPausedAndItsObserversGo();
    void webSongGoesToTheStreamPlayerAndStopsTheEngine();
    void engineThatFailsLeavesTheSongToTheStreamPlayer();
    void songAfterAFailureTriesTheEngineAgain();
    void ticksMoveTheTime();
    void tickThatIsNoTimeIsIgnored();
    void endIsHalfASecondBeforeTheEnd_data();
    void endIsHalfASecondBeforeTheEnd();
    void unknownDurationHasNoEnd();
    void lastSongOfTheQueueStopsAndIdles();
    void songThatStoppedAtTheEndStartsAnewAndEndsAgain();
    void clearedQueueStopsAndIdlesAtTheEnd_data();
    void clearedQueueStopsAndIdlesAtTheEnd();
    void repeatOneShowsItsDurationAndEndsASecondTime();
    void pauseStopsTheTicks();
    void playStartsThemAgain();
    void stateIsThatOfTheEngine();
    void seekIsSynchronous();
    void volumeReachesBoth();
    void switchedOffTheNextSongUsesTheStreamPlayer();
    void lateLengthOfTheStreamPlayersItemIsIgnored();
    void lateEndOfTheStreamPlayersItemIsIgnored();
    void endCurrentTrackGoesOn();
    void snapshotHoldsTheEnginesPosition();
};

void AudioPlayerEqualizerTest::filePlaysOnTheEngineWithItsLogLines()
{
    PlayerBench bench;
    bench.equalizer.enabled = true;
    bench.equalizer.length = 200.5;
    AudioPlayerService &player = bench.start();
    player.setVolume(0.5F);
    player.playSong(fileSong(u"a"_s), {});
    QCOMPARE(bench.equalizer.calls, (QStringList{u"prepare a.mp3"_s, u"play"_s}));
    QCOMPARE(bench.equalizer.volume, 0.5F);
    QCOMPARE(bench.home.streamPlayersMade(), 0);
    QVERIFY(player.usingEqualizerEngine());
    QVERIFY(player.isPlaying());
    QCOMPARE(player.currentTime(), 0.0);
    QCOMPARE(player.duration(), 200.5);
    QVERIFY(bench.player().isSimulatingLevels());
    QVERIFY(bench.mediaCenter.publishedPlaying);
    QCOMPARE(bench.playbackTimers(), 1);
    QCOMPARE(bench.console.take(),
             (QStringList{u"🔍 播放检查: isFileURL=true, EQ启用=true, URL=file"_s,
                          u"🎛️ 使用均衡器引擎播放: a.mp3"_s, u"🎛️ 均衡器引擎播放开始，时长: 200.5s"_s}));
}

void AudioPlayerEqualizerTest::streamPlayerIsPausedAndItsObserversGo()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(webSong(u"w"_s, 100), {});
    bench.equalizer.enabled = true;
    player.playSong(fileSong(u"a"_s), {});
    QCOMPARE(bench.stream().calls.constLast(), u"pause"_s);
    QCOMPARE(bench.stream().timeObservers(), 0);
    QVERIFY(player.isPlaying());
    QCOMPARE(player.duration(), 200.0);
}

void AudioPlayerEqualizerTest::webSongGoesToTheStreamPlayerAndStopsTheEngine()
{
    PlayerBench bench;
    play(bench);
    bench.player().playSong(webSong(u"w"_s, 100), {});
    QCOMPARE(bench.equalizer.calls, (QStringList{u"stop"_s}));
    QVERIFY(!bench.player().usingEqualizerEngine());
    QCOMPARE(bench.playbackTimers(), 0);
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(bench.stream().rate(), 1.0);
}

void AudioPlayerEqualizerTest::engineThatFailsLeavesTheSongToTheStreamPlayer()
{
    PlayerBench bench;
    bench.equalizer.enabled = true;
    bench.equalizer.failure = "cannot decode";
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    QCOMPARE(bench.console.take(),
             (QStringList{u"🔍 播放检查: isFileURL=true, EQ启用=true, URL=file"_s,
                          u"🎛️ 使用均衡器引擎播放: a.mp3"_s, u"❌ 均衡器引擎播放失败: cannot decode"_s,
                          u"⏳ PlayerItem 状态: unknown (加载中...)"_s}));
    QVERIFY(!player.usingEqualizerEngine());
    QVERIFY(player.isPlaying());
    QVERIFY(bench.player().isSimulatingLevels());
    QVERIFY(bench.item().asset().prefersPreciseDuration);
    QCOMPARE(bench.stream().calls, (QStringList{u"replace a.mp3"_s, u"play"_s}));
    QVERIFY(!bench.stream().waitsToMinimizeStalling);
    QCOMPARE(bench.playbackTimers(), 0);
    bench.answerDuration(150);
    QCOMPARE(player.duration(), 150.0);
    QCOMPARE(bench.console.take(), QStringList());
    bench.stream().tick(2);
    QCOMPARE(player.currentTime(), 2.0);
    bench.equalizer.failure.clear();
    bench.reachEnd();
    QCOMPARE(songOf(player).id(), u"b"_s);
}

void AudioPlayerEqualizerTest::songAfterAFailureTriesTheEngineAgain()
{
    PlayerBench bench;
    play(bench);
    bench.equalizer.failure = "cannot decode";
    bench.player().next();
    QVERIFY(!bench.player().usingEqualizerEngine());
    bench.equalizer.failure.clear();
    bench.player().next();
    QVERIFY(bench.player().usingEqualizerEngine());
    QCOMPARE(bench.stream().rate(), 0.0);
    QCOMPARE(songOf(bench.player()).id(), u"c"_s);
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerEqualizerTest::ticksMoveTheTime()
{
    PlayerBench bench;
    play(bench);
    bench.equalizer.position = 5;
    bench.home.clock().advance(tick - 1ms);
    QCOMPARE(bench.player().currentTime(), 0.0);
    bench.home.clock().advance(1ms);
    QCOMPARE(bench.player().currentTime(), 5.0);
    QCOMPARE(bench.mediaCenter.publishedTime, 5.0);
}

void AudioPlayerEqualizerTest::tickThatIsNoTimeIsIgnored()
{
    PlayerBench bench;
    play(bench);
    reach(bench, 5);
    for (const double position : {-1.0, qInf(), qQNaN()})
        reach(bench, position);
    QCOMPARE(bench.player().currentTime(), 5.0);
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
}

void AudioPlayerEqualizerTest::endIsHalfASecondBeforeTheEnd_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<bool>("ends");
    QTest::newRow("before") << 199.49 << false;
    QTest::newRow("half a second") << 199.5 << true;
    QTest::newRow("beyond") << 201.0 << true;
}

void AudioPlayerEqualizerTest::endIsHalfASecondBeforeTheEnd()
{
    QFETCH(double, position);
    QFETCH(bool, ends);
    PlayerBench bench;
    play(bench);
    reach(bench, position);
    QCOMPARE(songOf(bench.player()).id(), ends ? u"b"_s : u"a"_s);
    QCOMPARE(bench.equalizer.calls,
             ends ? (QStringList{u"stop"_s, u"prepare b.mp3"_s, u"play"_s}) : QStringList());
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(bench.playbackTimers(), 1);
}

void AudioPlayerEqualizerTest::unknownDurationHasNoEnd()
{
    PlayerBench bench;
    bench.equalizer.length = 0;
    play(bench);
    reach(bench, 1000);
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerEqualizerTest::lastSongOfTheQueueStopsAndIdles()
{
    PlayerBench bench;
    play(bench, PlayMode::sequential, 2);
    reach(bench, 199.6);
    QVERIFY(!bench.player().isPlaying());
    QVERIFY(!bench.player().isSimulatingLevels());
    // An idle player runs no timer, stands at the start and stays there.
    QCOMPARE(bench.home.clock().activeTimers(), 0);
    QCOMPARE(bench.player().currentTime(), 0.0);
    QCOMPARE(bench.equalizer.position, 0.0);
    QVERIFY(!bench.equalizer.playing);
    reach(bench, 0.25);
    QCOMPARE(bench.player().currentTime(), 0.0);
    QCOMPARE(bench.mediaCenter.publishedTime, 0.0);
}

void AudioPlayerEqualizerTest::songThatStoppedAtTheEndStartsAnewAndEndsAgain()
{
    PlayerBench bench;
    play(bench, PlayMode::sequential, 2);
    reach(bench, 199.6);
    bench.player().play();
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(bench.player().duration(), 200.0);
    reach(bench, 3);
    QCOMPARE(bench.player().currentTime(), 3.0);
    reach(bench, 199.6);
    QVERIFY(!bench.player().isPlaying());
    QCOMPARE(bench.home.clock().activeTimers(), 0);
}

void AudioPlayerEqualizerTest::clearedQueueStopsAndIdlesAtTheEnd_data()
{
    QTest::addColumn<PlayMode>("mode");
    QTest::addColumn<bool>("isLedToTheEnd");
    QTest::newRow("sequential") << PlayMode::sequential << false;
    QTest::newRow("repeatAll") << PlayMode::repeatAll << false;
    QTest::newRow("repeatAll, by the listener") << PlayMode::repeatAll << true;
    QTest::newRow("shuffle") << PlayMode::shuffle << false;
    QTest::newRow("shuffle, by the listener") << PlayMode::shuffle << true;
}

void AudioPlayerEqualizerTest::clearedQueueStopsAndIdlesAtTheEnd()
{
    QFETCH(PlayMode, mode);
    QFETCH(bool, isLedToTheEnd);
    PlayerBench bench;
    play(bench, mode, 1);
    bench.player().clearQueue();
    reach(bench, 100);
    if (isLedToTheEnd)
        bench.player().endCurrentTrack();
    else
        reach(bench, 199.6);
    QVERIFY(!bench.player().isPlaying());
    QVERIFY(!bench.equalizer.playing);
    QCOMPARE(bench.equalizer.position, 0.0);
    QCOMPARE(bench.player().currentTime(), 0.0);
    QCOMPARE(bench.home.clock().activeTimers(), 0);
    bench.player().play();
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(bench.player().duration(), 200.0);
}

void AudioPlayerEqualizerTest::repeatOneShowsItsDurationAndEndsASecondTime()
{
    PlayerBench bench;
    play(bench, PlayMode::repeatOne, 1);
    for (int round = 0; round < 3; ++round) {
        reach(bench, 199.6);
        QCOMPARE(bench.equalizer.position, 0.0);
        QCOMPARE(bench.player().currentTime(), 0.0);
        QCOMPARE(bench.player().duration(), 200.0);
        QVERIFY(bench.player().isPlaying());
        QCOMPARE(bench.playbackTimers(), 1);
        reach(bench, 100);
        QCOMPARE(bench.player().currentTime(), 100.0);
    }
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
    bench.player().togglePlayMode();
    reach(bench, 199.6);
    QCOMPARE(songOf(bench.player()).id(), u"c"_s);
}

void AudioPlayerEqualizerTest::pauseStopsTheTicks()
{
    PlayerBench bench;
    play(bench);
    bench.player().pause();
    QCOMPARE(bench.equalizer.calls, (QStringList{u"pause"_s}));
    QCOMPARE(bench.home.clock().activeTimers(), 0);
    QVERIFY(!bench.player().isPlaying());
    QVERIFY(!bench.player().isSimulatingLevels());
}

void AudioPlayerEqualizerTest::playStartsThemAgain()
{
    PlayerBench bench;
    play(bench);
    bench.player().pause();
    bench.player().play();
    bench.player().play();
    QCOMPARE(bench.playbackTimers(), 1);
    QVERIFY(bench.player().isPlaying());
    QVERIFY(bench.player().isSimulatingLevels());
    reach(bench, 7);
    QCOMPARE(bench.player().currentTime(), 7.0);
}

void AudioPlayerEqualizerTest::stateIsThatOfTheEngine()
{
    PlayerBench bench;
    play(bench);
    bench.equalizer.playing = false;
    bench.player().syncIsPlayingWithPlayer();
    QVERIFY(!bench.player().isPlaying());
    QVERIFY(!bench.player().isSimulatingLevels());
    bench.equalizer.playing = true;
    bench.player().syncIsPlayingWithPlayer();
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerEqualizerTest::seekIsSynchronous()
{
    PlayerBench bench;
    play(bench);
    bench.player().seek(60.0625);
    QCOMPARE(bench.equalizer.calls, (QStringList{u"seek 60.0625"_s}));
    QCOMPARE(bench.player().currentTime(), 60.0625);
    QCOMPARE(bench.mediaCenter.publishedTime, 60.0625);
    QCOMPARE(bench.console.take(), QStringList());
    QVERIFY(bench.player().isPlaying());
    reach(bench, 61);
    QCOMPARE(bench.player().currentTime(), 61.0);
}

void AudioPlayerEqualizerTest::volumeReachesBoth()
{
    PlayerBench bench;
    bench.start().playSong(webSong(u"w"_s, 10), {});
    bench.equalizer.enabled = true;
    bench.player().playSong(fileSong(u"a"_s), {});
    bench.player().setVolume(0.25F);
    QCOMPARE(bench.stream().volume, 0.25F);
    QCOMPARE(bench.equalizer.volume, 0.25F);
}

void AudioPlayerEqualizerTest::switchedOffTheNextSongUsesTheStreamPlayer()
{
    PlayerBench bench;
    play(bench);
    bench.equalizer.enabled = false;
    bench.player().next();
    QVERIFY(!bench.player().usingEqualizerEngine());
    QCOMPARE(bench.equalizer.calls, (QStringList{u"stop"_s}));
    QCOMPARE(bench.stream().calls, (QStringList{u"replace b.mp3"_s, u"play"_s}));
    QCOMPARE(bench.playbackTimers(), 0);
}

void AudioPlayerEqualizerTest::lateLengthOfTheStreamPlayersItemIsIgnored()
{
    PlayerBench bench;
    bench.start().playSong(webSong(u"w"_s, 0), {});
    bench.equalizer.enabled = true;
    bench.player().playSong(fileSong(u"a"_s), {});
    bench.answerDuration(5);
    QCOMPARE(bench.player().duration(), 200.0);
}

void AudioPlayerEqualizerTest::lateEndOfTheStreamPlayersItemIsIgnored()
{
    PlayerBench bench;
    bench.start().playSong(webSong(u"w"_s, 0), {});
    const std::shared_ptr<FakePlayerItem> item = bench.stream().lastItem();
    bench.equalizer.enabled = true;
    bench.player().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    item->reachEnd();
    item->fail(u"late"_s);
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
    QVERIFY(bench.player().isPlaying());
    QVERIFY(!bench.player().playError());
}

void AudioPlayerEqualizerTest::endCurrentTrackGoesOn()
{
    PlayerBench bench;
    play(bench);
    bench.player().endCurrentTrack();
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerEqualizerTest::snapshotHoldsTheEnginesPosition()
{
    PlayerBench bench;
    play(bench);
    reach(bench, 33.5);
    bench.player().pause();
    QVERIFY(bench.snapshot().contains("\"position\":33.5,\"duration\":200,"));
}

QTEST_GUILESS_MAIN(AudioPlayerEqualizerTest)
#include "tst_audio_player_equalizer.moc"
