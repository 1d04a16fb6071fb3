// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/ViewModelBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class CadorelViewModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initialState();
    void tabsAndSectionsHaveTheirTexts();
    void loadsTheMediaLibraryAfterSubscribing();
    void worksWithoutSources();
    void titleAndArtistAreThoseOfTheSong();
    void titleAndArtistAreThoseOfTheOnlineSong();
    void progressIsAFraction_data();
    void progressIsAFraction();
    void progressDuringALoadIsZero();
    void slowStateOfThePlayerIsRepublished();
    void fastStateOfThePlayerIsNot();
    void changesOfTheServicesAreRepublished();
    void listsOfSongsAreAnnounced();
    void ownStateIsPublishedOnceForEachChange();
    void refreshUIPutsAFreshTokenAndNothingElse();
    void playSongTakesAllSongsAsTheQueue();
    void playSongFromAlbumAndArtistTakeTheirSongs();
    void playWebDAVSongTakesTheServersSongs();
    void playOnlineSongTakesTheSearchResults();
    void playOnlineSongsTakesTheGivenSongs();
    void transportIsForwarded();
    void seekTakesAFraction();
    void searchOnlineTakesQueryAndPlatform();
    void playlistCommandsAreForwarded();
    void scanAllWebDAVIsForwarded();
    void refreshAllDataGoesThroughTheSourcesInOrder();
    void viewModelOutlivedByItsTask();
};

void CadorelViewModelTest::initialState()
{
    ViewModelBench bench;
    const CadorelViewModel &viewModel = bench.startViewModel();
    QCOMPARE(viewModel.selectedTab(), CadorelViewModel::Tab::library);
    QVERIFY(!viewModel.showNowPlaying());
    QVERIFY(viewModel.searchQuery().isEmpty());
    QCOMPARE(viewModel.selectedPlatform(), MusicPlatform::netease);
    QVERIFY(!viewModel.updateTrigger());
    QVERIFY(!viewModel.uiRefreshToken().isNull());
    QCOMPARE(viewModel.librarySection(), CadorelViewModel::LibrarySection::songs);
    QCOMPARE(viewModel.currentSongTitle(), u"未在播放"_s);
    QCOMPARE(viewModel.currentArtist(), QString());
    QVERIFY(!viewModel.hasCurrentSong());
    QCOMPARE(viewModel.progress(), 0.0);
    QCOMPARE(viewModel.audioPlayer(), &bench.player());
    QCOMPARE(viewModel.importService(), &bench.importService());
}

void CadorelViewModelTest::tabsAndSectionsHaveTheirTexts()
{
    using Tab = CadorelViewModel::Tab;
    using Section = CadorelViewModel::LibrarySection;
    QStringList texts;
    for (const Tab tab : {Tab::library, Tab::online, Tab::playlists, Tab::search})
        texts.append(CadorelViewModel::rawValue(tab));
    QCOMPARE(texts, (QStringList{u"资料库"_s, u"在线"_s, u"歌单"_s, u"搜索"_s}));
    texts.clear();
    for (const Section section : {Section::songs, Section::albums, Section::artists})
        texts.append(CadorelViewModel::rawValue(section));
    QCOMPARE(texts, (QStringList{u"歌曲"_s, u"专辑"_s, u"艺术家"_s}));
}

void CadorelViewModelTest::loadsTheMediaLibraryAfterSubscribing()
{
    ViewModelBench bench;
    // Nobody but the view model listens at this time: that it has subscribed shows in its connections.
    int receivers = 0;
    class Counting : public FakeMediaLibrarySource
    {
    public:
        int count() const { return receivers(SIGNAL(changed())); }
    } library;
    library.onLoad = [&] { receivers = library.count(); };
    bench.start();
    {
        const CadorelViewModel viewModel(bench.player(), bench.importService(),
                                         LibrarySources{.mediaLibrary = &library,
                                                        .playlistService = nullptr,
                                                        .onlineMusicService = nullptr,
                                                        .webDAVService = nullptr});
        QTRY_COMPARE(library.loads, 1);
        QVERIFY(receivers > 0);
    }
    QCOMPARE(library.count(), 0);
}

