// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/CoverRegistry.h"
#include "ViewModels/PlaylistsBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// A song with a cover of its own.
Song songWithCover(const QString &id)
{
    SongFields fields;
    fields.id = id;
    fields.artworkData = ArtworkData("cover of " + id.toUtf8());
    return Song(fields);
}

bool isFavorite(const RowModel &model, int row, int role)
{
    return model.index(row).data(role).toBool();
}

} // namespace

class PlaylistsViewModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void listsTheFavouritesFromTheStart();
    void rowsTellNameCountAndKind();
    void nameOfBlanksCanBeRead();
    void nameIsOneLine();
    void changedPlaylistKeepsItsRow();
    void newAndDeletedPlaylistsComeAndGo();
    void coverOfItsOwnComesFirst();
    void coverOfTheFirstSongThatIsThere();
    void coverOfASongThatIsGoneIsNotLent();
    void songWithoutACoverLeavesTheSymbol();
    void onlinePlaylistShowsTheAddressOfItsFirstSong();
    void coverComesWithTheLibrary();
    void replacedCoverHasAnotherAddress();
    void favouritesAreMarkedInEveryList();
    void oneAnnouncementTellsFavouritesOfALargeList();
    void favouriteIsToggledByItsKey();
    void unknownKeyDoesNothing();
    void pickerListsTheRightKind();
    void pickerMarksWhatHoldsTheSong();
    void choiceAddsTheSongOnce();
    void choiceOfAGonePlaylistAddsNothing();
    void closedPickerAddsNothing();
    void newPlaylistOfThePickerTakesTheSong();
    void cancelledNewPlaylistLeavesThePickerOpen();
};

void PlaylistsViewModelTest::listsTheFavouritesFromTheStart()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    QCOMPARE(PlaylistsBench::names(bench.list()), (QStringList{u"我喜欢的音乐(在线)"_s, u"我喜欢的音乐"_s}));
    for (const QString &id :
         {PlaylistService::favoritesPlaylistId, PlaylistService::favoritesOnlinePlaylistId})
        QVERIFY(bench.data(id, PlaylistListModel::IsProtectedRole).toBool());
}

void PlaylistsViewModelTest::rowsTellNameCountAndKind()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist local = bench.addLocal(u"开车听"_s, fileSongs({u"a"_s, u"gone"_s}));
    const Playlist online = bench.addOnline(u"网上"_s, onlineSongs({u"1"_s, u"2"_s, u"3"_s}));
    QTRY_COMPARE(bench.list()->count(), 4);
    QTRY_COMPARE(bench.data(online.id, PlaylistListModel::CountTextRole).toString(), u"3 首歌曲"_s);
    QCOMPARE(bench.data(online.id, PlaylistListModel::KindTextRole).toString(), u"在线"_s);
    // Songs that no longer exist count.
    QCOMPARE(bench.data(local.id, PlaylistListModel::CountTextRole).toString(), u"2 首歌曲"_s);
    QCOMPARE(bench.data(local.id, PlaylistListModel::KindTextRole).toString(), u"本地"_s);
    QCOMPARE(bench.data(local.id, PlaylistListModel::NameRole).toString(), u"开车听"_s);
    QVERIFY(!bench.data(local.id, PlaylistListModel::IsProtectedRole).toBool());
    QVERIFY(!bench.data(local.id, PlaylistListModel::HasCoverRole).toBool());
}

void PlaylistsViewModelTest::nameOfBlanksCanBeRead()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist blank = bench.addLocal(u"   "_s);
    QTRY_COMPARE(bench.data(blank.id, PlaylistListModel::NameRole).toString(), u"未命名歌单"_s);
    QCOMPARE(bench.stored(blank.id).name, u"   "_s);
}

void PlaylistsViewModelTest::nameIsOneLine()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"第一行\n第二行"_s);
    QTRY_COMPARE(bench.data(playlist.id, PlaylistListModel::NameRole).toString(), u"第一行 第二行"_s);
}

void PlaylistsViewModelTest::changedPlaylistKeepsItsRow()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist first = bench.addLocal(u"甲"_s);
    const Playlist second = bench.addLocal(u"乙"_s);
    QTRY_COMPARE(bench.list()->count(), 4);
    QSignalSpy resets(bench.list(), &QAbstractItemModel::modelReset);
    QSignalSpy removals(bench.list(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy changes(bench.list(), &QAbstractItemModel::dataChanged);
    bench.service().renamePlaylist(first, u"丙"_s);
    QTRY_COMPARE(changes.size(), 1);
    QCOMPARE(changes.at(0).at(0).toModelIndex().row(), bench.list()->rowOf(first.id));
    QCOMPARE(bench.data(first.id, PlaylistListModel::NameRole).toString(), u"丙"_s);
    QCOMPARE(resets.size() + removals.size(), 0);
    QCOMPARE(bench.list()->rowOf(second.id), 3);
}

void PlaylistsViewModelTest::newAndDeletedPlaylistsComeAndGo()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist first = bench.addLocal(u"甲"_s);
    bench.addLocal(u"乙"_s);
    QTRY_COMPARE(bench.list()->count(), 4);
    bench.service().deletePlaylist(first);
    QTRY_COMPARE(bench.list()->count(), 3);
    QCOMPARE(PlaylistsBench::names(bench.list()).constLast(), u"乙"_s);
    QCOMPARE(bench.list()->rowOf(first.id), -1);
}

