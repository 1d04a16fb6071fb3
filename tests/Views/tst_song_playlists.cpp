// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/PlaylistScreenTest.h"

#include <QAccessible>

using namespace cadorel;
using namespace Qt::StringLiterals;

class SongPlaylistsTest : public PlaylistScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void songOfTheLibraryIsAdded();
    void songOfTheLibraryGoesIntoANewPlaylist();
    void onlineSongIsAdded();
    void songIsRemovedFromItsPlaylist();
    void heartIsSetAndTakenAway();
    void heartIsSaidToAScreenReader();
    void pagePlaysAllAndItsRows();
    void onlinePagePlays();
    void pickerWorksByKeyboard();
    void emptyPickerOffersANewPlaylist();
};

void SongPlaylistsTest::songOfTheLibraryIsAdded()
{
    const Playlist playlist = addLocal(u"甲"_s);
    addOnline(u"网上的"_s);
    QVERIFY(showLibrary());
    openMenu(t->row(3), u"songMenu"_s);
    choose(u"addToPlaylistItem"_s);
    QTRY_VERIFY(isOpen(u"playlistPickerSheet"_s));
    // The favourites and this one; none of online songs.
    QCOMPARE(t->item(u"playlistPickerList"_s)->property("count").toInt(), 2);
    t->click(rowOf(u"playlistPickerList"_s, 1));
    QTRY_VERIFY(isGone(u"playlistPickerSheet"_s));
    QCOMPARE(stored(playlist).songIds, QStringList{songs().at(3).id()});

    // Next time the picker tells that it is there already.
    openMenu(t->row(3), u"songMenu"_s);
    choose(u"addToPlaylistItem"_s);
    QTRY_VERIFY(isOpen(u"playlistPickerSheet"_s));
    QVERIFY(rowOf(u"playlistPickerList"_s, 1)->property("isMarked").toBool());
    QVERIFY(!rowOf(u"playlistPickerList"_s, 0)->property("isMarked").toBool());
    t->click(u"playlistPickerCancel"_s);
    QTRY_VERIFY(isGone(u"playlistPickerSheet"_s));
    QCOMPARE(stored(playlist).songCount(), 1);
}

void SongPlaylistsTest::songOfTheLibraryGoesIntoANewPlaylist()
{
    QVERIFY(showLibrary());
    openMenu(t->row(2), u"songMenu"_s);
    choose(u"addToPlaylistItem"_s);
    QTRY_VERIFY(isOpen(u"playlistPickerSheet"_s));
    t->click(u"pickerCreatePlaylist"_s);
    QTRY_VERIFY(t->item(u"playlistNameFieldText"_s)->hasActiveFocus());
    QVERIFY(!t->shows(u"playlistTypePicker"_s));
    type(u"新的"_s);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(isGone(u"createPlaylistSheet"_s));
    QTRY_VERIFY(isGone(u"playlistPickerSheet"_s));
    const Playlist made = t->playlistService->playlists().constLast();
    QCOMPARE(made.name, u"新的"_s);
    QCOMPARE(made.songIds, QStringList{songs().at(2).id()});
}

void SongPlaylistsTest::onlineSongIsAdded()
{
    QVERIFY(t->show());
    const Playlist from = addOnline(u"甲"_s, {onlineSong(u"1"_s), onlineSong(u"2"_s)});
    const Playlist to = addOnline(u"乙"_s);
    addLocal(u"本地的"_s);
    openTab();
    openPage(from.id);
    QTRY_VERIFY(onlineRow(1));
    openMenu(onlineRow(1), u"playlistOnlineSongListMenu"_s);
    choose(u"addToPlaylistItem"_s);
    QTRY_VERIFY(isOpen(u"playlistPickerSheet"_s));
    QCOMPARE(t->item(u"playlistPickerList"_s)->property("count").toInt(), 3);
    t->click(rowOf(u"playlistPickerList"_s, 2));
    QTRY_VERIFY(isGone(u"playlistPickerSheet"_s));
    QCOMPARE(stored(to).onlineSongs, QList<OnlineSong>{onlineSong(u"2"_s)});

    openMenu(onlineRow(0), u"playlistOnlineSongListMenu"_s);
    choose(u"favoriteItem"_s);
    QTRY_VERIFY(t->playlistService->isFavorite(onlineSong(u"1"_s)));
    QTRY_VERIFY(onlineRow(0)->property("isFavorite").toBool());
}

void SongPlaylistsTest::songIsRemovedFromItsPlaylist()
{
    QVERIFY(showLibrary(3));
    const Playlist playlist = addLocal(u"甲"_s, songs());
    openTab();
    openPage(playlist.id);
    QTRY_VERIFY(songRow(2));
    openMenu(songRow(1), u"playlistSongListMenu"_s);
    QCOMPARE(textOf(u"deleteItem"_s), u"从歌单移除"_s);
    choose(u"deleteItem"_s);
    QTRY_COMPARE(stored(playlist).songCount(), 2);
    QTRY_COMPARE(t->item(u"playlistSongList"_s)->property("count").toInt(), 2);
    QTRY_VERIFY(isGone(u"playlistSongListMenu"_s));
    // By keyboard too, and the library keeps them all.
    t->item(u"playlistSongList"_s)->forceActiveFocus();
    QTest::keyClick(t->window, Qt::Key_Home);
    QTest::keyClick(t->window, Qt::Key_Delete);
    QTRY_COMPARE(stored(playlist).songCount(), 1);
    QCOMPARE(songs().size(), 3);
    QTest::keyClick(t->window, Qt::Key_Home);
    QTest::keyClick(t->window, Qt::Key_Delete);
    QTRY_VERIFY(t->shows(u"playlistEmpty"_s));
    QVERIFY(!t->item(u"playAllButton"_s)->isEnabled());
}