void CadorelViewModelTest::worksWithoutSources()
{
    PlayerBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    bench.start();
    CadorelViewModel viewModel(bench.player(), bench.importService());
    QCOMPARE(viewModel.allSongs().size(), 1);
    QCOMPARE(viewModel.allAlbums().size(), 1);
    QCOMPARE(viewModel.allArtists().size(), 1);
    viewModel.playWebDAVSong(fileSong(u"x"_s));
    viewModel.playOnlineSong(onlineSong(u"1"_s));
    viewModel.searchOnline();
    viewModel.scanAllWebDAV();
    viewModel.createPlaylist(u"L"_s);
    viewModel.addToPlaylist(fileSong(u"x"_s), {});
    viewModel.addOnlineToPlaylist(onlineSong(u"1"_s), {});
    viewModel.refreshAllData();
    QTRY_VERIFY(!bench.importService().isScanning());
}

void CadorelViewModelTest::titleAndArtistAreThoseOfTheSong()
{
    ViewModelBench bench;
    const CadorelViewModel &viewModel = bench.startViewModel();
    bench.player().playSong(fileSong(u"a"_s), {});
    QCOMPARE(viewModel.currentSongTitle(), u"Title a"_s);
    QCOMPARE(viewModel.currentArtist(), u"Artist a"_s);
    QVERIFY(viewModel.hasCurrentSong());
}

void CadorelViewModelTest::titleAndArtistAreThoseOfTheOnlineSong()
{
    ViewModelBench bench;
    const CadorelViewModel &viewModel = bench.startViewModel();
    bench.player().playSong(fileSong(u"a"_s), {});
    bench.player().playOnlineSong(onlineSong(u"1"_s), {});
    QCOMPARE(viewModel.currentSongTitle(), u"Online 1"_s);
    QCOMPARE(viewModel.currentArtist(), u"Singer 1"_s);
    QVERIFY(viewModel.hasCurrentSong());
}

void CadorelViewModelTest::progressIsAFraction_data()
{
    QTest::addColumn<double>("time");
    QTest::addColumn<double>("duration");
    QTest::addColumn<double>("expected");
    QTest::newRow("start") << 0.0 << 200.0 << 0.0;
    QTest::newRow("quarter") << 50.0 << 200.0 << 0.25;
    QTest::newRow("end") << 200.0 << 200.0 << 1.0;
    QTest::newRow("beyond") << 300.0 << 200.0 << 1.0;
    QTest::newRow("before") << -5.0 << 200.0 << 0.0;
    QTest::newRow("unknown length") << 50.0 << 0.0 << 0.0;
    QTest::newRow("negative length") << 50.0 << -1.0 << 0.0;
    QTest::newRow("endless") << 50.0 << qInf() << 0.0;
    QTest::newRow("length not a number") << 50.0 << qQNaN() << 0.0;
    QTest::newRow("time not a number") << qQNaN() << 200.0 << 0.0;
    QTest::newRow("quotient beyond numbers") << 1e300 << 1e-300 << 0.0;
}

void CadorelViewModelTest::progressIsAFraction()
{
    QFETCH(double, time);
    QFETCH(double, duration);
    // The engine's length and a seek on the engine reach the player as they are.
    ViewModelBench bench;
    bench.equalizer.enabled = true;
    bench.equalizer.length = duration;
    const CadorelViewModel &viewModel = bench.startViewModel();
    bench.player().playSong(fileSong(u"a"_s), {});
    bench.player().seek(time);
    QTEST(viewModel.progress(), "expected");
}

void CadorelViewModelTest::progressDuringALoadIsZero()
{
    ViewModelBench bench;
    const CadorelViewModel &viewModel = bench.startViewModel();
    bench.player().playSong(fileSong(u"a"_s), {});
    bench.stream().tick(3);
    QCOMPARE(bench.player().duration(), 0.0);
    QCOMPARE(viewModel.progress(), 0.0);
    bench.answerDuration(12);
    QCOMPARE(viewModel.progress(), 0.25);
}

