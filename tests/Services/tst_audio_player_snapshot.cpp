// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/PlayerBench.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto throttle = 5000ms;

/// Song "a" of a file plays at 30 of 200 seconds; nothing is stored, and the throttle is open again.
void playFile(PlayerBench &bench)
{
    bench.start().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    bench.answerDuration(200);
    bench.stream().tick(30);
    bench.home.preferences().remove(u"lastPlaybackState"_s);
    bench.home.clock().advance(throttle);
}

QJsonObject stored(PlayerBench &bench)
{
    return QJsonDocument::fromJson(bench.snapshot()).object();
}

/// The stream player stalls and goes on: two changes of its state.
void changeState(PlayerBench &bench)
{
    bench.stream().setState(1, StreamPlayer::TimeControlStatus::waitingToPlay);
}

void changeStateBack(PlayerBench &bench)
{
    bench.stream().setState(1, StreamPlayer::TimeControlStatus::playing);
}

} // namespace

class AudioPlayerSnapshotTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void pauseWritesSongAndPosition();
    void snapshotTakesThePathOfTheFile();
    void persistPlaybackSnapshotIsNotThrottled();
    void pauseIsNotThrottled();
    void changesOfStateAreThrottledToFiveSeconds();
    void unthrottledWriteStartsTheThrottleAnew();
    void throttledAttemptThatWritesNothingCounts();
    void ticksOfAFileWriteNothing();
    void nothingIsWrittenFor_data();
    void nothingIsWrittenFor();
    void unknownDurationWritesNothing();
    void positionThatIsNoNumberWritesNothing();
    void clearedQueueIsNoMatter();
    void newSongIsNotStoredAtThePositionOfTheOldOne();
};

void AudioPlayerSnapshotTest::pauseWritesSongAndPosition()
{
    PlayerBench bench;
    playFile(bench);
    bench.home.clock().setNow(QDateTime(QDate(2001, 1, 1), QTime(0, 1), Qt::UTC));
    bench.player().pause();
    QCOMPARE(bench.snapshot(),
             QByteArray("{\"songId\":\"a\",\"title\":\"Title a\",\"artist\":\"Artist a\",\"album\":\"Album "
                        "a\",\"filePath\":\"/music/a.mp3\",\"position\":30,\"duration\":200,\"date\":60}"));
}

void AudioPlayerSnapshotTest::snapshotTakesThePathOfTheFile()
{
    PlayerBench bench;
    Song song = fileSong(u"a"_s);
    song.setAssetURL(QUrl::fromLocalFile(u"/音乐/100% #1.mp3"_s));
    bench.start().playSong(song, {});
    bench.answerDuration(200);
    bench.player().pause();
    QCOMPARE(stored(bench).value("filePath"_L1).toString(), u"/音乐/100% #1.mp3"_s);
}

void AudioPlayerSnapshotTest::persistPlaybackSnapshotIsNotThrottled()
{
    PlayerBench bench;
    playFile(bench);
    bench.player().persistPlaybackSnapshot();
    bench.stream().tick(31);
    bench.player().persistPlaybackSnapshot();
    QCOMPARE(stored(bench).value("position"_L1).toDouble(), 31.0);
}

void AudioPlayerSnapshotTest::pauseIsNotThrottled()
{
    PlayerBench bench;
    playFile(bench);
    bench.player().persistPlaybackSnapshot();
    bench.stream().tick(32);
    bench.player().pause();
    QCOMPARE(stored(bench).value("position"_L1).toDouble(), 32.0);
}

void AudioPlayerSnapshotTest::changesOfStateAreThrottledToFiveSeconds()
{
    PlayerBench bench;
    playFile(bench);
    changeState(bench);
    QCOMPARE(stored(bench).value("position"_L1).toDouble(), 30.0);
    bench.stream().tick(34);
    bench.home.clock().advance(throttle - 1ms);
    changeStateBack(bench);
    QCOMPARE(stored(bench).value("position"_L1).toDouble(), 30.0);
    bench.home.clock().advance(1ms);
    changeState(bench);
    QCOMPARE(stored(bench).value("position"_L1).toDouble(), 34.0);
}

void AudioPlayerSnapshotTest::unthrottledWriteStartsTheThrottleAnew()
{
    PlayerBench bench;
    playFile(bench);
    bench.player().persistPlaybackSnapshot();
    bench.home.clock().advance(3000ms);
    bench.player().persistPlaybackSnapshot();
    bench.home.clock().advance(3000ms);
    bench.stream().tick(36);
    changeState(bench);
    QCOMPARE(stored(bench).value("position"_L1).toDouble(), 30.0);
}

