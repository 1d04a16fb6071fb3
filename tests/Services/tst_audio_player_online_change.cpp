// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/PlayerBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// The address of the audio of a song.
HttpResponse found(const QString &id)
{
    return {
        .url = QUrl(u"https://cdn.example/"_s + id + u".mp3"_s), .status = 200, .headers = {}, .body = {}};
}

/// Ids of the songs whose addresses are being fetched.
QStringList fetched(PlayerBench &bench)
{
    QStringList ids;
    for (const FakeHttpClient::Pending &pending : bench.home.web().pending) {
        if (pending.request.url.host() == u"api.example"_s)
            ids.append(pending.request.url.query().section(u'=', -1));
    }
    return ids;
}

QStringList played(PlayerBench &bench)
{
    QStringList names;
    if (bench.home.streamPlayer()) {
        for (const std::shared_ptr<FakePlayerItem> &item : bench.stream().items)
            names.append(item->asset().url.fileName());
    }
    return names;
}

void setMode(AudioPlayerService &player, PlayMode mode)
{
    while (player.playMode() != mode)
        player.togglePlayMode();
}

void everyMode()
{
    QTest::addColumn<PlayMode>("mode");
    QTest::newRow("sequential") << PlayMode::sequential;
    QTest::newRow("repeatAll") << PlayMode::repeatAll;
    QTest::newRow("shuffle") << PlayMode::shuffle;
    QTest::newRow("repeatOne") << PlayMode::repeatOne;
}

} // namespace

/// What happens while the address of an online song is being fetched, and after the song.
class AudioPlayerOnlineChangeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void anotherSongEndsTheFetch_data();
    void anotherSongEndsTheFetch();
    void anAnswerOnItsWayComesTooLate();
    void laterOnlineSongWins();
    void sameSongAskedForTwicePlaysOnce();
    void backToTheFirstSongPlaysItOnce();
    void nextAndPreviousLeaveTheFetch_data();
    void nextAndPreviousLeaveTheFetch();
    void clearedQueueLetsTheSongPlay();
    void runningSongPlaysOnWhileAnAddressIsFetched();
    void pausedSongMakesRoomForTheOnlineOne();
    void endOfTheSongThatWasLeftIsFollowedByNothing_data();
    void endOfTheSongThatWasLeftIsFollowedByNothing();
    void endOfTheEqualizedSongThatWasLeftIsFollowedByNothing();
    void seekToTheEndOfTheSongThatWasLeftIsFollowedByNothing_data();
    void seekToTheEndOfTheSongThatWasLeftIsFollowedByNothing();
    void failureOfTheSongThatWasLeftIsNotTold();
    void failureOfTheSongBeforeOneWithoutAnAddressIsNotTold();
    void previousDoesNotRestartTheSongThatWasLeft();
    void playStartsNoSongThatWasLeft();
    void lengthOfTheSongThatWasLeftIsNotTold();
    void aSongThatWasLeftBesideTheEngineIsSilent();
    void deviceOfTheSongThatWasLeftIsNotTold();
    void endOfAnOnlineSongByMode_data();
    void endOfAnOnlineSongByMode();
    void localQueueComesFirst();
    void theFetchEndsWithThePlayer();
};

void AudioPlayerOnlineChangeTest::anotherSongEndsTheFetch_data()
{
    QTest::addColumn<Song>("song");
    QTest::newRow("file") << fileSong(u"a"_s);
    QTest::newRow("address") << webSong(u"a"_s);
    QTest::newRow("server") << serverSong(u"a"_s);
    Song none = fileSong(u"a"_s);
    none.setAssetURL({});
    QTest::newRow("nowhere") << none;
}

