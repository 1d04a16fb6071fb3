// SPDX-License-Identifier: GPL-3.0-or-later
#include "App/MediaKeys.h"
#include "ViewModels/EqualizerViewModel.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/NowPlayingViewModel.h"
#include "ViewModels/ScreenModels.h"
#include "Views/HeldKey.h"
#include "Views/RootScreenTest.h"

#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// What the keyboard does wherever it is, and how the Now Playing screen comes and goes.
class RootKeysTest : public RootScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void coverComesUpAndGoes_data() { addThemes(); }
    void coverComesUpAndGoes();
    void coverIsThrownAwayWhenItHasGone();
    void coverDoesNotOpenWithoutASong();
    void nothingBeneathTheCoverIsReached();
    void escapeClosesTheSheetFirstAndThenTheCover();
    void aHeldEscapeClosesTheSheetOnly();
    void keyboardReturnsToWhereItWas();
    void spacePlaysAndPauses();
    void spaceWithAnotherKeyIsSomebodyElses_data();
    void spaceWithAnotherKeyIsSomebodyElses();
    void aKeyThatIsHeldCountsOnce_data();
    void aKeyThatIsHeldCountsOnce();
    void theVolumeFollowsAHeldKey();
    void arrowsSeekAndChangeTheVolumeUnderTheCoverOnly();
    void arrowsOfTheNumberPadAreArrows();
    void arrowsStopAtBothEnds();
    void aHeldArrowEndsNoSong();
    void controlArrowsChangeSongAndVolume();
    void keysWorkAgainBehindAMenu();
    void aTabsKeyClosesTheCover();
    void typingIsLeftAlone();
    void mediaKeysSteerThePlayer();
    void mediaKeysWorkBeneathASheet();
    void mediaKeysWithoutASongDoNothing();

private:
    /// A key that Qt Test has no character for.
    void press(Qt::Key key) const
    {
        QKeyEvent pressed(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(t->window, &pressed);
        QKeyEvent released(QEvent::KeyRelease, key, Qt::NoModifier);
        QCoreApplication::sendEvent(t->window, &released);
    }
};

void RootKeysTest::coverComesUpAndGoes()
{
    QFETCH(ThemeType, type);
    QVERIFY(showLibrary(2));
    QVERIFY(switchTo(type));
    QVERIFY(playRow(0));
    QVERIFY(openNowPlaying());
    const QQuickItem *cover = t->item(u"nowPlayingCover"_s);
    QCOMPARE(cover->mapRectToScene(cover->boundingRect()), QRectF(QPointF(), QSizeF(t->window->size())));
    QVERIFY(!t->shows(u"tabBar"_s));
    QVERIFY(!t->shows(u"libraryView"_s));
    QTest::keyClick(t->window, Qt::Key_P, Qt::ControlModifier);
    QVERIFY(!showsNowPlaying());
    QTRY_VERIFY(!t->shows(u"nowPlayingCover"_s));
    QVERIFY(t->shows(u"tabBar"_s));
}

void RootKeysTest::coverIsThrownAwayWhenItHasGone()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    QVERIFY(!t->item(u"nowPlayingView"_s));
    QVERIFY(openNowPlaying());
    const QPointer<QQuickItem> first = t->item(u"nowPlayingView"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!first);
    QVERIFY(openNowPlaying());
    QVERIFY(t->item(u"nowPlayingView"_s));
}

void RootKeysTest::coverDoesNotOpenWithoutASong()
{
    QVERIFY(t->show());
    QTest::keyClick(t->window, Qt::Key_P, Qt::ControlModifier);
    QVERIFY(!showsNowPlaying());
}

