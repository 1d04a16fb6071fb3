// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeFilePicker.h"
#include "Services/LocalMusicImportService.h"
#include "Services/PlaylistService.h"
#include "ViewModels/FilePickerModel.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/PlaylistEditorViewModel.h"
#include "ViewModels/PlaylistListModel.h"
#include "ViewModels/PlaylistPageViewModel.h"
#include "ViewModels/PlaylistPickerViewModel.h"
#include "ViewModels/PlaylistsViewModel.h"
#include "ViewModels/SongListModel.h"
#include "Views/ScreenTest.h"

#include <QAccessible>
#include <QPointingDevice>

using namespace cadorel;
using namespace Qt::StringLiterals;

class PlaylistScreensTest : public ScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void everyStateComesUp_data();
    void everyStateComesUp();
    void createsAPlaylist();
    void returnKeyCreates();
    void namesWithoutATextCannotBeCreated();
    void escapeLeavesTheSheet();
    void kindIsChosenByKeyboard();
    void renamesFromTheRow();
    void renamesFromThePage();
    void coverIsSetAndRemoved();
    void ownDialogTakesOnePicture();
    void badPictureIsSaid();
    void songOfTheLibraryIsAdded();
    void songOfTheLibraryGoesIntoANewPlaylist();
    void onlineSongIsAdded();
    void songIsRemovedFromItsPlaylist();
    void deletionIsAsked();
    void favouritesOfferNoDelete();
    void heartIsSetAndTakenAway();
    void heartIsSaidToAScreenReader();
    void playlistDeletedElsewhereIsMissing();
    void pagePlaysAllAndItsRows();
    void onlinePagePlays();
    void listWorksByKeyboard();
    void pageIsLeftByEveryWayBack_data();
    void pageIsLeftByEveryWayBack();
    void rowOpensByTouchAndHoldOpensTheMenu();
    void pickerWorksByKeyboard();
    void emptyPickerOffersANewPlaylist();

