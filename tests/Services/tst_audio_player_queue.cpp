// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/PlayerBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// The queue "a", "b", "c" with the song of an index playing in a mode.
void playThree(PlayerBench &bench, int index, PlayMode mode = PlayMode::sequential)
{
    AudioPlayerService &player = bench.start();
    while (player.playMode() != mode)
        player.togglePlayMode();
    const QList<Song> queue = fileSongs({u"a"_s, u"b"_s, u"c"_s});
    player.playSong(queue[index], queue);
}

} // namespace

class AudioPlayerQueueTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void startsEmpty();
    void queueIsReplacedAndTheIndexFoundById();
    void songOutsideItsQueueGetsIndexZero();
    void emptyQueueLeavesQueueAndIndex();
    void emptyOnlineQueueLeavesQueueAndIndex();
    void startingOneKindOfSongClearsTheOther();
    void nobodyEverSeesBothKindsOfSong();
    void queuesAreNotExclusive();
    void queueWinsOverOnlineQueue();
    void indexOutsideTheQueueInUsePlaysNothing();
    void nextAndPreviousByMode_data();
    void nextAndPreviousByMode();
    void onlineNextAndPreviousByMode_data();
    void onlineNextAndPreviousByMode();
    void shuffleDrawsFromTheWholeQueue();
    void shuffleMayPlayTheSameSongAgain();
    void shuffleOnOneSongGivesIndexZero();
    void repeatOneNextRestartsTheSongThroughPlaySong();
    void previousAfterThreeSecondsRestarts();
    void previousRestartsInEveryMode_data();
    void previousRestartsInEveryMode();
    void previousUpToThreeSecondsChangesSong_data();
    void previousUpToThreeSecondsChangesSong();
    void nextWithoutQueuesOnlySetsTheTimeBack();
    void clearedQueueLetsTheSongPlayOn();
    void clearedQueueMakesNextDoNothing();
    void clearedQueueKeepsASeekUnderWayAlive();
    void modeButtonGoesThroughTheCycle();
    void longQueueIsSharedNotCopied();
};

void AudioPlayerQueueTest::startsEmpty()
{
    PlayerBench bench;
    const AudioPlayerService &player = bench.start();
    QVERIFY(player.queue().isEmpty());
    QVERIFY(player.onlineQueue().isEmpty());
    QCOMPARE(player.currentIndex(), 0);
    QVERIFY(!player.currentSong());
    QVERIFY(!player.currentOnlineSong());
    QCOMPARE(player.playMode(), PlayMode::sequential);
    QCOMPARE(player.playModeSymbol(), u"list.number"_s);
    QCOMPARE(player.playModeLabel(), u"顺序播放"_s);
}

void AudioPlayerQueueTest::queueIsReplacedAndTheIndexFoundById()
{
    PlayerBench bench;
    playThree(bench, 0);
    QSignalSpy queueSpy(&bench.player(), &AudioPlayerService::queueChanged);
    QList<Song> queue = fileSongs({u"x"_s, u"y"_s, u"y"_s});
    Song renamed = queue[1];
    renamed.setTitle(u"another title"_s);
    bench.player().playSong(renamed, queue);
    QCOMPARE(bench.player().queue(), queue);
    QCOMPARE(bench.player().currentIndex(), 1);
    QCOMPARE(songOf(bench.player()).title(), u"another title"_s);
    QCOMPARE(queueSpy.size(), 1);
}

void AudioPlayerQueueTest::songOutsideItsQueueGetsIndexZero()
{
    PlayerBench bench;
    playThree(bench, 2);
    bench.player().playSong(fileSong(u"z"_s), fileSongs({u"x"_s, u"y"_s}));
    QCOMPARE(bench.player().currentIndex(), 0);
    QCOMPARE(songOf(bench.player()).id(), u"z"_s);
    bench.player().playOnlineSong(onlineSong(u"9"_s), onlineSongs({u"1"_s, u"2"_s}));
    QCOMPARE(bench.player().currentIndex(), 0);
}

