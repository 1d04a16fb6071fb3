// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/NowPlayingBench.h"

#include <QSignalSpy>
#include <QTest>

#include <array>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString noCover = u"image://cover/none"_s;

Song songOfText(const QString &id, const QString &title, const QString &artist, const QString &lyrics = {})
{
    SongFields fields;
    fields.embeddedLyrics = lyrics;
    fields.id = id;
    fields.title = title;
    fields.artist = artist;
    fields.assetURL = QUrl::fromLocalFile(u"/music/a.mp3"_s);
    return Song(fields);
}

} // namespace

class NowPlayingViewModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void withoutASongNothingIsMissing();
    void songIsShownWithItsTexts();
    void onlineSongIsShownLikeAnyOther();
    void songWithoutTitleAndArtistHasNamesAllTheSame();
    void textsAreOneLineEach();
    void badgeNamesTheQualityThatIsAskedFor_data();
    void badgeNamesTheQualityThatIsAskedFor();
    void badgeIsReadAnewWhenTheScreenComesUp();
    void controlsReachThePlayer();
    void everyModeHasASymbolANameAndAPicture();
    void heartFollowsTheFavourites();
    void heartOfAnOnlineSong();
    void heartWithoutASongDoesNothing();
    void lineOfTheEqualizerFollowsItsSwitch();
    void replayIsNeededWhileTheEqualizerDoesNotPlayTheSong();
    void offsetOfTheLyricsIsThatOfTheSong();
    void lyricsAreThereWhileTheScreenIs();
    void musicGoesOnPastTheTimeToSleep();
    void stateOfTheScreenGoesWithIt();
    void screenThatTakesThePlaceOfAnotherKeepsItsState();
    void pageThatIsNoneChangesNothing();
    void thousandSongsLeaveNothingOfTheOnesBefore();
};

void NowPlayingViewModelTest::withoutASongNothingIsMissing()
{
    const NowPlayingBench bench;
    QCOMPARE(bench.nowPlaying.currentSongId(), u"none"_s);
    QVERIFY(!bench.nowPlaying.hasSong());
    QCOMPARE(bench.nowPlaying.title(), u"未知歌曲"_s);
    QCOMPARE(bench.nowPlaying.artist(), u"未知艺术家"_s);
    QCOMPARE(bench.nowPlaying.currentQualityDisplay(), u"320kbps"_s);
    QCOMPARE(bench.nowPlaying.coverSource(), noCover);
    QCOMPARE(bench.nowPlaying.sliderPosition(), 0.0);
    QCOMPARE(bench.nowPlaying.displayTimeText(), u"0:00"_s);
    QCOMPARE(bench.nowPlaying.durationText(), u"0:00"_s);
    QVERIFY(!bench.nowPlaying.isDragging());
    QVERIFY(!bench.nowPlaying.isPlaying());
    QVERIFY(!bench.nowPlaying.isFavorite());
    QVERIFY(!bench.nowPlaying.needsReplay());
    QCOMPARE(bench.nowPlaying.currentPage(), int(NowPlayingViewModel::CoverPage));
}

void NowPlayingViewModelTest::songIsShownWithItsTexts()
{
    NowPlayingBench bench;
    QSignalSpy told(&bench.nowPlaying, &NowPlayingViewModel::currentSongIdChanged);
    bench.play(u"a"_s, 260);
    QCOMPARE(bench.nowPlaying.currentSongId(), u"a"_s);
    QCOMPARE(bench.nowPlaying.title(), u"Title a"_s);
    QCOMPARE(bench.nowPlaying.artist(), u"Artist a"_s);
    QCOMPARE(bench.nowPlaying.durationText(), u"4:20"_s);
    QVERIFY(bench.nowPlaying.hasSong());
    QVERIFY(bench.nowPlaying.isPlaying());
    QCOMPARE(told.size(), 1);
}

