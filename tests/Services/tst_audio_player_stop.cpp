// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/PlayerBench.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QUrl onlineAddress(u"https://cdn.example/1.mp3"_s);

HttpResponse redirectedTo(const QUrl &url)
{
    return {.url = url, .status = 200, .headers = {}, .body = {}};
}

} // namespace

class AudioPlayerStopTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void stoppedSongStandsAtItsBeginning();
    void lateTicksOfTheOldPositionAreDropped();
    void playedAgainTheSongStartsAnew();
    void playedAgainBeforeTheJumpHasLandedItFollowsItsTicks();
    void seekUnderWayIsForgotten();
    void snapshotStandsAtTheBeginning();
    void equalizerEngineStandsAtTheBeginning();
    void pausedSongGoesToItsBeginning();
    void nothingIsStoppedWithoutASong();
    void onlineSongDoesNotBeginAfterAll();
    void onlineSongThatWasStoppedOnItsWayIsFetchedWhenItIsPlayed();
    void songChosenAfterThatPlays();
};

void AudioPlayerStopTest::stoppedSongStandsAtItsBeginning()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    bench.answerDuration(200);
    bench.stream().tick(30);
    player.stop();
    QVERIFY(!player.isPlaying());
    QCOMPARE(player.currentTime(), 0.0);
    QCOMPARE(player.duration(), 200.0);
    QCOMPARE(songOf(player).id(), u"a"_s);
    QCOMPARE(bench.stream().seeks.constLast().time, 0.0);
    QCOMPARE(bench.stream().seeks.constLast().toleranceAfter, 0.0);
    QVERIFY(!bench.player().isSimulatingLevels());
    QCOMPARE(bench.mediaCenter.publishedTime, 0.0);
    QVERIFY(!bench.mediaCenter.publishedPlaying);
}

void AudioPlayerStopTest::lateTicksOfTheOldPositionAreDropped()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    bench.stream().tick(30);
    player.stop();
    bench.stream().tick(30.25);
    QCOMPARE(player.currentTime(), 0.0);
    bench.stream().finishSeek();
    bench.stream().tick(0);
    QCOMPARE(player.currentTime(), 0.0);
    QVERIFY(!player.isPlaying());
}

void AudioPlayerStopTest::playedAgainTheSongStartsAnew()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    bench.stream().tick(30);
    player.stop();
    bench.stream().finishSeek();
    player.play();
    QVERIFY(player.isPlaying());
    QVERIFY(bench.player().isSimulatingLevels());
    bench.stream().tick(0.25);
    QCOMPARE(player.currentTime(), 0.25);
}

void AudioPlayerStopTest::playedAgainBeforeTheJumpHasLandedItFollowsItsTicks()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    bench.stream().tick(30);
    player.stop();
    player.play();
    QVERIFY(player.isPlaying());
    bench.stream().finishSeek();
    QVERIFY(player.isPlaying());
    bench.stream().tick(0.5);
    QCOMPARE(player.currentTime(), 0.5);
}

void AudioPlayerStopTest::seekUnderWayIsForgotten()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    bench.answerDuration(200);
    player.seek(60);
    player.stop();
    // The stream player ends the seek that was overtaken.
    settle();
    QVERIFY(!player.isPlaying());
    QCOMPARE(player.currentTime(), 0.0);
    bench.stream().finishSeek();
    QVERIFY(!player.isPlaying());
    QCOMPARE(player.currentTime(), 0.0);
}

void AudioPlayerStopTest::snapshotStandsAtTheBeginning()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    bench.answerDuration(200);
    bench.stream().tick(30);
    player.stop();
    const std::optional<PlaybackSnapshot> snapshot = PlaybackSnapshot::decoded(bench.snapshot());
    QVERIFY(snapshot);
    QCOMPARE(snapshot->position, 0.0);
}

void AudioPlayerStopTest::equalizerEngineStandsAtTheBeginning()
{
    PlayerBench bench;
    bench.equalizer.enabled = true;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    bench.equalizer.position = 30;
    bench.home.clock().advance(std::chrono::milliseconds(250));
    QCOMPARE(player.currentTime(), 30.0);
    player.stop();
    QVERIFY(!player.isPlaying());
    QVERIFY(!bench.equalizer.playing);
    QCOMPARE(bench.equalizer.position, 0.0);
    QCOMPARE(player.currentTime(), 0.0);
    player.play();
    QVERIFY(player.isPlaying());
    bench.equalizer.position = 0.25;
    bench.home.clock().advance(std::chrono::milliseconds(250));
    QCOMPARE(player.currentTime(), 0.25);
}

void AudioPlayerStopTest::pausedSongGoesToItsBeginning()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    bench.stream().tick(30);
    player.pause();
    player.stop();
    QCOMPARE(player.currentTime(), 0.0);
    QCOMPARE(bench.stream().seeks.constLast().time, 0.0);
}

void AudioPlayerStopTest::nothingIsStoppedWithoutASong()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.stop();
    QVERIFY(!player.isPlaying());
    QCOMPARE(bench.home.streamPlayersMade(), 0);
    QCOMPARE(bench.console.take(), QStringList());
}

void AudioPlayerStopTest::onlineSongDoesNotBeginAfterAll()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), {});
    // The address has come, and waits to be told.
    bench.home.web().answer(redirectedTo(onlineAddress));
    player.stop();
    settle();
    QVERIFY(!player.isLoading());
    QVERIFY(!player.isPlaying());
    QCOMPARE(bench.home.streamPlayersMade(), 0);
    QVERIFY(!player.playError());
    QCOMPARE(player.currentOnlineSong(), std::optional(onlineSong(u"1"_s)));
}

void AudioPlayerStopTest::onlineSongThatWasStoppedOnItsWayIsFetchedWhenItIsPlayed()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    bench.answerDuration(200);
    player.playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"1"_s, u"2"_s}));
    player.stop();
    player.stop();
    settle();
    QVERIFY(bench.home.web().pending.empty());
    // The song before is loaded still: nobody wants to hear or to seek in that.
    QVERIFY(!player.canSeek());
    player.togglePlayPause();
    QVERIFY(!player.isPlaying());
    QVERIFY(player.isLoading());
    bench.answerWeb(redirectedTo(onlineAddress));
    QVERIFY(player.isPlaying());
    QCOMPARE(bench.item().asset().url, onlineAddress);
    QCOMPARE(player.onlineQueue().size(), 2);
    // From here on it is a song like any other.
    bench.answerDuration(100);
    QVERIFY(player.canSeek());
    player.stop();
    player.play();
    QVERIFY(player.isPlaying());
    QVERIFY(!player.isLoading());
    QVERIFY(bench.home.web().pending.empty());
}

void AudioPlayerStopTest::songChosenAfterThatPlays()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.stop();
    player.playSong(fileSong(u"b"_s), {});
    QVERIFY(player.isPlaying());
    player.pause();
    player.play();
    QVERIFY(player.isPlaying());
    QCOMPARE(songOf(player).id(), u"b"_s);
    settle();
    QVERIFY(bench.home.web().pending.empty());
}

QTEST_GUILESS_MAIN(AudioPlayerStopTest)
#include "tst_audio_player_stop.moc"