void RootKeysTest::nothingBeneathTheCoverIsReached()
{
    QVERIFY(showLibrary(3));
    QVERIFY(playRow(0));
    const QPoint secondRow = TestWindow::centre(t->row(1));
    QVERIFY(openNowPlaying());
    QTest::mouseClick(t->window, Qt::LeftButton, {}, secondRow);
    QCOMPARE(currentTitle(), u"歌 0"_s);
    QVERIFY(showsNowPlaying());
    QVERIFY(!t->item(u"tabBar"_s)->isEnabled());
    // However far the tab key walks; also while there is something to say.
    t->player->lastItem()->fail(u"文件坏了"_s);
    QTRY_VERIFY(t->shows(u"playErrorBanner"_s));
    bool reachesBanner = false;
    for (int i = 0; i < 40; ++i) {
        QTest::keyClick(t->window, Qt::Key_Tab);
        const QQuickItem *focused = t->window->activeFocusItem();
        QVERIFY(!focused || !t->item(u"tabView"_s)->isAncestorOf(focused));
        QVERIFY(!focused || !t->item(u"miniPlayerLayer"_s)->isAncestorOf(focused));
        reachesBanner = reachesBanner || (focused && t->item(u"playErrorBanner"_s)->isAncestorOf(focused));
    }
    QVERIFY(reachesBanner);
}

void RootKeysTest::escapeClosesTheSheetFirstAndThenTheCover()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    QVERIFY(openNowPlaying());
    QTest::keyClick(t->window, Qt::Key_E, Qt::ControlModifier);
    QTRY_VERIFY(t->object(u"equalizerView"_s)->property("opened").toBool());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->equalizer->isOpen());
    QTRY_VERIFY(!t->object(u"equalizerView"_s)->property("visible").toBool());
    QVERIFY(showsNowPlaying());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QVERIFY(!showsNowPlaying());
}

void RootKeysTest::aHeldEscapeClosesTheSheetOnly()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    QVERIFY(openNowPlaying());
    QTest::keyClick(t->window, Qt::Key_E, Qt::ControlModifier);
    QTRY_VERIFY(t->object(u"equalizerView"_s)->property("opened").toBool());
    holdKey(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->object(u"equalizerView"_s)->property("visible").toBool());
    // The keyboard goes on repeating it, and tells the window now.
    QTest::simulateEvent(t->window, true, Qt::Key_Escape, Qt::NoModifier, QString(), true);
    QVERIFY(showsNowPlaying());
    QTest::simulateEvent(t->window, false, Qt::Key_Escape, Qt::NoModifier, QString(), false);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QVERIFY(!showsNowPlaying());
}

void RootKeysTest::keyboardReturnsToWhereItWas()
{
    QVERIFY(showLibrary(5));
    QVERIFY(playRow(0));
    t->item(u"songList"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Down);
    const QQuickItem *before = t->window->activeFocusItem();
    QVERIFY(openNowPlaying());
    QVERIFY(t->window->activeFocusItem() != before);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QCOMPARE(t->window->activeFocusItem(), before);
    QTRY_VERIFY(!t->shows(u"nowPlayingCover"_s));
    QTest::keyClick(t->window, Qt::Key_Down);
    QCOMPARE(t->item(u"songList"_s)->property("currentIndex").toInt(), 2);
}

void RootKeysTest::spacePlaysAndPauses()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    QTRY_VERIFY(t->audioPlayer->isPlaying());
    QTest::keyClick(t->window, Qt::Key_Space);
    QTRY_VERIFY(!t->audioPlayer->isPlaying());
    QVERIFY(openNowPlaying());
    t->item(u"nowPlayingView"_s)->forceActiveFocus(Qt::OtherFocusReason);
    QTest::keyClick(t->window, Qt::Key_Space);
    QTRY_VERIFY(t->audioPlayer->isPlaying());
}

void RootKeysTest::spaceWithAnotherKeyIsSomebodyElses_data()
{
    QTest::addColumn<QString>("place");
    for (const auto &place : {u"songList"_s, u"libraryTab"_s, u"queuePageList"_s, u"queueViewList"_s})
        QTest::newRow(qPrintable(place)) << place;
}

void RootKeysTest::spaceWithAnotherKeyIsSomebodyElses()
{
    QFETCH(QString, place);
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    if (place == u"queuePageList"_s) {
        QVERIFY(openNowPlaying());
        t->screens->nowPlaying()->setCurrentPage(NowPlayingViewModel::QueuePage);
    } else if (place == u"queueViewList"_s) {
        QTest::keyClick(t->window, Qt::Key_U, Qt::ControlModifier);
    }
    QTRY_VERIFY(t->shows(place));
    t->item(place)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Home);
    QTRY_VERIFY(t->audioPlayer->isPlaying());
    QSignalSpy changes(t->audioPlayer.get(), &AudioPlayerService::isPlayingChanged);
    // Keys of input methods and of the desktop, pressed outside of a field.
    for (const Qt::KeyboardModifier modifier : {Qt::ControlModifier, Qt::ShiftModifier, Qt::AltModifier})
        QTest::keyClick(t->window, Qt::Key_Space, modifier);
    QCOMPARE(changes.size(), 0);
    QVERIFY(t->audioPlayer->isPlaying());
}

