// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/PlayerBench.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// The first of two songs plays, 200 seconds long; the lines so far are dropped.
void play(PlayerBench &bench, double duration = 200)
{
    bench.start().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    bench.answerDuration(duration);
    bench.stream().calls.clear();
    bench.console.take();
}

} // namespace

class AudioPlayerSeekTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void withoutASongTheSeekFails();
    void seekGoesThroughItsStepsWithTheirLines();
    void targetIsClampedToTheDuration_data();
    void targetIsClampedToTheDuration();
    void seekableRangeIsTheLimitWithItsLine();
    void unknownDurationAndNoRangeGoToTheStart();
    void targetLiesOnTheAssetsClock_data();
    void targetLiesOnTheAssetsClock();
    void tolerancesAreHalfASecond();
    void landingPositionIsShown();
    void landingThatIsNoPositionKeepsTheTarget_data();
    void landingThatIsNoPositionKeepsTheTarget();
    void ticksDuringASeekMoveNothing();
    void pausedSongStaysPaused();
    void landingAtTheEndFinishesTheSong_data();
    void landingAtTheEndFinishesTheSong();
    void landingAtTheEndOfTheLastSongStops();
    void landingAtTheEndInRepeatOnePlaysAgain();
    void unknownDurationIsTakenFromTheItemAtTheLanding();
    void landingWithNoLengthAtAllResumes();
    void failedSeekResumes();
    void supersededSeekDoesNothing();
    void supersededSeekStillResumesWhatPlayed();
    void supersededSeekOfAPausedSongDoesNotPlay();
    void pauseDuringASeekHolds();
    void playDuringASeekHolds();
    void pauseThenSeekAgainStaysPaused();
    void nextDuringASeekPlaysTheNextSong();
    void engineSongDuringASeekIsLeftAlone();
    void onlineSongDuringASeekIsLeftAlone();
};

void AudioPlayerSeekTest::withoutASongTheSeekFails()
{
    PlayerBench bench;
    bench.start().seek(10);
    QCOMPARE(bench.console.take(), (QStringList{u"⚠️ Seek failed: player is nil"_s}));
    QCOMPARE(bench.player().currentTime(), 0.0);
    bench.stop();
    bench.console.take();
}

void AudioPlayerSeekTest::seekGoesThroughItsStepsWithTheirLines()
{
    PlayerBench bench;
    play(bench);
    const int updates = bench.mediaCenter.updates;
    bench.player().seek(60);
    QCOMPARE(bench.player().currentTime(), 60.0);
    QCOMPARE(bench.stream().calls, (QStringList{u"pause"_s, u"seek 60"_s}));
    QCOMPARE(bench.console.take(), (QStringList{u"🎯 Seek requested to: 60.0s, duration: 200.0s"_s,
                                                u"🎯 Target CMTime: 60.0s, timescale: 44100"_s}));
    bench.stream().finishSeek(true, 59.75);
    QCOMPARE(bench.console.take(), (QStringList{u"✅ Seek finished: true, actual position: 59.75s"_s}));
    QCOMPARE(bench.stream().calls.constLast(), u"play"_s);
    QVERIFY(bench.player().isPlaying());
    QVERIFY(bench.mediaCenter.updates > updates);
    QCOMPARE(bench.mediaCenter.publishedTime, 59.75);
    QVERIFY(bench.mediaCenter.publishedPlaying);
}

void AudioPlayerSeekTest::targetIsClampedToTheDuration_data()
{
    QTest::addColumn<double>("time");
    QTest::addColumn<double>("expected");
    QTest::newRow("inside") << 12.5 << 12.5;
    QTest::newRow("before the start") << -3.0 << 0.0;
    QTest::newRow("at the end") << 200.0 << 200.0;
    QTest::newRow("beyond the end") << 1e9 << 200.0;
    QTest::newRow("not a number") << qQNaN() << 0.0;
}

void AudioPlayerSeekTest::targetIsClampedToTheDuration()
{
    QFETCH(double, time);
    QFETCH(double, expected);
    PlayerBench bench;
    play(bench);
    bench.player().seek(time);
    QCOMPARE(bench.player().currentTime(), expected);
    QCOMPARE(bench.stream().seeks.constFirst().time, expected);
}

