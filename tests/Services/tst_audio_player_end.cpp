// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/PlayerBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

void playThree(PlayerBench &bench, int index, PlayMode mode)
{
    AudioPlayerService &player = bench.start();
    while (player.playMode() != mode)
        player.togglePlayMode();
    const QList<Song> queue = fileSongs({u"a"_s, u"b"_s, u"c"_s});
    player.playSong(queue[index], queue);
    bench.answerDuration(200);
    bench.stream().tick(199.9);
    bench.stream().calls.clear();
}

} // namespace

class AudioPlayerEndTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void naturalEndByMode_data();
    void naturalEndByMode();
    void sequentialOnTheLastSongStopsButNextGoesToTheFirst();
    void songThatStoppedAtTheEndStartsAnew();
    void repeatAllOnOneSongReplaysItWithANewItem();
    void repeatOneSeeksAndPlaysTheSameItem();
    void repeatOneShowsTheDurationASecondTime();
    void repeatOneEndsASecondTime();
    void repeatOneFetchesNoNewAddressForAnOnlineSong();
    void onlineQueueEndsLikeALocalOne();
    void clearedQueueStopsAtTheEnd_data();
    void clearedQueueStopsAtTheEnd();
    void endOfAReplacedItemMeansNothing();
    void endCurrentTrackGoesToTheNextSong();
    void endCurrentTrackStopsOnTheLastSong();
    void endCurrentTrackDuringASeekForgetsTheSeek();
    void endCurrentTrackWithoutASongIsHarmless();
};

void AudioPlayerEndTest::naturalEndByMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("expected"); // index afterwards, -1 for a stop
    QTest::newRow("sequential, first") << int(PlayMode::sequential) << 0 << 1;
    QTest::newRow("sequential, last") << int(PlayMode::sequential) << 2 << -1;
    QTest::newRow("repeatAll, last") << int(PlayMode::repeatAll) << 2 << 0;
    QTest::newRow("repeatAll, first") << int(PlayMode::repeatAll) << 0 << 1;
    QTest::newRow("shuffle, last") << int(PlayMode::shuffle) << 2 << 1; // chance says 1
    QTest::newRow("repeatOne, middle") << int(PlayMode::repeatOne) << 1 << 1;
}

void AudioPlayerEndTest::naturalEndByMode()
{
    QFETCH(int, mode);
    QFETCH(int, index);
    QFETCH(int, expected);
    PlayerBench bench;
    playThree(bench, index, static_cast<PlayMode>(mode));
    bench.home.random().indexes = {1};
    bench.reachEnd();
    const AudioPlayerService &player = bench.player();
    QCOMPARE(player.currentTime(), 0.0);
    QCOMPARE(player.isPlaying(), expected >= 0);
    QCOMPARE(player.currentIndex(), expected >= 0 ? expected : index);
    QCOMPARE(player.currentSong(), std::optional(player.queue().at(player.currentIndex())));
}

void AudioPlayerEndTest::sequentialOnTheLastSongStopsButNextGoesToTheFirst()
{
    PlayerBench bench;
    playThree(bench, 2, PlayMode::sequential);
    QVERIFY(bench.player().isSimulatingLevels());
    const int updates = bench.mediaCenter.updates;
    bench.reachEnd();
    AudioPlayerService &player = bench.player();
    QVERIFY(!player.isPlaying());
    QCOMPARE(songOf(player).id(), u"c"_s);
    QCOMPARE(player.currentTime(), 0.0);
    QCOMPARE(player.duration(), 0.0);
    QVERIFY(!bench.player().isSimulatingLevels());
    QVERIFY(bench.mediaCenter.updates > updates);
    QVERIFY(!bench.mediaCenter.publishedPlaying);
    QCOMPARE(bench.mediaCenter.publishedTime, 0.0);
    player.next();
    QCOMPARE(player.currentIndex(), 0);
    QVERIFY(player.isPlaying());
}

