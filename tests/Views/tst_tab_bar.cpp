// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/BarAppearance.h"
#include "Views/RootScreenTest.h"

#include <QPointingDevice>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// The tabs in their order, and the screens that they lead to.
const QList<QPair<QString, QString>> &places()
{
    static const QList<QPair<QString, QString>> all{{u"libraryTab"_s, u"libraryView"_s},
                                                    {u"playlistsTab"_s, u"playlistsView"_s},
                                                    {u"webdavTab"_s, u"webDAVView"_s},
                                                    {u"searchTab"_s, u"searchView"_s},
                                                    {u"settingsTab"_s, u"settingsView"_s}};
    return all;
}

} // namespace

/// The places of the window and the ways from one to the next.
class TabBarTest : public RootScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void libraryComesFirstAndTheOthersAreMadeWhenTheyAreVisited();
    void everyTabLeadsToItsPlace_data() { addThemes(); }
    void everyTabLeadsToItsPlace();
    void tabIsPressedByTouch();
    void keysLeadToEachPlace();
    void keysFollowTheTabsThatAreShown();
    void arrowsWalkFromTabToTab_data() { addThemes(); }
    void arrowsWalkFromTabToTab();
    void tabsSayWhatTheyAre_data() { addThemes(); }
    void tabsSayWhatTheyAre();
    void placeKeepsItsState();
    void keyboardGoesToThePlaceThatComesUp();
    void targetsAreLargeEnough_data();
    void targetsAreLargeEnough();
    void plainBarIsDrawnAsTheLookHasItsBars_data();
    void plainBarIsDrawnAsTheLookHasItsBars();
    void pinkBarKeepsItsMeasures();
    void pinkBarShowsItsIconsAndPalesAllButOne();
    void pinkBarGivesAllOfItsRoomToTheTabs();

private:
    QPointingDevice *m_touch = QTest::createTouchDevice();
};

void TabBarTest::libraryComesFirstAndTheOthersAreMadeWhenTheyAreVisited()
{
    QVERIFY(showLibrary(2));
    QVERIFY(t->shows(u"libraryView"_s));
    for (int i = 1; i < places().size(); ++i)
        QVERIFY(!t->item(places().at(i).second));
    t->click(u"searchTab"_s);
    QTRY_VERIFY(t->shows(u"searchView"_s));
    QVERIFY(!t->shows(u"libraryView"_s));
    QVERIFY(!t->item(u"playlistsView"_s));
    t->click(u"libraryTab"_s);
    QTRY_VERIFY(t->shows(u"libraryView"_s));
    QVERIFY(!t->shows(u"searchView"_s));
}

void TabBarTest::everyTabLeadsToItsPlace()
{
    QFETCH(ThemeType, type);
    QVERIFY(t->show());
    QVERIFY(switchTo(type));
    for (const auto &[tab, view] : places()) {
        t->click(tab);
        QTRY_VERIFY2(t->shows(view), qPrintable(view));
        for (const auto &[otherTab, other] : places())
            QVERIFY2(other == view || !t->shows(other), qPrintable(other));
        // The place ends where the bar begins.
        QQuickItem *place = t->item(view);
        QQuickItem *bar = t->item(u"tabBar"_s);
        QTRY_VERIFY(qAbs(place->mapToScene(QPointF(0, place->height())).y() - bar->mapToScene({}).y()) < 1);
    }
}

void TabBarTest::tabIsPressedByTouch()
{
    QVERIFY(t->show());
    const QPoint place = TestWindow::centre(t->item(u"playlistsTab"_s));
    QTest::touchEvent(t->window, m_touch).press(0, place, t->window);
    QTest::touchEvent(t->window, m_touch).release(0, place, t->window);
    QTRY_VERIFY(t->shows(u"playlistsView"_s));
}

void TabBarTest::keysLeadToEachPlace()
{
    QVERIFY(t->show());
    for (int i = static_cast<int>(places().size()) - 1; i >= 0; --i) {
        QTest::keyClick(t->window, static_cast<Qt::Key>(Qt::Key_1 + i), Qt::ControlModifier);
        QTRY_VERIFY2(t->shows(places().at(i).second), qPrintable(places().at(i).second));
    }
}