void AudioPlayerSeekTest::seekableRangeIsTheLimitWithItsLine()
{
    PlayerBench bench;
    play(bench);
    bench.item().seekable = SeekableRange{.start = 2.5, .duration = 30};
    bench.player().seek(100);
    QCOMPARE(bench.stream().seeks.constFirst().time, 30.0);
    QCOMPARE(bench.console.take(), (QStringList{u"📊 Seekable range: 2.5s - 32.5s (duration: 30.0s)"_s,
                                                u"🎯 Seek requested to: 100.0s, duration: 200.0s"_s,
                                                u"🎯 Target CMTime: 30.0s, timescale: 44100"_s}));
}

void AudioPlayerSeekTest::unknownDurationAndNoRangeGoToTheStart()
{
    PlayerBench bench;
    bench.start().playSong(fileSong(u"a"_s), {});
    bench.player().seek(50);
    QCOMPARE(bench.stream().seeks.constFirst().time, 0.0);
    QCOMPARE(bench.player().currentTime(), 0.0);
    // With a range the length need not be known.
    bench.item().seekable = SeekableRange{.start = 0, .duration = 90};
    bench.player().seek(50);
    QCOMPARE(bench.player().currentTime(), 50.0);
}

void AudioPlayerSeekTest::targetLiesOnTheAssetsClock_data()
{
    QTest::addColumn<int>("timescale");
    QTest::addColumn<double>("time");
    QTest::addColumn<double>("expected");
    QTest::addColumn<int>("logged");
    QTest::newRow("none") << 0 << 10.000009 << 10.0 << 44100;
    QTest::newRow("none, up") << 0 << 10.000012 << 441001 / 44100.0 << 44100;
    QTest::newRow("negative") << -1 << 10.000009 << 10.0 << 44100;
    QTest::newRow("48 kHz") << 48000 << 10.00001 << 10.0 << 48000;
    QTest::newRow("48 kHz, up") << 48000 << 10.000011 << 480001 / 48000.0 << 48000;
    QTest::newRow("coarse") << 10 << 10.26 << 10.3 << 10;
}

void AudioPlayerSeekTest::targetLiesOnTheAssetsClock()
{
    QFETCH(int, timescale);
    QFETCH(double, time);
    QFETCH(double, expected);
    QFETCH(int, logged);
    PlayerBench bench;
    play(bench);
    bench.item().itemTimescale = timescale;
    bench.player().seek(time);
    // Far below a tick of either clock.
    constexpr double margin = 1e-9;
    QVERIFY(qAbs(bench.player().currentTime() - expected) < margin);
    QVERIFY(qAbs(bench.stream().seeks.constFirst().time - expected) < margin);
    QVERIFY(bench.console.take().constLast().endsWith(u"s, timescale: "_s + QString::number(logged)));
}

void AudioPlayerSeekTest::tolerancesAreHalfASecond()
{
    PlayerBench bench;
    play(bench);
    bench.player().seek(10);
    QCOMPARE(bench.stream().seeks.constFirst().toleranceBefore, 0.5);
    QCOMPARE(bench.stream().seeks.constFirst().toleranceAfter, 0.5);
}

void AudioPlayerSeekTest::landingPositionIsShown()
{
    PlayerBench bench;
    play(bench);
    bench.player().seek(60);
    bench.stream().finishSeek(true, 60.4);
    QCOMPARE(bench.player().currentTime(), 60.4);
}

void AudioPlayerSeekTest::landingThatIsNoPositionKeepsTheTarget_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<QString>("logged");
    QTest::newRow("unknown") << qQNaN() << u"nan"_s;
    QTest::newRow("negative") << -1.0 << u"-1.0"_s;
}

void AudioPlayerSeekTest::landingThatIsNoPositionKeepsTheTarget()
{
    QFETCH(double, position);
    QFETCH(QString, logged);
    PlayerBench bench;
    play(bench);
    bench.player().seek(60);
    bench.stream().finishSeek(true, position);
    QCOMPARE(bench.player().currentTime(), 60.0);
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(bench.console.take().constLast(),
             u"✅ Seek finished: true, actual position: "_s + logged + u"s"_s);
}

