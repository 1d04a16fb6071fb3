// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/NowPlayingBench.h"

#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The slider of the full-screen player.
class NowPlayingSliderTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void sliderAndTimesFollowTheSong();
    void duringADragTheyFollowTheFinger();
    void dragIsHeldWithinTheSong();
    void releaseIsLoggedAndSeeks();
    void releaseNearTheEndEndsTheSong_data();
    void releaseNearTheEndEndsTheSong();
    void endOfTheSongNeedsALength_data();
    void endOfTheSongNeedsALength();
    void releaseWithoutADragDoesNothing();
    void dragThatIsTakenAwaySeeksNowhere();
    void anotherSongInMidDragSetsTheSliderBack();
    void sameSongAgainKeepsTheDrag();
    void durationIsNothingWhileUnknown_data();
    void durationIsNothingWhileUnknown();
};

void NowPlayingSliderTest::sliderAndTimesFollowTheSong()
{
    NowPlayingBench bench;
    bench.play(u"a"_s, 200);
    QSignalSpy moved(&bench.nowPlaying, &NowPlayingViewModel::sliderPositionChanged);
    QSignalSpy counted(&bench.nowPlaying, &NowPlayingViewModel::displayTimeTextChanged);
    bench.stream().tick(50);
    QCOMPARE(bench.nowPlaying.sliderPosition(), 0.25);
    QCOMPARE(bench.nowPlaying.displayTimeText(), u"0:50"_s);
    QCOMPARE(bench.nowPlaying.durationText(), u"3:20"_s);
    QCOMPARE(moved.size(), 1);
    QCOMPARE(counted.size(), 1);
}

void NowPlayingSliderTest::duringADragTheyFollowTheFinger()
{
    NowPlayingBench bench;
    bench.play(u"a"_s, 200);
    bench.stream().tick(50);
    QSignalSpy moved(&bench.nowPlaying, &NowPlayingViewModel::sliderPositionChanged);
    bench.nowPlaying.dragTo(0.5);
    bench.nowPlaying.beginDrag();
    QVERIFY(bench.nowPlaying.isDragging());
    QCOMPARE(bench.nowPlaying.sliderPosition(), 0.5);
    QCOMPARE(bench.nowPlaying.displayTimeText(), u"1:40"_s);
    moved.clear();
    // The song plays on beneath the finger.
    bench.stream().tick(51);
    QCOMPARE(moved.size(), 0);
    QCOMPARE(bench.nowPlaying.sliderPosition(), 0.5);
    bench.nowPlaying.dragTo(0.75);
    QCOMPARE(moved.size(), 1);
    QCOMPARE(bench.nowPlaying.displayTimeText(), u"2:30"_s);
    QVERIFY(bench.stream().seeks.isEmpty());
    bench.nowPlaying.endDrag();
    QVERIFY(!bench.nowPlaying.isDragging());
    // The song stands where the finger left it at once.
    QCOMPARE(bench.nowPlaying.sliderPosition(), 0.75);
    QCOMPARE(bench.nowPlaying.displayTimeText(), u"2:30"_s);
}

void NowPlayingSliderTest::dragIsHeldWithinTheSong()
{
    NowPlayingBench bench;
    bench.play(u"a"_s, 200);
    bench.nowPlaying.beginDrag();
    bench.nowPlaying.dragTo(1.5);
    QCOMPARE(bench.nowPlaying.sliderPosition(), 1.0);
    bench.nowPlaying.dragTo(-0.5);
    QCOMPARE(bench.nowPlaying.sliderPosition(), 0.0);
    bench.nowPlaying.dragTo(0.5);
    bench.nowPlaying.dragTo(std::numeric_limits<double>::quiet_NaN());
    QCOMPARE(bench.nowPlaying.sliderPosition(), 0.5);
    bench.nowPlaying.dragTo(std::numeric_limits<double>::infinity());
    QCOMPARE(bench.nowPlaying.sliderPosition(), 1.0);
}

void NowPlayingSliderTest::releaseIsLoggedAndSeeks()
{
    NowPlayingBench bench;
    bench.play(u"a"_s, 200);
    bench.console.take();
    bench.dragAndRelease(0.25);
    QCOMPARE(bench.console.take().value(0), u"📍 Slider: dragProgress=0.25, duration=200.0, seekTime=50.0"_s);
    QCOMPARE(bench.stream().seeks.size(), 1);
    QCOMPARE(bench.stream().seeks.at(0).time, 50.0);
    QCOMPARE(bench.songId(), u"a"_s);
}

void NowPlayingSliderTest::releaseNearTheEndEndsTheSong_data()
{
    QTest::addColumn<double>("duration");
    QTest::addColumn<double>("fraction");
    QTest::addColumn<bool>("ends");
    QTest::newRow("0.2 s before the end") << 200.0 << 199.8 / 200 << true;
    QTest::newRow("0.3 s before the end") << 200.0 << 199.7 / 200 << false;
    QTest::newRow("0.25 s before the end") << 256.0 << 255.75 / 256 << true;
    QTest::newRow("the last thousandth of a long song") << 10'000.0 << 0.999 << true;
    QTest::newRow("just before it") << 10'000.0 << 0.9989 << false;
    QTest::newRow("the end") << 200.0 << 1.0 << true;
    QTest::newRow("any place of a song of a moment") << 0.2 << 0.1 << true;
    QTest::newRow("middle") << 200.0 << 0.5 << false;
}

