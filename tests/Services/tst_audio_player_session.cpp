// SPDX-License-Identifier: GPL-3.0-or-later
#include "DesktopBench.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Reason = AudioSession::RouteChangeReason;

namespace {

QJsonObject stored(PlayerBench &bench)
{
    return QJsonDocument::fromJson(bench.snapshot()).object();
}

/// The address that is being fetched arrives with the next turn of the main loop.
void answerAddress(PlayerBench &bench)
{
    bench.home.web().answer(
        HttpResponse{.url = QUrl(u"https://cdn.example/o.mp3"_s), .status = 200, .headers = {}, .body = {}});
}

} // namespace

/// What the player does when the machine takes its sound away. Each test runs on both engines where both can
/// be meant.
class AudioPlayerSessionTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aCallPausesAndItsEndGoesOn_data() { engines(); }
    void aCallPausesAndItsEndGoesOn();
    void anEndThatDoesNotAskToResumeLeavesThePlayerPaused_data() { engines(); }
    void anEndThatDoesNotAskToResumeLeavesThePlayerPaused();
    void whatWasPausedStaysPaused_data() { engines(); }
    void whatWasPausedStaysPaused();
    void theBeginningStoresPlaceAndSong_data() { engines(); }
    void theBeginningStoresPlaceAndSong();
    void theDesktopIsShownThePause();
    void noTimerRunsDuringAnInterruption_data() { engines(); }
    void noTimerRunsDuringAnInterruption();
    void pausedByTheListenerDuringACallItStillGoesOn();
    void playedByTheListenerDuringACallItGoesOnPlaying_data() { engines(); }
    void playedByTheListenerDuringACallItGoesOnPlaying();
    void aSecondBeginningTakesTheStateThatItFinds_data() { engines(); }
    void aSecondBeginningTakesTheStateThatItFinds();
    void anEndWithoutABeginningPlaysNothing_data() { engines(); }
    void anEndWithoutABeginningPlaysNothing();
    void aSecondEndPlaysNothing();
    void anInterruptionBelongsToItselfAlone();
    void nothingLoadedIsNothingToInterrupt();
    void aRestoredSongIsNotPlayed();
    void aSeekThatLandsDuringACallPlaysNothingUntilItsEnd();
    void aSeekOfAPausedSongStaysPausedAfterACall();
    void aStreamThatIsWaitingForItsDataGoesOnAfterACall();
    void anAddressThatIsOnItsWayIsFetchedAnewAfterACall();
    void anAddressThatIsOnItsWayPlaysNothingAfterSleep();
    void aSongChosenDuringACallPlays();

    void pulledHeadphonesPause_data() { engines(); }
    void pulledHeadphonesPause();
    void otherChangesOfTheRouteAreIgnored_data();
    void otherChangesOfTheRouteAreIgnored();
    void pulledHeadphonesDuringACallDoNotKeepItFromGoingOn_data() { engines(); }
    void pulledHeadphonesDuringACallDoNotKeepItFromGoingOn();
    void pulledHeadphonesDuringASeekHold();
    void pulledHeadphonesWithNothingLoadedAreNothing();
    void pulledHeadphonesLeaveAPausedPlayerPaused();
    void pulledHeadphonesHoldASongWhoseAddressIsOnItsWay();

    void aSongThatFailedBeginsAnewWhenItIsPlayed();
    void aSongThatFailedOnItsWayGoesOnWhereItStood();
    void aSongThatFailedTriesTheEngineAgain();

private:
    static void engines();
    /// A file plays at 30 of 200 seconds, on the engine that the row of data names.
    static void play(DesktopBench &bench);
    static bool isSounding(DesktopBench &bench);
    static bool onEngine()
    {
        QFETCH(bool, isEngine);
        return isEngine;
    }
};

void AudioPlayerSessionTest::engines()
{
    QTest::addColumn<bool>("isEngine");
    QTest::newRow("stream player") << false;
    QTest::newRow("equalizer engine") << true;
}