void AudioPlayerOnlineChangeTest::anotherSongEndsTheFetch()
{
    QFETCH(Song, song);
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), {});
    QCOMPARE(fetched(bench), QStringList{u"1"_s});
    player.playSong(song, {});
    QVERIFY(!player.isLoading());
    QCOMPARE(fetched(bench), QStringList());
    settle();
    QVERIFY(!player.isLoading());
    QCOMPARE(songOf(player).id(), song.id());
    QVERIFY(!player.currentOnlineSong());
    QVERIFY(!player.playError());
    QCOMPARE(played(bench), song.assetURL() ? QStringList{u"a.mp3"_s} : QStringList());
    QCOMPARE(player.isPlaying(), song.assetURL().has_value());
    QVERIFY(bench.console.take().filter(u"Failed to fetch"_s).isEmpty());
}

void AudioPlayerOnlineChangeTest::anAnswerOnItsWayComesTooLate()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), {});
    bench.home.web().answer(found(u"1"_s));
    player.playOnlineSong(onlineSong(u"2"_s), {});
    settle();
    QVERIFY(player.isLoading());
    QCOMPARE(played(bench), QStringList());
    bench.home.web().answer(std::unexpected(HttpError{HttpError::Kind::timeout, u"timed out"_s}));
    player.playSong(fileSong(u"a"_s), {});
    settle();
    QVERIFY(!player.isLoading());
    QVERIFY(!player.playError());
    QCOMPARE(played(bench), QStringList{u"a.mp3"_s});
    QVERIFY(bench.console.take().filter(u"Failed to fetch"_s).isEmpty());
}

void AudioPlayerOnlineChangeTest::laterOnlineSongWins()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.playOnlineSong(onlineSong(u"2"_s), {});
    settle();
    QCOMPARE(fetched(bench), QStringList{u"2"_s});
    QVERIFY(player.isLoading());
    QCOMPARE(played(bench), QStringList());
    bench.answerWeb(found(u"2"_s));
    QCOMPARE(played(bench), QStringList{u"2.mp3"_s});
    QVERIFY(!player.isLoading());
}

void AudioPlayerOnlineChangeTest::sameSongAskedForTwicePlaysOnce()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.playOnlineSong(onlineSong(u"1"_s), {});
    QCOMPARE(fetched(bench), QStringList{u"1"_s});
    bench.answerWeb(found(u"1"_s));
    QCOMPARE(played(bench), QStringList{u"1.mp3"_s});
    QVERIFY(player.isPlaying());
}

void AudioPlayerOnlineChangeTest::backToTheFirstSongPlaysItOnce()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    QSignalSpy loading(&player, &AudioPlayerService::isLoadingChanged);
    for (const QString &id : {u"1"_s, u"2"_s, u"1"_s})
        player.playOnlineSong(onlineSong(id), {});
    settle();
    QVERIFY(player.isLoading());
    bench.answerWeb(found(u"1"_s));
    QCOMPARE(played(bench), QStringList{u"1.mp3"_s});
    // It never fell back between.
    QCOMPARE(loading.size(), 2);
}

void AudioPlayerOnlineChangeTest::nextAndPreviousLeaveTheFetch_data()
{
    everyMode();
}

void AudioPlayerOnlineChangeTest::nextAndPreviousLeaveTheFetch()
{
    QFETCH(PlayMode, mode);
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    setMode(player, mode);
    bench.home.random().indexes = {2, 0};
    const QList<OnlineSong> queue = onlineSongs({u"0"_s, u"1"_s, u"2"_s});
    player.playOnlineSong(queue[1], queue);
    player.next();
    QCOMPARE(fetched(bench), QStringList{mode == PlayMode::repeatOne ? u"1"_s : u"2"_s});
    QVERIFY(player.isLoading());
    player.previous();
    settle();
    const QString last = mode == PlayMode::shuffle ? u"0"_s : u"1"_s;
    QCOMPARE(fetched(bench), QStringList{last});
    QVERIFY(player.isLoading());
    QCOMPARE(player.currentOnlineSong(), std::optional(onlineSong(last)));
    bench.answerWeb(found(last));
    QCOMPARE(played(bench), QStringList{last + u".mp3"_s});
    QVERIFY(!player.isLoading());
}