void NowPlayingViewModelTest::onlineSongIsShownLikeAnyOther()
{
    NowPlayingBench bench;
    bench.player.playOnlineSong(onlineSong(u"7"_s), {});
    QCOMPARE(bench.nowPlaying.currentSongId(), u"7"_s);
    QCOMPARE(bench.nowPlaying.title(), u"Online 7"_s);
    QCOMPARE(bench.nowPlaying.artist(), u"Singer 7"_s);
    QVERIFY(bench.nowPlaying.isLoading());
}

void NowPlayingViewModelTest::songWithoutTitleAndArtistHasNamesAllTheSame()
{
    NowPlayingBench bench;
    bench.playSong(songOfText(u"bare"_s, {}, {}), 100);
    QCOMPARE(bench.nowPlaying.currentSongId(), u"bare"_s);
    QCOMPARE(bench.nowPlaying.title(), u"未知歌曲"_s);
    QCOMPARE(bench.nowPlaying.artist(), u"未知艺术家"_s);
}

void NowPlayingViewModelTest::textsAreOneLineEach()
{
    NowPlayingBench bench;
    bench.playSong(songOfText(u"broken"_s, u"第一行\n第二行"_s, u"甲\r\n乙"_s), 100);
    QCOMPARE(bench.nowPlaying.title(), u"第一行 第二行"_s);
    QVERIFY(!bench.nowPlaying.artist().contains(u'\n') && !bench.nowPlaying.artist().contains(u'\r'));
    bench.playSong(songOfText(u"blank"_s, u"   "_s, u"\t"_s), 100);
    QCOMPARE(bench.nowPlaying.title(), u"未知歌曲"_s);
    QCOMPARE(bench.nowPlaying.artist(), u"未知艺术家"_s);
}

void NowPlayingViewModelTest::badgeNamesTheQualityThatIsAskedFor_data()
{
    QTest::addColumn<QString>("quality");
    QTest::addColumn<QString>("badge");
    QTest::newRow("128k") << u"128k"_s << u"128kbps"_s;
    QTest::newRow("192k") << u"192k"_s << u"192kbps"_s;
    QTest::newRow("320k") << u"320k"_s << u"320kbps"_s;
    QTest::newRow("flac") << u"flac"_s << u"FLAC"_s;
    QTest::newRow("upper case") << u"FLAC"_s << u"在线"_s;
    QTest::newRow("something else") << u"flac24bit"_s << u"在线"_s;
    QTest::newRow("nothing") << u""_s << u"在线"_s;
}

void NowPlayingViewModelTest::badgeNamesTheQualityThatIsAskedFor()
{
    QFETCH(QString, quality);
    NowPlayingBench bench;
    bench.home.preferences().setString(u"audioQuality"_s, quality);
    bench.play(u"a"_s, 100);
    QTEST(bench.nowPlaying.currentQualityDisplay(), "badge");
}

void NowPlayingViewModelTest::badgeIsReadAnewWhenTheScreenComesUp()
{
    NowPlayingBench bench;
    bench.nowPlaying.appear();
    bench.nowPlaying.disappear();
    bench.home.preferences().setString(u"audioQuality"_s, u"flac"_s);
    QSignalSpy told(&bench.nowPlaying, &NowPlayingViewModel::currentQualityDisplayChanged);
    bench.nowPlaying.appear();
    QCOMPARE(bench.nowPlaying.currentQualityDisplay(), u"FLAC"_s);
    QCOMPARE(told.size(), 1);
}

void NowPlayingViewModelTest::controlsReachThePlayer()
{
    NowPlayingBench bench;
    bench.play(u"a"_s, 200);
    QSignalSpy told(&bench.nowPlaying, &NowPlayingViewModel::isPlayingChanged);
    bench.nowPlaying.togglePlayPause();
    QVERIFY(!bench.player.isPlaying());
    QVERIFY(!bench.nowPlaying.isPlaying());
    QCOMPARE(told.size(), 1);
    bench.nowPlaying.next();
    QCOMPARE(bench.nowPlaying.currentSongId(), u"following"_s);
    bench.nowPlaying.previous();
    QCOMPARE(bench.nowPlaying.currentSongId(), u"a"_s);
}