void AudioPlayerEndTest::songThatStoppedAtTheEndStartsAnew()
{
    PlayerBench bench;
    playThree(bench, 2, PlayMode::sequential);
    bench.reachEnd();
    // The engine stands where the player says it does.
    QCOMPARE(bench.stream().calls, (QStringList{u"seek 0"_s}));
    bench.player().play();
    settle();
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(bench.player().duration(), 200.0);
    bench.stream().tick(1);
    QCOMPARE(bench.player().currentTime(), 1.0);
    bench.reachEnd();
    QVERIFY(!bench.player().isPlaying());
    QCOMPARE(bench.player().currentTime(), 0.0);
}

void AudioPlayerEndTest::repeatAllOnOneSongReplaysItWithANewItem()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.togglePlayMode();
    QCOMPARE(player.playMode(), PlayMode::repeatAll);
    player.playSong(fileSong(u"a"_s), fileSongs({u"a"_s}));
    bench.reachEnd();
    QCOMPARE(bench.stream().items.size(), 2);
    QVERIFY(bench.stream().seeks.isEmpty());
    QVERIFY(player.isPlaying());
    QCOMPARE(player.currentIndex(), 0);
}

void AudioPlayerEndTest::repeatOneSeeksAndPlaysTheSameItem()
{
    PlayerBench bench;
    playThree(bench, 1, PlayMode::repeatOne);
    bench.reachEnd();
    QCOMPARE(bench.stream().items.size(), 1);
    QCOMPARE(bench.stream().calls, (QStringList{u"pause"_s, u"seek 0"_s, u"play"_s}));
    bench.stream().finishSeek();
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(bench.player().currentTime(), 0.0);
    QVERIFY(bench.player().isSimulatingLevels());
}

void AudioPlayerEndTest::repeatOneShowsTheDurationASecondTime()
{
    PlayerBench bench;
    playThree(bench, 1, PlayMode::repeatOne);
    bench.reachEnd();
    bench.stream().finishSeek();
    settle();
    QCOMPARE(bench.player().duration(), 200.0);
}

void AudioPlayerEndTest::repeatOneEndsASecondTime()
{
    PlayerBench bench;
    playThree(bench, 1, PlayMode::repeatOne);
    for (int round = 0; round < 3; ++round) {
        bench.reachEnd();
        bench.stream().finishSeek();
        settle();
        bench.stream().tick(100);
        QCOMPARE(bench.player().currentTime(), 100.0);
        QVERIFY(bench.player().isPlaying());
        QCOMPARE(bench.stream().timeObservers(), 1);
    }
    bench.player().togglePlayMode();
    bench.reachEnd();
    QCOMPARE(songOf(bench.player()).id(), u"c"_s);
}

void AudioPlayerEndTest::repeatOneFetchesNoNewAddressForAnOnlineSong()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    while (player.playMode() != PlayMode::repeatOne)
        player.togglePlayMode();
    player.playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"1"_s, u"2"_s}));
    bench.answerWeb(
        HttpResponse{.url = QUrl(u"https://cdn.example/1.mp3"_s), .status = 200, .headers = {}, .body = {}});
    QCOMPARE(bench.stream().items.size(), 1);
    bench.reachEnd();
    settle();
    QVERIFY(bench.home.web().pending.empty());
    QCOMPARE(bench.stream().items.size(), 1);
    QVERIFY(player.isPlaying());
}

void AudioPlayerEndTest::onlineQueueEndsLikeALocalOne()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    const QList<OnlineSong> queue = onlineSongs({u"1"_s, u"2"_s});
    const auto answer = [&bench](const QString &name) {
        bench.answerWeb(HttpResponse{
            .url = QUrl(u"https://cdn.example/"_s + name), .status = 200, .headers = {}, .body = {}});
    };
    player.playOnlineSong(queue[0], queue);
    answer(u"1.mp3"_s);
    bench.reachEnd();
    QCOMPARE(player.currentOnlineSong(), std::optional(queue[1]));
    answer(u"2.mp3"_s);
    QCOMPARE(bench.item().asset().url.fileName(), u"2.mp3"_s);
    bench.reachEnd();
    QVERIFY(!player.isPlaying());
    QCOMPARE(player.currentOnlineSong(), std::optional(queue[1]));
    QVERIFY(bench.home.web().pending.empty());
}

