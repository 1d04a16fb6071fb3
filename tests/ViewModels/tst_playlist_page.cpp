// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/PlaylistsBench.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Content = PlaylistPageViewModel::Content;

namespace {

QStringList ids(const PlaylistPageViewModel &page)
{
    QStringList result;
    for (const Song &song : page.songs()->songs())
        result.append(song.id());
    return result;
}

} // namespace

class PlaylistPageTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void localPlaylistResolvesItsSongsInItsOrder();
    void songsOfTheSystemLibraryComeBeforeImportedOnes();
    void songsThatAreGoneAreLeftOutAndSaid();
    void onlinePlaylistShowsItsOwnList();
    void emptyPlaylist_data();
    void emptyPlaylist();
    void deletedElsewhereItIsMissing();
    void unknownPlaylistIsMissing();
    void renamedElsewhereItShowsTheNewName();
    void libraryThatComesLaterFillsThePage();
    void rowPlaysWithTheListAsTheQueue();
    void onlineRowPlaysWithTheListAsTheQueue();
    void playAllBeginsWithTheFirst();
    void emptyPagePlaysNothing();
    void currentSongIsMarked();
    void songIsRemovedAtOnce();
    void onlineSongIsRemovedOnItsPlatformOnly();
    void unknownSongIsNotRemoved();
    void anotherPlaylistShowsItsOwnSongs();
    void largePlaylistOpensAtOnce();
    void closedPageStaysAsItWas();
};

void PlaylistPageTest::localPlaylistResolvesItsSongsInItsOrder()
{
    PlaylistsBench bench;
    bench.mediaLibrary.songList = fileSongs({u"a"_s, u"b"_s, u"c"_s});
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s, fileSongs({u"c"_s, u"a"_s}));
    bench.playlists().openPlaylist(playlist.id);
    QVERIFY(bench.page().isOpen());
    QCOMPARE(bench.page().playlistId(), playlist.id);
    QCOMPARE(bench.page().name(), u"甲"_s);
    QCOMPARE(ids(bench.page()), (QStringList{u"c"_s, u"a"_s}));
    QCOMPARE(bench.page().content(), Content::Songs);
    QCOMPARE(bench.page().summary(), u"2 首歌曲 · 本地"_s);
    QVERIFY(!bench.page().isOnline());
}

void PlaylistPageTest::songsOfTheSystemLibraryComeBeforeImportedOnes()
{
    PlaylistsBench bench;
    const Song imported = bench.home.addImportedSong(u"a.mp3"_s, u"imported"_s);
    bench.mediaLibrary.songList = {fileSong(imported.id())};
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s, {imported});
    bench.playlists().openPlaylist(playlist.id);
    QCOMPARE(bench.page().songs()->songs().constFirst().title(), fileSong(imported.id()).title());
}

void PlaylistPageTest::songsThatAreGoneAreLeftOutAndSaid()
{
    PlaylistsBench bench;
    bench.mediaLibrary.songList = fileSongs({u"a"_s});
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s, fileSongs({u"gone"_s, u"a"_s, u"webdav"_s}));
    bench.playlists().openPlaylist(playlist.id);
    QCOMPARE(ids(bench.page()), QStringList{u"a"_s});
    QCOMPARE(bench.page().summary(), u"1 首歌曲 · 本地 · 2 首不在资料库中"_s);
    QCOMPARE(bench.stored(playlist.id).songIds.size(), 3);
}

void PlaylistPageTest::onlinePlaylistShowsItsOwnList()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addOnline(u"乙"_s, onlineSongs({u"2"_s, u"1"_s}));
    bench.playlists().openPlaylist(playlist.id);
    QVERIFY(bench.page().isOnline());
    QCOMPARE(bench.page().onlineSongs()->songs(), onlineSongs({u"2"_s, u"1"_s}));
    QCOMPARE(bench.page().songs()->count(), 0);
    QCOMPARE(bench.page().summary(), u"2 首歌曲 · 在线"_s);
    QCOMPARE(bench.page().content(), Content::Songs);
}

void PlaylistPageTest::emptyPlaylist_data()
{
    QTest::addColumn<bool>("isOnline");
    QTest::newRow("local") << false;
    QTest::newRow("online") << true;
}

void PlaylistPageTest::emptyPlaylist()
{
    QFETCH(const bool, isOnline);
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = isOnline ? bench.addOnline(u"空"_s) : bench.addLocal(u"空"_s);
    bench.playlists().openPlaylist(playlist.id);
    QCOMPARE(bench.page().content(), Content::Empty);
    QCOMPARE(bench.page().isOnline(), isOnline);
    QCOMPARE(bench.page().coverSource(), QString());
}