void AudioPlayerQueueTest::emptyQueueLeavesQueueAndIndex()
{
    PlayerBench bench;
    playThree(bench, 2);
    bench.player().playSong(fileSong(u"a"_s), {});
    QCOMPARE(bench.player().queue(), fileSongs({u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(bench.player().currentIndex(), 2);
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
}

void AudioPlayerQueueTest::emptyOnlineQueueLeavesQueueAndIndex()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    const QList<OnlineSong> queue = onlineSongs({u"1"_s, u"2"_s});
    player.playOnlineSong(queue[1], queue);
    player.playOnlineSong(onlineSong(u"1"_s), {});
    QCOMPARE(player.onlineQueue(), queue);
    QCOMPARE(player.currentIndex(), 1);
}

void AudioPlayerQueueTest::startingOneKindOfSongClearsTheOther()
{
    PlayerBench bench;
    playThree(bench, 0);
    bench.player().playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"1"_s}));
    QVERIFY(!bench.player().currentSong());
    QCOMPARE(bench.player().currentOnlineSong(), std::optional(onlineSong(u"1"_s)));
    bench.player().playSong(fileSong(u"b"_s), {});
    QVERIFY(!bench.player().currentOnlineSong());
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
}

void AudioPlayerQueueTest::nobodyEverSeesBothKindsOfSong()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    bool sawBoth = false;
    const auto look = [&] { sawBoth |= player.currentSong() && player.currentOnlineSong(); };
    connect(&player, &AudioPlayerService::currentSongChanged, this, look);
    connect(&player, &AudioPlayerService::currentOnlineSongChanged, this, look);
    player.playSong(fileSong(u"a"_s), {});
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.playSong(fileSong(u"b"_s), {});
    QVERIFY(!sawBoth);
}

void AudioPlayerQueueTest::queuesAreNotExclusive()
{
    PlayerBench bench;
    playThree(bench, 0);
    bench.player().playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"1"_s, u"2"_s}));
    QCOMPARE(bench.player().queue().size(), 3);
    bench.player().playSong(fileSong(u"x"_s), fileSongs({u"x"_s}));
    QCOMPARE(bench.player().onlineQueue().size(), 2);
}

void AudioPlayerQueueTest::queueWinsOverOnlineQueue()
{
    PlayerBench bench;
    playThree(bench, 2);
    const QList<OnlineSong> online = onlineSongs({u"1"_s, u"2"_s});
    bench.player().playOnlineSong(online[0], online);
    bench.player().next();
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
    QCOMPARE(bench.player().currentIndex(), 1);
    QVERIFY(!bench.player().currentOnlineSong());
}

void AudioPlayerQueueTest::indexOutsideTheQueueInUsePlaysNothing()
{
    PlayerBench bench;
    playThree(bench, 0, PlayMode::repeatOne);
    const QList<OnlineSong> online = onlineSongs({u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s});
    bench.player().playOnlineSong(online[5], online);
    bench.player().next();
    bench.player().previous();
    QCOMPARE(bench.player().currentIndex(), 5);
    QCOMPARE(bench.player().currentOnlineSong(), std::optional(online[5]));
    QCOMPARE(bench.stream().items.size(), 1);
}

void AudioPlayerQueueTest::nextAndPreviousByMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("next");
    QTest::addColumn<int>("previous");
    for (const auto &[name, mode] :
         {std::pair("sequential", PlayMode::sequential), std::pair("repeatAll", PlayMode::repeatAll)}) {
        QTest::addRow("%s, first", name) << int(mode) << 0 << 1 << 2;
        QTest::addRow("%s, middle", name) << int(mode) << 1 << 2 << 0;
        QTest::addRow("%s, last", name) << int(mode) << 2 << 0 << 1;
    }
    // Chance says 2.
    QTest::newRow("shuffle") << int(PlayMode::shuffle) << 0 << 2 << 2;
    QTest::newRow("repeatOne, first") << int(PlayMode::repeatOne) << 0 << 0 << 0;
    QTest::newRow("repeatOne, last") << int(PlayMode::repeatOne) << 2 << 2 << 2;
}

