// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/ScreenTest.h"

#include <QPointingDevice>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The places of the window and the ways from one to the next.
class TabBarTest : public ScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void libraryComesFirstAndTheOthersAreMadeWhenTheyAreVisited();
    void tabIsPressedByMouseAndTouch();
    void keysLeadToEachPlace();
    void arrowsWalkFromTabToTab();
    void tabsSayWhatTheyAre();
    void placeKeepsItsState();
    void keyboardGoesToThePlaceThatComesUp();
    void serversStayOpenBehindAnotherPlace();
    void targetsAreLargeEnough_data();
    void targetsAreLargeEnough();

private:
    QPointingDevice *m_touch = QTest::createTouchDevice();
};

void TabBarTest::libraryComesFirstAndTheOthersAreMadeWhenTheyAreVisited()
{
    showLibrary(2);
    QVERIFY(t->shows(u"libraryView"_s));
    QVERIFY(!t->item(u"onlineView"_s));
    QVERIFY(!t->item(u"playlistsView"_s));
    t->click(u"onlineTab"_s);
    QTRY_VERIFY(t->shows(u"onlineView"_s));
    QVERIFY(!t->shows(u"libraryView"_s));
    QVERIFY(!t->item(u"playlistsView"_s));
    t->click(u"playlistsTab"_s);
    QTRY_VERIFY(t->shows(u"playlistsView"_s));
    QVERIFY(!t->shows(u"onlineView"_s));
    t->click(u"libraryTab"_s);
    QTRY_VERIFY(t->shows(u"libraryView"_s));
    QVERIFY(!t->shows(u"playlistsView"_s));
}

void TabBarTest::tabIsPressedByMouseAndTouch()
{
    QVERIFY(t->show());
    const QPoint place = TestWindow::centre(t->item(u"playlistsTab"_s));
    QTest::touchEvent(t->window, m_touch).press(0, place, t->window);
    QTest::touchEvent(t->window, m_touch).release(0, place, t->window);
    QTRY_VERIFY(t->shows(u"playlistsView"_s));
    t->click(u"onlineTab"_s);
    QTRY_VERIFY(t->shows(u"onlineView"_s));
}

void TabBarTest::keysLeadToEachPlace()
{
    QVERIFY(t->show());
    QTest::keyClick(t->window, Qt::Key_2, Qt::ControlModifier);
    QTRY_VERIFY(t->shows(u"onlineView"_s));
    QTest::keyClick(t->window, Qt::Key_3, Qt::ControlModifier);
    QTRY_VERIFY(t->shows(u"playlistsView"_s));
    QTest::keyClick(t->window, Qt::Key_1, Qt::ControlModifier);
    QTRY_VERIFY(t->shows(u"libraryView"_s));
}

void TabBarTest::arrowsWalkFromTabToTab()
{
    QVERIFY(t->show());
    t->item(u"libraryTab"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Left);
    QVERIFY(t->shows(u"libraryView"_s));
    QTest::keyClick(t->window, Qt::Key_Right);
    QTRY_VERIFY(t->shows(u"onlineView"_s));
    // The keyboard stays in the bar, and the outline shows where.
    QVERIFY(t->item(u"onlineTab"_s)->hasActiveFocus());
    QVERIFY(t->item(u"onlineTab"_s)->property("visualFocus").toBool());
    QTest::keyClick(t->window, Qt::Key_Right);
    QTest::keyClick(t->window, Qt::Key_Right);
    QVERIFY(t->shows(u"playlistsView"_s));
    QTest::keyClick(t->window, Qt::Key_Left);
    QVERIFY(t->shows(u"onlineView"_s));
    // Return goes into the place.
    QTest::keyClick(t->window, Qt::Key_Return);
    QVERIFY(t->item(u"onlineSearchText"_s)->hasActiveFocus());
}

void TabBarTest::tabsSayWhatTheyAre()
{
    QVERIFY(t->show());
    QTest::keyClick(t->window, Qt::Key_3, Qt::ControlModifier);
    for (const auto &[name, text] : {std::pair(u"libraryTab"_s, u"资料库"_s),
                                     {u"onlineTab"_s, u"在线"_s},
                                     {u"playlistsTab"_s, u"歌单"_s}}) {
        QAccessibleInterface *tab = QAccessible::queryAccessibleInterface(t->item(name));
        QVERIFY(tab);
        QCOMPARE(tab->text(QAccessible::Name), text);
        QCOMPARE(tab->role(), QAccessible::PageTab);
        QCOMPARE(bool(tab->state().selected), name == u"playlistsTab"_s);
    }
}

void TabBarTest::placeKeepsItsState()
{
    showLibrary(40);
    QQuickItem *list = t->item(u"songList"_s);
    list->setProperty("contentY", 500);
    t->click(u"onlineTab"_s);
    QTRY_VERIFY(t->shows(u"onlineView"_s));
    const QQuickItem *online = t->item(u"onlineView"_s);
    t->click(u"libraryTab"_s);
    QTRY_VERIFY(t->shows(u"songList"_s));
    QCOMPARE(list->property("contentY").toInt(), 500);
    t->click(u"onlineTab"_s);
    QCOMPARE(t->item(u"onlineView"_s), online);
}

void TabBarTest::keyboardGoesToThePlaceThatComesUp()
{
    showLibrary(3);
    t->click(u"onlineTab"_s);
    QTRY_VERIFY(t->item(u"onlineSearchText"_s)->hasActiveFocus());
    t->click(u"libraryTab"_s);
    QTRY_VERIFY(t->item(u"songList"_s)->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Return);
    QCOMPARE(currentTitle(), u"歌 0"_s);
}

void TabBarTest::serversStayOpenBehindAnotherPlace()
{
    QVERIFY(t->show());
    t->click(u"serversButton"_s);
    QTRY_VERIFY(t->item(u"serversView"_s)->property("covers").toBool());
    t->click(u"playlistsTab"_s);
    QTRY_VERIFY(t->shows(u"playlistsView"_s));
    QVERIFY(!t->shows(u"serversView"_s));
    // Escape is for the place in sight.
    QTest::keyClick(t->window, Qt::Key_Escape);
    t->click(u"libraryTab"_s);
    QTRY_VERIFY(t->shows(u"serversView"_s));
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->shows(u"serversView"_s));
}

void TabBarTest::targetsAreLargeEnough_data()
{
    addLooks();
}

void TabBarTest::targetsAreLargeEnough()
{
    showInLook();
    for (const auto &name : {u"libraryTab"_s, u"onlineTab"_s, u"playlistsTab"_s}) {
        const QQuickItem *tab = t->item(name);
        QVERIFY(tab->width() >= 44 && tab->height() >= 44);
        const QRectF area = tab->mapRectToScene(tab->boundingRect());
        QVERIFY(area.left() >= 0 && area.right() <= t->window->width());
        QCOMPARE(qRound(area.bottom()), t->window->height());
    }
    t->click(u"playlistsTab"_s);
    check(u"playlists"_s);
    t->click(u"onlineTab"_s);
    check(u"online"_s);
}

QTEST_MAIN(TabBarTest)
#include "tst_tab_bar.moc"