void PlaylistsViewModelTest::coverOfItsOwnComesFirst()
{
    PlaylistsBench bench;
    bench.mediaLibrary.songList = {songWithCover(u"a"_s)};
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s, bench.mediaLibrary.songList);
    bench.editor().takeCover({});
    bench.home.filePicker().answer = QList<QUrl>{bench.picture(u"cover.png"_s)};
    bench.editor().chooseCover(playlist.id);
    QTRY_VERIFY(bench.data(playlist.id, PlaylistListModel::HasCoverRole).toBool());
    const QString source = bench.data(playlist.id, PlaylistListModel::CoverSourceRole).toString();
    const QString key = source.section(u'/', -1);
    QCOMPARE(CoverRegistry::shared().artwork(key).bytes(),
             bench.stored(playlist.id).coverImageData.value_or(QByteArray()));
}

void PlaylistsViewModelTest::coverOfTheFirstSongThatIsThere()
{
    PlaylistsBench bench;
    bench.mediaLibrary.songList = {songWithCover(u"a"_s), songWithCover(u"b"_s), songWithCover(u"c"_s)};
    bench.startPlaylists();
    const Playlist first =
        bench.addLocal(u"甲"_s, {songWithCover(u"gone"_s), songWithCover(u"c"_s), songWithCover(u"a"_s)});
    const Playlist second = bench.addLocal(u"乙"_s, {songWithCover(u"b"_s)});
    QTRY_COMPARE(bench.data(first.id, PlaylistListModel::CoverSourceRole).toString(),
                 CoverRegistry::shared().source(songWithCover(u"c"_s)));
    QTRY_COMPARE(bench.data(second.id, PlaylistListModel::CoverSourceRole).toString(),
                 CoverRegistry::shared().source(songWithCover(u"b"_s)));
    QVERIFY(!bench.data(first.id, PlaylistListModel::HasCoverRole).toBool());
}

void PlaylistsViewModelTest::coverOfASongThatIsGoneIsNotLent()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s, {songWithCover(u"gone"_s)});
    QTRY_COMPARE(bench.data(playlist.id, PlaylistListModel::CountTextRole).toString(), u"1 首歌曲"_s);
    QCOMPARE(bench.data(playlist.id, PlaylistListModel::CoverSourceRole).toString(), QString());
}

void PlaylistsViewModelTest::songWithoutACoverLeavesTheSymbol()
{
    PlaylistsBench bench;
    bench.mediaLibrary.songList = {fileSong(u"plain"_s), songWithCover(u"b"_s)};
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s, bench.mediaLibrary.songList);
    QTRY_COMPARE(bench.data(playlist.id, PlaylistListModel::CountTextRole).toString(), u"2 首歌曲"_s);
    QCOMPARE(bench.data(playlist.id, PlaylistListModel::CoverSourceRole).toString(), QString());
}

void PlaylistsViewModelTest::onlinePlaylistShowsTheAddressOfItsFirstSong()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    OnlineSong pictured = onlineSong(u"1"_s);
    pictured.picUrl = u"https://pic.example/1.jpg"_s;
    const Playlist with = bench.addOnline(u"甲"_s, {pictured, onlineSong(u"2"_s)});
    const Playlist without = bench.addOnline(u"乙"_s, {onlineSong(u"2"_s), pictured});
    QTRY_COMPARE(bench.data(without.id, PlaylistListModel::CountTextRole).toString(), u"2 首歌曲"_s);
    const QString key = bench.data(with.id, PlaylistListModel::CoverSourceRole).toString().section(u'/', -1);
    QCOMPARE(CoverRegistry::shared().remoteAddress(key), QUrl(pictured.picUrl));
    QCOMPARE(bench.data(without.id, PlaylistListModel::CoverSourceRole).toString(), QString());
}

