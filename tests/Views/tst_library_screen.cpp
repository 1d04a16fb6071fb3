// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/PlaybackViewModel.h"
#include "ViewModels/SongListModel.h"
#include "Views/HeldKey.h"
#include "Views/ScreenTest.h"

#include <QAccessible>
#include <QMimeData>
#include <QPointingDevice>
#include <QSemaphore>
#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

class LibraryScreenTest : public ScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void listsTheSongs();
    void clickPlaysAndMarksTheRow();
    void touchPlaysAndLongPressOpensTheMenu();
    void dragScrollsAndPlaysNothing();
    void screenReaderPlays();
    void rightClickMenuPlays();
    void menuStaysWithItsSongWhileRowsMove_data();
    void menuStaysWithItsSongWhileRowsMove();
    void deletionIsAskedAndNamesTheSong();
    void keyboardWalksPlaysAndDeletes();
    void rowsKeepTheirPlaceWhileSongsCome();
    void emptyLibraryOffersTheImport();
    void importMenuReachesTheViewModel();
    void toolTipMakesRoomForTheMenu();
    void importUnderWayIsShown();
    void droppedFilesAreImported();
    void refusedFileIsSaidAndDismissed();
    void songThatPlaysIsLocated_data();
    void songThatPlaysIsLocated();
    void songThatIsNotThereMovesNothing();
    void heldReturnPlaysOnce();
    void aRowLeavesReturnToItsList_data();
    void aRowLeavesReturnToItsList();
    void theLastRowCanBeScrolledClearOfTheDisc();
    void aNameMakesNoShortcut();
    void theQuestionIsReadToItsEnd();

private:
    QPointingDevice *m_touch = QTest::createTouchDevice();
};

void LibraryScreenTest::listsTheSongs()
{
    QVERIFY(showLibrary());
    QCOMPARE(t->item(u"songCount"_s)->property("text").toString(), u"8 首歌曲"_s);
    QVERIFY(!t->shows(u"emptyState"_s));
    QVERIFY(!t->shows(u"importProgress"_s));
    QVERIFY(!t->shows(u"miniPlayerDisc"_s));
    QCOMPARE(t->window->title(), u"Tarnova 音乐"_s);
    QQuickItem *row = t->row(2);
    QVERIFY(row);
    QCOMPARE(row->property("title").toString(), u"歌 2"_s);
    QCOMPARE(row->height(), 64.0);
    QTRY_COMPARE(row->findChild<QQuickItem *>(u"picture"_s)->property("status").toInt(), 1);
}

void LibraryScreenTest::clickPlaysAndMarksTheRow()
{
    QVERIFY(showLibrary());
    t->click(t->row(1));
    QCOMPARE(currentTitle(), u"歌 1"_s);
    QVERIFY(t->row(1)->property("isCurrent").toBool());
    QVERIFY(t->row(1)->findChild<QQuickItem *>(u"currentMark"_s)->isVisible());
    QVERIFY(!t->row(0)->property("isCurrent").toBool());
    QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
    QCOMPARE(t->window->title(), u"歌 1"_s);
}

void LibraryScreenTest::touchPlaysAndLongPressOpensTheMenu()
{
    QVERIFY(showLibrary());
    const QPoint place = TestWindow::centre(t->row(3));
    QTest::touchEvent(t->window, m_touch).press(0, place, t->window);
    QTest::touchEvent(t->window, m_touch).release(0, place, t->window);
    QCOMPARE(currentTitle(), u"歌 3"_s);

    const QPoint other = TestWindow::centre(t->row(5));
    QTest::touchEvent(t->window, m_touch).press(0, other, t->window);
    QTRY_VERIFY(t->object(u"songMenu"_s)->property("opened").toBool());
    QTest::touchEvent(t->window, m_touch).release(0, other, t->window);
    QCOMPARE(currentTitle(), u"歌 3"_s);
    QTRY_VERIFY(t->shows(u"playItem"_s));
    t->click(u"playItem"_s);
    QTRY_COMPARE(currentTitle(), u"歌 5"_s);
}

void LibraryScreenTest::dragScrollsAndPlaysNothing()
{
    QVERIFY(showLibrary(40));
    QQuickItem *list = t->item(u"songList"_s);
    QPoint place = TestWindow::centre(t->row(6));
    QTest::touchEvent(t->window, m_touch).press(0, place, t->window);
    for (int i = 0; i < 12; ++i) {
        place.ry() -= 20;
        QTest::touchEvent(t->window, m_touch).move(0, place, t->window);
    }
    QTest::touchEvent(t->window, m_touch).release(0, place, t->window);
    QTRY_VERIFY(list->property("contentY").toReal() > 100);
    QVERIFY(!t->audioPlayer->currentSong());
}

