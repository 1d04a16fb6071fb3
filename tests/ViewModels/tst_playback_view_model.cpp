// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/OnlineAnswers.h"
#include "ViewModels/CoverRegistry.h"
#include "ViewModels/PlaybackViewModel.h"
#include "ViewModels/ViewModelBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString noCover = u"image://cover/none"_s;

/// Song "a" of two plays, of a known length.
void play(ViewModelBench &bench, double duration)
{
    bench.startViewModel();
    bench.player().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    bench.answerDuration(duration);
}

} // namespace

class PlaybackViewModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void startsEmpty();
    void startsWithWhatThePlayerShows();
    void textsOfTheTimes_data();
    void textsOfTheTimes();
    void hugeTimeIsHarmless();
    void unknownDurationCannotBeSought();
    void ticksWithinASecondChangeNoText();
    void sliderMovesInSmallSteps();
    void coverFollowsTheSong();
    void coverOfAnOnlineSongLiesAtItsAddress();
    void seekGoesToTheFraction();
    void seekNearTheEndEndsTheSong_data();
    void seekNearTheEndEndsTheSong();
    void aRepeatedStepStopsShortOfTheEnd();
    void seekWithoutALengthDoesNothing();
    void aSongWhoseAddressIsOnItsWayIsNotSought();
    void aSongThatFailedIsNotSought();
    void dismissedErrorIsGone();
    void volumeFollowsThePlayer();
    void muteBringsBackWhatCouldBeHeard();
    void muteAfterADragToSilenceBringsBackWhatWasBeforeIt();
    void volumeStaysWithinItsLimits();
};

void PlaybackViewModelTest::startsEmpty()
{
    ViewModelBench bench;
    const PlaybackViewModel playback(bench.startViewModel());
    QCOMPARE(playback.currentTimeText(), u"0:00"_s);
    QCOMPARE(playback.sliderPosition(), 0.0);
    QVERIFY(!playback.canSeek());
    QCOMPARE(playback.coverSource(), noCover);
}

void PlaybackViewModelTest::startsWithWhatThePlayerShows()
{
    ViewModelBench bench;
    play(bench, 200);
    bench.stream().tick(50);
    const PlaybackViewModel playback(bench.viewModel());
    QCOMPARE(playback.currentTimeText(), u"0:50"_s);
    QCOMPARE(playback.sliderPosition(), 0.25);
    QVERIFY(playback.canSeek());
}

void PlaybackViewModelTest::textsOfTheTimes_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("expected");
    QTest::newRow("below a second") << 0.99 << u"0:00"_s;
    QTest::newRow("below a minute") << 59.99 << u"0:59"_s;
    QTest::newRow("minute") << 65.0 << u"1:05"_s;
    QTest::newRow("hour") << 3600.5 << u"60:00"_s;
}

void PlaybackViewModelTest::textsOfTheTimes()
{
    QFETCH(double, seconds);
    ViewModelBench bench;
    play(bench, seconds);
    const PlaybackViewModel playback(bench.viewModel());
    bench.stream().tick(seconds);
    QTEST(playback.currentTimeText(), "expected");
}

void PlaybackViewModelTest::hugeTimeIsHarmless()
{
    ViewModelBench bench;
    play(bench, 1e300);
    const PlaybackViewModel playback(bench.viewModel());
    bench.stream().tick(1e299);
    QCOMPARE(playback.currentTimeText(), u"0:00"_s);
}

void PlaybackViewModelTest::unknownDurationCannotBeSought()
{
    ViewModelBench bench;
    play(bench, 200);
    const PlaybackViewModel playback(bench.viewModel());
    QSignalSpy spy(&playback, &PlaybackViewModel::canSeekChanged);
    bench.player().next();
    QVERIFY(!playback.canSeek());
    bench.answerDuration(100);
    QVERIFY(playback.canSeek());
    QCOMPARE(spy.size(), 2);
}

void PlaybackViewModelTest::ticksWithinASecondChangeNoText()
{
    ViewModelBench bench;
    play(bench, 200);
    const PlaybackViewModel playback(bench.viewModel());
    QSignalSpy spy(&playback, &PlaybackViewModel::currentTimeTextChanged);
    for (const double seconds : {0.25, 0.5, 0.75, 1.0, 1.25})
        bench.stream().tick(seconds);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(playback.currentTimeText(), u"0:01"_s);
}

void PlaybackViewModelTest::sliderMovesInSmallSteps()
{
    ViewModelBench bench;
    play(bench, 10000);
    const PlaybackViewModel playback(bench.viewModel());
    QSignalSpy spy(&playback, &PlaybackViewModel::sliderPositionChanged);
    for (int tick = 1; tick <= 40; ++tick)
        bench.stream().tick(tick * 0.25);
    // Ten seconds are two steps of five seconds each.
    QCOMPARE(spy.size(), 2);
    QCOMPARE(playback.sliderPosition(), 0.001);
}