void SongPlaylistsTest::heartIsSetAndTakenAway()
{
    QVERIFY(showLibrary());
    const auto heart = [this] { return t->row(3)->findChild<QQuickItem *>(u"favoriteMark"_s); };
    QVERIFY(!heart()->isVisible());
    openMenu(t->row(3), u"songMenu"_s);
    QCOMPARE(textOf(u"favoriteItem"_s), u"喜欢"_s);
    choose(u"favoriteItem"_s);
    QTRY_VERIFY(heart()->isVisible());
    QVERIFY(!t->row(2)->findChild<QQuickItem *>(u"favoriteMark"_s)->isVisible());
    QVERIFY(t->playlistService->isFavorite(songs().at(3)));
    QTRY_VERIFY(isGone(u"songMenu"_s));
    openMenu(t->row(3), u"songMenu"_s);
    QCOMPARE(textOf(u"favoriteItem"_s), u"取消喜欢"_s);
    choose(u"favoriteItem"_s);
    QTRY_VERIFY(!heart()->isVisible());
    QVERIFY(!t->playlistService->isFavorite(songs().at(3)));
}

void SongPlaylistsTest::heartIsSaidToAScreenReader()
{
    QVERIFY(showLibrary());
    t->playlistService->toggleFavorite(songs().at(1));
    QAccessibleInterface *row = QAccessible::queryAccessibleInterface(t->row(1));
    QVERIFY(row);
    QTRY_COMPARE(row->text(QAccessible::Name), u"歌 1，歌手 · 专辑，3:21，已喜欢"_s);
}

void SongPlaylistsTest::pagePlaysAllAndItsRows()
{
    QVERIFY(showLibrary(4));
    const Playlist playlist = addLocal(u"甲"_s, {songs().at(2), songs().at(0)});
    openTab();
    openPage(playlist.id);
    QTRY_VERIFY(songRow(1));
    t->click(songRow(1));
    QCOMPARE(currentTitle(), u"歌 0"_s);
    QCOMPARE(t->audioPlayer->queue().size(), 2);
    QTRY_VERIFY(songRow(1)->property("isCurrent").toBool());
    t->click(u"playAllButton"_s);
    QCOMPARE(currentTitle(), u"歌 2"_s);
    openMenu(songRow(1), u"playlistSongListMenu"_s);
    choose(u"playItem"_s);
    QTRY_COMPARE(currentTitle(), u"歌 0"_s);
}

void SongPlaylistsTest::onlinePagePlays()
{
    QVERIFY(showLibrary(2));
    const Playlist playlist = addOnline(u"甲"_s, {onlineSong(u"1"_s), onlineSong(u"2"_s)});
    const Playlist local = addLocal(u"本地的"_s, songs());
    openTab();
    // Where songs of another kind were shown before.
    openPage(local.id);
    QTRY_VERIFY(songRow(1));
    openPage(playlist.id);
    QTRY_VERIFY(onlineRow(1));
    QVERIFY(!t->shows(u"playlistSongList"_s));
    QCOMPARE(onlineRow(1)->property("title").toString(), u"在线 2"_s);
    t->click(onlineRow(1));
    QTRY_VERIFY(t->audioPlayer->currentOnlineSong());
    QCOMPARE(t->audioPlayer->currentOnlineSong()->id, u"2"_s);
    QCOMPARE(t->audioPlayer->onlineQueue().size(), 2);
    QTRY_VERIFY(t->item(u"playlistOnlineSongList"_s)->hasActiveFocus());
    openPage(local.id);
    QTRY_VERIFY(songRow(1));
    QCOMPARE(songRow(1)->property("title").toString(), u"歌 1"_s);
    QTRY_VERIFY(t->item(u"playlistSongList"_s)->hasActiveFocus());
}

void SongPlaylistsTest::pickerWorksByKeyboard()
{
    const Playlist playlist = addLocal(u"甲"_s);
    QVERIFY(showLibrary(2));
    t->item(u"songList"_s)->forceActiveFocus();
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Menu);
    QTRY_VERIFY(isOpen(u"songMenu"_s));
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(isOpen(u"playlistPickerSheet"_s));
    QTRY_VERIFY(t->item(u"playlistPickerList"_s)->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_End);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(isGone(u"playlistPickerSheet"_s));
    QCOMPARE(stored(playlist).songIds, QStringList{songs().at(0).id()});
    // The keyboard is back where it came from.
    QTRY_VERIFY(t->item(u"songList"_s)->hasActiveFocus());
}

void SongPlaylistsTest::emptyPickerOffersANewPlaylist()
{
    QVERIFY(showLibrary(2));
    t->playlistService->deletePlaylist(*t->playlistService->favoritesPlaylist());
    openMenu(t->row(0), u"songMenu"_s);
    choose(u"addToPlaylistItem"_s);
    QTRY_VERIFY(isOpen(u"playlistPickerSheet"_s));
    QVERIFY(t->shows(u"playlistPickerEmpty"_s));
    QCOMPARE(t->item(u"playlistPickerEmpty"_s)->property("title").toString(), u"没有本地歌单"_s);
    QCOMPARE(t->item(u"playlistPickerEmpty"_s)->property("description").toString(),
             u"请先创建一个本地歌单"_s);
    QVERIFY(t->shows(u"pickerCreatePlaylist"_s));
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"playlistPickerSheet"_s));
}

QTEST_MAIN(SongPlaylistsTest)
#include "tst_song_playlists.moc"