void LibraryScreenTest::screenReaderPlays()
{
    QVERIFY(showLibrary());
    QAccessibleInterface *row = QAccessible::queryAccessibleInterface(t->row(6));
    QVERIFY(row);
    QCOMPARE(row->role(), QAccessible::ListItem);
    QCOMPARE(row->text(QAccessible::Name), u"歌 6，歌手 · 专辑，3:26"_s);
    QVERIFY(row->actionInterface());
    QVERIFY(row->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(currentTitle(), u"歌 6"_s);
}

void LibraryScreenTest::rightClickMenuPlays()
{
    QVERIFY(showLibrary());
    t->click(t->row(4), Qt::RightButton);
    QTRY_VERIFY(t->object(u"songMenu"_s)->property("opened").toBool());
    QVERIFY(!t->audioPlayer->currentSong());
    t->click(u"playItem"_s);
    QTRY_COMPARE(currentTitle(), u"歌 4"_s);
    QTRY_VERIFY(!t->object(u"songMenu"_s)->property("visible").toBool());
}

void LibraryScreenTest::menuStaysWithItsSongWhileRowsMove_data()
{
    QTest::addColumn<bool>("deletes");
    QTest::newRow("play") << false;
    QTest::newRow("delete") << true;
}

void LibraryScreenTest::menuStaysWithItsSongWhileRowsMove()
{
    QFETCH(const bool, deletes);
    QVERIFY(showLibrary());
    t->click(t->row(4), Qt::RightButton);
    QTRY_VERIFY(t->object(u"songMenu"_s)->property("opened").toBool());
    QVERIFY(QFile::remove(t->library->songs()->songs().first().assetPath()));
    QVERIFY(t->scan());
    QCOMPARE(t->library->songs()->count(), 7);

    if (!deletes) {
        t->click(u"playItem"_s);
        QTRY_COMPARE(currentTitle(), u"歌 4"_s);
        return;
    }
    t->click(u"deleteItem"_s);
    QTRY_VERIFY(t->object(u"deleteDialog"_s)->property("opened").toBool());
    QCOMPARE(t->object(u"deleteDialog"_s)->property("songTitle").toString(), u"歌 4"_s);
}

void LibraryScreenTest::deletionIsAskedAndNamesTheSong()
{
    QVERIFY(showLibrary());
    QObject *dialog = t->object(u"deleteDialog"_s);
    const auto ask = [this, dialog] {
        t->click(t->row(2), Qt::RightButton);
        QTRY_VERIFY(t->shows(u"deleteItem"_s));
        t->click(u"deleteItem"_s);
        QTRY_VERIFY(dialog->property("opened").toBool());
    };
    ask();
    QVERIFY(t->item(u"dialogMessage"_s)->property("text").toString().contains(u"\"歌 2\""_s));
    QVERIFY(t->item(u"cancelButton"_s)->hasActiveFocus());
    t->click(u"cancelButton"_s);
    QTRY_VERIFY(!dialog->property("visible").toBool());
    QCOMPARE(t->library->songs()->count(), 8);

    ask();
    const QString path = t->library->songs()->songs().at(2).assetPath();
    QVERIFY(QFile::exists(path));
    t->click(u"acceptButton"_s);
    QTRY_COMPARE(t->library->songs()->count(), 7);
    QVERIFY(!QFile::exists(path));
    QTRY_COMPARE(t->row(2)->property("title").toString(), u"歌 3"_s);
}

void LibraryScreenTest::keyboardWalksPlaysAndDeletes()
{
    QVERIFY(showLibrary());
    QQuickItem *list = t->item(u"songList"_s);
    QVERIFY(list->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Down);
    QCOMPARE(list->property("currentIndex").toInt(), 1);
    QVERIFY(t->row(1)->property("showsFocus").toBool());
    QTest::keyClick(t->window, Qt::Key_Return);
    QCOMPARE(currentTitle(), u"歌 1"_s);
    QTest::keyClick(t->window, Qt::Key_End);
    QCOMPARE(list->property("currentIndex").toInt(), 7);
    QTest::keyClick(t->window, Qt::Key_Up);

    QTest::keyClick(t->window, Qt::Key_Delete);
    QObject *dialog = t->object(u"deleteDialog"_s);
    QTRY_VERIFY(dialog->property("opened").toBool());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!dialog->property("visible").toBool());
    QCOMPARE(t->library->songs()->count(), 8);
    QTRY_VERIFY(list->hasActiveFocus());

    QTest::keyClick(t->window, Qt::Key_Delete);
    QTRY_VERIFY(dialog->property("opened").toBool());
    QTest::keyClick(t->window, Qt::Key_Tab);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_COMPARE(t->library->songs()->count(), 7);
    QCOMPARE(t->library->songs()->rowOf(u"6"_s), -1);

    // A click takes the outline away again.
    QTRY_VERIFY(!dialog->property("visible").toBool());
    t->click(t->row(0));
    QVERIFY(!t->row(0)->property("showsFocus").toBool());
}