void AudioPlayerOnlineChangeTest::clearedQueueLetsTheSongPlay()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"1"_s, u"2"_s}));
    player.clearQueue();
    QVERIFY(player.isLoading());
    bench.answerWeb(found(u"1"_s));
    QCOMPARE(played(bench), QStringList{u"1.mp3"_s});
    QVERIFY(!player.isLoading());
    bench.reachEnd();
    QVERIFY(!player.isPlaying());
    QCOMPARE(fetched(bench), QStringList());
}

void AudioPlayerOnlineChangeTest::runningSongPlaysOnWhileAnAddressIsFetched()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    player.playOnlineSong(onlineSong(u"1"_s), {});
    QVERIFY(player.isPlaying());
    QCOMPARE(bench.stream().rate(), 1.0);
    bench.answerWeb(found(u"1"_s));
    QCOMPARE(bench.stream().calls,
             (QStringList{u"replace a.mp3"_s, u"play"_s, u"replace 1.mp3"_s, u"play"_s}));
}

void AudioPlayerOnlineChangeTest::pausedSongMakesRoomForTheOnlineOne()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.pause();
    QVERIFY(player.isLoading());
    bench.answerWeb(found(u"1"_s));
    QVERIFY(player.isPlaying());
    QVERIFY(!player.isLoading());
    QCOMPARE(played(bench), (QStringList{u"a.mp3"_s, u"1.mp3"_s}));
}

void AudioPlayerOnlineChangeTest::endOfTheSongThatWasLeftIsFollowedByNothing_data()
{
    everyMode();
}

void AudioPlayerOnlineChangeTest::endOfTheSongThatWasLeftIsFollowedByNothing()
{
    QFETCH(PlayMode, mode);
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    setMode(player, mode);
    const QList<OnlineSong> queue = onlineSongs({u"0"_s, u"1"_s, u"2"_s, u"3"_s});
    player.playOnlineSong(queue[0], queue);
    bench.answerWeb(found(u"0"_s));
    player.playOnlineSong(queue[2], queue);
    bench.reachEnd();
    QVERIFY(!player.isPlaying());
    QVERIFY(player.isLoading());
    QCOMPARE(player.currentOnlineSong(), std::optional(queue[2]));
    QCOMPARE(fetched(bench), QStringList{u"2"_s});
    bench.answerWeb(found(u"2"_s));
    QVERIFY(player.isPlaying());
    QCOMPARE(played(bench), (QStringList{u"0.mp3"_s, u"2.mp3"_s}));
}

void AudioPlayerOnlineChangeTest::endOfTheEqualizedSongThatWasLeftIsFollowedByNothing()
{
    PlayerBench bench;
    bench.equalizer.enabled = true;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    player.playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"1"_s, u"2"_s}));
    bench.equalizer.position = bench.equalizer.length;
    bench.home.clock().advance(std::chrono::seconds(1));
    QVERIFY(!player.isPlaying());
    QCOMPARE(fetched(bench), QStringList{u"1"_s});
    bench.answerWeb(found(u"1"_s));
    QVERIFY(player.isPlaying());
    QCOMPARE(player.currentOnlineSong(), std::optional(onlineSong(u"1"_s)));
    QCOMPARE(played(bench), QStringList{u"1.mp3"_s});
}

void AudioPlayerOnlineChangeTest::seekToTheEndOfTheSongThatWasLeftIsFollowedByNothing_data()
{
    QTest::addColumn<bool>("byTheSlider");
    QTest::newRow("a seek lands there") << false;
    QTest::newRow("the slider is drawn there") << true;
}

