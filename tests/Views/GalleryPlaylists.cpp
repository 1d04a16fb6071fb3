// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/LocalMusicImportService.h"
#include "Services/PlaylistService.h"
#include "Utils/Tasks.h"
#include "ViewModels/PlaylistEditorViewModel.h"
#include "ViewModels/PlaylistPageViewModel.h"
#include "ViewModels/PlaylistsViewModel.h"
#include "Views/Gallery.h"

namespace cadorel::gallery {

namespace {

OnlineSong onlineSong(const QString &id, const QString &name, MusicPlatform platform = MusicPlatform::netease)
{
    OnlineSong song;
    song.id = id;
    song.name = name;
    song.artist = u"林间小队"_s;
    song.album = u"远岸"_s;
    song.platform = platform;
    return song;
}

} // namespace

void playlistStates(const Gallery &gallery)
{
    TestWindow test;
    addSongs(test);
    if (!test.scan())
        qFatal("the songs are not taken up");
    PlaylistService &service = *test.playlistService;
    const QList<Song> songs = test.importService->importedSongs();
    for (int i = 0; i < 12; i += 3)
        service.toggleFavorite(songs.at(i));
    for (int i = 0; i < 6; ++i)
        service.toggleFavorite(onlineSong(QString::number(i), u"在线的歌 %1"_s.arg(i)));
    const Playlist drive = service.createPlaylist(u"开车听"_s, {}, PlaylistType::local);
    service.addSongs(songs, drive);
    const Playlist covered = service.createPlaylist(u"🌙 深夜 ✨"_s, {}, PlaylistType::local);
    service.addSongs(songs.mid(2, 3), covered);
    detach(service.setCoverImage(QImage::fromData(TestWindow::picture(0x22223b, 0xff6d5a)), covered));
    await([&] { return service.playlist(covered.id)->coverImageData.has_value(); });
    const Playlist endless =
        service.createPlaylist(u"名字很长的歌单"_s.repeated(43), {}, PlaylistType::online);
    service.addOnlineSong(onlineSong(u"1"_s, u"甲"_s), endless);
    service.addOnlineSong(onlineSong(u"1"_s, u"乙"_s, MusicPlatform::qq), endless);
    const Playlist empty = service.createPlaylist(u"   "_s, {}, PlaylistType::local);
    SongFields elsewhere;
    elsewhere.id = u"somewhere else"_s;
    service.addSong(Song(elsewhere), drive);
    gallery.show(test);
    gallery.save(test, u"favorites-in-library"_s);
    test.click(test.row(3), Qt::RightButton);
    gallery.save(test, u"song-menu"_s);
    test.click(u"addToPlaylistItem"_s);
    gallery.save(test, u"playlist-picker"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();

    test.click(u"playlistsTab"_s);
    gallery.save(test, u"playlists"_s);
    test.item(u"playlistList"_s)->forceActiveFocus();
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(test.window, Qt::Key_Down);
    QTest::keyClick(test.window, Qt::Key_Menu);
    gallery.save(test, u"playlist-menu"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    QTest::keyClick(test.window, Qt::Key_Delete);
    gallery.save(test, u"playlist-delete"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    test.playlists->editor()->beginRename(drive.id);
    gallery.save(test, u"playlist-rename"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    test.click(u"createPlaylistButton"_s);
    gallery.save(test, u"playlist-create"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    Q_EMIT test.playlists->editor()->ownPictureDialogRequested();
    gallery.save(test, u"playlist-picture"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    test.playlists->editor()->takeCover({QUrl::fromLocalFile(songs.constFirst().assetPath())});
    gallery.save(test, u"playlists-bad-cover"_s);

    test.playlists->openPlaylist(drive.id);
    gallery.save(test, u"playlist-bad-cover"_s);
    test.playlists->editor()->dismissCoverNotice();
    test.playlists->page()->playSongAt(2);
    gallery.save(test, u"playlist"_s);
    test.click(u"playlistPageMore"_s);
    gallery.save(test, u"playlist-page-menu"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    test.playlists->openPlaylist(covered.id);
    gallery.save(test, u"playlist-covered"_s);
    test.playlists->openPlaylist(endless.id);
    gallery.save(test, u"playlist-online"_s);
    test.playlists->openPlaylist(empty.id);
    gallery.save(test, u"playlist-empty"_s);
    service.deletePlaylist(empty);
    gallery.save(test, u"playlist-missing"_s);
}

} // namespace cadorel::gallery