void LibraryScreenTest::rowsKeepTheirPlaceWhileSongsCome()
{
    QVERIFY(showLibrary(40));
    QQuickItem *list = t->item(u"songList"_s);
    list->setProperty("contentY", 640);
    QSignalSpy reset(t->library->songs(), &QAbstractItemModel::modelReset);
    t->addFile(u"zz.mp3"_s, {u"最后"_s, u"歌手"_s, u"专辑"_s, 100, {}});
    QVERIFY(t->scan());
    QTRY_COMPARE(t->library->songs()->count(), 41);
    QCOMPARE(list->property("contentY").toReal(), 640.0);
    QCOMPARE(reset.size(), 0);
}

void LibraryScreenTest::emptyLibraryOffersTheImport()
{
    QVERIFY(t->show());
    QVERIFY(t->shows(u"emptyState"_s));
    QSignalSpy asked(t->library.get(), &LibraryViewModel::ownPickerRequested);
    t->click(u"emptyImportFolder"_s);
    QTRY_COMPARE(asked.size(), 1);
    QCOMPARE(asked.at(0).at(0).toBool(), true);
    QTRY_VERIFY(t->object(u"pickerSheet"_s)->property("opened").toBool());
    t->click(u"pickerCancel"_s);
    QTRY_VERIFY(!t->object(u"pickerSheet"_s)->property("visible").toBool());

    QVERIFY(t->shows(u"emptyState"_s));
    t->addFile(u"a.mp3"_s, {u"第一首"_s, {}, {}, 100, {}});
    QVERIFY(t->scan());
    QTRY_VERIFY(!t->shows(u"emptyState"_s));
}

void LibraryScreenTest::importMenuReachesTheViewModel()
{
    QVERIFY(showLibrary());
    t->click(u"importButton"_s);
    QTRY_VERIFY(t->object(u"importMenu"_s)->property("opened").toBool());
    t->click(u"openMusicFolderItem"_s);
    QTRY_COMPARE(t->system->opened.size(), 1);
    QCOMPARE(t->system->opened.at(0).toLocalFile(), t->platform.directories.documents);

    QSignalSpy asked(t->library.get(), &LibraryViewModel::ownPickerRequested);
    QTRY_VERIFY(!t->object(u"importMenu"_s)->property("visible").toBool());
    QTest::keyClick(t->window, Qt::Key_O, Qt::ControlModifier);
    QTRY_COMPARE(asked.size(), 1);
    QCOMPARE(asked.at(0).at(0).toBool(), false);
}

void LibraryScreenTest::toolTipMakesRoomForTheMenu()
{
    QVERIFY(showLibrary());
    QObject *tip = t->item(u"importButton"_s)->findChild<QObject *>(u"toolTip"_s);
    QVERIFY(tip);
    tip->setProperty("delay", 0);
    QTest::mouseMove(t->window, TestWindow::centre(t->item(u"importButton"_s)));
    QTRY_VERIFY(tip->property("visible").toBool());
    t->click(u"importButton"_s);
    QTRY_VERIFY(t->object(u"importMenu"_s)->property("opened").toBool());
    QTRY_VERIFY(!tip->property("visible").toBool());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->object(u"importMenu"_s)->property("visible").toBool());
}

