// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/PlayerBench.h"
#include "Models/PlaybackSnapshot.h"
#include "Platform/SharedServices.h"
#include "Utils/ProcessHash.h"
#include "Utils/StableHash.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString snapshotKey = u"lastPlaybackState"_s;

/// Leaves the snapshot of a song at 42 of 200 seconds.
void leaveSnapshot(PlayerBench &bench, const QString &filePath, const QString &songId, double position = 42)
{
    const PlaybackSnapshot snapshot{.songId = songId,
                                    .title = u"Kept title"_s,
                                    .artist = u"Kept artist"_s,
                                    .album = u"Kept album"_s,
                                    .filePath = filePath,
                                    .position = position,
                                    .duration = 200,
                                    .date = bench.home.clock().now()};
    bench.home.preferences().setData(snapshotKey, snapshot.encoded().value_or(QByteArray()));
}

} // namespace

class AudioPlayerRestoreTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void constructionSetsTheDesktopUpInOrderThenRestores();
    void constructionWithoutPartsRestoresToo();
    void sharedPlayerTakesTheImportServiceFirst();
    void withoutASnapshotNoStreamPlayerIsMade();
    void importedSongIsFoundByItsPath();
    void importedSongIsFoundByItsId();
    void unknownFileGivesASongBuiltFromTheSnapshot();
    void builtSongTakesTheCoverKeptForItsFile();
    void builtSongDoesWithoutACoverThatIsNoFile();
    void fileStandsPausedExactlyAtItsPosition();
    void snapshotAtTheStartSeeksNothing();
    void equalizerIsNotUsedForTheRestoredSong();
    void loadedDurationIsPublished();
    void restoredSongPlaysAndIsFollowedByTheNextOne();
    void restoredSongCanBeSoughtAndPaused();
    void damagedSnapshotIsIgnored_data();
    void damagedSnapshotIsIgnored();
    void snapshotOfAMissingFileStartsWithoutASongAndStays();
    void secondRunHoldsAllImportedSongsAndTheFirstMode();
};

void AudioPlayerRestoreTest::constructionSetsTheDesktopUpInOrderThenRestores()
{
    PlayerBench bench;
    leaveSnapshot(bench, bench.home.addMusicFile(u"x.mp3"_s), u"X"_s);
    bench.start();
    QCOMPARE(bench.mediaCenter.setups,
             (QStringList{u"session"_s, u"commands"_s, u"information"_s, u"interruptions"_s}));
    QCOMPARE(bench.mediaCenter.publishedTitle, u"Kept title"_s);
    QCOMPARE(bench.mediaCenter.publishedTime, 42.0);
    QVERIFY(!bench.mediaCenter.publishedPlaying);
}

void AudioPlayerRestoreTest::constructionWithoutPartsRestoresToo()
{
    PlayerBench bench;
    const QString path = bench.home.addMusicFile(u"x.mp3"_s);
    leaveSnapshot(bench, path, u"X"_s);
    {
        LocalMusicImportService importService(bench.home.platform);
        AudioPlayerService player(bench.home.platform, importService);
        QCOMPARE(songOf(player).title(), u"Kept title"_s);
        player.play();
        player.pause();
        bench.item().answerDuration(1);
        settle();
    }
    settle();
}

void AudioPlayerRestoreTest::sharedPlayerTakesTheImportServiceFirst()
{
    PlayerBench bench;
    const Song song = bench.home.addImportedSong(u"a.mp3"_s, u"Found"_s);
    leaveSnapshot(bench, song.assetPath(), song.id());
    setProcessPlatform(&bench.home.platform);
    QCOMPARE(songOf(AudioPlayerService::shared()).title(), u"Found"_s);
    QCOMPARE(&AudioPlayerService::shared(), &AudioPlayerService::shared());
    QCOMPARE(LocalMusicImportService::shared().importedSongs().size(), 1);
    bench.item().answerDuration(1);
    settle();
    releaseSharedServices();
    setProcessPlatform(nullptr);
}