void NowPlayingViewModelTest::everyModeHasASymbolANameAndAPicture()
{
    NowPlayingBench bench;
    QSignalSpy told(&bench.nowPlaying, &NowPlayingViewModel::playModeChanged);
    const QList<std::pair<PlayMode, QString>> modes{{PlayMode::sequential, u"sequentialPlay"_s},
                                                    {PlayMode::repeatAll, u"loopall"_s},
                                                    {PlayMode::shuffle, u"shuffle"_s},
                                                    {PlayMode::repeatOne, u"loopone"_s}};
    for (const auto &[mode, picture] : modes) {
        QCOMPARE(bench.player.playMode(), mode);
        QCOMPARE(bench.nowPlaying.playModeSymbol(), symbol(mode));
        QCOMPARE(bench.nowPlaying.playModeLabel(), label(mode));
        QCOMPARE(bench.nowPlaying.playModeKawaiiName(), picture);
        bench.nowPlaying.togglePlayMode();
    }
    QCOMPARE(told.size(), 4);
    QCOMPARE(bench.player.playMode(), PlayMode::sequential);
}

void NowPlayingViewModelTest::heartFollowsTheFavourites()
{
    NowPlayingBench bench;
    bench.play(u"a"_s, 200);
    QSignalSpy told(&bench.nowPlaying, &NowPlayingViewModel::isFavoriteChanged);
    bench.nowPlaying.toggleFavorite();
    QVERIFY(bench.playlists.isFavorite(fileSong(u"a"_s)));
    QVERIFY(bench.nowPlaying.isFavorite());
    // Each song has its own.
    bench.nowPlaying.next();
    QVERIFY(!bench.nowPlaying.isFavorite());
    bench.nowPlaying.previous();
    QVERIFY(bench.nowPlaying.isFavorite());
    // Another screen takes it away.
    bench.playlists.toggleFavorite(fileSong(u"a"_s));
    QVERIFY(!bench.nowPlaying.isFavorite());
    QCOMPARE(told.size(), 4);
}

void NowPlayingViewModelTest::heartOfAnOnlineSong()
{
    NowPlayingBench bench;
    bench.player.playOnlineSong(onlineSong(u"7"_s), {});
    bench.nowPlaying.toggleFavorite();
    QVERIFY(bench.nowPlaying.isFavorite());
    QVERIFY(bench.playlists.isFavorite(onlineSong(u"7"_s)));
    bench.nowPlaying.toggleFavorite();
    QVERIFY(!bench.nowPlaying.isFavorite());
}

void NowPlayingViewModelTest::heartWithoutASongDoesNothing()
{
    NowPlayingBench bench;
    bench.nowPlaying.toggleFavorite();
    QVERIFY(!bench.nowPlaying.isFavorite());
    QVERIFY(bench.playlists.favoritesPlaylist()->songIds.isEmpty());
}

void NowPlayingViewModelTest::lineOfTheEqualizerFollowsItsSwitch()
{
    NowPlayingBench bench;
    QSignalSpy told(&bench.nowPlaying, &NowPlayingViewModel::equalizerChanged);
    QCOMPARE(bench.nowPlaying.equalizerText(), u"均衡器已关闭"_s);
    QCOMPARE(bench.nowPlaying.equalizerButtonText(), u"去开启"_s);
    QCOMPARE(bench.nowPlaying.equalizerDetail(), u"已关闭"_s);
    bench.equalizer.setEnabled(true);
    QCOMPARE(bench.nowPlaying.equalizerText(), u"均衡器已启用"_s);
    QCOMPARE(bench.nowPlaying.equalizerButtonText(), u"调整"_s);
    QCOMPARE(bench.nowPlaying.equalizerDetail(), u"平坦"_s);
    bench.equalizer.setCurrentPreset(EqualizerPreset::rock);
    QCOMPARE(bench.nowPlaying.equalizerDetail(), u"摇滚"_s);
    QCOMPARE(told.size(), 2);
}