void PlaylistPageTest::deletedElsewhereItIsMissing()
{
    PlaylistsBench bench;
    bench.mediaLibrary.songList = fileSongs({u"a"_s});
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s, bench.mediaLibrary.songList);
    bench.playlists().openPlaylist(playlist.id);
    bench.service().deletePlaylist(playlist);
    QTRY_COMPARE(bench.page().content(), Content::Missing);
    QVERIFY(bench.page().isOpen());
    QCOMPARE(bench.page().name(), u"歌单"_s);
    QCOMPARE(bench.page().summary(), QString());
    QCOMPARE(bench.page().songs()->count(), 0);
    bench.page().removeSong(u"a"_s);
    bench.page().playAll();
    QVERIFY(!bench.player().currentSong());
}

void PlaylistPageTest::unknownPlaylistIsMissing()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    bench.playlists().openPlaylist(u"never there"_s);
    QCOMPARE(bench.page().content(), Content::Missing);
}

void PlaylistPageTest::renamedElsewhereItShowsTheNewName()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    bench.playlists().openPlaylist(playlist.id);
    bench.service().renamePlaylist(playlist, u"😀"_s);
    QTRY_COMPARE(bench.page().name(), u"😀"_s);
}

void PlaylistPageTest::libraryThatComesLaterFillsThePage()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s, fileSongs({u"a"_s}));
    bench.playlists().openPlaylist(playlist.id);
    QCOMPARE(bench.page().content(), Content::Empty);
    bench.mediaLibrary.songList = fileSongs({u"a"_s});
    Q_EMIT bench.mediaLibrary.changed();
    QTRY_COMPARE(bench.page().content(), Content::Songs);
    QCOMPARE(bench.page().summary(), u"1 首歌曲 · 本地"_s);
}

void PlaylistPageTest::rowPlaysWithTheListAsTheQueue()
{
    PlaylistsBench bench;
    bench.mediaLibrary.songList = fileSongs({u"a"_s, u"b"_s, u"c"_s});
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s, fileSongs({u"c"_s, u"a"_s}));
    bench.playlists().openPlaylist(playlist.id);
    bench.page().playSongAt(1);
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
    QCOMPARE(bench.player().queue(), fileSongs({u"c"_s, u"a"_s}));
    QCOMPARE(bench.player().currentIndex(), 1);
    bench.page().playSongAt(-1);
    bench.page().playSongAt(2);
    QCOMPARE(songOf(bench.player()).id(), u"a"_s);
}

void PlaylistPageTest::onlineRowPlaysWithTheListAsTheQueue()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addOnline(u"乙"_s, onlineSongs({u"1"_s, u"2"_s}));
    bench.playlists().openPlaylist(playlist.id);
    bench.page().playSongAt(1);
    QCOMPARE(bench.player().currentOnlineSong(), std::optional(onlineSong(u"2"_s)));
    QCOMPARE(bench.player().onlineQueue(), onlineSongs({u"1"_s, u"2"_s}));
}

void PlaylistPageTest::playAllBeginsWithTheFirst()
{
    PlaylistsBench bench;
    bench.mediaLibrary.songList = fileSongs({u"a"_s, u"b"_s});
    bench.startPlaylists();
    const Playlist local = bench.addLocal(u"甲"_s, fileSongs({u"b"_s, u"a"_s}));
    const Playlist online = bench.addOnline(u"乙"_s, onlineSongs({u"2"_s, u"1"_s}));
    bench.playlists().openPlaylist(local.id);
    bench.page().playAll();
    QCOMPARE(songOf(bench.player()).id(), u"b"_s);
    QCOMPARE(bench.player().queue().size(), 2);
    bench.playlists().openPlaylist(online.id);
    bench.page().playAll();
    QCOMPARE(bench.player().currentOnlineSong(), std::optional(onlineSong(u"2"_s)));
}

void PlaylistPageTest::emptyPagePlaysNothing()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    bench.playlists().openPlaylist(bench.addLocal(u"甲"_s).id);
    bench.page().playAll();
    QVERIFY(!bench.player().currentSong());
}

