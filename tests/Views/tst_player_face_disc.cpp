// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/PlayerFaceTest.h"

#include <QSignalSpy>

#include <cmath>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The disc in the real window: dragged to both edges, its five actions by a long press and a slide, by
/// keyboard, and the way to the queue.
class PlayerFaceDiscTest : public PlayerFaceTest
{
    Q_OBJECT
private Q_SLOTS:
    void theDiscSnapsToBothEdges_data() { addPointers(); }
    void theDiscSnapsToBothEdges();
    void whereTheDiscIsLeftIsThereAtTheNextStart();
    void anErrorThatIsShownLeavesTheDiscToBeReached_data() { addThemes(); }
    void anErrorThatIsShownLeavesTheDiscToBeReached();
    void aNoticeAtTheTopLeavesTheDiscToBeReached();
    void aWindowThatIsResizedInMidDragLeavesTheDiscInTheHand();
    void theFiveActionsByLongPressAndSlide_data();
    void theFiveActionsByLongPressAndSlide();
    void locatingShowsTheSongInTheLibrary_data() { addThemes(); }
    void locatingShowsTheSongInTheLibrary();
    void theKeyboardReachesTheDiscAndItsActions_data() { addThemes(); }
    void theKeyboardReachesTheDiscAndItsActions();
    void aWindowThatIsLeftWithAnOpenFanKeepsTheKeyboardsPlace();
    void aWindowThatIsHiddenInMidHoldLeavesNothingOpen();
    void theQueueComesUpAndGoes_data() { addThemes(); }
    void theQueueComesUpAndGoes();
    void anotherLookClosesTheQueue();

private:
    static void addPointers()
    {
        QTest::addColumn<bool>("finger");
        QTest::newRow("mouse") << false;
        QTest::newRow("finger") << true;
    }
    Pointer pointer() const
    {
        QFETCH(const bool, finger);
        return {t->window, finger};
    }
    /// The library with so many songs, one of which plays, and the disc at rest.
    void playInLibrary(int row, int songs = 8)
    {
        QVERIFY(showLibrary(songs));
        QVERIFY(playRow(row));
        QTRY_VERIFY(discRests());
    }
    /// Drags the disc until its centre is there and lets go.
    void dropDisc(Pointer by, const QPointF &place)
    {
        by.drag(TestWindow::centre(disc()), place);
        QTRY_VERIFY(!mini().isDragging());
        QTRY_VERIFY(discRests());
    }
    std::optional<double> stored(QLatin1StringView key) const
    {
        return t->platform.preferences->doubleValue(key);
    }
    /// Opens the fan by a long press, slides to the button of that action and lets go.
    void holdAndSlide(Pointer by, ControlAction action)
    {
        const QPointF from = TestWindow::centre(disc());
        by.press(from);
        QTRY_VERIFY(mini().isControlMode());
        const int row = mini().fan()->rowOf(action);
        QTRY_VERIFY(fanButton(row) && fanButton(row)->opacity() >= 1);
        QTRY_COMPARE(t->item(u"miniPlayerView"_s)->property("openness").toReal(), 1.0);
        QTRY_COMPARE(t->item(u"miniPlayerView"_s)->property("shift").toReal(), mini().fanShift());
        const QPointF to = TestWindow::centre(fanButton(row));
        by.move((from + to) / 2);
        by.move(to);
        QTRY_COMPARE(mini().activeAction(), std::optional(action));
        by.release(to);
        QTRY_VERIFY(!mini().isControlMode());
        QTRY_VERIFY(!fanButton(row));
    }
};