void CadorelViewModelTest::slowStateOfThePlayerIsRepublished()
{
    using Player = AudioPlayerService;
    ViewModelBench bench;
    QSignalSpy spy(&bench.startViewModel(), &CadorelViewModel::changed);
    for (const auto signal : {&Player::currentSongChanged, &Player::currentOnlineSongChanged,
                              &Player::isPlayingChanged, &Player::durationChanged, &Player::queueChanged,
                              &Player::onlineQueueChanged, &Player::currentIndexChanged,
                              &Player::playModeChanged, &Player::volumeChanged, &Player::playErrorChanged}) {
        const qsizetype before = spy.size();
        Q_EMIT(bench.player().*signal)();
        QTRY_COMPARE(spy.size(), before + 1);
    }
}

void CadorelViewModelTest::fastStateOfThePlayerIsNot()
{
    ViewModelBench bench;
    CadorelViewModel &viewModel = bench.startViewModel();
    bench.player().playSong(fileSong(u"a"_s), {});
    settle();
    QSignalSpy spy(&viewModel, &CadorelViewModel::changed);
    for (int second = 1; second < 10; ++second)
        bench.stream().tick(second);
    settle();
    QCOMPARE(spy.size(), 0);
}

void CadorelViewModelTest::changesOfTheServicesAreRepublished()
{
    ViewModelBench bench;
    QSignalSpy spy(&bench.startViewModel(), &CadorelViewModel::changed);
    settle();
    spy.clear();
    Q_EMIT bench.importService().changed();
    QTRY_COMPARE(spy.size(), 1);
    Q_EMIT bench.mediaLibrary.changed();
    QTRY_COMPARE(spy.size(), 2);
    Q_EMIT bench.online.changed();
    QTRY_COMPARE(spy.size(), 3);
    Q_EMIT bench.playlists.changed();
    QTRY_COMPARE(spy.size(), 4);
    Q_EMIT bench.webDAV.changed();
    QTRY_COMPARE(spy.size(), 5);
}

void CadorelViewModelTest::listsOfSongsAreAnnounced()
{
    ViewModelBench bench;
    QSignalSpy spy(&bench.startViewModel(), &CadorelViewModel::songsChanged);
    settle();
    spy.clear();
    Q_EMIT bench.importService().importedSongsChanged();
    Q_EMIT bench.mediaLibrary.changed();
    Q_EMIT bench.webDAV.changed();
    QTRY_COMPARE(spy.size(), 3);
    bench.player().playSong(fileSong(u"a"_s), {});
    settle();
    QCOMPARE(spy.size(), 3);
}

void CadorelViewModelTest::ownStateIsPublishedOnceForEachChange()
{
    ViewModelBench bench;
    CadorelViewModel &viewModel = bench.startViewModel();
    QSignalSpy all(&viewModel, &CadorelViewModel::changed);
    QSignalSpy tab(&viewModel, &CadorelViewModel::selectedTabChanged);
    QSignalSpy nowPlaying(&viewModel, &CadorelViewModel::showNowPlayingChanged);
    QSignalSpy query(&viewModel, &CadorelViewModel::searchQueryChanged);
    QSignalSpy platform(&viewModel, &CadorelViewModel::selectedPlatformChanged);
    QSignalSpy section(&viewModel, &CadorelViewModel::librarySectionChanged);
    for (int twice = 0; twice < 2; ++twice) {
        viewModel.setSelectedTab(CadorelViewModel::Tab::search);
        viewModel.setShowNowPlaying(true);
        viewModel.setSearchQuery(u"晴"_s);
        viewModel.setSelectedPlatform(MusicPlatform::qq);
        viewModel.setLibrarySection(CadorelViewModel::LibrarySection::artists);
    }
    QCOMPARE(all.size(), 5);
    for (const QSignalSpy *spy : {&tab, &nowPlaying, &query, &platform, &section})
        QCOMPARE(spy->size(), 1);
    QCOMPARE(viewModel.selectedTab(), CadorelViewModel::Tab::search);
    QVERIFY(viewModel.showNowPlaying());
    QCOMPARE(viewModel.searchQuery(), u"晴"_s);
    QCOMPARE(viewModel.selectedPlatform(), MusicPlatform::qq);
    QCOMPARE(viewModel.librarySection(), CadorelViewModel::LibrarySection::artists);
}