void AudioPlayerSeekTest::ticksDuringASeekMoveNothing()
{
    PlayerBench bench;
    play(bench);
    bench.stream().tick(10);
    bench.player().seek(60);
    const int updates = bench.mediaCenter.updates;
    bench.stream().tick(10.25);
    QCOMPARE(bench.player().currentTime(), 60.0);
    QCOMPARE(bench.mediaCenter.updates, updates);
    bench.stream().finishSeek();
    bench.stream().tick(60.25);
    QCOMPARE(bench.player().currentTime(), 60.25);
}

void AudioPlayerSeekTest::pausedSongStaysPaused()
{
    PlayerBench bench;
    play(bench);
    bench.player().pause();
    bench.player().seek(60);
    bench.stream().finishSeek();
    QVERIFY(!bench.player().isPlaying());
    QCOMPARE(bench.stream().rate(), 0.0);
    QCOMPARE(bench.player().currentTime(), 60.0);
}

void AudioPlayerSeekTest::landingAtTheEndFinishesTheSong_data()
{
    QTest::addColumn<double>("landsAt");
    QTest::addColumn<bool>("ends");
    QTest::newRow("0.5 s before") << 199.5 << false;
    QTest::newRow("just over 0.25 s before") << 199.7499 << false;
    QTest::newRow("exactly 0.25 s before") << 199.75 << true;
    QTest::newRow("at the end") << 200.0 << true;
    QTest::newRow("beyond") << 200.5 << true;
}

void AudioPlayerSeekTest::landingAtTheEndFinishesTheSong()
{
    QFETCH(double, landsAt);
    QFETCH(bool, ends);
    PlayerBench bench;
    play(bench);
    bench.player().seek(199.8);
    bench.stream().finishSeek(true, landsAt);
    QCOMPARE(songOf(bench.player()).id(), ends ? u"b"_s : u"a"_s);
    QCOMPARE(bench.player().currentTime(), ends ? 0.0 : landsAt);
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(bench.stream().timeObservers(), 1);
}

void AudioPlayerSeekTest::landingAtTheEndOfTheLastSongStops()
{
    PlayerBench bench;
    play(bench);
    bench.player().next();
    bench.answerDuration(100);
    bench.player().seek(100);
    bench.stream().finishSeek();
    QVERIFY(!bench.player().isPlaying());
    QCOMPARE(bench.player().currentTime(), 0.0);
    QCOMPARE(bench.player().duration(), 0.0);
    QCOMPARE(bench.stream().timeObservers(), 0);
    // The end is counted once, even when the player tells it too.
    bench.reachEnd();
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
}

void AudioPlayerSeekTest::landingAtTheEndInRepeatOnePlaysAgain()
{
    PlayerBench bench;
    play(bench);
    while (bench.player().playMode() != PlayMode::repeatOne)
        bench.player().togglePlayMode();
    bench.player().seek(199.9);
    bench.stream().finishSeek();
    bench.stream().finishSeek();
    settle();
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(bench.player().duration(), 200.0);
    bench.stream().tick(3);
    QCOMPARE(bench.player().currentTime(), 3.0);
}

void AudioPlayerSeekTest::unknownDurationIsTakenFromTheItemAtTheLanding()
{
    PlayerBench bench;
    bench.start().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    bench.item().seekable = SeekableRange{.start = 0, .duration = 90};
    bench.player().seek(89.9);
    // The item knows its length, but nothing has published it.
    bench.item().answerDuration(90);
    bench.stream().finishSeek();
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
}

