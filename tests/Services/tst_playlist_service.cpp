// SPDX-License-Identifier: GPL-3.0-or-later
// Playlists, their songs and the favourites.
#include "Fakes/FakeMediaLibrarySource.h"
#include "Services/PlaylistBench.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestPlaylistService : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PlaylistBench> m_bench;

    PlaylistService &service() { return *m_bench->service; }
    static Song song(const QString &id) { return PlaylistBench::song(id); }
    static OnlineSong onlineSong(const QString &id, MusicPlatform platform = MusicPlatform::netease)
    {
        return PlaylistBench::onlineSong(id, platform);
    }
    Playlist favorites() { return service().favoritesPlaylist().value_or(Playlist()); }

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<PlaylistBench>();
        m_bench->start();
    }
    void cleanup() { m_bench.reset(); }

    void aFreshStoreHoldsTheTwoFavourites()
    {
        QCOMPARE(m_bench->ids(), QStringList({u"favorites_online_playlist"_s, u"favorites_playlist"_s}));
        const Playlist local = service().favoritesPlaylist().value();
        QCOMPARE(local.name, u"我喜欢的音乐"_s);
        QCOMPARE(local.description, u"收藏喜欢的歌曲"_s);
        QCOMPARE(local.type, PlaylistType::local);
        const Playlist online = service().favoritesOnlinePlaylist().value();
        QCOMPARE(online.name, u"我喜欢的音乐(在线)"_s);
        QCOMPARE(online.description, u"收藏喜欢的在线歌曲"_s);
        QCOMPARE(online.type, PlaylistType::online);
        for (const Playlist &playlist : {local, online}) {
            QCOMPARE(playlist.createdAt, m_bench->machine.clock().now());
            QCOMPARE(playlist.updatedAt, m_bench->machine.clock().now());
            QVERIFY(!playlist.coverURL && !playlist.coverImageData);
            QCOMPARE(playlist.songCount(), 0);
        }
    }

    void favouritesThatExistStayWhereTheyAre()
    {
        const Playlist mine = m_bench->local();
        service().deletePlaylist(favorites());
        m_bench->start();
        QCOMPARE(m_bench->ids(),
                 QStringList({u"favorites_playlist"_s, u"favorites_online_playlist"_s, mine.id}));
        m_bench->start();
        QCOMPARE(m_bench->ids(),
                 QStringList({u"favorites_playlist"_s, u"favorites_online_playlist"_s, mine.id}));
    }

    void deletedFavouritesAreGoneUntilTheNextStart()
    {
        service().toggleFavorite(song(u"a"_s));
        service().toggleFavorite(onlineSong(u"1"_s));
        service().deletePlaylist(favorites());
        service().deletePlaylist(*service().favoritesOnlinePlaylist());
        QVERIFY(!service().favoritesPlaylist() && !service().favoritesOnlinePlaylist());
        QVERIFY(!service().isFavorite(song(u"a"_s)) && !service().isFavorite(onlineSong(u"1"_s)));
        const QSignalSpy changes(&service(), &PlaylistService::changed);
        service().toggleFavorite(song(u"a"_s));
        service().toggleFavorite(onlineSong(u"1"_s));
        QVERIFY(changes.isEmpty());
        QVERIFY(service().playlists().isEmpty());

        m_bench->start();
        QVERIFY(service().favoritesPlaylist() && service().favoritesOnlinePlaylist());
        QVERIFY(!service().isFavorite(song(u"a"_s)));
    }

    void aNewPlaylistComesLastAndIsReturned()
    {
        m_bench->passSeconds(5);
        const QSignalSpy changes(&service(), &PlaylistService::changed);
        const Playlist made = service().createPlaylist(u"  "_s, u"说明"_s, PlaylistType::online);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(m_bench->ids().last(), made.id);
        const Playlist stored = m_bench->now(made);
        QCOMPARE(stored.name, u"  "_s);
        QCOMPARE(stored.description, u"说明"_s);
        QCOMPARE(stored.type, PlaylistType::online);
        QCOMPARE(stored.createdAt, m_bench->machine.clock().now());
        QCOMPARE(stored.updatedAt, stored.createdAt);
        QCOMPARE(made.createdAt, stored.createdAt);
    }

    void anUpdateReplacesTheStoredValue()
    {
        Playlist playlist = m_bench->local();
        m_bench->passSeconds(3);
        playlist.name = u"新"_s;
        playlist.description = u"说明"_s;
        playlist.songIds = {u"a"_s};
        playlist.updatedAt = {};
        service().updatePlaylist(playlist);
        const Playlist stored = m_bench->now(playlist);
        QCOMPARE(stored.name, u"新"_s);
        QCOMPARE(stored.description, u"说明"_s);
        QCOMPARE(stored.songIds, QStringList{u"a"_s});
        QCOMPARE(stored.updatedAt, m_bench->machine.clock().now());
    }

    void renamingTakesAnyNameAndAlwaysTellsIt()
    {
        const Playlist playlist = m_bench->local();
        m_bench->local(u"同名"_s);
        m_bench->passSeconds(3);
        const QSignalSpy changes(&service(), &PlaylistService::changed);
        for (const QString &name : {u"同名"_s, u"同名"_s, u""_s})
            service().renamePlaylist(playlist, name);
        QCOMPARE(changes.size(), 3);
        QCOMPARE(m_bench->now(playlist).name, QString());
        QCOMPARE(m_bench->now(playlist).updatedAt, m_bench->machine.clock().now());
        QCOMPARE(m_bench->now(playlist).createdAt, playlist.createdAt);
    }

    void everyPlaylistOfTheIdIsDeleted()
    {
        m_bench->service.reset();
        const QByteArray twin =
            R"({"id":"twin","name":"","description":"","type":"local","createdAt":0,"updatedAt":0,)"
            R"("songIds":[],"onlineSongs":[]})";
        m_bench->store('[' + twin + ',' + twin + ']');
        m_bench->start();
        QCOMPARE(service().playlists().size(), 4);
        service().deletePlaylist(*service().playlist(u"twin"_s));
        QCOMPARE(service().playlists().size(), 2);
    }

    void aPlaylistThatIsNotListedChangesNothing()
    {
        const Playlist gone = m_bench->local();
        const Playlist goneOnline = m_bench->online();
        service().deletePlaylist(gone);
        service().deletePlaylist(goneOnline);
        settle();
        const int writes = m_bench->machine.preferences().writes();
        const QSignalSpy changes(&service(), &PlaylistService::changed);
        m_bench->console.take();
        service().updatePlaylist(gone);
        service().deletePlaylist(gone);
        service().renamePlaylist(gone, u"x"_s);
        service().removeCoverImage(gone);
        service().addSong(song(u"a"_s), gone);
        service().addSongs({song(u"a"_s)}, gone);
        service().removeSong(song(u"a"_s), gone);
        service().removeSongById(u"a"_s, gone);
        service().removeSongsByIds({u"a"_s}, gone);
        service().addOnlineSong(onlineSong(u"1"_s), goneOnline);
        service().addOnlineSongs({onlineSong(u"1"_s)}, goneOnline);
        service().removeOnlineSong(onlineSong(u"1"_s), goneOnline);
        service().removeOnlineSongs({onlineSong(u"1"_s)}, goneOnline);
        settle();
        QVERIFY(changes.isEmpty());
        QCOMPARE(service().playlists().size(), 2);
        QCOMPARE(m_bench->machine.preferences().writes(), writes);
        QCOMPARE(m_bench->console.take(), QStringList());
    }

    void anAddedSongIsLogged()
    {
        const Playlist playlist = m_bench->local(u"路上"_s);
        m_bench->console.take();
        m_bench->passSeconds(2);
        service().addSong(song(u"a"_s), playlist);
        service().addSong(PlaylistBench::song(u"b"_s, u"夜航"_s), playlist);
        QCOMPARE(
            m_bench->console.take(),
            QStringList({u"✅ 添加歌曲到歌单:"_s, u"  - 歌曲: 歌"_s, u"  - 歌曲ID: a"_s, u"  - 歌单: 路上"_s,
                         u"  - 当前歌单歌曲数: 1"_s, u"✅ 添加歌曲到歌单:"_s, u"  - 歌曲: 夜航"_s,
                         u"  - 歌曲ID: b"_s, u"  - 歌单: 路上"_s, u"  - 当前歌单歌曲数: 2"_s}));
        QCOMPARE(m_bench->now(playlist).songIds, QStringList({u"a"_s, u"b"_s}));
        QCOMPARE(m_bench->now(playlist).updatedAt, m_bench->machine.clock().now());
    }

    void aTitleForgesNoLogLine()
    {
        const Playlist playlist = m_bench->local();
        m_bench->console.take();
        service().addSong(PlaylistBench::song(u"a"_s, u"歌\n假的一行"_s), playlist);
        QCOMPARE(m_bench->console.take().size(), 5);
    }

    void aSongThatIsThereIsNotAddedAgain()
    {
        const Playlist playlist = m_bench->local();
        service().addSong(song(u"a"_s), playlist);
        const QDateTime before = m_bench->now(playlist).updatedAt;
        m_bench->passSeconds(60);
        m_bench->console.take();
        const QSignalSpy changes(&service(), &PlaylistService::changed);
        service().addSong(song(u"a"_s), playlist);
        QCOMPARE(m_bench->now(playlist).songIds, QStringList{u"a"_s});
        QCOMPARE(m_bench->now(playlist).updatedAt, before);
        QCOMPARE(m_bench->console.take(), QStringList());
        QVERIFY(changes.isEmpty());
    }

    void songsOfTheOtherKindAreNotAdded()
    {
        const Playlist local = m_bench->local();
        const Playlist online = m_bench->online();
        m_bench->passSeconds(60);
        m_bench->console.take();
        service().addSong(song(u"a"_s), online);
        service().addSongs({song(u"a"_s)}, online);
        service().addOnlineSong(onlineSong(u"1"_s), local);
        service().addOnlineSongs({onlineSong(u"1"_s)}, local);
        for (const Playlist &playlist : {local, online}) {
            QVERIFY(m_bench->now(playlist).songIds.isEmpty());
            QVERIFY(m_bench->now(playlist).onlineSongs.isEmpty());
            QCOMPARE(m_bench->now(playlist).updatedAt, playlist.updatedAt);
        }
        QCOMPARE(m_bench->console.take(), QStringList());
    }

    void severalSongsAreAddedOnceWithOneWrite()
    {
        const Playlist playlist = m_bench->local();
        service().addSong(song(u"b"_s), playlist);
        settle();
        const int writes = m_bench->machine.preferences().writes();
        m_bench->console.take();
        m_bench->passSeconds(2);
        service().addSongs({song(u"a"_s), song(u"b"_s), song(u"a"_s), song(u"c"_s)}, playlist);
        settle();
        QCOMPARE(m_bench->now(playlist).songIds, QStringList({u"b"_s, u"a"_s, u"c"_s}));
        QCOMPARE(m_bench->machine.preferences().writes(), writes + 1);
        QCOMPARE(m_bench->console.take(), QStringList());
    }

    void addingSongsThatAreAllThereStillCountsAsAChange()
    {
        const Playlist playlist = m_bench->local();
        service().addSong(song(u"a"_s), playlist);
        m_bench->passSeconds(2);
        const QSignalSpy changes(&service(), &PlaylistService::changed);
        service().addSongs({song(u"a"_s)}, playlist);
        QCOMPARE(m_bench->now(playlist).songIds, QStringList{u"a"_s});
        QCOMPARE(m_bench->now(playlist).updatedAt, m_bench->machine.clock().now());
        QCOMPARE(changes.size(), 1);
    }

    void removingTakesAllOccurrences_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("by song") << 0;
        QTest::newRow("by id") << 1;
        QTest::newRow("by ids") << 2;
    }
    void removingTakesAllOccurrences()
    {
        QFETCH(const int, way);
        Playlist playlist = m_bench->local();
        playlist.songIds = {u"a"_s, u"b"_s, u"a"_s, u"c"_s};
        service().updatePlaylist(playlist);
        m_bench->passSeconds(2);
        if (way == 0)
            service().removeSong(song(u"a"_s), playlist);
        else if (way == 1)
            service().removeSongById(u"a"_s, playlist);
        else
            service().removeSongsByIds({u"a"_s, u"c"_s, u"none"_s}, playlist);
        QCOMPARE(m_bench->now(playlist).songIds,
                 way == 2 ? QStringList{u"b"_s} : QStringList({u"b"_s, u"c"_s}));
        QCOMPARE(m_bench->now(playlist).updatedAt, m_bench->machine.clock().now());
    }

    void anIdThatBelongsToTheListItselfCanBeRemoved()
    {
        const Playlist playlist = m_bench->local();
        service().addSongs({song(u"a"_s), song(u"b"_s)}, playlist);
        service().removeSongById(service().playlists().last().songIds.first(), service().playlists().last());
        QCOMPARE(m_bench->now(playlist).songIds, QStringList{u"b"_s});
        service().renamePlaylist(service().playlists().last(), service().playlists().first().name);
        service().updatePlaylist(service().playlists().last());
        QCOMPARE(m_bench->now(playlist).songIds, QStringList{u"b"_s});
        service().deletePlaylist(service().playlists().last());
        QCOMPARE(service().playlists().size(), 2);
    }

    void onlineSongsAreAddedOnceAndByPlatform()
    {
        const Playlist playlist = m_bench->online();
        m_bench->passSeconds(2);
        service().addOnlineSong(onlineSong(u"1"_s), playlist);
        const QDateTime before = m_bench->now(playlist).updatedAt;
        QCOMPARE(before, m_bench->machine.clock().now());
        m_bench->passSeconds(2);
        OnlineSong renamed = onlineSong(u"1"_s);
        renamed.name = u"另一个名字"_s;
        const QSignalSpy changes(&service(), &PlaylistService::changed);
        service().addOnlineSong(renamed, playlist);
        service().addOnlineSongs({renamed}, playlist);
        QVERIFY(changes.isEmpty());
        QCOMPARE(m_bench->now(playlist).updatedAt, before);
        QCOMPARE(m_bench->now(playlist).onlineSongs.constFirst().name, u"歌 1"_s);

        service().addOnlineSong(onlineSong(u"1"_s, MusicPlatform::qq), playlist);
        service().addOnlineSongs({onlineSong(u"2"_s), onlineSong(u"1"_s), onlineSong(u"2"_s)}, playlist);
        QCOMPARE(m_bench->now(playlist).onlineSongs,
                 QList({onlineSong(u"1"_s), onlineSong(u"1"_s, MusicPlatform::qq), onlineSong(u"2"_s)}));
        QCOMPARE(changes.size(), 2);
    }

    void oneOnlineSongIsRemovedByIdAndPlatform()
    {
        const Playlist playlist = m_bench->online();
        service().addOnlineSongs({onlineSong(u"1"_s), onlineSong(u"1"_s, MusicPlatform::qq)}, playlist);
        m_bench->passSeconds(2);
        service().removeOnlineSong(onlineSong(u"1"_s), playlist);
        QCOMPARE(m_bench->now(playlist).onlineSongs, QList{onlineSong(u"1"_s, MusicPlatform::qq)});
        QCOMPARE(m_bench->now(playlist).updatedAt, m_bench->machine.clock().now());
    }

    void severalOnlineSongsAreRemovedByIdAlone()
    {
        const Playlist playlist = m_bench->online();
        service().addOnlineSongs({onlineSong(u"1"_s), onlineSong(u"1"_s, MusicPlatform::qq),
                                  onlineSong(u"2"_s), onlineSong(u"3"_s)},
                                 playlist);
        settle();
        const int writes = m_bench->machine.preferences().writes();
        service().removeOnlineSongs({onlineSong(u"1"_s, MusicPlatform::kuwo), onlineSong(u"3"_s)}, playlist);
        settle();
        QCOMPARE(m_bench->now(playlist).onlineSongs, QList{onlineSong(u"2"_s)});
        QCOMPARE(m_bench->machine.preferences().writes(), writes + 1);
    }

    void aHeartIsToggled()
    {
        const QSignalSpy changes(&service(), &PlaylistService::changed);
        QVERIFY(!service().isFavorite(song(u"a"_s)));
        service().toggleFavorite(song(u"a"_s));
        QVERIFY(service().isFavorite(song(u"a"_s)));
        QVERIFY(!service().isFavorite(song(u"b"_s)));
        service().toggleFavorite(song(u"b"_s));
        QCOMPARE(favorites().songIds, QStringList({u"a"_s, u"b"_s}));
        service().toggleFavorite(song(u"a"_s));
        QVERIFY(!service().isFavorite(song(u"a"_s)) && service().isFavorite(song(u"b"_s)));
        QCOMPARE(changes.size(), 3);
    }

    void theHeartOfAnOnlineSongIsToggled()
    {
        service().toggleFavorite(onlineSong(u"1"_s));
        QVERIFY(service().isFavorite(onlineSong(u"1"_s)));
        QVERIFY(!service().isFavorite(onlineSong(u"1"_s, MusicPlatform::qq)));
        QVERIFY(!service().isFavorite(song(u"1"_s)));
        service().toggleFavorite(onlineSong(u"1"_s, MusicPlatform::qq));
        service().toggleFavorite(onlineSong(u"1"_s));
        QCOMPARE(service().favoritesOnlinePlaylist()->onlineSongs,
                 QList{onlineSong(u"1"_s, MusicPlatform::qq)});
    }

    void favouritesFollowEveryWayOfChange()
    {
        service().addSongs({song(u"a"_s), song(u"b"_s)}, favorites());
        QVERIFY(service().isFavorite(song(u"a"_s)));
        Playlist swapped = favorites();
        swapped.songIds = {u"c"_s, u"b"_s};
        service().updatePlaylist(swapped);
        QVERIFY(!service().isFavorite(song(u"a"_s)) && service().isFavorite(song(u"c"_s)));
        swapped.songIds[0] = u"d"_s;
        service().updatePlaylist(swapped);
        QVERIFY(!service().isFavorite(song(u"c"_s)) && service().isFavorite(song(u"d"_s)));
        service().removeSongsByIds({u"d"_s, u"b"_s}, favorites());
        QVERIFY(!service().isFavorite(song(u"d"_s)) && !service().isFavorite(song(u"b"_s)));
    }

    void membershipIsAskedOfThePlaylistGiven()
    {
        Playlist playlist;
        playlist.songIds = {u"a"_s};
        playlist.onlineSongs = {onlineSong(u"1"_s)};
        QVERIFY(PlaylistService::isSongInPlaylist(song(u"a"_s), playlist));
        QVERIFY(!PlaylistService::isSongInPlaylist(song(u"1"_s), playlist));
        QVERIFY(PlaylistService::isOnlineSongInPlaylist(onlineSong(u"1"_s), playlist));
        QVERIFY(!PlaylistService::isOnlineSongInPlaylist(onlineSong(u"1"_s, MusicPlatform::kuwo), playlist));
    }

    void songsAreResolvedInTheOrderOfThePlaylist()
    {
        Playlist playlist;
        playlist.songIds = {u"c"_s, u"gone"_s, u"a"_s, u"c"_s};
        const QList<Song> all{song(u"a"_s), PlaylistBench::song(u"c"_s, u"第一"_s), song(u"b"_s),
                              PlaylistBench::song(u"c"_s, u"第二"_s)};
        const QList<Song> songs = PlaylistService::getSongs(playlist, all);
        QCOMPARE(songs, QList({song(u"c"_s), song(u"a"_s), song(u"c"_s)}));
        QCOMPARE(songs.first().title(), u"第一"_s);
        QCOMPARE(songs.last().title(), u"第一"_s);
        QCOMPARE(playlist.songCount(), 4);

        playlist.type = PlaylistType::online;
        QVERIFY(PlaylistService::getSongs(playlist, all).isEmpty());
        QVERIFY(PlaylistService::getSongs(Playlist(), all).isEmpty());
        playlist.type = PlaylistType::local;
        QVERIFY(PlaylistService::getSongs(playlist, QList<Song>()).isEmpty());
    }

    void manySongsAreAllResolved()
    {
        constexpr int count = 20'000;
        Playlist playlist;
        QList<Song> all;
        QList<Song> expected;
        for (int number = 0; number < count; ++number) {
            all.append(song(QString::number(number)));
            if (number % 3 == 0) {
                playlist.songIds.prepend(all.last().id());
                expected.prepend(all.last());
            }
        }
        QCOMPARE(PlaylistService::getSongs(playlist, all), expected);
    }

    void theSystemLibraryComesBeforeTheImportedSongs()
    {
        m_bench.reset();
        m_bench = std::make_unique<PlaylistBench>();
        const Song imported = m_bench->machine.addImportedSong(u"a.mp3"_s, u"导入的"_s);
        const Song shadowed = m_bench->machine.addImportedSong(u"b.mp3"_s, u"被遮住的"_s);
        LocalMusicImportService importService(m_bench->machine.platform);
        PlaylistService playlists(m_bench->machine.platform, importService);
        FakeMediaLibrarySource library;
        library.songList = {song(u"system"_s), PlaylistBench::song(shadowed.id(), u"系统的"_s)};
        Playlist playlist;
        playlist.songIds = {imported.id(), u"system"_s, shadowed.id(), u"gone"_s};

        QStringList titles;
        for (const Song &found : playlists.getSongs(playlist, &library))
            titles.append(found.title());
        QCOMPARE(titles, QStringList({u"导入的"_s, u"歌"_s, u"系统的"_s}));
        QCOMPARE(playlists.getSongs(playlist, nullptr), QList({imported, shadowed}));
        playlist.type = PlaylistType::online;
        QVERIFY(playlists.getSongs(playlist, &library).isEmpty());
    }

    void aListenerToChangesMayChangePlaylistsItself()
    {
        const Playlist playlist = m_bench->local();
        bool isFirst = true;
        connect(&service(), &PlaylistService::changed, &service(), [&] {
            if (std::exchange(isFirst, false))
                service().deletePlaylist(playlist);
        });
        service().addSong(song(u"a"_s), playlist);
        QVERIFY(!service().playlist(playlist.id));
    }
};

QTEST_GUILESS_MAIN(TestPlaylistService)
#include "tst_playlist_service.moc"