void AudioPlayerOnlineChangeTest::seekToTheEndOfTheSongThatWasLeftIsFollowedByNothing()
{
    QFETCH(bool, byTheSlider);
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    const QList<OnlineSong> queue = onlineSongs({u"0"_s, u"1"_s, u"2"_s, u"3"_s});
    player.playOnlineSong(queue[0], queue);
    bench.answerWeb(found(u"0"_s));
    bench.answerDuration(100);
    if (!byTheSlider)
        player.seek(100);
    player.playOnlineSong(queue[2], queue);
    if (byTheSlider)
        player.endCurrentTrack();
    else
        bench.stream().finishSeek();
    QVERIFY(!player.isPlaying());
    QVERIFY(player.isLoading());
    QCOMPARE(player.currentOnlineSong(), std::optional(queue[2]));
    QCOMPARE(fetched(bench), QStringList{u"2"_s});
    bench.answerWeb(found(u"2"_s));
    QVERIFY(player.isPlaying());
    QCOMPARE(played(bench), (QStringList{u"0.mp3"_s, u"2.mp3"_s}));
}

void AudioPlayerOnlineChangeTest::failureOfTheSongThatWasLeftIsNotTold()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(webSong(u"a"_s), {});
    player.playOnlineSong(onlineSong(u"1"_s), {});
    bench.item().fail(u"broken line"_s);
    QVERIFY(!player.isPlaying());
    QVERIFY(player.isLoading());
    QVERIFY(!player.playError());
    QVERIFY(bench.console.take().contains(u"❌ PlayerItem 状态: failed - broken line"_s));
    bench.answerWeb(found(u"1"_s));
    QVERIFY(player.isPlaying());
    QVERIFY(!player.playError());
    // Its own failure is told.
    bench.item().fail(u"broken too"_s);
    QCOMPARE(player.playError(), std::optional(u"broken too"_s));
}

void AudioPlayerOnlineChangeTest::failureOfTheSongBeforeOneWithoutAnAddressIsNotTold()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(webSong(u"a"_s), {});
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.stop();
    bench.item().fail(u"broken line"_s);
    QVERIFY(!player.playError());
    QVERIFY(bench.console.take().contains(u"❌ PlayerItem 状态: failed - broken line"_s));
}

void AudioPlayerOnlineChangeTest::previousDoesNotRestartTheSongThatWasLeft()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(webSong(u"a"_s), {});
    bench.answerDuration(100);
    bench.stream().tick(60);
    QCOMPARE(player.currentTime(), 60.0);
    const QList<OnlineSong> queue = onlineSongs({u"0"_s, u"1"_s});
    player.playOnlineSong(queue[1], queue);
    settle();
    QCOMPARE(fetched(bench), QStringList{u"1"_s});
    player.previous();
    settle();
    QCOMPARE(player.currentOnlineSong(), std::optional(queue[0]));
    QCOMPARE(fetched(bench), QStringList{u"0"_s});
}

void AudioPlayerOnlineChangeTest::playStartsNoSongThatWasLeft()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(webSong(u"a"_s), {});
    player.pause();
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.play();
    QVERIFY(!player.isPlaying());
    QCOMPARE(bench.stream().rate(), 0.0);
    // Stopped on its way and played twice, it is asked for once more, and begins when it can.
    player.stop();
    player.play();
    player.play();
    QVERIFY(player.isLoading());
    QCOMPARE(bench.stream().rate(), 0.0);
    settle();
    QCOMPARE(fetched(bench), QStringList{u"1"_s});
    bench.answerWeb(found(u"1"_s));
    QVERIFY(player.isPlaying());
    QCOMPARE(played(bench).constLast(), u"1.mp3"_s);
}

void AudioPlayerOnlineChangeTest::lengthOfTheSongThatWasLeftIsNotTold()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(webSong(u"a"_s), {});
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.stop();
    player.play();
    QVERIFY(player.isLoading());
    bench.answerDuration(100);
    QCOMPARE(player.duration(), 0.0);
    bench.answerWeb(found(u"1"_s));
    bench.answerDuration(70);
    QCOMPARE(player.duration(), 70.0);
}