void PlaylistsViewModelTest::coverComesWithTheLibrary()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s, {songWithCover(u"a"_s)});
    QTRY_COMPARE(bench.list()->count(), 3);
    QCOMPARE(bench.data(playlist.id, PlaylistListModel::CoverSourceRole).toString(), QString());
    bench.mediaLibrary.songList = {songWithCover(u"a"_s)};
    Q_EMIT bench.mediaLibrary.changed();
    QTRY_VERIFY(!bench.data(playlist.id, PlaylistListModel::CoverSourceRole).toString().isEmpty());
}

void PlaylistsViewModelTest::replacedCoverHasAnotherAddress()
{
    Playlist playlist;
    playlist.coverImageData = "one";
    const QString before = CoverRegistry::shared().source(playlist, std::nullopt);
    playlist.name = u"another name"_s;
    QCOMPARE(CoverRegistry::shared().source(playlist, std::nullopt), before);
    playlist.coverImageData = "two";
    QVERIFY(CoverRegistry::shared().source(playlist, std::nullopt) != before);
    playlist.coverImageData = std::nullopt;
    QCOMPARE(CoverRegistry::shared().source(playlist, std::nullopt), QString());
}

void PlaylistsViewModelTest::favouritesAreMarkedInEveryList()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    SongListModel songs;
    songs.setSongs(fileSongs({u"a"_s, u"b"_s}));
    songs.setFavorites(&bench.service());
    OnlineSongListModel onlineSongsModel([](const OnlineSong &) { return std::nullopt; }, nullptr);
    onlineSongsModel.setSongs(onlineSongs({u"1"_s, u"2"_s}));
    onlineSongsModel.setFavorites(&bench.service());
    QVERIFY(!isFavorite(songs, 1, SongListModel::IsFavoriteRole));

    QSignalSpy changes(&songs, &QAbstractItemModel::dataChanged);
    bench.service().toggleFavorite(fileSong(u"b"_s));
    QVERIFY(isFavorite(songs, 1, SongListModel::IsFavoriteRole));
    QVERIFY(!isFavorite(songs, 0, SongListModel::IsFavoriteRole));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.at(0).at(2).value<QList<int>>(), QList<int>{SongListModel::IsFavoriteRole});
    bench.service().toggleFavorite(onlineSong(u"1"_s));
    QVERIFY(isFavorite(onlineSongsModel, 0, OnlineSongListModel::IsFavoriteRole));
    bench.service().deletePlaylist(bench.stored(PlaylistService::favoritesPlaylistId));
    QVERIFY(!isFavorite(songs, 1, SongListModel::IsFavoriteRole));

    songs.setFavorites(nullptr);
    changes.clear();
    bench.service().toggleFavorite(onlineSong(u"2"_s));
    QCOMPARE(changes.size(), 0);
}