void AudioPlayerRestoreTest::withoutASnapshotNoStreamPlayerIsMade()
{
    PlayerBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    const AudioPlayerService &player = bench.start();
    QVERIFY(!player.currentSong());
    QVERIFY(player.queue().isEmpty());
    QCOMPARE(bench.home.streamPlayersMade(), 0);
    QCOMPARE(bench.home.clock().activeTimers(), 0);
}

void AudioPlayerRestoreTest::importedSongIsFoundByItsPath()
{
    PlayerBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    const Song song = bench.home.addImportedSong(u"b.mp3"_s, u"B"_s);
    bench.home.addImportedSong(u"c.mp3"_s, u"C"_s);
    leaveSnapshot(bench, song.assetPath(), u"an id of another time"_s);
    const AudioPlayerService &player = bench.start();
    QCOMPARE(player.currentSong(), std::optional(song));
    QCOMPARE(songOf(player).title(), u"B"_s);
    QVERIFY(!player.currentOnlineSong());
    QCOMPARE(player.queue(), bench.importService().importedSongs());
    QCOMPARE(player.queue().size(), 3);
    QCOMPARE(player.currentIndex(), 1);
    QCOMPARE(player.queue().constData(), bench.importService().importedSongs().constData());
}

void AudioPlayerRestoreTest::importedSongIsFoundByItsId()
{
    PlayerBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    const Song song = bench.home.addImportedSong(u"b.mp3"_s, u"B"_s);
    const QString elsewhere = bench.home.addMetadataFile(u"b.mp3"_s, "sound");
    leaveSnapshot(bench, elsewhere, song.id());
    const AudioPlayerService &player = bench.start();
    QCOMPARE(songOf(player).title(), u"B"_s);
    QCOMPARE(player.currentIndex(), 1);
    // The file that was playing is loaded, not the one of the library.
    QCOMPARE(bench.item().asset().url, QUrl::fromLocalFile(elsewhere));
}

void AudioPlayerRestoreTest::unknownFileGivesASongBuiltFromTheSnapshot()
{
    PlayerBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    const QString path = bench.home.addMusicFile(u"旧 歌.mp3"_s);
    leaveSnapshot(bench, path, u"X"_s);
    const AudioPlayerService &player = bench.start();
    const Song song = songOf(player);
    QCOMPARE(song.id(), u"X"_s);
    QCOMPARE(song.title(), u"Kept title"_s);
    QCOMPARE(song.artist(), u"Kept artist"_s);
    QCOMPARE(song.album(), u"Kept album"_s);
    QCOMPARE(song.albumId(), "album_"_L1 + processHash(u"Kept album"_s));
    QVERIFY(song.isImported());
    QCOMPARE(song.duration(), 200.0);
    QCOMPARE(song.trackNumber(), 0);
    QCOMPARE(song.dateAdded(), bench.home.clock().now());
    QCOMPARE(song.assetURL(), std::optional(QUrl::fromLocalFile(path)));
    QVERIFY(!song.artworkURL());
    QVERIFY(!song.embeddedLyrics());
    QVERIFY(!song.artworkData().isPresent());
    QCOMPARE(player.queue(), QList<Song>{song});
    QVERIFY(player.onlineQueue().isEmpty());
    QCOMPARE(player.currentIndex(), 0);
}

void AudioPlayerRestoreTest::builtSongTakesTheCoverKeptForItsFile()
{
    PlayerBench bench;
    const QString path = bench.home.addMusicFile(u"x.mp3"_s);
    bench.home.addMetadataFile(stableHash(u"x.mp3"_s) + u"_artwork.jpg"_s, "cover");
    leaveSnapshot(bench, path, u"X"_s);
    const Song song = songOf(bench.start());
    QCOMPARE(song.artworkData().bytes(), "cover"_ba);
    QCOMPARE(song.uiIdentity(), u"X|ad:5|ly:0"_s);
}