void AudioPlayerQueueTest::nextAndPreviousByMode()
{
    QFETCH(int, mode);
    QFETCH(int, index);
    QFETCH(int, next);
    QFETCH(int, previous);
    for (const bool forward : {true, false}) {
        PlayerBench bench;
        playThree(bench, index, static_cast<PlayMode>(mode));
        bench.home.random().indexes = {2};
        bench.stream().tick(2);
        if (forward)
            bench.player().next();
        else
            bench.player().previous();
        const int expected = forward ? next : previous;
        QCOMPARE(bench.player().currentIndex(), expected);
        QCOMPARE(bench.player().currentSong(), std::optional(bench.player().queue().at(expected)));
        QCOMPARE(bench.player().currentTime(), 0.0);
        // Even the same song starts anew with an item of its own.
        QCOMPARE(bench.stream().items.size(), 2);
        QVERIFY(bench.player().isPlaying());
    }
}

void AudioPlayerQueueTest::onlineNextAndPreviousByMode_data()
{
    nextAndPreviousByMode_data();
}

void AudioPlayerQueueTest::onlineNextAndPreviousByMode()
{
    QFETCH(int, mode);
    QFETCH(int, index);
    QFETCH(int, next);
    QFETCH(int, previous);
    for (const bool forward : {true, false}) {
        PlayerBench bench;
        AudioPlayerService &player = bench.start();
        while (player.playMode() != static_cast<PlayMode>(mode))
            player.togglePlayMode();
        const QList<OnlineSong> queue = onlineSongs({u"1"_s, u"2"_s, u"3"_s});
        player.playOnlineSong(queue[index], queue);
        bench.home.random().indexes = {2};
        if (forward)
            player.next();
        else
            player.previous();
        const int expected = forward ? next : previous;
        QCOMPARE(player.currentIndex(), expected);
        QCOMPARE(player.currentOnlineSong(), std::optional(queue.at(expected)));
        // Addresses are not kept: the one of the next song is fetched, even when it is the same song.
        QCOMPARE(bench.home.web().sent.size(), 2);
        QCOMPARE(bench.home.web().pending.size(), 1U);
    }
}

void AudioPlayerQueueTest::shuffleDrawsFromTheWholeQueue()
{
    PlayerBench bench;
    playThree(bench, 0, PlayMode::shuffle);
    bench.player().next();
    bench.player().previous();
    QCOMPARE(bench.home.random().counts, (QList<int>{3, 3}));
}

void AudioPlayerQueueTest::shuffleMayPlayTheSameSongAgain()
{
    PlayerBench bench;
    playThree(bench, 1, PlayMode::shuffle);
    bench.home.random().indexes = {1, 1};
    bench.player().next();
    bench.player().next();
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
    QCOMPARE(bench.stream().items.size(), 3);
}

void AudioPlayerQueueTest::shuffleOnOneSongGivesIndexZero()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    while (player.playMode() != PlayMode::shuffle)
        player.togglePlayMode();
    player.playSong(fileSong(u"a"_s), fileSongs({u"a"_s}));
    bench.home.random().indexes = {5, 5};
    player.next();
    QCOMPARE(player.currentIndex(), 0);
    player.previous();
    QCOMPARE(player.currentIndex(), 0);
    QCOMPARE(bench.home.random().counts, (QList<int>{1, 1}));
    QCOMPARE(bench.stream().items.size(), 3);
}

void AudioPlayerQueueTest::repeatOneNextRestartsTheSongThroughPlaySong()
{
    PlayerBench bench;
    playThree(bench, 1, PlayMode::repeatOne);
    bench.stream().tick(50);
    bench.player().next();
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
    QCOMPARE(bench.player().currentIndex(), 1);
    QCOMPARE(bench.player().currentTime(), 0.0);
    QCOMPARE(bench.stream().items.size(), 2);
    QVERIFY(bench.stream().seeks.isEmpty());
}

void AudioPlayerQueueTest::previousAfterThreeSecondsRestarts()
{
    PlayerBench bench;
    playThree(bench, 1);
    bench.answerDuration(200);
    bench.stream().tick(3.01);
    bench.player().previous();
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
    QCOMPARE(bench.stream().items.size(), 1);
    QCOMPARE(bench.stream().seeks.size(), 1);
    QCOMPARE(bench.stream().seeks.constFirst().time, 0.0);
}