private:
    void openTab()
    {
        t->click(u"playlistsTab"_s);
        QTRY_VERIFY(t->shows(u"playlistList"_s));
    }
    void openPage(const QString &id)
    {
        t->playlists->openPlaylist(id);
        QTRY_VERIFY(t->item(u"playlistPage"_s)->property("covers").toBool());
    }
    bool isOpen(const QString &popup) const
    {
        const QObject *found = t->object(popup);
        return found && found->property("opened").toBool();
    }
    bool isGone(const QString &popup) const
    {
        const QObject *found = t->object(popup);
        return !found || !found->property("visible").toBool();
    }
    QQuickItem *rowOf(const QString &list, int index) const
    {
        QQuickItem *found = nullptr;
        QMetaObject::invokeMethod(t->item(list), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, found),
                                  Q_ARG(int, index));
        return found;
    }
    QQuickItem *playlistRow(const QString &id) const
    {
        return rowOf(u"playlistList"_s, t->playlists->playlists()->rowOf(id));
    }
    QQuickItem *songRow(int index) const { return rowOf(u"playlistSongList"_s, index); }
    QQuickItem *onlineRow(int index) const { return rowOf(u"playlistOnlineSongList"_s, index); }
    QString textOf(const QString &name) const { return t->item(name)->property("text").toString(); }
    void type(const QString &text) const
    {
        for (const uint c : text.toUcs4()) {
            const QString letter = QString::fromUcs4(reinterpret_cast<const char32_t *>(&c), 1);
            QTest::sendKeyEvent(QTest::Click, t->window, Qt::Key_unknown, letter, {});
        }
    }
    /// Opens the menu of a row with the right button.
    void openMenu(QQuickItem *row, const QString &menu)
    {
        QVERIFY(row);
        t->click(row, Qt::RightButton);
        QTRY_VERIFY(isOpen(menu));
    }
    /// Clicks an entry of the open menu, once it stands where it belongs: which ones there are changes with
    /// the row.
    void choose(const QString &entry) const
    {
        QVERIFY(!t->window->grabWindow().isNull());
        QVERIFY2(t->shows(entry), qPrintable(entry));
        t->click(entry);
    }
    Playlist addLocal(const QString &name, const QList<Song> &songs = {}) const
    {
        const Playlist playlist = t->playlistService->createPlaylist(name, {}, PlaylistType::local);
        t->playlistService->addSongs(songs, playlist);
        return playlist;
    }
    static OnlineSong onlineSong(const QString &id)
    {
        OnlineSong song;
        song.id = id;
        song.name = u"在线 "_s + id;
        song.artist = u"歌手"_s;
        return song;
    }
    Playlist addOnline(const QString &name, const QList<OnlineSong> &songs = {}) const
    {
        const Playlist playlist = t->playlistService->createPlaylist(name, {}, PlaylistType::online);
        t->playlistService->addOnlineSongs(songs, playlist);
        return playlist;
    }
    Playlist stored(const Playlist &playlist) const
    {
        return t->playlistService->playlist(playlist.id).value_or(Playlist());
    }
    QList<Song> songs() const { return t->importService->importedSongs(); }
    QUrl pictureFile(const QString &name, const QByteArray &bytes) const
    {
        QDir().mkpath(t->home.filePath(u"Pictures"_s));
        QFile file(t->home.filePath(u"Pictures/"_s + name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write a picture");
        return QUrl::fromLocalFile(file.fileName());
    }
    /// The desktop has a dialog, in which the listener chooses this.
    void answerDialogs(const QList<QUrl> &urls)
    {
        auto picker = std::make_unique<FakeFilePicker>();
        picker->answer = urls;
        t->platform.filePicker = std::move(picker);
    }

    QPointingDevice *m_touch = QTest::createTouchDevice();
};

void PlaylistScreensTest::everyStateComesUp_data()
{
    addLooks();
}

void PlaylistScreensTest::everyStateComesUp()
{
    for (int i = 0; i < 3; ++i)
        t->addFile(u"%1.mp3"_s.arg(i), {u"歌 %1"_s.arg(i), u"歌手"_s, u"专辑"_s, 100, {}});
    QVERIFY(t->scan());
    const QString endless = u"很长的名字😀"_s.repeated(60);
    const Playlist named = addLocal(endless, songs());
    const Playlist markup = addOnline(u"<h1>不是标题</h1>"_s, {onlineSong(u"1"_s)});
    const Playlist empty = addLocal(u"   "_s);
    t->playlistService->toggleFavorite(songs().constFirst());
    showInLook();
    check(u"library with a favourite"_s);
    openMenu(t->row(1), u"songMenu"_s);
    check(u"song menu"_s);
    choose(u"addToPlaylistItem"_s);
    QTRY_VERIFY(isOpen(u"playlistPickerSheet"_s));
    check(u"picker"_s);
    t->click(u"pickerCreatePlaylist"_s);
    QTRY_VERIFY(isOpen(u"createPlaylistSheet"_s));
    check(u"new playlist of the picker"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"createPlaylistSheet"_s));
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"playlistPickerSheet"_s));

    openTab();
    check(u"list"_s);
    t->click(u"createPlaylistButton"_s);
    QTRY_VERIFY(isOpen(u"createPlaylistSheet"_s));
    check(u"new playlist"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"createPlaylistSheet"_s));
    for (const Playlist &playlist : {named, markup, empty}) {
        openPage(playlist.id);
        check(u"page"_s);
        t->click(u"playlistPageMore"_s);
        QTRY_VERIFY(isOpen(u"playlistPageMenu"_s));
        check(u"page menu"_s);
        choose(u"renameItem"_s);
        QTRY_VERIFY(isOpen(u"renameSheet"_s));
        check(u"rename"_s);
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(isGone(u"renameSheet"_s));
    }
    t->playlists->editor()->takeCover({QUrl(u"https://pic.example/"_s + endless)});
    QTRY_VERIFY(t->shows(u"pageCoverBanner"_s));
    check(u"page with a banner"_s);
    t->playlistService->deletePlaylist(empty);
    QTRY_VERIFY(t->shows(u"playlistMissing"_s));
    check(u"missing"_s);
    t->playlists->page()->close();
    QTRY_VERIFY(t->shows(u"playlistList"_s) && !t->shows(u"playlistPage"_s));
    check(u"list with a banner"_s);
    t->playlists->editor()->askToDelete(named.id);
    QTRY_VERIFY(isOpen(u"deletePlaylistDialog"_s));
    check(u"delete dialog"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"deletePlaylistDialog"_s));
    for (const Playlist &playlist : QList<Playlist>(t->playlistService->playlists()))
        t->playlistService->deletePlaylist(playlist);
    QTRY_VERIFY(t->shows(u"playlistsEmpty"_s));
    check(u"no playlists"_s);
}