void AudioPlayerRestoreTest::builtSongDoesWithoutACoverThatIsNoFile()
{
    PlayerBench bench;
    const QString path = bench.home.addMusicFile(u"x.mp3"_s);
    QVERIFY(QDir(bench.home.platform.directories.applicationSupport + u"/LocalMusic"_s)
                .mkdir(stableHash(u"x.mp3"_s) + u"_artwork.jpg"_s));
    leaveSnapshot(bench, path, u"X"_s);
    QVERIFY(!songOf(bench.start()).artworkData().isPresent());
}

void AudioPlayerRestoreTest::fileStandsPausedExactlyAtItsPosition()
{
    PlayerBench bench;
    const QString path = bench.home.addMusicFile(u"x.mp3"_s);
    leaveSnapshot(bench, path, u"X"_s);
    const AudioPlayerService &player = bench.start();
    QCOMPARE(bench.stream().calls, (QStringList{u"replace x.mp3"_s, u"seek 42"_s}));
    QCOMPARE(bench.stream().seeks.constFirst().toleranceBefore, 0.0);
    QCOMPARE(bench.stream().seeks.constFirst().toleranceAfter, 0.0);
    QCOMPARE(bench.item().asset().url, QUrl::fromLocalFile(path));
    QVERIFY(bench.item().asset().prefersPreciseDuration);
    QCOMPARE(bench.stream().volume, 1.0F);
    QCOMPARE(bench.stream().timeObservers(), 1);
    QCOMPARE(bench.stream().observerInterval(), 250ms);
    QCOMPARE(player.currentTime(), 42.0);
    QVERIFY(!player.isPlaying());
    QVERIFY(!player.isLoading());
}

void AudioPlayerRestoreTest::snapshotAtTheStartSeeksNothing()
{
    PlayerBench bench;
    leaveSnapshot(bench, bench.home.addMusicFile(u"x.mp3"_s), u"X"_s, 0);
    bench.start();
    QVERIFY(bench.stream().seeks.isEmpty());
    QCOMPARE(bench.player().currentTime(), 0.0);
}

void AudioPlayerRestoreTest::equalizerIsNotUsedForTheRestoredSong()
{
    PlayerBench bench;
    bench.equalizer.enabled = true;
    leaveSnapshot(bench, bench.home.addMusicFile(u"x.mp3"_s), u"X"_s);
    bench.start();
    QVERIFY(bench.equalizer.calls.isEmpty());
    QVERIFY(!bench.player().usingEqualizerEngine());
    bench.player().play();
    QVERIFY(bench.equalizer.calls.isEmpty());
    QVERIFY(bench.player().isPlaying());
}

void AudioPlayerRestoreTest::loadedDurationIsPublished()
{
    PlayerBench bench;
    leaveSnapshot(bench, bench.home.addMusicFile(u"x.mp3"_s), u"X"_s);
    bench.start();
    QCOMPARE(bench.player().duration(), 0.0);
    bench.answerDuration(199.5);
    QCOMPARE(bench.player().duration(), 199.5);
    QCOMPARE(bench.console.take(), (QStringList{u"📏 Loaded duration: 199.5s"_s}));
    QCOMPARE(bench.player().currentTime(), 42.0);
}

void AudioPlayerRestoreTest::restoredSongPlaysAndIsFollowedByTheNextOne()
{
    PlayerBench bench;
    const Song song = bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    bench.home.addImportedSong(u"b.mp3"_s, u"B"_s);
    leaveSnapshot(bench, song.assetPath(), song.id());
    AudioPlayerService &player = bench.start();
    bench.answerDuration(200);
    player.togglePlayPause();
    QVERIFY(player.isPlaying());
    QVERIFY(bench.player().isSimulatingLevels());
    bench.stream().tick(43);
    QCOMPARE(player.currentTime(), 43.0);
    bench.reachEnd();
    QCOMPARE(songOf(player).title(), u"B"_s);
    QVERIFY(player.isPlaying());
    QCOMPARE(bench.stream().timeObservers(), 1);
}