void NowPlayingViewModelTest::replayIsNeededWhileTheEqualizerDoesNotPlayTheSong()
{
    NowPlayingBench bench;
    bench.equalizer.setEnabled(true);
    settle();
    QVERIFY(!bench.nowPlaying.needsReplay());
    // It never reaches what comes over the web.
    bench.player.playSong(webSong(u"web"_s, 100), {});
    settle();
    QVERIFY(bench.nowPlaying.needsReplay());
    bench.player.playSong(fileSong(u"a"_s), {});
    settle();
    QVERIFY(bench.player.usingEqualizerEngine());
    QVERIFY(!bench.nowPlaying.needsReplay());
    bench.player.playSong(webSong(u"web"_s, 100), {});
    settle();
    QVERIFY(bench.nowPlaying.needsReplay());
    bench.equalizer.setEnabled(false);
    settle();
    QVERIFY(!bench.nowPlaying.needsReplay());
}

void NowPlayingViewModelTest::offsetOfTheLyricsIsThatOfTheSong()
{
    NowPlayingBench bench;
    bench.play(u"a"_s, 100);
    QSignalSpy told(&bench.nowPlaying, &NowPlayingViewModel::lyricsOffsetTextChanged);
    QCOMPARE(bench.nowPlaying.lyricsOffsetText(), u"+0.0s"_s);
    bench.offsets.setOffset(-1500, u"a"_s);
    QCOMPARE(bench.nowPlaying.lyricsOffsetText(), u"-1.5s"_s);
    QCOMPARE(told.size(), 1);
    bench.nowPlaying.next();
    QCOMPARE(bench.nowPlaying.lyricsOffsetText(), u"+0.0s"_s);
    QCOMPARE(told.size(), 2);
}

void NowPlayingViewModelTest::lyricsAreThereWhileTheScreenIs()
{
    NowPlayingBench bench;
    bench.playSong(songOfText(u"a"_s, u"歌"_s, u"歌手"_s, u"[00:01.00]第一行\n[00:05.00]第二行"_s), 100);
    settle();
    QVERIFY(!bench.nowPlaying.lyrics()->hasLyrics());
    QCOMPARE(bench.nowPlaying.offset()->songId(), u"a"_s);
    QCOMPARE(bench.nowPlaying.offset()->songTitle(), u"歌"_s);
    bench.nowPlaying.appear();
    QTRY_COMPARE(bench.nowPlaying.lyrics()->count(), 2);
    bench.playSong(songOfText(u"b"_s, u"歌二"_s, u"歌手"_s, u"[00:01.00]只有一行"_s), 100);
    QTRY_COMPARE(bench.nowPlaying.lyrics()->count(), 1);
    QCOMPARE(bench.nowPlaying.offset()->songId(), u"b"_s);
    bench.nowPlaying.disappear();
    QVERIFY(!bench.nowPlaying.lyrics()->hasLyrics());
    bench.nowPlaying.appear();
    QTRY_COMPARE(bench.nowPlaying.lyrics()->count(), 1);
}

void NowPlayingViewModelTest::musicGoesOnPastTheTimeToSleep()
{
    NowPlayingBench bench;
    bench.play(u"a"_s, 4000);
    bench.nowPlaying.appear();
    bench.nowPlaying.sleep()->select(30);
    QCOMPARE(bench.nowPlaying.sleep()->footText(), u"将在 30 分钟 后停止播放"_s);
    const int timers = bench.home.clock().activeTimers();
    bench.home.clock().advance(std::chrono::minutes(31));
    QCOMPARE(bench.nowPlaying.sleep()->footText(), u"将在 30 分钟 后停止播放"_s);
    QVERIFY(bench.player.isPlaying());
    QCOMPARE(bench.home.clock().activeTimers(), timers);
    bench.nowPlaying.disappear();
    QCOMPARE(bench.nowPlaying.sleep()->sleepTimerMinutes(), 0);
}