void CadorelViewModelTest::refreshUIPutsAFreshTokenAndNothingElse()
{
    ViewModelBench bench;
    CadorelViewModel &viewModel = bench.startViewModel();
    const QUuid before = viewModel.uiRefreshToken();
    const int loads = bench.mediaLibrary.loads;
    viewModel.refreshUI();
    QVERIFY(viewModel.uiRefreshToken() != before);
    QVERIFY(!viewModel.updateTrigger());
    QCOMPARE(bench.mediaLibrary.loads, loads);
    QCOMPARE(bench.webDAV.scans, 0);
}

void CadorelViewModelTest::playSongTakesAllSongsAsTheQueue()
{
    ViewModelBench bench;
    bench.mediaLibrary.songList = fileSongs({u"m"_s});
    bench.webDAV.songList = fileSongs({u"w"_s});
    const Song imported = bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    CadorelViewModel &viewModel = bench.startViewModel();
    viewModel.playSong(imported);
    QCOMPARE(bench.player().queue(), viewModel.allSongs());
    QCOMPARE(bench.player().currentIndex(), 1);
    QCOMPARE(bench.player().currentSong(), std::optional(imported));
}

void CadorelViewModelTest::playSongFromAlbumAndArtistTakeTheirSongs()
{
    ViewModelBench bench;
    const Song second = bench.home.addImportedSong(u"a.mp3"_s, u"A"_s, u"X"_s, u"Album"_s, 2);
    const Song first = bench.home.addImportedSong(u"b.mp3"_s, u"B"_s, u"Y"_s, u"Album"_s, 1);
    const Song other = bench.home.addImportedSong(u"c.mp3"_s, u"C"_s, u"X"_s, u"Other"_s, 1);
    CadorelViewModel &viewModel = bench.startViewModel();
    viewModel.playSongFromAlbum(second, viewModel.allAlbums().constFirst());
    QCOMPARE(bench.player().queue(), (QList<Song>{first, second}));
    QCOMPARE(bench.player().currentIndex(), 1);
    viewModel.playSongFromArtist(other, viewModel.allArtists().constFirst());
    QCOMPARE(bench.player().queue(), (QList<Song>{second, other}));
    QCOMPARE(bench.player().currentIndex(), 1);
}

void CadorelViewModelTest::playWebDAVSongTakesTheServersSongs()
{
    ViewModelBench bench;
    bench.mediaLibrary.songList = fileSongs({u"m"_s});
    bench.webDAV.songList = fileSongs({u"v"_s, u"w"_s});
    bench.startViewModel().playWebDAVSong(bench.webDAV.songList[1]);
    QCOMPARE(bench.player().queue(), bench.webDAV.songList);
    QCOMPARE(bench.player().currentIndex(), 1);
}

void CadorelViewModelTest::playOnlineSongTakesTheSearchResults()
{
    ViewModelBench bench;
    bench.online.results = onlineSongs({u"1"_s, u"2"_s});
    bench.startViewModel().playOnlineSong(bench.online.results[1]);
    QCOMPARE(bench.player().onlineQueue(), bench.online.results);
    QCOMPARE(bench.player().currentIndex(), 1);
}

void CadorelViewModelTest::playOnlineSongsTakesTheGivenSongs()
{
    ViewModelBench bench;
    bench.online.results = onlineSongs({u"1"_s});
    const QList<OnlineSong> given = onlineSongs({u"7"_s, u"8"_s, u"9"_s});
    bench.startViewModel().playOnlineSongs(given, given[2]);
    QCOMPARE(bench.player().onlineQueue(), given);
    QCOMPARE(bench.player().currentIndex(), 2);
    QCOMPARE(bench.player().currentOnlineSong(), std::optional(given[2]));
}