void PlayerFaceDiscTest::theDiscSnapsToBothEdges()
{
    playInLibrary(0);
    const double width = t->window->width();
    const Pointer by = pointer();
    struct Drop
    {
        double x;
        double rests;
    };
    // The ring ends 59 and 61 points from the edge.
    for (const Drop drop :
         {Drop{92, 92}, Drop{90, 41}, Drop{width - 92, width - 92}, Drop{width - 90, width - 41}}) {
        dropDisc(by, {width / 2, 200});
        QCOMPARE(mini().effectivePosition(), QPointF(width / 2, 200));
        dropDisc(by, {drop.x, 300});
        QCOMPARE(mini().effectivePosition(), QPointF(drop.rests, 300));
        QTRY_COMPARE(TestWindow::centre(disc()), QPoint(qRound(drop.rests), 300));
        const QPointF kept(stored("miniPlayerPositionX"_L1).value_or(0),
                           stored("miniPlayerPositionY"_L1).value_or(0));
        QCOMPARE(kept, QPointF(drop.rests, 300));
    }
    // In the corners it stays in sight, and over the tab bar it does not go.
    dropDisc(by, {width - 2, t->window->height() - 2.0});
    const QQuickItem *bar = t->item(u"tabBar"_s);
    QVERIFY(disc()->mapToScene(QPointF(0, disc()->height())).y() <= bar->mapToScene({}).y());
    dropDisc(by, {2, 2});
    QCOMPARE(mini().effectivePosition(), QPointF(41, 41));
    QVERIFY(!showsNowPlaying());
    QCOMPARE(currentTitle(), u"歌 0"_s);
}

void PlayerFaceDiscTest::whereTheDiscIsLeftIsThereAtTheNextStart()
{
    playInLibrary(0);
    dropDisc({t->window, false}, {60, 250});
    QCOMPARE(mini().effectivePosition(), QPointF(41, 250));
    // Another look makes the whole tree anew, with another disc.
    QVERIFY(switchTo(ThemeType::neumorphism));
    QTRY_VERIFY(discRests());
    QCOMPARE(mini().effectivePosition(), QPointF(41, 250));
    const ThemeService next(*t->platform.preferences, *t->themeManager, *t->platform.desktopAppearance);
    QCOMPARE(next.miniPlayerPosition(), std::optional(QPointF(41, 250)));
}

void PlayerFaceDiscTest::anErrorThatIsShownLeavesTheDiscToBeReached()
{
    QFETCH(const ThemeType, type);
    QVERIFY(showLibrary());
    QVERIFY(switchTo(type));
    QVERIFY(playRow(0));
    QTRY_VERIFY(discRests());
    const QPointF before = mini().effectivePosition();
    t->player->lastItem()->fail(u"文件坏了"_s);
    QTRY_VERIFY(t->shows(u"playErrorBanner"_s));
    const QQuickItem *banner = t->item(u"playErrorBanner"_s);
    const auto isAbove = [this, banner] {
        return disc()->mapToScene(QPointF(0, disc()->height())).y() <= banner->mapToScene({}).y();
    };
    QTRY_VERIFY(isAbove());
    t->click(banner->findChild<QQuickItem *>(u"dismissButton"_s));
    QTRY_VERIFY(!t->shows(u"playErrorBanner"_s));
    QTRY_VERIFY(discRests());
    QCOMPARE(mini().effectivePosition(), before);
}

void PlayerFaceDiscTest::aNoticeAtTheTopLeavesTheDiscToBeReached()
{
    playInLibrary(0);
    dropDisc({t->window, false}, {2, 2});
    QCOMPARE(mini().effectivePosition(), QPointF(41, 41));
    QQuickItem *banner = contentView()->findChild<QQuickItem *>(u"deviceBanner"_s);
    banner->setProperty("text", u"耳机已断开，改用内置扬声器"_s);
    QTRY_VERIFY(t->shows(u"deviceBanner"_s));
    const double lowest = banner->mapToScene(QPointF(0, banner->height())).y();
    QTRY_VERIFY(disc()->mapToScene({}).y() >= lowest);
    QTRY_VERIFY(discRests());
    const QPoint place = TestWindow::centre(disc());
    QTest::mouseClick(t->window, Qt::LeftButton, {}, place);
    QTRY_VERIFY(showsNowPlaying());
    // Over the cover it lies elsewhere.
    QCOMPARE(mini().effectivePosition(), QPointF(41, 41));
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_COMPARE(TestWindow::centre(disc()), place);
    banner->setProperty("text", QString());
    QTRY_COMPARE(TestWindow::centre(disc()), QPoint(41, 41));
}