void LibraryScreenTest::importUnderWayIsShown()
{
    QVERIFY(t->show());
    QSemaphore mayRead;
    t->reader->onOpen = [&mayRead](const QString &) { mayRead.acquire(); };
    QList<QUrl> urls;
    for (int i = 0; i < 4; ++i) {
        urls.append(QUrl::fromLocalFile(
            t->addForeignFile(u"from/%1.mp3"_s.arg(i), {u"新 %1"_s.arg(i), {}, {}, 100, {}})));
    }
    t->library->importUrls(urls);
    QTRY_VERIFY(t->shows(u"importProgress"_s));
    QTRY_VERIFY(t->shows(u"loadingState"_s));
    QVERIFY(!t->shows(u"emptyState"_s));
    mayRead.release(2);
    QTRY_COMPARE(t->library->songs()->count(), 2);
    QVERIFY(t->item(u"importProgress"_s)->property("progress").toReal() > 0);
    QVERIFY(!t->item(u"importProgress"_s)->property("shownText").toString().isEmpty());
    mayRead.release(2);
    QTRY_VERIFY(!t->shows(u"importProgress"_s));
    QTRY_COMPARE(t->library->songs()->count(), 4);
}

void LibraryScreenTest::droppedFilesAreImported()
{
    QVERIFY(showLibrary(2));
    QMimeData data;
    data.setUrls(
        {QUrl::fromLocalFile(t->addForeignFile(u"from/拖.mp3"_s, {u"拖进来的"_s, {}, {}, 100, {}}))});
    const QPoint place(100, 300);
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(t->window, &enter);
    QVERIFY(enter.isAccepted());
    QVERIFY(t->shows(u"dropHighlight"_s));

    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(t->window, &leave);
    QVERIFY(!t->shows(u"dropHighlight"_s));

    QCoreApplication::sendEvent(t->window, &enter);
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(t->window, &drop);
    QVERIFY(drop.isAccepted());
    QTRY_COMPARE(t->library->songs()->count(), 3);
    QVERIFY(!t->shows(u"dropHighlight"_s));
    QCOMPARE(t->library->songs()->songs().at(2).title(), u"拖进来的"_s);
}

void LibraryScreenTest::refusedFileIsSaidAndDismissed()
{
    QVERIFY(showLibrary(2));
    QVERIFY(!t->shows(u"importBanner"_s));
    const QString path = t->addForeignFile(u"from/封面.png"_s, {});
    t->library->importUrls({QUrl::fromLocalFile(path)});
    QTRY_VERIFY(t->shows(u"importBanner"_s));
    QQuickItem *banner = t->item(u"importBanner"_s);
    QVERIFY(banner->property("text").toString().contains(u"封面.png"_s));
    t->click(banner->findChild<QQuickItem *>(u"dismissButton"_s));
    QTRY_VERIFY(!t->shows(u"importBanner"_s));
}

void LibraryScreenTest::songThatPlaysIsLocated_data()
{
    QTest::addColumn<bool>("reducesMotion");
    QTest::newRow("with a spring") << false;
    QTest::newRow("at once") << true;
}

void LibraryScreenTest::songThatPlaysIsLocated()
{
    QFETCH(const bool, reducesMotion);
    t->appearance->setReducesMotion(reducesMotion);
    QVERIFY(showLibrary(60));
    QQuickItem *list = t->item(u"songList"_s);
    const QString id = t->library->songs()->songs().at(40).id();
    QVERIFY(QMetaObject::invokeMethod(t->item(u"libraryView"_s), "locate", Q_ARG(QString, id),
                                      Q_ARG(bool, false)));
    // The list has a moment to come up.
    QCOMPARE(list->property("contentY").toReal(), list->property("originY").toReal() - 4);
    const auto isCentred = [this, list] {
        const QQuickItem *row = t->row(40);
        if (!row)
            return false;
        const double middle = row->mapToItem(list, QPointF(0, row->height() / 2)).y();
        return std::abs(middle - list->height() / 2) <= 1;
    };
    QTRY_VERIFY(isCentred());
    // It stays there, and the listener scrolls on from there.
    QTRY_VERIFY(!list->findChild<QObject *>(u"revealSpring"_s)->property("running").toBool());
    QVERIFY(isCentred());
}

void LibraryScreenTest::songThatIsNotThereMovesNothing()
{
    QVERIFY(showLibrary(60));
    QQuickItem *list = t->item(u"songList"_s);
    list->setProperty("contentY", 500);
    QVERIFY(QMetaObject::invokeMethod(t->item(u"libraryView"_s), "locate", Q_ARG(QString, u"none"_s),
                                      Q_ARG(bool, true)));
    const QString last = t->library->songs()->songs().constLast().id();
    const QObject *wait = t->item(u"libraryView"_s)->findChild<QObject *>(u"locating"_s);
    QVERIFY(wait->property("running").toBool());
    QTRY_VERIFY(!wait->property("running").toBool());
    QCOMPARE(list->property("contentY").toReal(), 500.0);
    // Of two wishes the later one counts.
    const QString first = t->library->songs()->songs().constFirst().id();
    for (const QString &id : {last, first})
        QMetaObject::invokeMethod(t->item(u"libraryView"_s), "locate", Q_ARG(QString, id),
                                  Q_ARG(bool, false));
    QTRY_VERIFY(list->property("atYBeginning").toBool());
}