void NowPlayingSliderTest::releaseNearTheEndEndsTheSong()
{
    QFETCH(double, duration);
    QFETCH(double, fraction);
    QFETCH(bool, ends);
    NowPlayingBench bench;
    bench.play(u"a"_s, duration);
    bench.dragAndRelease(fraction);
    QCOMPARE(bench.songId(), ends ? u"following"_s : u"a"_s);
    QCOMPARE(bench.stream().seeks.isEmpty(), ends);
    QVERIFY(!bench.nowPlaying.isDragging());
}

void NowPlayingSliderTest::endOfTheSongNeedsALength_data()
{
    QTest::addColumn<double>("duration");
    QTest::newRow("nothing") << 0.0;
    QTest::newRow("endless") << std::numeric_limits<double>::infinity();
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN();
}

void NowPlayingSliderTest::endOfTheSongNeedsALength()
{
    QFETCH(double, duration);
    NowPlayingBench bench;
    bench.player.playSong(webSong(u"a"_s, duration), {webSong(u"a"_s, duration), webSong(u"b"_s)});
    QVERIFY(!std::isfinite(duration) || bench.player.duration() == duration);
    for (const double fraction : {1.0, 0.9999, 0.5, 0.0}) {
        QVERIFY(!PlaybackViewModel::isAtEnd(fraction, duration));
        bench.stream().seeks.clear();
        bench.dragAndRelease(fraction);
        QCOMPARE(bench.songId(), u"a"_s);
        QVERIFY(!bench.stream().seeks.isEmpty());
        QVERIFY(std::isfinite(bench.stream().seeks.constLast().time));
    }
    QCOMPARE(bench.nowPlaying.durationText(), u"0:00"_s);
}

void NowPlayingSliderTest::releaseWithoutADragDoesNothing()
{
    NowPlayingBench bench;
    bench.play(u"a"_s, 200);
    bench.nowPlaying.dragTo(1);
    bench.console.take();
    bench.nowPlaying.endDrag();
    QCOMPARE(bench.songId(), u"a"_s);
    QVERIFY(bench.stream().seeks.isEmpty());
    QCOMPARE(bench.console.take(), QStringList());
}

void NowPlayingSliderTest::dragThatIsTakenAwaySeeksNowhere()
{
    NowPlayingBench bench;
    bench.play(u"a"_s, 200);
    bench.stream().tick(50);
    bench.nowPlaying.dragTo(1);
    bench.nowPlaying.beginDrag();
    bench.console.take();
    bench.nowPlaying.cancelDrag();
    QVERIFY(!bench.nowPlaying.isDragging());
    QCOMPARE(bench.nowPlaying.sliderPosition(), 0.25);
    QCOMPARE(bench.nowPlaying.displayTimeText(), u"0:50"_s);
    bench.nowPlaying.endDrag();
    QVERIFY(bench.stream().seeks.isEmpty());
    QCOMPARE(bench.songId(), u"a"_s);
    QCOMPARE(bench.console.take(), QStringList());
}

void NowPlayingSliderTest::anotherSongInMidDragSetsTheSliderBack()
{
    NowPlayingBench bench;
    bench.play(u"a"_s, 200);
    bench.stream().tick(50);
    bench.nowPlaying.dragTo(0.9);
    bench.nowPlaying.beginDrag();
    bool wasDragging = true;
    QObject::connect(&bench.nowPlaying, &NowPlayingViewModel::currentSongIdChanged, &bench.nowPlaying,
                     [&] { wasDragging = bench.nowPlaying.isDragging(); });
    bench.stream().reachEnd();
    QCOMPARE(bench.songId(), u"following"_s);
    QVERIFY(!wasDragging);
    QVERIFY(!bench.nowPlaying.isDragging());
    QCOMPARE(bench.nowPlaying.sliderPosition(), 0.0);
    QCOMPARE(bench.nowPlaying.displayTimeText(), u"0:00"_s);
    // The finger lets go of a slider that is no more.
    bench.console.take();
    bench.nowPlaying.endDrag();
    QVERIFY(bench.stream().seeks.isEmpty());
    QCOMPARE(bench.console.take(), QStringList());
    QCOMPARE(bench.songId(), u"following"_s);
}

void NowPlayingSliderTest::sameSongAgainKeepsTheDrag()
{
    NowPlayingBench bench;
    bench.player.setPlayMode(PlayMode::repeatOne);
    bench.play(u"a"_s, 200);
    bench.nowPlaying.dragTo(0.4);
    bench.nowPlaying.beginDrag();
    bench.stream().reachEnd();
    QCOMPARE(bench.songId(), u"a"_s);
    QVERIFY(bench.nowPlaying.isDragging());
    QCOMPARE(bench.nowPlaying.sliderPosition(), 0.4);
}

void NowPlayingSliderTest::durationIsNothingWhileUnknown_data()
{
    QTest::addColumn<double>("duration");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0.0 << u"0:00"_s;
    QTest::newRow("endless") << std::numeric_limits<double>::infinity() << u"0:00"_s;
    QTest::newRow("five seconds") << 5.9 << u"0:05"_s;
    QTest::newRow("an hour and more") << 3725.0 << u"62:05"_s;
    QTest::newRow("more than can be counted") << 1e300 << u"0:00"_s;
}

void NowPlayingSliderTest::durationIsNothingWhileUnknown()
{
    QFETCH(double, duration);
    NowPlayingBench bench;
    bench.player.playSong(webSong(u"a"_s, duration), {});
    QTEST(bench.nowPlaying.durationText(), "text");
    bench.nowPlaying.beginDrag();
    bench.nowPlaying.dragTo(1);
    QTEST(bench.nowPlaying.displayTimeText(), "text");
}

QTEST_GUILESS_MAIN(NowPlayingSliderTest)
#include "tst_now_playing_slider.moc"