void PlaylistsViewModelTest::oneAnnouncementTellsFavouritesOfALargeList()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    QList<Song> many;
    for (int i = 0; i < 100'000; ++i)
        many.append(fileSong(QString::number(i)));
    SongListModel songs;
    songs.setSongs(many);
    songs.setFavorites(&bench.service());
    QSignalSpy changes(&songs, &QAbstractItemModel::dataChanged);
    for (int i = 0; i < 10; ++i)
        bench.service().toggleFavorite(many.at(i * 9'999));
    QCOMPARE(changes.size(), 10);
    QVERIFY(isFavorite(songs, 9'999, SongListModel::IsFavoriteRole));
    QVERIFY(!isFavorite(songs, 9'998, SongListModel::IsFavoriteRole));
}

void PlaylistsViewModelTest::favouriteIsToggledByItsKey()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    SongListModel songs;
    songs.setSongs(fileSongs({u"a"_s, u"b"_s}));
    bench.playlists().toggleFavorite(&songs, u"b"_s);
    QVERIFY(bench.service().isFavorite(fileSong(u"b"_s)));
    bench.playlists().toggleFavorite(&songs, u"b"_s);
    QVERIFY(!bench.service().isFavorite(fileSong(u"b"_s)));

    OnlineSongListModel onlineModel([](const OnlineSong &) { return std::nullopt; }, nullptr);
    OnlineSong other = onlineSong(u"1"_s);
    other.platform = MusicPlatform::qq;
    onlineModel.setSongs({onlineSong(u"1"_s), other});
    bench.playlists().toggleFavorite(&onlineModel, OnlineSongListModel::key(other));
    QVERIFY(bench.service().isFavorite(other));
    QVERIFY(!bench.service().isFavorite(onlineSong(u"1"_s)));
}

void PlaylistsViewModelTest::unknownKeyDoesNothing()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    SongListModel songs;
    songs.setSongs(fileSongs({u"a"_s}));
    bench.playlists().toggleFavorite(&songs, u"gone"_s);
    bench.playlists().toggleFavorite(nullptr, u"a"_s);
    bench.playlists().addToPlaylist(&songs, u"gone"_s);
    bench.playlists().addToPlaylist(bench.list(), u"a"_s);
    QVERIFY(!bench.picker().isOpen());
    QCOMPARE(bench.stored(PlaylistService::favoritesPlaylistId).songCount(), 0);
}

void PlaylistsViewModelTest::pickerListsTheRightKind()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    bench.addLocal(u"本地的"_s);
    bench.addOnline(u"网上的"_s);
    bench.picker().open(fileSongs({u"a"_s}));
    QVERIFY(bench.picker().isOpen());
    QCOMPARE(bench.picker().kindText(), u"本地"_s);
    QCOMPARE(PlaylistsBench::names(bench.picker().playlists()),
             (QStringList{u"我喜欢的音乐"_s, u"本地的"_s}));
    bench.picker().close();
    bench.picker().openOnline(onlineSongs({u"1"_s}));
    QCOMPARE(bench.picker().kindText(), u"在线"_s);
    QCOMPARE(PlaylistsBench::names(bench.picker().playlists()),
             (QStringList{u"我喜欢的音乐(在线)"_s, u"网上的"_s}));
    bench.picker().close();
    bench.picker().open({});
    QVERIFY(!bench.picker().isOpen());
}

void PlaylistsViewModelTest::pickerMarksWhatHoldsTheSong()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist holds = bench.addLocal(u"有"_s, fileSongs({u"a"_s, u"b"_s}));
    const Playlist half = bench.addLocal(u"半"_s, fileSongs({u"a"_s}));
    bench.picker().open(fileSongs({u"a"_s, u"b"_s}));
    const PlaylistListModel *rows = bench.picker().playlists();
    const auto isMarked = [rows](const QString &id) {
        return rows->index(rows->rowOf(id)).data(PlaylistListModel::IsMarkedRole).toBool();
    };
    QVERIFY(isMarked(holds.id));
    QVERIFY(!isMarked(half.id));
    bench.service().addSong(fileSong(u"b"_s), half);
    QVERIFY(isMarked(half.id));
}

void PlaylistsViewModelTest::choiceAddsTheSongOnce()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist local = bench.addLocal(u"甲"_s);
    const Playlist online = bench.addOnline(u"乙"_s);
    for (int i = 0; i < 2; ++i) {
        bench.picker().open(fileSongs({u"a"_s}));
        bench.picker().choose(local.id);
        QVERIFY(!bench.picker().isOpen());
        bench.picker().openOnline(onlineSongs({u"1"_s, u"2"_s}));
        bench.picker().choose(online.id);
    }
    QCOMPARE(bench.stored(local.id).songIds, QStringList{u"a"_s});
    QCOMPARE(bench.stored(online.id).onlineSongs, onlineSongs({u"1"_s, u"2"_s}));
}

void PlaylistsViewModelTest::choiceOfAGonePlaylistAddsNothing()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist gone = bench.addLocal(u"甲"_s);
    bench.picker().open(fileSongs({u"a"_s}));
    bench.service().deletePlaylist(gone);
    QCOMPARE(bench.picker().playlists()->rowOf(gone.id), -1);
    bench.picker().choose(gone.id);
    QVERIFY(!bench.picker().isOpen());
    QCOMPARE(bench.service().playlists().size(), 2);
}

void PlaylistsViewModelTest::closedPickerAddsNothing()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    bench.picker().open(fileSongs({u"a"_s}));
    bench.picker().close();
    bench.picker().choose(playlist.id);
    QCOMPARE(bench.stored(playlist.id).songCount(), 0);
}

void PlaylistsViewModelTest::newPlaylistOfThePickerTakesTheSong()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    bench.picker().openOnline(onlineSongs({u"1"_s}));
    bench.playlists().createForPicker();
    QVERIFY(bench.editor().showCreateSheet());
    QVERIFY(bench.editor().isTypeFixed());
    bench.editor().newPlaylistName()->edit(u"新的"_s);
    bench.editor().createPlaylist();
    QVERIFY(!bench.picker().isOpen());
    const Playlist made = bench.service().playlists().constLast();
    QCOMPARE(made.name, u"新的"_s);
    QCOMPARE(made.type, PlaylistType::online);
    QCOMPARE(made.onlineSongs, onlineSongs({u"1"_s}));
}

void PlaylistsViewModelTest::cancelledNewPlaylistLeavesThePickerOpen()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    bench.picker().open(fileSongs({u"a"_s}));
    bench.playlists().createForPicker();
    bench.editor().cancelCreate();
    QVERIFY(bench.picker().isOpen());
    bench.editor().createPlaylist();
    QCOMPARE(bench.service().playlists().size(), 2);
}

QTEST_GUILESS_MAIN(PlaylistsViewModelTest)
#include "tst_playlists_view_model.moc"