void PlaylistScreensTest::createsAPlaylist()
{
    QVERIFY(t->show());
    openTab();
    t->click(u"createPlaylistButton"_s);
    QTRY_VERIFY(isOpen(u"createPlaylistSheet"_s));
    QTRY_VERIFY(t->item(u"playlistNameFieldText"_s)->hasActiveFocus());
    type(u"开车听 🚗"_s);
    t->click(u"playlistTypePicker1"_s);
    t->click(u"createAccept"_s);
    QTRY_VERIFY(isGone(u"createPlaylistSheet"_s));
    const Playlist made = t->playlistService->playlists().constLast();
    QCOMPARE(made.name, u"开车听 🚗"_s);
    QCOMPARE(made.type, PlaylistType::online);
    QTRY_VERIFY(playlistRow(made.id));
    QCOMPARE(playlistRow(made.id)->property("name").toString(), u"开车听 🚗"_s);
    QCOMPARE(playlistRow(made.id)->property("kindText").toString(), u"在线"_s);
}

void PlaylistScreensTest::returnKeyCreates()
{
    QVERIFY(t->show());
    openTab();
    t->click(u"createPlaylistButton"_s);
    QTRY_VERIFY(t->item(u"playlistNameFieldText"_s)->hasActiveFocus());
    type(u"夜里"_s);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(isGone(u"createPlaylistSheet"_s));
    QCOMPARE(t->playlistService->playlists().constLast().name, u"夜里"_s);
    QCOMPARE(t->playlistService->playlists().constLast().type, PlaylistType::local);
    QCOMPARE(t->playlistService->playlists().size(), 3);
}

void PlaylistScreensTest::namesWithoutATextCannotBeCreated()
{
    QVERIFY(t->show());
    openTab();
    t->click(u"createPlaylistButton"_s);
    QTRY_VERIFY(t->item(u"playlistNameFieldText"_s)->hasActiveFocus());
    QVERIFY(!t->item(u"createAccept"_s)->isEnabled());
    QTest::keyClick(t->window, Qt::Key_Return);
    QVERIFY(isOpen(u"createPlaylistSheet"_s));
    type(u"  "_s);
    QVERIFY(t->item(u"createAccept"_s)->isEnabled());
    t->click(u"createAccept"_s);
    QTRY_COMPARE(t->playlistService->playlists().constLast().name, u"  "_s);
    const QString id = t->playlistService->playlists().constLast().id;
    QTRY_VERIFY(playlistRow(id));
    QCOMPARE(playlistRow(id)->property("name").toString(), u"未命名歌单"_s);
}

void PlaylistScreensTest::escapeLeavesTheSheet()
{
    QVERIFY(t->show());
    openTab();
    t->click(u"createPlaylistButton"_s);
    QTRY_VERIFY(t->item(u"playlistNameFieldText"_s)->hasActiveFocus());
    type(u"不要"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"createPlaylistSheet"_s));
    QCOMPARE(t->playlistService->playlists().size(), 2);
    t->click(u"createPlaylistButton"_s);
    QTRY_VERIFY(isOpen(u"createPlaylistSheet"_s));
    QCOMPARE(textOf(u"playlistNameFieldText"_s), QString());
    t->click(u"createCancel"_s);
    QTRY_VERIFY(isGone(u"createPlaylistSheet"_s));
}

void PlaylistScreensTest::kindIsChosenByKeyboard()
{
    QVERIFY(t->show());
    openTab();
    t->click(u"createPlaylistButton"_s);
    QTRY_VERIFY(t->item(u"playlistNameFieldText"_s)->hasActiveFocus());
    type(u"a"_s);
    QTest::keyClick(t->window, Qt::Key_Tab);
    QTest::keyClick(t->window, Qt::Key_Right);
    QTest::keyClick(t->window, Qt::Key_Return);
    QCOMPARE(t->playlists->editor()->selectedType(), PlaylistEditorViewModel::Kind::Online);
    QTest::keyClick(t->window, Qt::Key_Left);
    QTest::keyClick(t->window, Qt::Key_Space);
    QCOMPARE(t->playlists->editor()->selectedType(), PlaylistEditorViewModel::Kind::Local);
}