void AudioPlayerQueueTest::previousRestartsInEveryMode_data()
{
    QTest::addColumn<int>("mode");
    for (const PlayMode mode :
         {PlayMode::sequential, PlayMode::shuffle, PlayMode::repeatOne, PlayMode::repeatAll})
        QTest::newRow(qPrintable(rawValue(mode))) << int(mode);
}

void AudioPlayerQueueTest::previousRestartsInEveryMode()
{
    QFETCH(int, mode);
    PlayerBench bench;
    playThree(bench, 1, static_cast<PlayMode>(mode));
    bench.stream().tick(4);
    bench.player().previous();
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
    QCOMPARE(bench.stream().items.size(), 1);
    QCOMPARE(bench.stream().seeks.size(), 1);
}

void AudioPlayerQueueTest::previousUpToThreeSecondsChangesSong_data()
{
    QTest::addColumn<double>("position");
    QTest::newRow("2.99 seconds") << 2.99;
    QTest::newRow("exactly 3 seconds") << 3.0;
}

void AudioPlayerQueueTest::previousUpToThreeSecondsChangesSong()
{
    QFETCH(double, position);
    PlayerBench bench;
    playThree(bench, 1);
    bench.stream().tick(position);
    bench.player().previous();
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
    QVERIFY(bench.stream().seeks.isEmpty());
}

void AudioPlayerQueueTest::nextWithoutQueuesOnlySetsTheTimeBack()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    bench.stream().tick(2);
    player.next();
    QCOMPARE(player.currentTime(), 0.0);
    bench.stream().tick(2.25);
    player.previous();
    QCOMPARE(player.currentTime(), 0.0);
    QCOMPARE(bench.stream().items.size(), 1);
    QVERIFY(player.isPlaying());
}

void AudioPlayerQueueTest::clearedQueueLetsTheSongPlayOn()
{
    PlayerBench bench;
    playThree(bench, 2);
    bench.player().playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"1"_s}));
    bench.player().playSong(fileSong(u"c"_s), bench.player().queue());
    bench.stream().tick(10);
    bench.player().clearQueue();
    QVERIFY(bench.player().queue().isEmpty());
    QVERIFY(bench.player().onlineQueue().isEmpty());
    QCOMPARE(songOf(bench.player()).id(), u"c"_s);
    QCOMPARE(bench.player().currentIndex(), 2);
    QCOMPARE(bench.player().currentTime(), 10.0);
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerQueueTest::clearedQueueMakesNextDoNothing()
{
    PlayerBench bench;
    playThree(bench, 0);
    bench.player().clearQueue();
    bench.player().next();
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
    QCOMPARE(bench.stream().items.size(), 1);
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerQueueTest::clearedQueueKeepsASeekUnderWayAlive()
{
    PlayerBench bench;
    playThree(bench, 0);
    bench.answerDuration(200);
    bench.player().clearQueue();
    bench.player().seek(50);
    bench.player().next();
    bench.stream().finishSeek();
    // Nothing took the song's place, so it plays on from where it was sought to.
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(bench.player().currentTime(), 50.0);
}

void AudioPlayerQueueTest::modeButtonGoesThroughTheCycle()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    QSignalSpy spy(&player, &AudioPlayerService::playModeChanged);
    QList<PlayMode> seen;
    for (int press = 0; press < 4; ++press) {
        player.togglePlayMode();
        seen.append(player.playMode());
    }
    QCOMPARE(seen, (QList<PlayMode>{PlayMode::repeatAll, PlayMode::shuffle, PlayMode::repeatOne,
                                    PlayMode::sequential}));
    QCOMPARE(spy.size(), 4);
    QCOMPARE(bench.home.preferences().writes(), 0);
}

void AudioPlayerQueueTest::longQueueIsSharedNotCopied()
{
    constexpr int count = 100000;
    QStringList ids;
    for (int i = 0; i < count; ++i)
        ids.append(QString::number(i));
    const QList<Song> queue = fileSongs(ids);
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(queue[count - 1], queue);
    QCOMPARE(player.currentIndex(), count - 1);
    QCOMPARE(player.queue().constData(), queue.constData());
    player.next();
    QCOMPARE(player.currentIndex(), 0);
    QCOMPARE(player.queue().constData(), queue.constData());
}

QTEST_GUILESS_MAIN(AudioPlayerQueueTest)
#include "tst_audio_player_queue.moc"