void AudioPlayerSnapshotTest::throttledAttemptThatWritesNothingCounts()
{
    PlayerBench bench;
    bench.start().playSong(webSong(u"w"_s, 100), {});
    bench.home.clock().advance(throttle);
    changeState(bench); // an attempt for a song that is not stored
    bench.home.clock().advance(throttle - 1ms);
    bench.player().playSong(fileSong(u"a"_s), {});
    bench.answerDuration(200);
    changeStateBack(bench);
    QVERIFY(bench.snapshot().isEmpty());
    bench.home.clock().advance(1ms);
    changeState(bench);
    QVERIFY(!bench.snapshot().isEmpty());
}

void AudioPlayerSnapshotTest::ticksOfAFileWriteNothing()
{
    PlayerBench bench;
    playFile(bench);
    const int writes = bench.home.preferences().writes();
    for (int second = 0; second < 60; ++second) {
        bench.home.clock().advance(1000ms);
        bench.stream().tick(second);
    }
    QCOMPARE(bench.home.preferences().writes(), writes);
}

void AudioPlayerSnapshotTest::nothingIsWrittenFor_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::newRow("media library") << QUrl(u"ipod-library://item/item.mp3?id=1"_s);
    QTest::newRow("web") << QUrl(u"https://music.example/a.mp3"_s);
    QTest::newRow("server") << QUrl(u"https://u:p@music.example/a.mp3"_s);
    QTest::newRow("file without a path") << QUrl(u"file://"_s);
}

void AudioPlayerSnapshotTest::nothingIsWrittenFor()
{
    QFETCH(QUrl, url);
    PlayerBench bench;
    playFile(bench);
    bench.player().pause();
    const QByteArray earlier = bench.snapshot();
    QVERIFY(!earlier.isEmpty());

    Song song = fileSong(u"other"_s);
    song.setAssetURL(url);
    bench.player().playSong(song, {});
    if (!bench.item().isDurationAnswered())
        bench.answerDuration(100);
    bench.player().persistPlaybackSnapshot();
    QCOMPARE(bench.snapshot(), earlier);
    bench.player().playOnlineSong(onlineSong(u"1"_s), {});
    bench.player().persistPlaybackSnapshot();
    QCOMPARE(bench.snapshot(), earlier);
    song.setAssetURL({});
    bench.player().playSong(song, {});
    bench.player().persistPlaybackSnapshot();
    QCOMPARE(bench.snapshot(), earlier);
}

void AudioPlayerSnapshotTest::unknownDurationWritesNothing()
{
    PlayerBench bench;
    bench.start().playSong(fileSong(u"a"_s), {});
    bench.stream().tick(5);
    bench.player().pause();
    QVERIFY(bench.snapshot().isEmpty());
    bench.answerDuration(200);
    bench.player().persistPlaybackSnapshot();
    QCOMPARE(stored(bench).value("position"_L1).toDouble(), 5.0);
}

void AudioPlayerSnapshotTest::positionThatIsNoNumberWritesNothing()
{
    PlayerBench bench;
    bench.equalizer.enabled = true;
    bench.start().playSong(fileSong(u"a"_s), {});
    bench.player().pause();
    const QByteArray earlier = bench.snapshot();
    QVERIFY(!earlier.isEmpty());
    bench.player().seek(qInf());
    bench.player().persistPlaybackSnapshot();
    QCOMPARE(bench.snapshot(), earlier);
}

void AudioPlayerSnapshotTest::clearedQueueIsNoMatter()
{
    PlayerBench bench;
    playFile(bench);
    bench.player().clearQueue();
    bench.player().persistPlaybackSnapshot();
    QCOMPARE(stored(bench).value("songId"_L1).toString(), u"a"_s);
}

void AudioPlayerSnapshotTest::newSongIsNotStoredAtThePositionOfTheOldOne()
{
    PlayerBench bench;
    playFile(bench);
    bench.equalizer.enabled = true;
    bench.player().playSong(fileSong(u"b"_s), {});
    if (!bench.snapshot().isEmpty() && stored(bench).value("songId"_L1).toString() == u"b"_s)
        QCOMPARE(stored(bench).value("position"_L1).toDouble(), 0.0);
}

QTEST_GUILESS_MAIN(AudioPlayerSnapshotTest)
#include "tst_audio_player_snapshot.moc"