void AudioPlayerRestoreTest::restoredSongCanBeSoughtAndPaused()
{
    PlayerBench bench;
    const QString path = bench.home.addMusicFile(u"x.mp3"_s);
    leaveSnapshot(bench, path, u"X"_s);
    AudioPlayerService &player = bench.start();
    bench.answerDuration(200);
    bench.stream().finishSeek();
    player.seek(100);
    bench.stream().finishSeek();
    QCOMPARE(player.currentTime(), 100.0);
    QVERIFY(!player.isPlaying());
    player.pause();
    QCOMPARE(PlaybackSnapshot::decoded(bench.snapshot()).value_or(PlaybackSnapshot()).position, 100.0);
}

void AudioPlayerRestoreTest::damagedSnapshotIsIgnored_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("torn") << QVariant("{\"songId\":\"X\",\"ti"_ba);
    QTest::newRow("empty") << QVariant(QByteArray());
    QTest::newRow("a list") << QVariant("[1]"_ba);
    QTest::newRow("no path") << QVariant(
        "{\"songId\":\"X\",\"title\":\"\",\"artist\":\"\",\"album\":\"\",\"position\":1,\"duration\":2,\"date\":3}"_ba);
    QTest::newRow("text instead of data") << QVariant(u"{}"_s);
}

void AudioPlayerRestoreTest::damagedSnapshotIsIgnored()
{
    QFETCH(QVariant, value);
    PlayerBench bench;
    if (value.metaType() == QMetaType::fromType<QString>())
        bench.home.preferences().setString(snapshotKey, value.toString());
    else
        bench.home.preferences().setData(snapshotKey, value.toByteArray());
    const AudioPlayerService &player = bench.start();
    QVERIFY(!player.currentSong());
    QVERIFY(player.queue().isEmpty());
    QVERIFY(!player.playError());
    QCOMPARE(bench.home.streamPlayersMade(), 0);
    // The next pause writes over it.
    bench.player().playSong(fileSong(u"a"_s), {});
    bench.answerDuration(10);
    bench.player().pause();
    QVERIFY(PlaybackSnapshot::decoded(bench.snapshot()));
}

void AudioPlayerRestoreTest::snapshotOfAMissingFileStartsWithoutASongAndStays()
{
    PlayerBench bench;
    const Song song = bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    leaveSnapshot(bench, bench.home.platform.directories.documents + u"/gone.mp3"_s, song.id());
    const QByteArray before = bench.snapshot();
    const AudioPlayerService &player = bench.start();
    QVERIFY(!player.currentSong());
    QVERIFY(player.queue().isEmpty());
    QCOMPARE(bench.snapshot(), before);
    bench.player().play();
    bench.player().pause();
    QCOMPARE(bench.snapshot(), before);
}

void AudioPlayerRestoreTest::secondRunHoldsAllImportedSongsAndTheFirstMode()
{
    PlayerBench bench;
    const Song first = bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    const Song second = bench.home.addImportedSong(u"b.mp3"_s, u"B"_s);
    bench.start().togglePlayMode();
    bench.player().playSong(second, {second});
    bench.answerDuration(200);
    bench.stream().tick(77.5);
    bench.player().persistPlaybackSnapshot();
    AudioPlayerService &player = bench.restart();
    QCOMPARE(player.currentSong(), std::optional(second));
    QCOMPARE(player.currentTime(), 77.5);
    QCOMPARE(player.queue(), (QList<Song>{first, second}));
    QCOMPARE(player.currentIndex(), 1);
    QCOMPARE(player.playMode(), PlayMode::sequential);
    QVERIFY(!player.isPlaying());
}

QTEST_GUILESS_MAIN(AudioPlayerRestoreTest)
#include "tst_audio_player_restore.moc"