void AudioPlayerSeekTest::landingWithNoLengthAtAllResumes()
{
    PlayerBench bench;
    bench.start().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    bench.player().seek(0);
    bench.stream().finishSeek();
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerSeekTest::failedSeekResumes()
{
    PlayerBench bench;
    play(bench);
    bench.stream().tick(20);
    bench.player().seek(60);
    bench.stream().finishSeek(false);
    QCOMPARE(bench.console.take().constLast(), u"✅ Seek finished: false, actual position: 20.0s"_s);
    QCOMPARE(bench.player().currentTime(), 20.0);
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerSeekTest::supersededSeekDoesNothing()
{
    PlayerBench bench;
    play(bench);
    bench.player().seek(60);
    bench.player().seek(120);
    bench.console.take();
    settle(); // the first one is told that it was overtaken
    QCOMPARE(bench.stream().seeks.size(), 1);
    QCOMPARE(bench.console.take(), QStringList());
    QCOMPARE(bench.player().currentTime(), 120.0);
    QVERIFY(!bench.player().isPlaying());
    bench.stream().tick(60);
    QCOMPARE(bench.player().currentTime(), 120.0);
}

void AudioPlayerSeekTest::supersededSeekStillResumesWhatPlayed()
{
    PlayerBench bench;
    play(bench);
    for (const double time : {60.0, 120.0, 150.0})
        bench.player().seek(time);
    settle();
    bench.stream().finishSeek();
    QCOMPARE(bench.player().currentTime(), 150.0);
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerSeekTest::supersededSeekOfAPausedSongDoesNotPlay()
{
    PlayerBench bench;
    play(bench);
    bench.player().pause();
    bench.player().seek(60);
    bench.player().seek(120);
    settle();
    bench.stream().finishSeek();
    QVERIFY(!bench.player().isPlaying());
}

void AudioPlayerSeekTest::pauseDuringASeekHolds()
{
    PlayerBench bench;
    play(bench);
    bench.player().seek(60);
    bench.player().pause();
    bench.stream().finishSeek();
    QVERIFY(!bench.player().isPlaying());
    QCOMPARE(bench.stream().rate(), 0.0);
    QCOMPARE(bench.player().currentTime(), 60.0);
}

void AudioPlayerSeekTest::playDuringASeekHolds()
{
    PlayerBench bench;
    play(bench);
    bench.player().pause();
    bench.player().seek(60);
    bench.player().play();
    bench.stream().finishSeek();
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerSeekTest::pauseThenSeekAgainStaysPaused()
{
    PlayerBench bench;
    play(bench);
    bench.player().seek(60);
    bench.player().pause();
    bench.player().seek(70);
    settle();
    bench.stream().finishSeek();
    QVERIFY(!bench.player().isPlaying());
}

void AudioPlayerSeekTest::nextDuringASeekPlaysTheNextSong()
{
    PlayerBench bench;
    play(bench);
    bench.player().seek(199.9);
    bench.player().next();
    settle();
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
    QCOMPARE(bench.player().currentTime(), 0.0);
    QVERIFY(bench.player().isPlaying());
    bench.stream().tick(0.25);
    QCOMPARE(bench.player().currentTime(), 0.25);
}

void AudioPlayerSeekTest::engineSongDuringASeekIsLeftAlone()
{
    PlayerBench bench;
    play(bench);
    bench.player().seek(60);
    bench.equalizer.enabled = true;
    bench.player().playSong(fileSong(u"b"_s), {});
    bench.stream().finishSeek();
    QCOMPARE(bench.stream().rate(), 0.0);
    QCOMPARE(bench.player().currentTime(), 0.0);
    bench.equalizer.position = 1;
    bench.home.clock().advance(std::chrono::milliseconds(250));
    QCOMPARE(bench.player().currentTime(), 1.0);
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerSeekTest::onlineSongDuringASeekIsLeftAlone()
{
    PlayerBench bench;
    play(bench);
    bench.player().seek(60);
    bench.player().playOnlineSong(onlineSong(u"1"_s), {});
    bench.answerWeb(
        HttpResponse{.url = QUrl(u"https://cdn.example/1.mp3"_s), .status = 200, .headers = {}, .body = {}});
    settle();
    QCOMPARE(bench.player().currentTime(), 0.0);
    QVERIFY(bench.player().isPlaying());
}

QTEST_GUILESS_MAIN(AudioPlayerSeekTest)
#include "tst_audio_player_seek.moc"