void RootKeysTest::aKeyThatIsHeldCountsOnce_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("place");
    const Qt::KeyboardModifiers control = Qt::ControlModifier;
    QTest::newRow("space on a row") << Qt::Key_Space << Qt::KeyboardModifiers() << u"songList"_s;
    QTest::newRow("space in the queue") << Qt::Key_Space << Qt::KeyboardModifiers() << u"queuePageList"_s;
    QTest::newRow("space elsewhere") << Qt::Key_Space << Qt::KeyboardModifiers() << u"contentView"_s;
    QTest::newRow("next") << Qt::Key_Right << control << u"songList"_s;
    QTest::newRow("previous") << Qt::Key_Left << control << u"songList"_s;
    QTest::newRow("cover") << Qt::Key_P << control << u"songList"_s;
    QTest::newRow("files") << Qt::Key_O << control << u"songList"_s;
}

void RootKeysTest::aKeyThatIsHeldCountsOnce()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(QString, place);
    QVERIFY(showLibrary(9));
    QVERIFY(playRow(4));
    if (place.startsWith(u"queue"_s)) {
        QVERIFY(openNowPlaying());
        t->screens->nowPlaying()->setCurrentPage(NowPlayingViewModel::QueuePage);
        QTRY_VERIFY(t->shows(place));
    }
    t->item(place)->forceActiveFocus(Qt::TabFocusReason);
    if (place.endsWith(u"List"_s))
        QTest::keyClick(t->window, Qt::Key_Home);
    QTRY_VERIFY(t->audioPlayer->isPlaying());
    QSignalSpy pauses(t->audioPlayer.get(), &AudioPlayerService::isPlayingChanged);
    QSignalSpy covers(contentView(), SIGNAL(showNowPlayingChanged()));
    QSignalSpy pickers(t->library.get(), &LibraryViewModel::ownPickerRequested);
    holdKey(t->window, key, modifiers);
    if (key == Qt::Key_Right || key == Qt::Key_Left)
        QCOMPARE(currentTitle(), key == Qt::Key_Right ? u"歌 5"_s : u"歌 3"_s);
    else
        QCOMPARE(pauses.size() + covers.size() + pickers.size(), 1);
}

void RootKeysTest::theVolumeFollowsAHeldKey()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    holdKey(t->window, Qt::Key_Down, Qt::ControlModifier);
    // One press and five repeats.
    QVERIFY(qAbs(t->audioPlayer->volume() - 0.70F) < 0.001F);
}

void RootKeysTest::arrowsSeekAndChangeTheVolumeUnderTheCoverOnly()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    t->player->tick(50);
    t->player->seeks.clear();
    const float volume = t->audioPlayer->volume();
    QTest::keyClick(t->window, Qt::Key_Right);
    QTest::keyClick(t->window, Qt::Key_Left);
    QCOMPARE(t->player->seeks.size(), 0);
    QVERIFY(openNowPlaying());
    t->item(u"nowPlayingView"_s)->forceActiveFocus(Qt::OtherFocusReason);
    QTest::keyClick(t->window, Qt::Key_Right);
    QCOMPARE(t->player->seeks.size(), 1);
    QVERIFY(qAbs(t->player->seeks.at(0).time - 55) < 0.6);
    QTest::keyClick(t->window, Qt::Key_Down);
    QVERIFY(qAbs(t->audioPlayer->volume() - (volume - 0.05F)) < 0.001F);
    QTest::keyClick(t->window, Qt::Key_Up);
    QVERIFY(qAbs(t->audioPlayer->volume() - volume) < 0.001F);
}