void PlaybackViewModelTest::coverFollowsTheSong()
{
    ViewModelBench bench;
    bench.startViewModel();
    const PlaybackViewModel playback(bench.viewModel());
    QSignalSpy spy(&playback, &PlaybackViewModel::coverSourceChanged);
    Song song = fileSong(u"a"_s);
    song.setArtworkData(ArtworkData("one"));
    bench.player().playSong(song, {});
    const QString first = playback.coverSource();
    QVERIFY(first != noCover);
    QCOMPARE(CoverRegistry::shared().artwork(first.section(u'/', -1)).bytes(), "one"_ba);
    // An equal song with a cover that arrived later is drawn anew.
    song.setArtworkData(ArtworkData("longer"));
    bench.player().playSong(song, {});
    QVERIFY(playback.coverSource() != first);
    bench.player().playOnlineSong(onlineSong(u"1"_s), {});
    QCOMPARE(playback.coverSource(), noCover);
    QCOMPARE(spy.size(), 3);
}

void PlaybackViewModelTest::coverOfAnOnlineSongLiesAtItsAddress()
{
    ViewModelBench bench;
    bench.startViewModel();
    const PlaybackViewModel playback(bench.viewModel(), &bench.addresses);
    bench.player().playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"1"_s, u"2"_s}));
    const QString first = playback.coverSource();
    QCOMPARE(CoverRegistry::shared().remoteAddress(first.section(u'/', -1)),
             std::optional(QUrl(u"https://api.example/pic?id=1"_s)));
    bench.player().next();
    QVERIFY(playback.coverSource() != first);
    QCOMPARE(CoverRegistry::shared().remoteAddress(playback.coverSource().section(u'/', -1)),
             std::optional(QUrl(u"https://api.example/pic?id=2"_s)));
    bench.addresses.silent = true;
    bench.player().playOnlineSong(onlineSong(u"3"_s), {});
    QCOMPARE(playback.coverSource(), noCover);
}

void PlaybackViewModelTest::seekGoesToTheFraction()
{
    ViewModelBench bench;
    play(bench, 200);
    PlaybackViewModel playback(bench.viewModel());
    playback.seek(0.5);
    QCOMPARE(bench.stream().seeks.constFirst().time, 100.0);
    playback.seek(-1);
    QCOMPARE(bench.stream().seeks.constLast().time, 0.0);
}

void PlaybackViewModelTest::seekNearTheEndEndsTheSong_data()
{
    QTest::addColumn<double>("duration");
    QTest::addColumn<double>("fraction");
    QTest::addColumn<bool>("ends");
    QTest::newRow("long song, 0.998") << 1000.0 << 0.998 << false;
    QTest::newRow("long song, 0.999") << 1000.0 << 0.999 << true;
    QTest::newRow("short song, 0.5 s left") << 10.0 << 0.95 << false;
    QTest::newRow("short song, 0.25 s left") << 16.0 << 0.984375 << true;
    QTest::newRow("the very end") << 200.0 << 1.0 << true;
    QTest::newRow("beyond") << 200.0 << 1.5 << true;
}

void PlaybackViewModelTest::seekNearTheEndEndsTheSong()
{
    QFETCH(double, duration);
    QFETCH(double, fraction);
    QFETCH(bool, ends);
    ViewModelBench bench;
    play(bench, duration);
    PlaybackViewModel playback(bench.viewModel());
    playback.seek(fraction);
    QCOMPARE(songOf(bench.player()).id(), ends ? u"b"_s : u"a"_s);
    QCOMPARE(bench.stream().seeks.isEmpty(), ends);
}

void PlaybackViewModelTest::aRepeatedStepStopsShortOfTheEnd()
{
    ViewModelBench bench;
    play(bench, 100);
    PlaybackViewModel playback(bench.viewModel());
    for (int i = 0; i < 30; ++i)
        playback.seekBy(5, i > 0);
    QCOMPARE(bench.player().currentSong()->id(), u"a"_s);
    QCOMPARE(bench.player().currentTime(), 95.0);
    // Backwards there is nothing to end.
    playback.seekBy(-5, true);
    QCOMPARE(bench.player().currentTime(), 90.0);
    playback.seekBy(5, true);
    playback.seekBy(5);
    QCOMPARE(bench.player().currentSong()->id(), u"b"_s);
}

void PlaybackViewModelTest::seekWithoutALengthDoesNothing()
{
    ViewModelBench bench;
    PlaybackViewModel playback(bench.startViewModel());
    bench.player().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    playback.seek(0.5);
    playback.seek(1);
    bench.answerDuration(200);
    playback.seek(qQNaN());
    QVERIFY(bench.stream().seeks.isEmpty());
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
}