void LibraryScreenTest::heldReturnPlaysOnce()
{
    QVERIFY(showLibrary());
    t->item(u"songList"_s)->forceActiveFocus();
    QTest::keyClick(t->window, Qt::Key_Down);
    QSignalSpy played(t->item(u"songList"_s), SIGNAL(playRequested(int)));
    QVERIFY(played.isValid());
    holdReturn(t->window);
    QCOMPARE(played.size(), 1);
}

void LibraryScreenTest::aRowLeavesReturnToItsList_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void LibraryScreenTest::aRowLeavesReturnToItsList()
{
    QFETCH(Qt::Key, key);
    QVERIFY(showLibrary());
    t->item(u"songList"_s)->forceActiveFocus();
    QTest::keyClick(t->window, Qt::Key_Down);
    QVERIFY(t->row(0)->hasActiveFocus());
    QSignalSpy played(t->item(u"songList"_s), SIGNAL(playRequested(int)));
    // On some desktops it presses every button, as often as it is repeated: nothing of it may reach the
    // button.
    for (const bool isRepeat : {false, true, true}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(), isRepeat);
        QCoreApplication::sendEvent(t->row(0), &press);
        QVERIFY(press.isAccepted());
        QVERIFY(!t->row(0)->property("down").toBool());
    }
    QCOMPARE(played.size(), 1);
}

void LibraryScreenTest::theLastRowCanBeScrolledClearOfTheDisc()
{
    QVERIFY(showLibrary(20));
    QQuickItem *list = t->item(u"songList"_s);
    const auto end = [list] {
        return list->property("originY").toReal() + list->property("contentHeight").toReal() - list->height();
    };
    list->forceActiveFocus();
    QTest::keyClick(t->window, Qt::Key_End);
    // Without a song there is no disc to leave room for.
    QVERIFY(list->property("contentY").toReal() - end() < 20);

    QVERIFY(playRow(0));
    QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
    const QQuickItem *disc = t->item(u"miniPlayerDisc"_s);
    const auto area = [](const QQuickItem *item) { return item->mapRectToScene(item->boundingRect()); };
    QTest::keyClick(t->window, Qt::Key_Home);
    QTest::keyClick(t->window, Qt::Key_End);
    QTRY_VERIFY(t->row(19));
    QVERIFY(area(t->row(19)).bottom() <= area(disc).top());
    // A hand gets there, too.
    QTest::keyClick(t->window, Qt::Key_Home);
    list->setProperty("contentY", end() + list->property("bottomMargin").toReal());
    QTRY_VERIFY(t->row(19));
    QVERIFY(area(t->row(19)).bottom() <= area(disc).top());
}

void LibraryScreenTest::aNameMakesNoShortcut()
{
    t->addFile(u"a.mp3"_s, {u"R&B"_s, u"Rock & Roll"_s, {}, 100, {}});
    QVERIFY(t->scan());
    QVERIFY(t->show());
    QTRY_VERIFY(t->row(0));
    for (const Qt::Key key : {Qt::Key_B, Qt::Key_Space})
        QTest::keyClick(t->window, key, Qt::AltModifier);
    QCOMPARE(currentTitle(), QString());
}

void LibraryScreenTest::theQuestionIsReadToItsEnd()
{
    t->addFile(u"a.mp3"_s, {u"很长的名字"_s.repeated(60), {}, {}, 100, {}});
    QVERIFY(t->scan());
    t->appearance->setTextScale(1.3);
    QVERIFY(t->show());
    t->window->resize(320, 480);
    QTRY_VERIFY(t->row(0));
    t->item(u"songList"_s)->forceActiveFocus();
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Delete);
    QTRY_VERIFY(t->object(u"deleteDialog"_s)->property("opened").toBool());
    const QQuickItem *message = t->item(u"dialogMessage"_s);
    QVERIFY(message->property("text").toString().endsWith(u"此操作无法撤销。"_s));
    // It is laid out anew for the width of the dialog.
    QTRY_VERIFY(!message->property("truncated").toBool());
}

QTEST_MAIN(LibraryScreenTest)
#include "tst_library_screen.moc"