void PlayerFaceDiscTest::aWindowThatIsResizedInMidDragLeavesTheDiscInTheHand()
{
    playInLibrary(0);
    Pointer by(t->window, false);
    by.press(TestWindow::centre(disc()));
    by.move({250, 330});
    by.move({250, 300});
    QVERIFY(mini().isDragging());
    t->window->resize(320, 480);
    QTRY_COMPARE(t->item(u"miniPlayerView"_s)->size(), QSizeF(320, 480));
    QCOMPARE(TestWindow::centre(disc()), QPoint(250, 300));
    by.move({200, 310});
    QCOMPARE(TestWindow::centre(disc()), QPoint(200, 310));
    by.release({200, 310});
    QTRY_VERIFY(discRests());
    QCOMPARE(mini().effectivePosition(), QPointF(200, 310));
}

void PlayerFaceDiscTest::theFiveActionsByLongPressAndSlide_data()
{
    QTest::addColumn<bool>("finger");
    QTest::addColumn<QPointF>("place");
    QTest::newRow("mouse, at its first place") << false << QPointF();
    QTest::newRow("mouse, at the top of the left side") << false << QPointF(41, 41);
    QTest::newRow("finger, in the middle") << true << QPointF(180, 300);
}

void PlayerFaceDiscTest::theFiveActionsByLongPressAndSlide()
{
    QFETCH(const QPointF, place);
    playInLibrary(1);
    const Pointer by = pointer();
    if (!place.isNull())
        dropDisc(by, place);
    QVERIFY(t->audioPlayer->isPlaying());
    holdAndSlide(by, ControlAction::playPause);
    QVERIFY(!t->audioPlayer->isPlaying());
    holdAndSlide(by, ControlAction::playPause);
    QVERIFY(t->audioPlayer->isPlaying());

    const QString first = currentTitle();
    holdAndSlide(by, ControlAction::next);
    const QString following = currentTitle();
    QVERIFY(following != first);
    QCOMPARE(QAccessible::queryAccessibleInterface(disc())->text(QAccessible::Name),
             u"迷你播放器："_s + following + u"，歌手"_s);
    holdAndSlide(by, ControlAction::previous);
    QCOMPARE(currentTitle(), first);

    const Song song = *t->audioPlayer->currentSong();
    holdAndSlide(by, ControlAction::favorite);
    QVERIFY(t->playlistService->isFavorite(song));
    holdAndSlide(by, ControlAction::favorite);
    QVERIFY(!t->playlistService->isFavorite(song));

    t->click(u"searchTab"_s);
    QTRY_COMPARE(selectedTab(), ContentTab::search);
    holdAndSlide(by, ControlAction::locate);
    QTRY_COMPARE(selectedTab(), ContentTab::library);
    QTRY_VERIFY(t->shows(u"libraryView"_s));
    QVERIFY(!showsNowPlaying());
    QTRY_VERIFY(discRests());
}