void PlaylistPageTest::currentSongIsMarked()
{
    PlaylistsBench bench;
    bench.mediaLibrary.songList = fileSongs({u"a"_s, u"b"_s});
    bench.startPlaylists();
    const Playlist local = bench.addLocal(u"甲"_s, bench.mediaLibrary.songList);
    const Playlist online = bench.addOnline(u"乙"_s, onlineSongs({u"1"_s, u"2"_s}));
    bench.playlists().openPlaylist(local.id);
    bench.page().playSongAt(1);
    QVERIFY(bench.page().songs()->index(1).data(SongListModel::IsCurrentRole).toBool());
    bench.playlists().openPlaylist(online.id);
    bench.page().playSongAt(0);
    QVERIFY(bench.page().onlineSongs()->index(0).data(OnlineSongListModel::IsCurrentRole).toBool());
    bench.playlists().openPlaylist(local.id);
    QVERIFY(!bench.page().songs()->index(1).data(SongListModel::IsCurrentRole).toBool());
}

void PlaylistPageTest::songIsRemovedAtOnce()
{
    PlaylistsBench bench;
    bench.mediaLibrary.songList = fileSongs({u"a"_s, u"b"_s});
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s, bench.mediaLibrary.songList);
    bench.playlists().openPlaylist(playlist.id);
    bench.page().removeSong(u"a"_s);
    QCOMPARE(ids(bench.page()), QStringList{u"b"_s});
    QCOMPARE(bench.stored(playlist.id).songIds, QStringList{u"b"_s});
    QCOMPARE(bench.viewModel().localSongs().size(), 2);
}

void PlaylistPageTest::onlineSongIsRemovedOnItsPlatformOnly()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    OnlineSong other = onlineSong(u"1"_s);
    other.platform = MusicPlatform::kuwo;
    const Playlist playlist = bench.addOnline(u"乙"_s, {onlineSong(u"1"_s), other});
    bench.playlists().openPlaylist(playlist.id);
    bench.page().removeSong(OnlineSongListModel::key(other));
    QCOMPARE(bench.stored(playlist.id).onlineSongs, onlineSongs({u"1"_s}));
    QCOMPARE(bench.page().onlineSongs()->count(), 1);
}

void PlaylistPageTest::unknownSongIsNotRemoved()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addOnline(u"乙"_s, onlineSongs({u"1"_s}));
    bench.playlists().openPlaylist(playlist.id);
    const QDateTime before = bench.stored(playlist.id).updatedAt;
    bench.page().removeSong(u"netease:gone"_s);
    QCOMPARE(bench.stored(playlist.id).updatedAt, before);
    QCOMPARE(bench.stored(playlist.id).songCount(), 1);
}

void PlaylistPageTest::anotherPlaylistShowsItsOwnSongs()
{
    PlaylistsBench bench;
    bench.mediaLibrary.songList = fileSongs({u"a"_s, u"b"_s});
    bench.startPlaylists();
    const Playlist local = bench.addLocal(u"甲"_s, fileSongs({u"a"_s}));
    const Playlist online = bench.addOnline(u"乙"_s, onlineSongs({u"1"_s}));
    bench.playlists().openPlaylist(local.id);
    bench.playlists().openPlaylist(online.id);
    QCOMPARE(bench.page().songs()->count(), 0);
    bench.playlists().openPlaylist(local.id);
    QCOMPARE(bench.page().onlineSongs()->count(), 0);
    QCOMPARE(ids(bench.page()), QStringList{u"a"_s});
}

void PlaylistPageTest::largePlaylistOpensAtOnce()
{
    PlaylistsBench bench;
    QList<Song> library;
    for (int i = 0; i < 100'000; ++i)
        library.append(fileSong(u"a song of the library, number %1"_s.arg(i)));
    bench.mediaLibrary.songList = library;
    bench.startPlaylists();
    QList<Song> chosen;
    for (int i = 0; i < 5'000; ++i)
        chosen.append(library.at(99'999 - i * 19));
    const Playlist playlist = bench.addLocal(u"大"_s, chosen);
    settle();
    QElapsedTimer timer;
    timer.start();
    bench.playlists().openPlaylist(playlist.id);
    const qint64 elapsed = timer.elapsed();
    QCOMPARE(bench.page().songs()->songs(), chosen);
    // A walk for each song of the playlist would take tens of seconds.
    constexpr qint64 limitMs = 2000;
    QVERIFY2(elapsed < limitMs, qPrintable(QString::number(elapsed)));
}

void PlaylistPageTest::closedPageStaysAsItWas()
{
    PlaylistsBench bench;
    bench.mediaLibrary.songList = fileSongs({u"a"_s});
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s, bench.mediaLibrary.songList);
    bench.playlists().openPlaylist(playlist.id);
    bench.page().close();
    QVERIFY(!bench.page().isOpen());
    // It slides away with its rows.
    QCOMPARE(bench.page().songs()->count(), 1);
    QCOMPARE(bench.page().name(), u"甲"_s);
}

QTEST_GUILESS_MAIN(PlaylistPageTest)
#include "tst_playlist_page.moc"