void TabBarTest::keysFollowTheTabsThatAreShown()
{
    t->content->setShowWebDAVTab(false);
    QVERIFY(t->show());
    QTest::keyClick(t->window, Qt::Key_3, Qt::ControlModifier);
    QTRY_VERIFY(t->shows(u"searchView"_s));
    // There is no fifth one.
    QTest::keyClick(t->window, Qt::Key_5, Qt::ControlModifier);
    QCOMPARE(selectedTab(), ContentTab::search);
    QTest::keyClick(t->window, Qt::Key_4, Qt::ControlModifier);
    QTRY_VERIFY(t->shows(u"settingsView"_s));
}

void TabBarTest::arrowsWalkFromTabToTab()
{
    QFETCH(ThemeType, type);
    QVERIFY(t->show());
    QVERIFY(switchTo(type));
    t->item(u"libraryTab"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Left);
    QVERIFY(t->shows(u"libraryView"_s));
    for (int i = 1; i < places().size(); ++i) {
        QTest::keyClick(t->window, Qt::Key_Right);
        QTRY_VERIFY(t->shows(places().at(i).second));
        // The keyboard stays in the bar, and the outline shows where.
        QVERIFY(t->item(places().at(i).first)->hasActiveFocus());
        QVERIFY(t->item(places().at(i).first)->property("visualFocus").toBool());
    }
    QTest::keyClick(t->window, Qt::Key_Right);
    QVERIFY(t->shows(u"settingsView"_s));
    QTest::keyClick(t->window, Qt::Key_Left);
    QTRY_VERIFY(t->shows(u"searchView"_s));
    // Return goes into the place.
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(!t->item(u"searchTab"_s)->hasActiveFocus());
    QVERIFY(t->item(u"searchView"_s)->hasActiveFocus() ||
            t->item(u"searchView"_s)->isAncestorOf(t->window->activeFocusItem()));
}

void TabBarTest::tabsSayWhatTheyAre()
{
    QFETCH(ThemeType, type);
    QVERIFY(t->show());
    QVERIFY(switchTo(type));
    QTest::keyClick(t->window, Qt::Key_3, Qt::ControlModifier);
    for (const ContentTab tab : allContentTabs()) {
        QAccessibleInterface *spoken =
            QAccessible::queryAccessibleInterface(t->item(caseName(tab) + u"Tab"_s));
        QVERIFY(spoken);
        QCOMPARE(spoken->text(QAccessible::Name), rawValue(tab));
        QCOMPARE(spoken->role(), QAccessible::PageTab);
        QCOMPARE(bool(spoken->state().selected), tab == ContentTab::webdav);
    }
}

void TabBarTest::placeKeepsItsState()
{
    QVERIFY(showLibrary(40));
    QQuickItem *list = t->item(u"songList"_s);
    list->setProperty("contentY", 500);
    t->click(u"searchTab"_s);
    QTRY_VERIFY(t->shows(u"searchView"_s));
    const QQuickItem *search = t->item(u"searchView"_s);
    t->click(u"libraryTab"_s);
    QTRY_VERIFY(t->shows(u"songList"_s));
    QCOMPARE(list->property("contentY").toInt(), 500);
    t->click(u"searchTab"_s);
    QCOMPARE(t->item(u"searchView"_s), search);
}

void TabBarTest::keyboardGoesToThePlaceThatComesUp()
{
    QVERIFY(showLibrary(3));
    t->click(u"searchTab"_s);
    QTRY_VERIFY(t->item(u"searchView"_s)->isAncestorOf(t->window->activeFocusItem()));
    t->click(u"libraryTab"_s);
    QTRY_VERIFY(t->item(u"songList"_s)->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Return);
    QCOMPARE(currentTitle(), u"歌 0"_s);
}

void TabBarTest::targetsAreLargeEnough_data()
{
    addLooks(true);
}

void TabBarTest::targetsAreLargeEnough()
{
    QVERIFY(showInLook());
    for (const auto &[name, view] : places()) {
        const QQuickItem *tab = t->item(name);
        QVERIFY(tab->width() >= 44 && tab->height() >= 44);
        const QRectF area = tab->mapRectToScene(tab->boundingRect());
        QVERIFY(area.left() >= 0 && area.right() <= t->window->width() + 0.5);
        QVERIFY(area.bottom() <= t->window->height());
        t->click(name);
        QTRY_VERIFY(t->shows(view));
        check(view);
    }
    const QQuickItem *bar = t->item(u"tabBar"_s);
    QCOMPARE(qRound(bar->mapToScene(QPointF(0, bar->height())).y()), t->window->height());
}