void AudioPlayerSessionTest::play(DesktopBench &bench)
{
    bench.equalizer.enabled = onEngine();
    bench.start();
    const QList<Song> queue = fileSongs({u"a"_s, u"b"_s});
    bench.player().playSong(queue[0], queue);
    if (onEngine()) {
        bench.equalizer.position = 30;
        bench.home.clock().advance(std::chrono::milliseconds(250));
        bench.equalizer.calls.clear();
    } else {
        bench.answerDuration(200);
        bench.stream().tick(30);
        bench.stream().calls.clear();
    }
    QVERIFY(isSounding(bench));
    QVERIFY(bench.player().isPlaying());
    bench.home.preferences().remove(u"lastPlaybackState"_s);
    bench.console.take();
}

bool AudioPlayerSessionTest::isSounding(DesktopBench &bench)
{
    const FakeStreamPlayer *stream = bench.home.streamPlayer();
    return bench.equalizer.playing || (stream && stream->rate() > 0);
}

void AudioPlayerSessionTest::aCallPausesAndItsEndGoesOn()
{
    DesktopBench bench;
    play(bench);
    for (int i = 0; i < 2; ++i) {
        bench.session().beginInterruption();
        QVERIFY(!isSounding(bench));
        QVERIFY(!bench.player().isPlaying());
        bench.session().endInterruption(true);
        QVERIFY(isSounding(bench));
        QVERIFY(bench.player().isPlaying());
    }
    QCOMPARE(bench.player().currentTime(), 30.0);
    QCOMPARE(bench.console.take(), QStringList());
}

void AudioPlayerSessionTest::anEndThatDoesNotAskToResumeLeavesThePlayerPaused()
{
    DesktopBench bench;
    play(bench);
    bench.session().beginInterruption();
    bench.session().endInterruption(false);
    QVERIFY(!isSounding(bench));
    QVERIFY(!bench.player().isPlaying());
    bench.player().play();
    QVERIFY(isSounding(bench));
    QCOMPARE(bench.player().currentTime(), 30.0);
}

void AudioPlayerSessionTest::whatWasPausedStaysPaused()
{
    DesktopBench bench;
    play(bench);
    bench.player().pause();
    bench.session().beginInterruption();
    bench.session().endInterruption(true);
    QVERIFY(!isSounding(bench));
    QVERIFY(!bench.player().isPlaying());
}

void AudioPlayerSessionTest::theBeginningStoresPlaceAndSong()
{
    DesktopBench bench;
    play(bench);
    // A moment ago something was stored: this is stored all the same.
    bench.player().persistPlaybackSnapshot();
    bench.home.preferences().remove(u"lastPlaybackState"_s);
    bench.session().beginInterruption();
    QCOMPARE(stored(bench)[u"position"_s].toDouble(), 30.0);
    QVERIFY(bench.snapshot().contains(fileSong(u"a"_s).id().toUtf8()));
}

void AudioPlayerSessionTest::theDesktopIsShownThePause()
{
    DesktopBench bench;
    bench.start();
    bench.playFile(u"a"_s);
    QCOMPARE(bench.shown().playbackRate, 1.0);
    bench.session().beginInterruption();
    QCOMPARE(bench.shown().playbackRate, 0.0);
    bench.session().endInterruption(true);
    QCOMPARE(bench.shown().playbackRate, 1.0);
    bench.session().changeRoute(Reason::oldDeviceUnavailable);
    QCOMPARE(bench.shown().playbackRate, 0.0);
}

void AudioPlayerSessionTest::noTimerRunsDuringAnInterruption()
{
    DesktopBench bench;
    play(bench);
    QVERIFY(bench.home.clock().activeTimers() > 0);
    bench.session().beginInterruption();
    QCOMPARE(bench.home.clock().activeTimers(), 0);
    bench.session().endInterruption(true);
    QVERIFY(bench.home.clock().activeTimers() > 0);
}