void PlayerFaceDiscTest::locatingShowsTheSongInTheLibrary()
{
    QFETCH(const ThemeType, type);
    QVERIFY(showLibrary(60));
    QVERIFY(switchTo(type));
    QVERIFY(playRow(55));
    QTRY_VERIFY(discRests());
    for (const auto &tab : {u"playlistsTab"_s, u"webdavTab"_s, u"searchTab"_s, u"settingsTab"_s}) {
        t->item(u"songList"_s)->setProperty("contentY", 0);
        t->click(tab);
        QTRY_VERIFY(selectedTab() != ContentTab::library);
        mini().perform(ControlAction::locate);
        QTRY_COMPARE(selectedTab(), ContentTab::library);
        const QQuickItem *list = t->item(u"songList"_s);
        // At the end of the list a row has no room to reach the middle.
        const auto isSeen = [this, list] {
            const QQuickItem *row = t->row(55);
            if (!row || !list->isVisible())
                return false;
            const double middle = row->mapToItem(list, QPointF(0, row->height() / 2)).y();
            return std::abs(middle - list->height() / 2) <= 1 ||
                   (list->property("atYEnd").toBool() && middle > 0 && middle < list->height());
        };
        QTRY_VERIFY(isSeen());
    }
}

void PlayerFaceDiscTest::theKeyboardReachesTheDiscAndItsActions()
{
    QFETCH(const ThemeType, type);
    QVERIFY(showLibrary());
    QVERIFY(switchTo(type));
    QVERIFY(playRow(1));
    QTRY_VERIFY(discRests());
    const auto tabToDisc = [this] {
        constexpr int mostControls = 60;
        for (int i = 0; i < mostControls && !disc()->hasActiveFocus(); ++i)
            QTest::keyClick(t->window, Qt::Key_Tab);
        return disc()->hasActiveFocus();
    };
    QVERIFY(tabToDisc());
    QVERIFY(disc()->property("visualFocus").toBool());
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(t->item(u"nowPlayingCover"_s)->property("covers").toBool());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->shows(u"nowPlayingView"_s));
    QTRY_VERIFY(disc()->hasActiveFocus());

    // The fan opens to the left: downwards are play and pause, previous and locate; upwards next and
    // favourite.
    const auto choose = [this](ControlAction action) {
        QTest::keyClick(t->window, Qt::Key_Menu);
        if (!mini().isFanPinned())
            return false;
        constexpr int places = 6;
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down}) {
            for (int i = 0; i < places && mini().activeAction() != action; ++i)
                QTest::keyClick(t->window, key);
        }
        const bool isFound = mini().activeAction() == action;
        QTest::keyClick(t->window, Qt::Key_Return);
        return isFound && !mini().isControlMode();
    };
    const QString first = currentTitle();
    QVERIFY(choose(ControlAction::next));
    QVERIFY(currentTitle() != first);
    QVERIFY(choose(ControlAction::previous));
    QCOMPARE(currentTitle(), first);
    const bool wasPlaying = t->audioPlayer->isPlaying();
    QVERIFY(choose(ControlAction::playPause));
    QCOMPARE(t->audioPlayer->isPlaying(), !wasPlaying);
    QVERIFY(choose(ControlAction::favorite));
    QVERIFY(t->playlistService->isFavorite(*t->audioPlayer->currentSong()));
    QVERIFY(disc()->hasActiveFocus());
    QSignalSpy located(t->content, &ContentViewModel::miniPlayerLocateCurrentSong);
    QVERIFY(choose(ControlAction::locate));
    QCOMPARE(located.size(), 1);
    QVERIFY(!showsNowPlaying());
}

void PlayerFaceDiscTest::aWindowThatIsLeftWithAnOpenFanKeepsTheKeyboardsPlace()
{
    playInLibrary(0);
    t->item(u"songList"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Down);
    const QQuickItem *before = t->window->activeFocusItem();
    QTest::mouseClick(t->window, Qt::RightButton, {}, TestWindow::centre(disc()));
    QTRY_VERIFY(mini().isFanPinned());
    QVERIFY(t->window->activeFocusItem() != before);
    QQuickWindow other;
    other.show();
    other.requestActivate();
    QTRY_VERIFY(!t->window->isActive());
    QTRY_VERIFY(!mini().isFanPinned());
    t->window->requestActivate();
    QTRY_VERIFY(t->window->isActive());
    QCOMPARE(t->window->activeFocusItem(), before);
    QTest::keyClick(t->window, Qt::Key_Space);
    QVERIFY(!t->audioPlayer->isPlaying());
    QVERIFY(!showsNowPlaying());
}