void RootKeysTest::aHeldArrowEndsNoSong()
{
    QVERIFY(showLibrary(3));
    QVERIFY(playRow(0));
    QVERIFY(openNowPlaying());
    t->item(u"nowPlayingView"_s)->forceActiveFocus(Qt::OtherFocusReason);
    t->player->tick(190);
    t->player->seeks.clear();
    holdKey(t->window, Qt::Key_Right);
    QCOMPARE(currentTitle(), u"歌 0"_s);
    QVERIFY(qAbs(t->player->seeks.constLast().time - 195) < 0.01);
    // Who lets go and presses once more means it.
    QTest::keyClick(t->window, Qt::Key_Right);
    QCOMPARE(currentTitle(), u"歌 1"_s);
}

void RootKeysTest::arrowsOfTheNumberPadAreArrows()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    QVERIFY(openNowPlaying());
    t->player->tick(50);
    t->player->seeks.clear();
    QTest::keyClick(t->window, Qt::Key_Right, Qt::KeypadModifier);
    QCOMPARE(t->player->seeks.size(), 1);
    QTest::keyClick(t->window, Qt::Key_Down, Qt::KeypadModifier);
    QVERIFY(qAbs(t->audioPlayer->volume() - 0.95F) < 0.001F);
    QTest::keyClick(t->window, Qt::Key_Down, Qt::KeypadModifier | Qt::ShiftModifier);
    QVERIFY(qAbs(t->audioPlayer->volume() - 0.95F) < 0.001F);
}

void RootKeysTest::arrowsStopAtBothEnds()
{
    QVERIFY(showLibrary(3));
    QVERIFY(playRow(1));
    QVERIFY(openNowPlaying());
    t->item(u"nowPlayingView"_s)->forceActiveFocus(Qt::OtherFocusReason);
    t->player->tick(2);
    t->player->seeks.clear();
    QTest::keyClick(t->window, Qt::Key_Left);
    QCOMPARE(t->player->seeks.size(), 1);
    QCOMPARE(t->player->seeks.at(0).time, 0.0);
    constexpr int steps = 25;
    for (int i = 0; i < steps; ++i)
        QTest::keyClick(t->window, Qt::Key_Down);
    QCOMPARE(t->audioPlayer->volume(), 0.0F);
    for (int i = 0; i < steps; ++i)
        QTest::keyClick(t->window, Qt::Key_Up);
    QCOMPARE(t->audioPlayer->volume(), 1.0F);
}

void RootKeysTest::controlArrowsChangeSongAndVolume()
{
    QVERIFY(showLibrary(4));
    QVERIFY(playRow(1));
    QTest::keyClick(t->window, Qt::Key_Right, Qt::ControlModifier);
    QCOMPARE(currentTitle(), u"歌 2"_s);
    QTest::keyClick(t->window, Qt::Key_Left, Qt::ControlModifier);
    QCOMPARE(currentTitle(), u"歌 1"_s);
    QTest::keyClick(t->window, Qt::Key_Down, Qt::ControlModifier);
    QVERIFY(qAbs(t->audioPlayer->volume() - 0.95F) < 0.001F);
    QTest::keyClick(t->window, Qt::Key_Up, Qt::ControlModifier);
    QCOMPARE(t->audioPlayer->volume(), 1.0F);
}

void RootKeysTest::keysWorkAgainBehindAMenu()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    QAccessibleInterface *button = QAccessible::queryAccessibleInterface(t->item(u"importButton"_s));
    for (int way = 0; way < 3; ++way) {
        if (way == 0) {
            t->click(u"importButton"_s);
        } else if (way == 1) {
            t->item(u"importButton"_s)->forceActiveFocus(Qt::TabFocusReason);
            QTest::keyClick(t->window, Qt::Key_Return);
        } else {
            button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        }
        QTRY_VERIFY(t->object(u"importMenu"_s)->property("opened").toBool());
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(!t->object(u"importMenu"_s)->property("visible").toBool());
        QVERIFY(openNowPlaying());
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(!t->shows(u"nowPlayingCover"_s));
    }
}

void RootKeysTest::aTabsKeyClosesTheCover()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    QVERIFY(openNowPlaying());
    QTest::keyClick(t->window, Qt::Key_2, Qt::ControlModifier);
    QVERIFY(!showsNowPlaying());
    QTRY_VERIFY(t->shows(u"playlistsView"_s));
    QTRY_VERIFY(!t->shows(u"nowPlayingCover"_s));
}