void PlaylistScreensTest::renamesFromTheRow()
{
    QVERIFY(t->show());
    const Playlist playlist = addLocal(u"旧名"_s);
    openTab();
    QTRY_VERIFY(playlistRow(playlist.id));
    t->click(playlistRow(playlist.id)->findChild<QQuickItem *>(u"playlistMore"_s));
    QTRY_VERIFY(isOpen(u"playlistMenu"_s));
    choose(u"renameItem"_s);
    QTRY_VERIFY(t->item(u"renameFieldText"_s)->hasActiveFocus());
    QCOMPARE(textOf(u"renameFieldText"_s), u"旧名"_s);
    // The old name stands marked, to be typed over.
    type(u"新名"_s);
    t->click(u"renameAccept"_s);
    QTRY_VERIFY(isGone(u"renameSheet"_s));
    QCOMPARE(stored(playlist).name, u"新名"_s);
    QTRY_COMPARE(playlistRow(playlist.id)->property("name").toString(), u"新名"_s);
}

void PlaylistScreensTest::renamesFromThePage()
{
    QVERIFY(t->show());
    const Playlist playlist = addLocal(u"旧名"_s);
    openTab();
    openPage(playlist.id);
    t->click(u"playlistPageMore"_s);
    QTRY_VERIFY(isOpen(u"playlistPageMenu"_s));
    choose(u"renameItem"_s);
    QTRY_VERIFY(t->item(u"renameFieldText"_s)->hasActiveFocus());
    type(u"新名"_s);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_COMPARE(
        t->item(u"playlistPage"_s)->findChild<QQuickItem *>(u"pageTitle"_s)->property("text").toString(),
        u"新名"_s);
}

void PlaylistScreensTest::coverIsSetAndRemoved()
{
    QVERIFY(t->show());
    const Playlist playlist = addLocal(u"甲"_s);
    answerDialogs({pictureFile(u"c.jpg"_s, TestWindow::picture(Qt::red, Qt::blue))});
    openTab();
    QTRY_VERIFY(playlistRow(playlist.id));
    openMenu(playlistRow(playlist.id), u"playlistMenu"_s);
    QCOMPARE(textOf(u"coverItem"_s), u"添加封面"_s);
    choose(u"coverItem"_s);
    QTRY_VERIFY(playlistRow(playlist.id)->property("hasCover").toBool());
    QVERIFY(!playlistRow(playlist.id)->findChild<QQuickItem *>(u"defaultCover"_s)->isVisible());

    // Changed on the page, it changes in the list.
    const QString before = playlistRow(playlist.id)->property("coverSource").toString();
    answerDialogs({pictureFile(u"d.jpg"_s, TestWindow::picture(Qt::green, Qt::black))});
    openPage(playlist.id);
    t->click(u"playlistPageMore"_s);
    QTRY_VERIFY(isOpen(u"playlistPageMenu"_s));
    QCOMPARE(textOf(u"coverItem"_s), u"更换封面"_s);
    choose(u"coverItem"_s);
    QTRY_VERIFY(playlistRow(playlist.id)->property("coverSource").toString() != before);
    QTRY_VERIFY(isGone(u"playlistPageMenu"_s));

    t->click(u"playlistPageMore"_s);
    QTRY_VERIFY(isOpen(u"playlistPageMenu"_s));
    choose(u"removeCoverItem"_s);
    QTRY_VERIFY(!playlistRow(playlist.id)->property("hasCover").toBool());
    QVERIFY(!stored(playlist).coverImageData);
    QTRY_VERIFY(t->item(u"playlistPageCover"_s)->findChild<QQuickItem *>(u"defaultCover"_s)->isVisible());
}

void PlaylistScreensTest::ownDialogTakesOnePicture()
{
    QVERIFY(t->show());
    const Playlist playlist = addLocal(u"甲"_s);
    pictureFile(u"1.jpg"_s, TestWindow::picture(Qt::red, Qt::blue));
    pictureFile(u"2.png"_s, "not a picture");
    pictureFile(u"3.mp3"_s, "no picture at all");
    openTab();
    QTRY_VERIFY(playlistRow(playlist.id));
    openMenu(playlistRow(playlist.id), u"playlistMenu"_s);
    choose(u"coverItem"_s);
    QTRY_VERIFY(isOpen(u"pictureSheet"_s));
    auto *files = t->window->findChild<FilePickerModel *>(u"pictureSheetFiles"_s);
    files->open(t->home.filePath(u"Pictures"_s));
    QTRY_COMPARE(files->folderName(), u"Pictures"_s);
    // Pictures only.
    QTRY_COMPARE(files->count(), 2);
    QQuickItem *list = t->item(u"pickerList"_s);
    const auto fileRow = [list](int index) {
        QQuickItem *found = nullptr;
        QMetaObject::invokeMethod(list, "itemAtIndex", Q_RETURN_ARG(QQuickItem *, found), Q_ARG(int, index));
        return found;
    };
    QTRY_VERIFY(fileRow(1));
    QVERIFY(!t->item(u"pickerAccept"_s)->isEnabled());
    t->click(fileRow(1));
    t->click(fileRow(0));
    QCOMPARE(files->selectedCount(), 1);
    QCOMPARE(textOf(u"pickerAccept"_s), u"用作封面"_s);
    t->click(u"pickerAccept"_s);
    QTRY_VERIFY(stored(playlist).coverImageData);
    QTRY_VERIFY(isGone(u"pictureSheet"_s));
}