void AudioPlayerSessionTest::pausedByTheListenerDuringACallItStillGoesOn()
{
    // As with headphones that are pulled meanwhile: what counts is how it began.
    DesktopBench bench;
    bench.start();
    bench.playFile(u"a"_s);
    bench.session().beginInterruption();
    bench.player().pause();
    bench.session().endInterruption(true);
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerSessionTest::playedByTheListenerDuringACallItGoesOnPlaying()
{
    DesktopBench bench;
    play(bench);
    bench.session().beginInterruption();
    bench.player().play();
    QVERIFY(bench.player().isPlaying());
    bench.session().endInterruption(false);
    QVERIFY(isSounding(bench));
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerSessionTest::aSecondBeginningTakesTheStateThatItFinds()
{
    DesktopBench bench;
    play(bench);
    bench.session().beginInterruption();
    bench.session().beginInterruption();
    bench.session().endInterruption(true);
    QVERIFY(!isSounding(bench));
    QVERIFY(!bench.player().isPlaying());
    bench.player().play();
    bench.session().beginInterruption();
    bench.player().play();
    bench.session().beginInterruption();
    QVERIFY(!isSounding(bench));
    bench.session().endInterruption(true);
    QVERIFY(isSounding(bench));
}

void AudioPlayerSessionTest::anEndWithoutABeginningPlaysNothing()
{
    DesktopBench bench;
    play(bench);
    bench.player().pause();
    bench.session().endInterruption(true);
    QVERIFY(!isSounding(bench));
    QVERIFY(!bench.player().isPlaying());
}

void AudioPlayerSessionTest::aSecondEndPlaysNothing()
{
    DesktopBench bench;
    bench.start();
    bench.playFile(u"a"_s);
    bench.session().beginInterruption();
    bench.session().endInterruption(false);
    bench.session().endInterruption(true);
    QVERIFY(!bench.player().isPlaying());
    bench.player().play();
    bench.session().beginInterruption();
    bench.session().endInterruption(true);
    bench.player().pause();
    bench.session().endInterruption(true);
    QVERIFY(!bench.player().isPlaying());
}

void AudioPlayerSessionTest::anInterruptionBelongsToItselfAlone()
{
    DesktopBench bench;
    bench.start();
    bench.playFile(u"a"_s);
    bench.session().beginInterruption();
    bench.session().endInterruption(false);
    // The next one finds it paused.
    bench.session().beginInterruption();
    bench.session().endInterruption(true);
    QVERIFY(!bench.player().isPlaying());
}

void AudioPlayerSessionTest::nothingLoadedIsNothingToInterrupt()
{
    DesktopBench bench;
    bench.start();
    bench.session().beginInterruption();
    bench.session().endInterruption(true);
    QVERIFY(!bench.player().isPlaying());
    QVERIFY(!bench.home.streamPlayer() || bench.stream().calls.isEmpty());
    QVERIFY(bench.snapshot().isEmpty());
    QCOMPARE(bench.console.take(), QStringList());
}

void AudioPlayerSessionTest::aRestoredSongIsNotPlayed()
{
    DesktopBench bench;
    const Song song = bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    bench.start().playSong(song, {song});
    bench.answerDuration(200);
    bench.stream().tick(30);
    bench.player().pause();
    bench.restart();
    QCOMPARE(songOf(bench.player()).id(), song.id());
    bench.session().beginInterruption();
    bench.session().endInterruption(true);
    QVERIFY(!bench.player().isPlaying());
    QVERIFY(!isSounding(bench));
}

void AudioPlayerSessionTest::aSeekThatLandsDuringACallPlaysNothingUntilItsEnd()
{
    DesktopBench bench;
    bench.start();
    bench.playFile(u"a"_s);
    bench.player().seek(60);
    bench.session().beginInterruption();
    bench.stream().finishSeek(true, 60);
    QVERIFY(!isSounding(bench));
    QVERIFY(!bench.player().isPlaying());
    QCOMPARE(bench.player().currentTime(), 60.0);
    bench.session().endInterruption(true);
    QVERIFY(isSounding(bench));
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerSessionTest::aSeekOfAPausedSongStaysPausedAfterACall()
{
    DesktopBench bench;
    bench.start();
    bench.playFile(u"a"_s);
    bench.player().pause();
    bench.player().seek(60);
    bench.session().beginInterruption();
    bench.stream().finishSeek(true, 60);
    bench.session().endInterruption(true);
    QVERIFY(!isSounding(bench));
}

void AudioPlayerSessionTest::aStreamThatIsWaitingForItsDataGoesOnAfterACall()
{
    DesktopBench bench;
    bench.start().playSong(webSong(u"w"_s, 200), {});
    bench.stream().setState(1, StreamPlayer::TimeControlStatus::waitingToPlay);
    QVERIFY(!bench.player().isPlaying());
    bench.session().beginInterruption();
    QVERIFY(!isSounding(bench));
    bench.session().endInterruption(true);
    QVERIFY(isSounding(bench));
}

void AudioPlayerSessionTest::anAddressThatIsOnItsWayIsFetchedAnewAfterACall()
{
    DesktopBench bench;
    bench.start();
    bench.playFile(u"a"_s);
    const OnlineSong song = onlineSong(u"o"_s);
    bench.player().playOnlineSong(song, {song});
    QVERIFY(bench.player().isLoading());
    bench.session().beginInterruption();
    QVERIFY(!bench.player().isLoading());
    QVERIFY(!isSounding(bench));
    bench.session().endInterruption(true);
    QVERIFY(bench.player().isLoading());
    QCOMPARE(bench.player().currentOnlineSong()->id, song.id);
    QCOMPARE(bench.player().onlineQueue().size(), 1);
    bench.playOnline(song);
    QVERIFY(bench.player().isPlaying());
    QVERIFY(isSounding(bench));
}

void AudioPlayerSessionTest::anAddressThatIsOnItsWayPlaysNothingAfterSleep()
{
    DesktopBench bench;
    bench.start();
    const OnlineSong song = onlineSong(u"o"_s);
    bench.player().playOnlineSong(song, {song});
    answerAddress(bench);
    bench.session().beginInterruption();
    bench.session().endInterruption(false);
    settle();
    QVERIFY(!bench.player().isLoading());
    QVERIFY(!isSounding(bench));
    QVERIFY(!bench.player().playError());
    bench.player().play();
    QVERIFY(bench.player().isLoading());
}

void AudioPlayerSessionTest::aSongChosenDuringACallPlays()
{
    DesktopBench bench;
    bench.start();
    bench.playFile(u"a"_s);
    bench.session().beginInterruption();
    bench.playFile(u"c"_s);
    QVERIFY(bench.player().isPlaying());
    bench.session().endInterruption(false);
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(songOf(bench.player()).id(), fileSong(u"c"_s).id());
}

void AudioPlayerSessionTest::pulledHeadphonesPause()
{
    DesktopBench bench;
    play(bench);
    bench.session().changeRoute(Reason::oldDeviceUnavailable);
    QVERIFY(!isSounding(bench));
    QVERIFY(!bench.player().isPlaying());
    QCOMPARE(bench.home.clock().activeTimers(), 0);
    QCOMPARE(stored(bench)[u"position"_s].toDouble(), 30.0);
    // They stay out, and nothing but the listener lets it go on.
    bench.session().changeRoute(Reason::newDeviceAvailable);
    QVERIFY(!isSounding(bench));
    bench.player().play();
    QVERIFY(isSounding(bench));
}

void AudioPlayerSessionTest::otherChangesOfTheRouteAreIgnored_data()
{
    QTest::addColumn<bool>("isEngine");
    QTest::addColumn<Reason>("reason");
    for (const bool isEngine : {false, true}) {
        for (const Reason reason : {Reason::newDeviceAvailable, Reason::override, Reason::unknown})
            QTest::addRow("%s, %d", isEngine ? "engine" : "stream", int(reason)) << isEngine << reason;
    }
}

void AudioPlayerSessionTest::otherChangesOfTheRouteAreIgnored()
{
    QFETCH(Reason, reason);
    DesktopBench bench;
    play(bench);
    bench.session().changeRoute(reason);
    QVERIFY(isSounding(bench));
    QVERIFY(bench.player().isPlaying());
    QVERIFY(bench.equalizer.calls.isEmpty());
    QVERIFY(!bench.home.streamPlayer() || bench.stream().calls.isEmpty());
    QVERIFY(bench.snapshot().isEmpty());
}

void AudioPlayerSessionTest::pulledHeadphonesDuringACallDoNotKeepItFromGoingOn()
{
    DesktopBench bench;
    play(bench);
    bench.session().beginInterruption();
    bench.session().changeRoute(Reason::oldDeviceUnavailable);
    QVERIFY(!isSounding(bench));
    bench.session().endInterruption(true);
    QVERIFY(isSounding(bench));
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerSessionTest::pulledHeadphonesDuringASeekHold()
{
    DesktopBench bench;
    bench.start();
    bench.playFile(u"a"_s);
    bench.player().seek(60);
    bench.session().changeRoute(Reason::oldDeviceUnavailable);
    bench.stream().finishSeek(true, 60);
    QVERIFY(!isSounding(bench));
    QVERIFY(!bench.player().isPlaying());
}

void AudioPlayerSessionTest::pulledHeadphonesWithNothingLoadedAreNothing()
{
    DesktopBench bench;
    bench.start();
    bench.session().changeRoute(Reason::oldDeviceUnavailable);
    QVERIFY(!bench.player().isPlaying());
    QVERIFY(bench.snapshot().isEmpty());
}

void AudioPlayerSessionTest::pulledHeadphonesLeaveAPausedPlayerPaused()
{
    DesktopBench bench;
    bench.start();
    bench.playFile(u"a"_s);
    bench.player().pause();
    bench.session().changeRoute(Reason::oldDeviceUnavailable);
    QVERIFY(!bench.player().isPlaying());
    QVERIFY(!isSounding(bench));
}

void AudioPlayerSessionTest::pulledHeadphonesHoldASongWhoseAddressIsOnItsWay()
{
    DesktopBench bench;
    bench.start();
    // The times of the song before are not its own.
    bench.playFile(u"a"_s);
    QVERIFY(bench.player().duration() > 0);
    const OnlineSong song = onlineSong(u"o"_s);
    bench.player().playOnlineSong(song, {song});
    answerAddress(bench);
    bench.session().changeRoute(Reason::oldDeviceUnavailable);
    settle();
    QVERIFY(!bench.player().isLoading());
    QVERIFY(!bench.player().isCurrentLoaded());
    QCOMPARE(bench.player().currentTime(), 0.0);
    QCOMPARE(bench.player().duration(), 0.0);
    QVERIFY(!isSounding(bench));
    bench.player().play();
    QVERIFY(bench.player().isLoading());
    bench.playOnline(song);
    QVERIFY(isSounding(bench));
}

void AudioPlayerSessionTest::aSongThatFailedBeginsAnewWhenItIsPlayed()
{
    DesktopBench bench;
    bench.start().playSong(webSong(u"w"_s, 200), {});
    bench.item().fail(u"没有可用的音频设备"_s);
    QVERIFY(!bench.player().isPlaying());
    const qsizetype items = bench.stream().items.size();
    bench.player().play();
    QCOMPARE(bench.stream().items.size(), items + 1);
    QCOMPARE(bench.item().asset().url, webSong(u"w"_s).assetURL());
    QVERIFY(bench.player().isPlaying());
    QVERIFY(bench.stream().seeks.isEmpty());
    // It shows its progress and is followed by the next one, like any other.
    bench.stream().tick(5);
    QCOMPARE(bench.player().currentTime(), 5.0);
    QCOMPARE(bench.stream().timeObservers(), 1);
    bench.reachEnd();
    QVERIFY(!bench.player().isPlaying());
}

void AudioPlayerSessionTest::aSongThatFailedOnItsWayGoesOnWhereItStood()
{
    DesktopBench bench;
    bench.start();
    bench.playFile(u"a"_s);
    bench.stream().tick(30);
    bench.item().fail(u"没有可用的音频设备"_s);
    bench.player().play();
    QCOMPARE(bench.stream().seeks.size(), 1);
    QCOMPARE(bench.stream().seeks.constFirst().time, 30.0);
    QCOMPARE(bench.stream().seeks.constFirst().toleranceBefore, 0.0);
    QVERIFY(bench.player().isPlaying());
    bench.stream().tick(0);
    QCOMPARE(bench.player().currentTime(), 30.0);
    bench.stream().finishSeek(true, 30);
    bench.stream().tick(31);
    QCOMPARE(bench.player().currentTime(), 31.0);
    QCOMPARE(bench.player().duration(), 200.0);
}

void AudioPlayerSessionTest::aSongThatFailedTriesTheEngineAgain()
{
    DesktopBench bench;
    bench.equalizer.enabled = true;
    bench.equalizer.failure = "没有可用的音频设备";
    bench.start().playSong(fileSong(u"a"_s), {});
    QVERIFY(!bench.player().usingEqualizerEngine());
    bench.item().fail(u"没有可用的音频设备"_s);
    bench.equalizer.failure.clear();
    bench.player().play();
    QVERIFY(bench.player().usingEqualizerEngine());
    QVERIFY(bench.equalizer.playing);
    QVERIFY(bench.player().isPlaying());
}

QTEST_GUILESS_MAIN(AudioPlayerSessionTest)
#include "tst_audio_player_session.moc"
