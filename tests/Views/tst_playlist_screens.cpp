// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/FilePickerModel.h"
#include "Views/PlaylistScreenTest.h"

#include <QPointingDevice>

using namespace cadorel;
using namespace Qt::StringLiterals;

class PlaylistScreensTest : public PlaylistScreenTest
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
    void deletionIsAsked();
    void favouritesOfferNoDelete();
    void playlistDeletedElsewhereIsMissing();
    void listWorksByKeyboard();
    void pageIsLeftByEveryWayBack_data();
    void pageIsLeftByEveryWayBack();
    void rowOpensByTouchAndHoldOpensTheMenu();

private:
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
    QVERIFY(showInLook());
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

void PlaylistScreensTest::playlistDeletedElsewhereIsMissing()
{
    QVERIFY(showLibrary(2));
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

void PlaylistScreensTest::listWorksByKeyboard()
{
    QVERIFY(t->show());
    const Playlist playlist = addLocal(u"甲"_s);
    QTest::keyClick(t->window, Qt::Key_2, Qt::ControlModifier);
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

QTEST_MAIN(PlaylistScreensTest)
#include "tst_playlist_screens.moc"