void PlaybackViewModelTest::aSongWhoseAddressIsOnItsWayIsNotSought()
{
    ViewModelBench bench;
    play(bench, 200);
    PlaybackViewModel playback(bench.viewModel(), &bench.addresses);
    bench.stream().tick(60);
    QSignalSpy spy(&playback, &PlaybackViewModel::canSeekChanged);
    bench.player().playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"1"_s, u"2"_s}));
    // The song before is heard still, and its length is known.
    QCOMPARE(bench.player().duration(), 200.0);
    QVERIFY(!playback.canSeek());
    QCOMPARE(spy.size(), 1);
    playback.seek(0.5);
    playback.seek(1);
    playback.seekBy(5);
    QVERIFY(bench.stream().seeks.isEmpty());
    QCOMPARE(bench.player().currentOnlineSong()->id, u"1"_s);
    bench.answerWeb(onlineAnswers::body("https://cdn.example/1.mp3"));
    bench.answerDuration(100);
    QVERIFY(playback.canSeek());
    playback.seek(0.5);
    QCOMPARE(bench.stream().seeks.constLast().time, 50.0);
    // Stopped on its way, it has no sound of its own either.
    bench.player().playOnlineSong(onlineSong(u"2"_s), {});
    bench.player().stop();
    QVERIFY(!bench.player().isLoading());
    QVERIFY(!playback.canSeek());
}

void PlaybackViewModelTest::aSongThatFailedIsNotSought()
{
    ViewModelBench bench;
    play(bench, 200);
    PlaybackViewModel playback(bench.viewModel());
    QVERIFY(playback.canSeek());
    bench.item().fail(u"gone"_s);
    QVERIFY(!playback.canSeek());
    playback.seek(0.5);
    QVERIFY(bench.stream().seeks.isEmpty());
    // Played again, it is as long as it was.
    playback.dismissPlayError();
    QVERIFY(!playback.canSeek());
    bench.player().play();
    QVERIFY(bench.player().isPlaying());
    QVERIFY(playback.canSeek());
}

void PlaybackViewModelTest::dismissedErrorIsGone()
{
    ViewModelBench bench;
    PlaybackViewModel playback(bench.startViewModel());
    bench.player().playSong(fileSong(u"a"_s), {});
    bench.item().fail(u"gone"_s);
    QCOMPARE(bench.player().playErrorText(), u"gone"_s);
    playback.dismissPlayError();
    QVERIFY(!bench.player().playError());
}

void PlaybackViewModelTest::volumeFollowsThePlayer()
{
    ViewModelBench bench;
    const PlaybackViewModel playback(bench.startViewModel());
    QSignalSpy changes(&playback, &PlaybackViewModel::volumeChanged);
    QCOMPARE(playback.volume(), 1.0);
    bench.player().setVolume(0.25F);
    QCOMPARE(playback.volume(), 0.25);
    QCOMPARE(changes.size(), 1);
    bench.player().setVolume(0.25F);
    QCOMPARE(changes.size(), 1);
}

void PlaybackViewModelTest::muteBringsBackWhatCouldBeHeard()
{
    ViewModelBench bench;
    PlaybackViewModel playback(bench.startViewModel());
    bench.player().setVolume(0.5F);
    playback.toggleMute();
    QCOMPARE(bench.player().volume(), 0.0F);
    playback.toggleMute();
    QCOMPARE(bench.player().volume(), 0.5F);
    // Somebody else, as the desktop's panel, turned it up meanwhile.
    playback.toggleMute();
    bench.player().setVolume(0.75F);
    playback.toggleMute();
    QCOMPARE(bench.player().volume(), 0.0F);
    playback.toggleMute();
    QCOMPARE(bench.player().volume(), 0.75F);
}

void PlaybackViewModelTest::muteAfterADragToSilenceBringsBackWhatWasBeforeIt()
{
    ViewModelBench bench;
    PlaybackViewModel playback(bench.startViewModel());
    playback.dragVolume(0.5);
    playback.endVolumeDrag();
    for (const double volume : {0.25, 0.0625, 0.0})
        playback.dragVolume(volume);
    QCOMPARE(bench.player().volume(), 0.0F);
    playback.endVolumeDrag();
    playback.toggleMute();
    QCOMPARE(bench.player().volume(), 0.5F);
    // One that ends in something audible counts.
    playback.dragVolume(0.25);
    playback.endVolumeDrag();
    playback.toggleMute();
    playback.toggleMute();
    QCOMPARE(bench.player().volume(), 0.25F);
}

void PlaybackViewModelTest::volumeStaysWithinItsLimits()
{
    ViewModelBench bench;
    PlaybackViewModel playback(bench.startViewModel());
    bench.player().setVolume(0.5F);
    playback.dragVolume(qQNaN());
    QCOMPARE(bench.player().volume(), 0.5F);
    playback.dragVolume(7);
    QCOMPARE(bench.player().volume(), 1.0F);
    playback.dragVolume(-7);
    QCOMPARE(bench.player().volume(), 0.0F);
}

QTEST_GUILESS_MAIN(PlaybackViewModelTest)
#include "tst_playback_view_model.moc"