void AudioPlayerOnlineChangeTest::aSongThatWasLeftBesideTheEngineIsSilent()
{
    PlayerBench bench;
    bench.equalizer.enabled = true;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"f"_s), {});
    player.playSong(serverSong(u"a"_s), {});
    QVERIFY(player.usingEqualizerEngine());
    QCOMPARE(bench.stream().rate(), 1.0);
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.stop();
    QCOMPARE(bench.stream().rate(), 0.0);
    QVERIFY(!bench.equalizer.playing);
    // What it still tells of its place is not the place of the other.
    bench.stream().tick(60);
    QCOMPARE(player.currentTime(), 0.0);
}

void AudioPlayerOnlineChangeTest::deviceOfTheSongThatWasLeftIsNotTold()
{
    PlayerBench bench;
    bench.equalizer.enabled = true;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"f"_s), {});
    QVERIFY(player.isPlaying());
    player.playOnlineSong(onlineSong(u"1"_s), {});
    bench.equalizer.playing = false;
    bench.home.clock().advance(std::chrono::seconds(1));
    QVERIFY(!player.isPlaying());
    QVERIFY(!player.playError());
}

void AudioPlayerOnlineChangeTest::endOfAnOnlineSongByMode_data()
{
    QTest::addColumn<PlayMode>("mode");
    QTest::addColumn<int>("index");
    QTest::addColumn<QStringList>("fetches");
    QTest::addColumn<bool>("replays");
    QTest::newRow("sequential, first") << PlayMode::sequential << 0 << QStringList{u"1"_s} << false;
    QTest::newRow("sequential, last") << PlayMode::sequential << 2 << QStringList() << false;
    QTest::newRow("repeatAll, last") << PlayMode::repeatAll << 2 << QStringList{u"0"_s} << false;
    QTest::newRow("shuffle") << PlayMode::shuffle << 0 << QStringList{u"2"_s} << false;
    QTest::newRow("repeatOne") << PlayMode::repeatOne << 1 << QStringList() << true;
}

void AudioPlayerOnlineChangeTest::endOfAnOnlineSongByMode()
{
    QFETCH(PlayMode, mode);
    QFETCH(int, index);
    QFETCH(QStringList, fetches);
    QFETCH(bool, replays);
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    setMode(player, mode);
    bench.home.random().indexes = {2};
    const QList<OnlineSong> queue = onlineSongs({u"0"_s, u"1"_s, u"2"_s});
    player.playOnlineSong(queue[index], queue);
    bench.answerWeb(found(queue[index].id));
    bench.reachEnd();
    settle();
    QCOMPARE(fetched(bench), fetches);
    QCOMPARE(player.isLoading(), !fetches.isEmpty());
    QCOMPARE(bench.stream().items.size(), 1);
    if (replays) {
        bench.stream().finishSeek();
        QVERIFY(player.isPlaying());
    }
    if (fetches.isEmpty()) {
        QCOMPARE(player.currentOnlineSong(), std::optional(queue[index]));
        QCOMPARE(player.isPlaying(), replays);
    }
}

void AudioPlayerOnlineChangeTest::localQueueComesFirst()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    player.playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"1"_s, u"2"_s}));
    player.next();
    QCOMPARE(songOf(player).id(), u"b"_s);
    QVERIFY(!player.isLoading());
    QCOMPARE(fetched(bench), QStringList());
    player.clearQueue();
    player.playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"1"_s, u"2"_s}));
    player.next();
    QCOMPARE(fetched(bench), QStringList{u"2"_s});
}

void AudioPlayerOnlineChangeTest::theFetchEndsWithThePlayer()
{
    PlayerBench bench;
    bench.start().playOnlineSong(onlineSong(u"1"_s), {});
    bench.stop();
    QCOMPARE(fetched(bench), QStringList());
    QCOMPARE(bench.home.streamPlayersMade(), 0);
}

QTEST_GUILESS_MAIN(AudioPlayerOnlineChangeTest)
#include "tst_audio_player_online_change.moc"