void AudioPlayerEndTest::clearedQueueStopsAtTheEnd_data()
{
    QTest::addColumn<PlayMode>("mode");
    QTest::addColumn<bool>("isLedToTheEnd");
    QTest::newRow("sequential") << PlayMode::sequential << false;
    QTest::newRow("sequential, by the listener") << PlayMode::sequential << true;
    QTest::newRow("repeatAll") << PlayMode::repeatAll << false;
    QTest::newRow("repeatAll, by the listener") << PlayMode::repeatAll << true;
    QTest::newRow("shuffle") << PlayMode::shuffle << false;
    QTest::newRow("shuffle, by the listener") << PlayMode::shuffle << true;
}

void AudioPlayerEndTest::clearedQueueStopsAtTheEnd()
{
    QFETCH(PlayMode, mode);
    QFETCH(bool, isLedToTheEnd);
    PlayerBench bench;
    playThree(bench, 0, mode);
    bench.player().clearQueue();
    bench.stream().tick(100);
    if (isLedToTheEnd)
        bench.player().endCurrentTrack();
    else
        bench.reachEnd();
    QVERIFY(!bench.player().isPlaying());
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
    QCOMPARE(bench.player().currentTime(), 0.0);
    QCOMPARE(bench.stream().items.size(), 1);
    // Played again, it begins where it says it does.
    QVERIFY(!bench.stream().seeks.isEmpty());
    QCOMPARE(bench.stream().seeks.constLast().time, 0.0);
}

void AudioPlayerEndTest::endOfAReplacedItemMeansNothing()
{
    PlayerBench bench;
    playThree(bench, 0, PlayMode::sequential);
    const std::shared_ptr<FakePlayerItem> first = bench.stream().lastItem();
    bench.player().next();
    first->reachEnd();
    first->fail(u"late"_s);
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
    QVERIFY(bench.player().isPlaying());
    QVERIFY(!bench.player().playError());
}

void AudioPlayerEndTest::endCurrentTrackGoesToTheNextSong()
{
    PlayerBench bench;
    playThree(bench, 0, PlayMode::sequential);
    bench.player().endCurrentTrack();
    QCOMPARE(bench.stream().calls.constFirst(), u"pause"_s);
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(bench.stream().timeObservers(), 1);
}

void AudioPlayerEndTest::endCurrentTrackStopsOnTheLastSong()
{
    PlayerBench bench;
    playThree(bench, 2, PlayMode::sequential);
    bench.player().endCurrentTrack();
    QVERIFY(!bench.player().isPlaying());
    QCOMPARE(bench.player().currentTime(), 0.0);
    QCOMPARE(bench.stream().timeObservers(), 0);
    QCOMPARE(bench.stream().rate(), 0.0);
    // Played again it shows its progress and its end counts.
    bench.player().play();
    settle();
    bench.stream().tick(7);
    QCOMPARE(bench.player().currentTime(), 7.0);
    QCOMPARE(bench.player().duration(), 200.0);
}

void AudioPlayerEndTest::endCurrentTrackDuringASeekForgetsTheSeek()
{
    PlayerBench bench;
    playThree(bench, 2, PlayMode::sequential);
    bench.player().seek(50);
    bench.player().endCurrentTrack();
    bench.stream().finishSeek();
    QVERIFY(!bench.player().isPlaying());
    QCOMPARE(bench.player().currentTime(), 0.0);
    bench.player().play();
    bench.stream().tick(1);
    QCOMPARE(bench.player().currentTime(), 1.0);
}

void AudioPlayerEndTest::endCurrentTrackWithoutASongIsHarmless()
{
    PlayerBench bench;
    bench.start().endCurrentTrack();
    QVERIFY(!bench.player().isPlaying());
    QCOMPARE(bench.home.streamPlayersMade(), 0);
}

QTEST_GUILESS_MAIN(AudioPlayerEndTest)
#include "tst_audio_player_end.moc"