void PlaylistScreensTest::badPictureIsSaid()
{
    QVERIFY(t->show());
    const Playlist playlist = addLocal(u"甲"_s);
    answerDialogs({pictureFile(u"坏.png"_s, "not a picture")});
    openTab();
    QTRY_VERIFY(playlistRow(playlist.id));
    openMenu(playlistRow(playlist.id), u"playlistMenu"_s);
    choose(u"coverItem"_s);
    QTRY_VERIFY(t->shows(u"coverBanner"_s));
    QVERIFY(t->item(u"coverBanner"_s)->property("text").toString().contains(u"坏.png"_s));
    QVERIFY(!stored(playlist).coverImageData);
    t->click(t->item(u"coverBanner"_s)->findChild<QQuickItem *>(u"dismissButton"_s));
    QTRY_VERIFY(!t->shows(u"coverBanner"_s));
}

void PlaylistScreensTest::songOfTheLibraryIsAdded()
{
    const Playlist playlist = addLocal(u"甲"_s);
    addOnline(u"网上的"_s);
    showLibrary();
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

void PlaylistScreensTest::songOfTheLibraryGoesIntoANewPlaylist()
{
    showLibrary();
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

void PlaylistScreensTest::onlineSongIsAdded()
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

void PlaylistScreensTest::songIsRemovedFromItsPlaylist()
{
    showLibrary(3);
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

void PlaylistScreensTest::deletionIsAsked()
{
    QVERIFY(t->show());
    const Playlist playlist = addLocal(u"甲"_s);
    openTab();
    QTRY_VERIFY(playlistRow(playlist.id));
    const auto ask = [this, &playlist] {
        openMenu(playlistRow(playlist.id), u"playlistMenu"_s);
        choose(u"deletePlaylistItem"_s);
        QTRY_VERIFY(isOpen(u"deletePlaylistDialog"_s));
    };
    ask();
    QCOMPARE(textOf(u"dialogMessage"_s), u"确定删除“甲”吗？此操作不可撤销。"_s);
    t->click(u"cancelButton"_s);
    QTRY_VERIFY(isGone(u"deletePlaylistDialog"_s));
    QVERIFY(t->playlistService->playlist(playlist.id));
    ask();
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"deletePlaylistDialog"_s));
    QVERIFY(t->playlistService->playlist(playlist.id));
    ask();
    t->click(u"acceptButton"_s);
    QTRY_VERIFY(!t->playlistService->playlist(playlist.id));
    QTRY_COMPARE(t->item(u"playlistList"_s)->property("count").toInt(), 2);
    QTRY_VERIFY(isGone(u"deletePlaylistDialog"_s));
}

void PlaylistScreensTest::favouritesOfferNoDelete()
{
    QVERIFY(t->show());
    openTab();
    for (int row = 0; row < 2; ++row) {
        QTRY_VERIFY(rowOf(u"playlistList"_s, row));
        openMenu(rowOf(u"playlistList"_s, row), u"playlistMenu"_s);
        QVERIFY(t->shows(u"renameItem"_s));
        QVERIFY(t->shows(u"coverItem"_s));
        QVERIFY(!t->shows(u"deletePlaylistItem"_s));
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(isGone(u"playlistMenu"_s));
        QTest::keyClick(t->window, Qt::Key_Delete);
        QVERIFY(isGone(u"deletePlaylistDialog"_s));
    }
}

void PlaylistScreensTest::heartIsSetAndTakenAway()
{
    showLibrary();
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

void PlaylistScreensTest::heartIsSaidToAScreenReader()
{
    showLibrary();
    t->playlistService->toggleFavorite(songs().at(1));
    QAccessibleInterface *row = QAccessible::queryAccessibleInterface(t->row(1));
    QVERIFY(row);
    QTRY_COMPARE(row->text(QAccessible::Name), u"歌 1，歌手 · 专辑，3:21，已喜欢"_s);
}

void PlaylistScreensTest::playlistDeletedElsewhereIsMissing()
{
    showLibrary(2);
    const Playlist playlist = addLocal(u"甲"_s, songs());
    openTab();
    openPage(playlist.id);
    QVERIFY(!t->shows(u"playlistMissing"_s));
    t->playlistService->deletePlaylist(playlist);
    QTRY_VERIFY(t->shows(u"playlistMissing"_s));
    QVERIFY(!t->shows(u"playAllButton"_s));
    QVERIFY(!t->shows(u"playlistPageMore"_s));
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(t->shows(u"playlistList"_s));
}

void PlaylistScreensTest::pagePlaysAllAndItsRows()
{
    showLibrary(4);
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

void PlaylistScreensTest::onlinePagePlays()
{
    showLibrary(2);
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

void PlaylistScreensTest::listWorksByKeyboard()
{
    QVERIFY(t->show());
    const Playlist playlist = addLocal(u"甲"_s);
    QTest::keyClick(t->window, Qt::Key_3, Qt::ControlModifier);
    QTRY_VERIFY(t->shows(u"playlistList"_s));
    QTRY_VERIFY(t->item(u"playlistList"_s)->hasActiveFocus());
    QTRY_VERIFY(playlistRow(playlist.id));
    QTest::keyClick(t->window, Qt::Key_End);
    QVERIFY(playlistRow(playlist.id)->property("showsFocus").toBool());
    QTest::keyClick(t->window, Qt::Key_Menu);
    QTRY_VERIFY(isOpen(u"playlistMenu"_s));
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"playlistMenu"_s));
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(t->item(u"playlistPage"_s)->property("covers").toBool());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(t->shows(u"playlistList"_s) && !t->shows(u"playlistPage"_s));
    QTRY_VERIFY(t->item(u"playlistList"_s)->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_Delete);
    QTRY_VERIFY(isOpen(u"deletePlaylistDialog"_s));
    QTest::keyClick(t->window, Qt::Key_Tab);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(!t->playlistService->playlist(playlist.id));
    QTRY_VERIFY(isGone(u"deletePlaylistDialog"_s));
}

void PlaylistScreensTest::pageIsLeftByEveryWayBack_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("button") << 0;
    QTest::newRow("back key") << 1;
    QTest::newRow("mouse") << 2;
}

void PlaylistScreensTest::pageIsLeftByEveryWayBack()
{
    QFETCH(const int, way);
    QVERIFY(t->show());
    openTab();
    openPage(PlaylistService::favoritesPlaylistId);
    QVERIFY(!t->shows(u"playlistList"_s));
    switch (way) {
    case 0:
        t->click(t->item(u"playlistPage"_s)->findChild<QQuickItem *>(u"backButton"_s));
        break;
    case 1:
        QTest::keyClick(t->window, Qt::Key_Back);
        break;
    default:
        QTest::mouseClick(t->window, Qt::BackButton, {}, QPoint(200, 600));
    }
    QTRY_VERIFY(!t->shows(u"playlistPage"_s));
    QVERIFY(t->shows(u"playlistList"_s));
}

void PlaylistScreensTest::rowOpensByTouchAndHoldOpensTheMenu()
{
    QVERIFY(t->show());
    const Playlist playlist = addLocal(u"甲"_s);
    openTab();
    QTRY_VERIFY(playlistRow(playlist.id));
    const QPoint place = TestWindow::centre(playlistRow(playlist.id));
    QTest::touchEvent(t->window, m_touch).press(0, place, t->window);
    QTRY_VERIFY(isOpen(u"playlistMenu"_s));
    QTest::touchEvent(t->window, m_touch).release(0, place, t->window);
    QVERIFY(!t->playlists->page()->isOpen());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"playlistMenu"_s));
    QTest::touchEvent(t->window, m_touch).press(0, place, t->window);
    QTest::touchEvent(t->window, m_touch).release(0, place, t->window);
    QTRY_VERIFY(t->item(u"playlistPage"_s)->property("covers").toBool());
    QCOMPARE(t->playlists->page()->playlistId(), playlist.id);
}

void PlaylistScreensTest::pickerWorksByKeyboard()
{
    const Playlist playlist = addLocal(u"甲"_s);
    showLibrary(2);
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

void PlaylistScreensTest::emptyPickerOffersANewPlaylist()
{
    showLibrary(2);
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

QTEST_MAIN(PlaylistScreensTest)
#include "tst_playlist_screens.moc"