void CadorelViewModelTest::transportIsForwarded()
{
    ViewModelBench bench;
    CadorelViewModel &viewModel = bench.startViewModel();
    const QList<Song> queue = fileSongs({u"a"_s, u"b"_s});
    bench.player().playSong(queue[0], queue);
    viewModel.togglePlayPause();
    QVERIFY(!bench.player().isPlaying());
    viewModel.next();
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
    viewModel.previous();
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
}

void CadorelViewModelTest::seekTakesAFraction()
{
    ViewModelBench bench;
    CadorelViewModel &viewModel = bench.startViewModel();
    bench.player().playSong(fileSong(u"a"_s), {});
    bench.answerDuration(200);
    viewModel.seek(0.25);
    QCOMPARE(bench.stream().seeks.constFirst().time, 50.0);
}

void CadorelViewModelTest::searchOnlineTakesQueryAndPlatform()
{
    ViewModelBench bench;
    CadorelViewModel &viewModel = bench.startViewModel();
    viewModel.setSearchQuery(u"晴天"_s);
    viewModel.setSelectedPlatform(MusicPlatform::kuwo);
    viewModel.searchOnline();
    QTRY_COMPARE(bench.online.searches.size(), 1);
    QCOMPARE(bench.online.searches.constFirst().first, u"晴天"_s);
    QCOMPARE(bench.online.searches.constFirst().second, MusicPlatform::kuwo);
}

void CadorelViewModelTest::playlistCommandsAreForwarded()
{
    ViewModelBench bench;
    CadorelViewModel &viewModel = bench.startViewModel();
    Playlist playlist;
    playlist.name = u"L"_s;
    viewModel.createPlaylist(u"new"_s);
    viewModel.createPlaylist(u"web"_s, PlaylistType::online);
    viewModel.addToPlaylist(fileSong(u"a"_s), playlist);
    viewModel.addOnlineToPlaylist(onlineSong(u"1"_s), playlist);
    QCOMPARE(bench.playlists.calls, (QStringList{u"create new local"_s, u"create web online"_s,
                                                 u"add a to L"_s, u"add online 1 to L"_s}));
}

void CadorelViewModelTest::scanAllWebDAVIsForwarded()
{
    ViewModelBench bench;
    bench.startViewModel().scanAllWebDAV();
    QTRY_COMPARE(bench.webDAV.scans, 1);
}

void CadorelViewModelTest::refreshAllDataGoesThroughTheSourcesInOrder()
{
    ViewModelBench bench;
    CadorelViewModel &viewModel = bench.startViewModel();
    settle();
    QStringList steps;
    bench.mediaLibrary.onLoad = [&] { steps.append(u"library"_s); };
    bench.webDAV.onScan = [&] { steps.append(u"servers"_s); };
    connect(&bench.importService(), &LocalMusicImportService::isScanningChanged, this, [&] {
        if (bench.importService().isScanning())
            steps.append(u"rescan"_s);
    });
    viewModel.refreshAllData();
    QTRY_COMPARE(steps, (QStringList{u"library"_s, u"rescan"_s, u"servers"_s}));
    QTRY_VERIFY(!bench.importService().isScanning());
}

void CadorelViewModelTest::viewModelOutlivedByItsTask()
{
    ViewModelBench bench;
    bench.start();
    auto viewModel = std::make_unique<CadorelViewModel>(bench.player(), bench.importService(),
                                                        LibrarySources{.mediaLibrary = &bench.mediaLibrary,
                                                                       .playlistService = nullptr,
                                                                       .onlineMusicService = nullptr,
                                                                       .webDAVService = &bench.webDAV});
    settle();
    bench.mediaLibrary.onLoad = [&] { viewModel.reset(); };
    viewModel->refreshAllData();
    settle();
    QVERIFY(!viewModel);
    QCOMPARE(bench.webDAV.scans, 0);
    QVERIFY(!bench.importService().isScanning());
}

QTEST_GUILESS_MAIN(CadorelViewModelTest)
#include "tst_cadorel_view_model.moc"