void NowPlayingViewModelTest::stateOfTheScreenGoesWithIt()
{
    constexpr std::array sheets{"showSleepTimer", "showLyricsOffset", "showMoreOptions",
                                "showNowPlayingSettings"};
    NowPlayingBench bench;
    bench.play(u"a"_s, 200);
    bench.nowPlaying.appear();
    bench.nowPlaying.setCurrentPage(NowPlayingViewModel::QueuePage);
    for (const char *sheet : sheets)
        QVERIFY(bench.nowPlaying.setProperty(sheet, true));
    bench.nowPlaying.dragTo(0.5);
    bench.nowPlaying.beginDrag();
    bench.nowPlaying.disappear();
    QCOMPARE(bench.nowPlaying.currentPage(), int(NowPlayingViewModel::CoverPage));
    for (const char *sheet : sheets)
        QVERIFY2(!bench.nowPlaying.property(sheet).toBool(), sheet);
    QVERIFY(!bench.nowPlaying.isDragging());
    QVERIFY(bench.stream().seeks.isEmpty());
}

void NowPlayingViewModelTest::screenThatTakesThePlaceOfAnotherKeepsItsState()
{
    NowPlayingBench bench;
    bench.nowPlaying.appear();
    bench.nowPlaying.setCurrentPage(NowPlayingViewModel::LyricsPage);
    // Another look: its screen is there before the old one has gone.
    bench.nowPlaying.appear();
    QCOMPARE(bench.nowPlaying.currentPage(), int(NowPlayingViewModel::CoverPage));
    bench.nowPlaying.setCurrentPage(NowPlayingViewModel::QueuePage);
    bench.nowPlaying.disappear();
    QCOMPARE(bench.nowPlaying.currentPage(), int(NowPlayingViewModel::QueuePage));
    bench.nowPlaying.disappear();
    QCOMPARE(bench.nowPlaying.currentPage(), int(NowPlayingViewModel::CoverPage));
}

void NowPlayingViewModelTest::pageThatIsNoneChangesNothing()
{
    NowPlayingBench bench;
    QSignalSpy told(&bench.nowPlaying, &NowPlayingViewModel::currentPageChanged);
    for (const int page : {-1, 3, 1000, 0})
        bench.nowPlaying.setCurrentPage(page);
    QCOMPARE(told.size(), 0);
    bench.nowPlaying.setCurrentPage(2);
    QCOMPARE(told.size(), 1);
}

void NowPlayingViewModelTest::thousandSongsLeaveNothingOfTheOnesBefore()
{
    NowPlayingBench bench;
    bench.nowPlaying.appear();
    for (int i = 0; i < 1000; ++i) {
        const QString id = QString::number(i);
        Song song = songOfText(id, u"歌 "_s + id, u"歌手 "_s + id);
        if (i % 2 == 0)
            song.setArtworkData(ArtworkData("cover " + id.toUtf8()));
        bench.player.playSong(song, {song});
        QCOMPARE(bench.nowPlaying.currentSongId(), id);
        QCOMPARE(bench.nowPlaying.title(), u"歌 "_s + id);
        QCOMPARE(bench.nowPlaying.artist(), u"歌手 "_s + id);
        QCOMPARE(bench.nowPlaying.coverSource() == noCover, i % 2 == 1);
        QCOMPARE(bench.nowPlaying.sliderPosition(), 0.0);
        bench.nowPlaying.dragTo(0.5);
        bench.nowPlaying.beginDrag();
    }
    QVERIFY(bench.stream().seeks.isEmpty());
    // One player, one place where the position is watched.
    QCOMPARE(bench.home.streamPlayersMade(), 1);
    QCOMPARE(bench.stream().timeObservers(), 1);
}

QTEST_GUILESS_MAIN(NowPlayingViewModelTest)
#include "tst_now_playing_view_model.moc"