void PlayerFaceDiscTest::aWindowThatIsHiddenInMidHoldLeavesNothingOpen()
{
    playInLibrary(0);
    const QPoint place = TestWindow::centre(disc());
    QTest::mousePress(t->window, Qt::LeftButton, {}, place);
    QTRY_VERIFY(mini().isControlMode());
    t->window->showMinimized();
    QTRY_VERIFY(!mini().isControlMode());
    QVERIFY(!disc()->property("spins").toBool());
    t->window->showNormal();
    QTest::mouseRelease(t->window, Qt::LeftButton, {}, place);
    QVERIFY(!showsNowPlaying());
    QTRY_VERIFY(disc()->property("spins").toBool());
}

void PlayerFaceDiscTest::theQueueComesUpAndGoes()
{
    QFETCH(const ThemeType, type);
    QVERIFY(showLibrary());
    QVERIFY(switchTo(type));
    const auto isOpen = [this] {
        const QObject *sheet = t->object(u"queueSheet"_s);
        return sheet && sheet->property("opened").toBool();
    };
    const auto isGone = [this] { return !t->object(u"queueSheet"_s)->property("visible").toBool(); };
    // Without a song it says that there is none.
    QTest::keyClick(t->window, Qt::Key_U, Qt::ControlModifier);
    QTRY_VERIFY(isOpen());
    QVERIFY(t->shows(u"queueEmpty"_s));
    t->click(u"queueClose"_s);
    QTRY_VERIFY(isGone());
    QVERIFY(!t->screens->queue()->isOpen());

    QVERIFY(playRow(1));
    QTRY_VERIFY(discRests());
    QTest::mouseClick(t->window, Qt::RightButton, {}, TestWindow::centre(disc()));
    QTRY_VERIFY(t->shows(u"fanQueueButton"_s));
    QTRY_COMPARE(t->item(u"miniPlayerView"_s)->property("openness").toReal(), 1.0);
    QTRY_COMPARE(t->item(u"miniPlayerView"_s)->property("shift").toReal(), mini().fanShift());
    t->click(u"fanQueueButton"_s);
    QTRY_VERIFY(isOpen());
    QVERIFY(t->shows(u"queueViewList"_s));
    QTRY_VERIFY(t->item(u"queueRow0"_s) && t->item(u"queueRow1"_s));
    QCOMPARE(t->item(u"queueRow0"_s)->property("title").toString(), currentTitle());
    const QString following = t->item(u"queueRow1"_s)->property("title").toString();
    const QList<Song> queue = t->audioPlayer->queue();
    t->click(u"queueRow1"_s);
    QTRY_COMPARE(currentTitle(), following);
    QCOMPARE(t->audioPlayer->queue(), queue);
    check(u"queue"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone());
    QVERIFY(!t->screens->queue()->isOpen());

    // By keyboard alone.
    QTest::keyClick(t->window, Qt::Key_U, Qt::ControlModifier);
    QTRY_VERIFY(isOpen());
    QTRY_COMPARE(t->item(u"queueRow0"_s)->property("title").toString(), following);
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(currentTitle() != following);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone());
}

void PlayerFaceDiscTest::anotherLookClosesTheQueue()
{
    playInLibrary(0);
    t->screens->queue()->open();
    QTRY_VERIFY(t->object(u"queueSheet"_s) && t->object(u"queueSheet"_s)->property("opened").toBool());
    QVERIFY(switchTo(ThemeType::kawaiiPink));
    QVERIFY(!t->screens->queue()->isOpen());
    QTRY_VERIFY(!t->object(u"queueSheet"_s));
}

QTEST_MAIN(PlayerFaceDiscTest)
#include "tst_player_face_disc.moc"