void TabBarTest::plainBarIsDrawnAsTheLookHasItsBars_data()
{
    QTest::addColumn<ThemeType>("type");
    QTest::newRow("plain") << ThemeType::classic;
    QTest::newRow("embossed") << ThemeType::neumorphism;
}

void TabBarTest::plainBarIsDrawnAsTheLookHasItsBars()
{
    QFETCH(ThemeType, type);
    QVERIFY(t->show());
    QVERIFY(switchTo(type));
    const auto ground = [this] { return t->item(u"tabBarGround"_s)->property("color").value<QColor>(); };
    QCOMPARE(ground(), BarAppearances::setupAppearance(t->themeManager->currentTheme()).background);
    // Large texts of the desktop make the bar higher, not fuller.
    const double usual = t->item(u"tabBar"_s)->height();
    QVERIFY(usual >= 49);
    t->appearance->setTextScale(1.6);
    QTRY_VERIFY(t->item(u"tabBar"_s)->height() > usual);
    check(u"large texts"_s);
}

void TabBarTest::pinkBarKeepsItsMeasures()
{
    QVERIFY(t->show());
    QVERIFY(switchTo(ThemeType::kawaiiPink));
    const QQuickItem *bar = t->item(u"tabBar"_s);
    const AppTheme &theme = *t->themeManager->currentTheme();
    QCOMPARE(bar->height(), 0.5 + 12 + 28 + 12 + 20);
    QCOMPARE(t->item(u"tabBarGround"_s)->property("color").value<QColor>(), theme.backgroundColor());
    const QQuickItem *hairline = t->item(u"tabBarHairline"_s);
    QCOMPARE(hairline->height(), 0.5);
    QCOMPARE(hairline->width(), bar->width());
    const auto color = hairline->childItems().at(0)->property("color").value<QColor>();
    QCOMPARE(color.rgb(), theme.primaryColor().rgb());
    QVERIFY(qAbs(color.alphaF() - 0.2F) < 0.01F);
    for (const auto &[name, view] : places()) {
        const QQuickItem *tab = t->item(name);
        QCOMPARE(tab->height(), 12.0 + 28 + 12);
        QCOMPARE(qRound(tab->mapToScene(QPointF(0, tab->height())).y()), t->window->height() - 20);
    }
    QCOMPARE(t->item(u"libraryTab"_s)->mapToScene({}).x(), 16.0);
    const QQuickItem *last = t->item(u"settingsTab"_s);
    QCOMPARE(qRound(last->mapToScene(QPointF(last->width(), 0)).x()), t->window->width() - 16);
}

void TabBarTest::pinkBarShowsItsIconsAndPalesAllButOne()
{
    QVERIFY(t->show());
    QVERIFY(switchTo(ThemeType::kawaiiPink));
    t->click(u"playlistsTab"_s);
    QTRY_COMPARE(selectedTab(), ContentTab::playlists);
    for (const auto &[name, view] : places()) {
        const auto *icon = t->item(name)->findChild<QQuickItem *>(u"tabIcon"_s);
        QVERIFY(icon);
        QCOMPARE(icon->size(), QSizeF(28, 28));
        QVERIFY(icon->property("isPicture").toBool());
        QCOMPARE(icon->opacity(), name == u"playlistsTab"_s ? 1.0 : 0.5);
    }
}

void TabBarTest::pinkBarGivesAllOfItsRoomToTheTabs()
{
    QVERIFY(t->show());
    QVERIFY(switchTo(ThemeType::kawaiiPink));
    for (const int tabs : {5, 4}) {
        t->content->setShowWebDAVTab(tabs == 5);
        const double width = (t->window->width() - 32.0) / tabs;
        for (const auto &[name, view] : places()) {
            if (tabs == 4 && name == u"webdavTab"_s)
                continue;
            QTRY_COMPARE(t->item(name)->width(), width);
        }
    }
    // The whole rectangle answers, its corner as well.
    const QQuickItem *tab = t->item(u"searchTab"_s);
    QTest::mouseClick(t->window, Qt::LeftButton, {}, tab->mapToScene(QPointF(1, 1)).toPoint());
    QTRY_COMPARE(selectedTab(), ContentTab::search);
}

QTEST_MAIN(TabBarTest)
#include "tst_tab_bar.moc"