void RootKeysTest::typingIsLeftAlone()
{
    QVERIFY(showLibrary(4));
    QVERIFY(playRow(1));
    QTRY_VERIFY(t->audioPlayer->isPlaying());
    t->player->seeks.clear();
    QTest::keyClick(t->window, Qt::Key_4, Qt::ControlModifier);
    QTRY_VERIFY(t->shows(u"onlineSearchText"_s));
    t->item(u"onlineSearchText"_s)->forceActiveFocus(Qt::OtherFocusReason);
    for (const char key : {'a', ' ', 'b'})
        QTest::keyClick(t->window, key);
    QTest::keyClick(t->window, Qt::Key_Left);
    QTest::keyClick(t->window, Qt::Key_Right);
    QTest::keyClick(t->window, Qt::Key_Right);
    // Word by word, where elsewhere they lead from song to song.
    QTest::keyClick(t->window, Qt::Key_Left, Qt::ControlModifier);
    QTest::keyClick(t->window, Qt::Key_Left, Qt::ControlModifier);
    QCOMPARE(t->item(u"onlineSearchText"_s)->property("cursorPosition").toInt(), 0);
    QTest::keyClick(t->window, Qt::Key_Right, Qt::ControlModifier);
    QCOMPARE(currentTitle(), u"歌 1"_s);
    QCOMPARE(t->item(u"onlineSearchText"_s)->property("text").toString(), u"a b"_s);
    QVERIFY(t->audioPlayer->isPlaying());
    QCOMPARE(t->player->seeks.size(), 0);
}

void RootKeysTest::mediaKeysSteerThePlayer()
{
    QVERIFY(showLibrary(4));
    const MediaKeys keys(*t->window, *t->viewModel);
    QVERIFY(playRow(1));
    QTRY_VERIFY(t->audioPlayer->isPlaying());
    press(Qt::Key_MediaTogglePlayPause);
    QVERIFY(!t->audioPlayer->isPlaying());
    press(Qt::Key_MediaPlay);
    QTRY_VERIFY(t->audioPlayer->isPlaying());
    press(Qt::Key_MediaPause);
    QVERIFY(!t->audioPlayer->isPlaying());
    press(Qt::Key_MediaPause);
    QVERIFY(!t->audioPlayer->isPlaying());
    press(Qt::Key_MediaNext);
    QCOMPARE(currentTitle(), u"歌 2"_s);
    press(Qt::Key_MediaPrevious);
    QCOMPARE(currentTitle(), u"歌 1"_s);
    t->player->lastItem()->answerDuration(200);
    t->player->lastItem()->becomeReady();
    QTRY_VERIFY(t->audioPlayer->isPlaying());
    t->player->tick(50);
    press(Qt::Key_MediaStop);
    QVERIFY(!t->audioPlayer->isPlaying());
    QCOMPARE(t->audioPlayer->currentTime(), 0.0);
    // Other keys go on to the window.
    QTest::keyClick(t->window, Qt::Key_2, Qt::ControlModifier);
    QTRY_VERIFY(t->shows(u"playlistsView"_s));
}

void RootKeysTest::mediaKeysWorkBeneathASheet()
{
    QVERIFY(showLibrary(4));
    const MediaKeys keys(*t->window, *t->viewModel);
    QVERIFY(playRow(1));
    t->equalizer->open();
    QTRY_VERIFY(t->object(u"equalizerView"_s)->property("opened").toBool());
    press(Qt::Key_MediaNext);
    QCOMPARE(currentTitle(), u"歌 2"_s);
    QVERIFY(t->equalizer->isOpen());
}

void RootKeysTest::mediaKeysWithoutASongDoNothing()
{
    QVERIFY(t->show());
    const MediaKeys keys(*t->window, *t->viewModel);
    for (const Qt::Key key : {Qt::Key_MediaTogglePlayPause, Qt::Key_MediaPlay, Qt::Key_MediaPause,
                              Qt::Key_MediaStop, Qt::Key_MediaNext, Qt::Key_MediaPrevious})
        press(key);
    QVERIFY(!t->viewModel->hasCurrentSong());
    QVERIFY(!t->audioPlayer->isPlaying());
}

QTEST_MAIN(RootKeysTest)
#include "tst_root_keys.moc"
