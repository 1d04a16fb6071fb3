// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/PlaylistService.h"
#include "ViewModels/EqualizerViewModel.h"
#include "ViewModels/NavidromeServerPageViewModel.h"
#include "ViewModels/NavidromeServersViewModel.h"
#include "ViewModels/NowPlayingViewModel.h"
#include "ViewModels/OnlineViewModel.h"
#include "ViewModels/PlaylistPageViewModel.h"
#include "ViewModels/PlaylistsViewModel.h"
#include "ViewModels/TopListsViewModel.h"
#include "ViewModels/WebDAVServerPageViewModel.h"
#include "ViewModels/WebDAVServersViewModel.h"
#include "Views/RootScreenTest.h"
#include "Views/Stillness.h"

#include <QQmlComponent>
#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The root screen: its layers, its identity, and what it does when the world around it changes.
class ContentViewTest : public RootScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void layersLieInTheirOrder_data() { addThemes(); }
    void layersLieInTheirOrder();
    void hiddenTabIsInNeitherBar_data() { addThemes(); }
    void hiddenTabIsInNeitherBar();
    void selectedTabThatIsHiddenStaysUntilAnotherIsPicked_data() { addThemes(); }
    void selectedTabThatIsHiddenStaysUntilAnotherIsPicked();
    void plainTabViewIsMadeAnewWithItsTabsAndKeepsTheSelection();
    void refreshMakesTheTabViewAnewAndKeepsTheSelection();
    void anotherLookIsAnotherTreeAndPlaybackGoesOn();
    void keyboardStaysWhereItWasWhenTheTabsAreMadeAnew();
    void anotherLookClosesSheetsAndCover();
    void anotherLookClosesPages();
    void anotherSchemeKeepsTheTree();
    void locatingASongShowsTheLibrary();
    void smallPlayerIsThereOnlyWithASong_data() { addThemes(); }
    void smallPlayerIsThereOnlyWithASong();
    void pagesLeaveTheDiscsPlaceFreeAtTheirEnd_data();
    void pagesLeaveTheDiscsPlaceFreeAtTheirEnd();
    void smallPlayerIsMadeAnewWithTheRefresh();
    void smallPlayerOpensTheCover();
    void playerThatIsCalledBackOnItsWayOutBeginsAnew();
    void nothingIsDrawnWhileNothingChanges_data() { addThemes(); }
    void nothingIsDrawnWhileNothingChanges();
    void forcedUpdateHidesTheAnnouncements();
    void layersAboveAreEmptyWithoutAnythingToTell();
    void keyboardOnTheScreenPushesAllLooksButThePinkOne_data() { addThemes(); }
    void keyboardOnTheScreenPushesAllLooksButThePinkOne();
};

void ContentViewTest::layersLieInTheirOrder()
{
    QFETCH(ThemeType, type);
    QVERIFY(showLibrary(2));
    QVERIFY(switchTo(type));
    QVERIFY(playRow(0));
    QTRY_VERIFY(t->item(u"background"_s));
    QVERIFY(layerOf(u"background"_s) >= 0);
    QVERIFY(layerOf(u"background"_s) < layerOf(u"libraryView"_s));
    QCOMPARE(layerOf(u"libraryView"_s), layerOf(u"tabBar"_s));
    QVERIFY(layerOf(u"tabBar"_s) < layerOf(u"nowPlayingCover"_s));
    // The ground fills the window.
    QQuickItem *ground = t->item(u"background"_s);
    QCOMPARE(ground->mapRectToScene(ground->boundingRect()), QRectF(QPointF(), QSizeF(t->window->size())));
}

void ContentViewTest::hiddenTabIsInNeitherBar()
{
    QFETCH(ThemeType, type);
    t->content->setShowWebDAVTab(false);
    QVERIFY(t->show());
    QVERIFY(switchTo(type));
    QVERIFY(!t->item(u"webdavTab"_s));
    for (const auto &name : {u"libraryTab"_s, u"playlistsTab"_s, u"searchTab"_s, u"settingsTab"_s})
        QVERIFY2(t->shows(name), qPrintable(name));
    t->content->setShowWebDAVTab(true);
    QTRY_VERIFY(t->shows(u"webdavTab"_s));
    // Between its neighbours.
    const auto left = [this](const QString &name) { return t->item(name)->mapToScene(QPointF()).x(); };
    QTRY_VERIFY(left(u"playlistsTab"_s) < left(u"webdavTab"_s) &&
                left(u"webdavTab"_s) < left(u"searchTab"_s));
}

void ContentViewTest::selectedTabThatIsHiddenStaysUntilAnotherIsPicked()
{
    QFETCH(ThemeType, type);
    QVERIFY(t->show());
    QVERIFY(switchTo(type));
    t->click(u"webdavTab"_s);
    QTRY_VERIFY(t->shows(u"webDAVView"_s));
    t->content->setShowWebDAVTab(false);
    QTRY_VERIFY(!t->item(u"webdavTab"_s));
    QCOMPARE(selectedTab(), ContentTab::webdav);
    QTRY_VERIFY(t->shows(u"webDAVView"_s));
    t->click(u"searchTab"_s);
    QTRY_VERIFY(t->shows(u"searchView"_s));
    QCOMPARE(selectedTab(), ContentTab::search);
    QVERIFY(!t->shows(u"webDAVView"_s));
}

void ContentViewTest::plainTabViewIsMadeAnewWithItsTabsAndKeepsTheSelection()
{
    QVERIFY(t->show());
    t->click(u"searchTab"_s);
    QTRY_VERIFY(t->shows(u"searchView"_s));
    const QPointer<QQuickItem> bar = t->item(u"tabBar"_s);
    t->content->setShowWebDAVTab(false);
    QTRY_VERIFY(!bar);
    QVERIFY(t->shows(u"tabBar"_s));
    QCOMPARE(selectedTab(), ContentTab::search);
    QVERIFY(t->shows(u"searchView"_s));
}

void ContentViewTest::refreshMakesTheTabViewAnewAndKeepsTheSelection()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    t->click(u"playlistsTab"_s);
    QTRY_VERIFY(t->shows(u"playlistsView"_s));
    const QPointer<QQuickItem> view = t->item(u"playlistsView"_s);
    const QPointer<QQuickItem> content = contentView();
    t->viewModel->refreshUI();
    QTRY_VERIFY(!view);
    QVERIFY(t->shows(u"playlistsView"_s));
    QCOMPARE(contentView(), content);
    QCOMPARE(selectedTab(), ContentTab::playlists);
    QVERIFY(t->audioPlayer->isPlaying());
}

void ContentViewTest::anotherLookIsAnotherTreeAndPlaybackGoesOn()
{
    QVERIFY(showLibrary(3));
    QVERIFY(playRow(1));
    t->player->tick(50);
    t->click(u"playlistsTab"_s);
    QTRY_VERIFY(t->shows(u"playlistsView"_s));
    const FakeStreamPlayer *engine = t->player;
    for (const ThemeType type : {ThemeType::kawaiiPink, ThemeType::neumorphism, ThemeType::classic}) {
        const QPointer<QQuickItem> before = contentView();
        QVERIFY(switchTo(type));
        QTRY_VERIFY(!before);
        // The tree begins anew…
        QCOMPARE(selectedTab(), ContentTab::library);
        QVERIFY(t->shows(u"libraryView"_s));
        QVERIFY(!t->item(u"playlistsView"_s));
        // … and the song does not.
        QVERIFY(t->audioPlayer->isPlaying());
        QCOMPARE(t->player, engine);
        QCOMPARE(currentTitle(), u"歌 1"_s);
        QCOMPARE(t->audioPlayer->currentTime(), 50.0);
        t->click(u"playlistsTab"_s);
        QTRY_VERIFY(t->shows(u"playlistsView"_s));
    }
    t->player->tick(51);
    QCOMPARE(t->audioPlayer->currentTime(), 51.0);
}

void ContentViewTest::anotherLookClosesSheetsAndCover()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    QVERIFY(openNowPlaying());
    t->equalizer->open();
    QTRY_VERIFY(t->object(u"equalizerView"_s)->property("opened").toBool());
    QVERIFY(switchTo(ThemeType::neumorphism));
    QVERIFY(!t->equalizer->isOpen());
    QVERIFY(!showsNowPlaying());
    QTRY_VERIFY(!t->item(u"nowPlayingView"_s));
    QTRY_VERIFY(!t->object(u"equalizerView"_s));
    // Nothing is left that would take the keyboard.
    QTest::keyClick(t->window, Qt::Key_2, Qt::ControlModifier);
    QTRY_VERIFY(t->shows(u"playlistsView"_s));
}

void ContentViewTest::anotherLookClosesPages()
{
    QVERIFY(t->show());
    const Playlist playlist = t->playlistService->createPlaylist(u"路上"_s, {}, PlaylistType::local);
    const WebDAVConfig server = t->addServer(u"NAS"_s);
    const NavidromeConfig navidrome = t->addNavidrome(u"Home"_s);
    t->playlists->openPlaylist(playlist.id);
    t->servers->openServer(server.uuidText());
    t->navidrome->openServer(navidrome.uuidText());
    t->online->charts()->open();
    t->click(u"playlistsTab"_s);
    QTRY_VERIFY(t->shows(u"playlistPage"_s));
    QVERIFY(switchTo(ThemeType::kawaiiPink));
    QVERIFY(!t->playlists->page()->isOpen());
    QVERIFY(!t->servers->page()->isOpen());
    QVERIFY(!t->navidrome->page()->isOpen());
    QVERIFY(!t->online->charts()->isOpen());
    t->click(u"playlistsTab"_s);
    QTRY_VERIFY(t->shows(u"playlistList"_s));
    QVERIFY(!t->shows(u"playlistPage"_s));
}

void ContentViewTest::keyboardStaysWhereItWasWhenTheTabsAreMadeAnew()
{
    QVERIFY(showLibrary(2));
    // A listener who has switched something wants to be able to switch it back.
    t->window->resize(320, 480);
    QTest::keyClick(t->window, Qt::Key_5, Qt::ControlModifier);
    QTRY_VERIFY(t->shows(u"showWebDAVSwitch"_s));
    for (const bool shows : {false, true}) {
        t->item(u"showWebDAVSwitch"_s)->forceActiveFocus(Qt::TabFocusReason);
        const QPointer<QQuickItem> before = t->item(u"tabBar"_s);
        QTest::keyClick(t->window, Qt::Key_Return);
        QTRY_COMPARE(t->content->showWebDAVTab(), shows);
        QTRY_VERIFY(!before);
        QQuickItem *held = t->item(u"showWebDAVSwitch"_s);
        QCOMPARE(t->window->activeFocusItem(), held);
        QVERIFY(held->property("visualFocus").toBool());
        const QRectF place = held->mapRectToScene(held->boundingRect());
        QVERIFY(place.top() >= 0 && place.bottom() <= t->item(u"tabBar"_s)->mapToScene({}).y());
    }
    // What is not there any more leaves it to the place.
    t->item(u"webdavTab"_s)->forceActiveFocus(Qt::TabFocusReason);
    t->content->setShowWebDAVTab(false);
    QTRY_VERIFY(!t->item(u"webdavTab"_s));
    QVERIFY(t->item(u"tabView"_s)->isAncestorOf(t->window->activeFocusItem()));
    // Where the keyboard was elsewhere it stays there.
    QVERIFY(playRow(0));
    QVERIFY(openNowPlaying());
    const QQuickItem *elsewhere = t->window->activeFocusItem();
    t->content->setShowWebDAVTab(true);
    QTRY_VERIFY(t->item(u"webdavTab"_s));
    QCOMPARE(t->window->activeFocusItem(), elsewhere);
}

void ContentViewTest::anotherSchemeKeepsTheTree()
{
    QVERIFY(t->show());
    t->click(u"searchTab"_s);
    const QPointer<QQuickItem> content = contentView();
    QGuiApplication::setPalette(QPalette(QColor(0x22, 0x22, 0x22)));
    QTRY_VERIFY(t->themeManager->currentTheme()->isDark());
    QCOMPARE(contentView(), content);
    QCOMPARE(selectedTab(), ContentTab::search);
    QGuiApplication::setPalette(QPalette(QColor(0xee, 0xee, 0xee)));
    QTRY_VERIFY(!t->themeManager->currentTheme()->isDark());
}

void ContentViewTest::locatingASongShowsTheLibrary()
{
    QVERIFY(showLibrary(60));
    t->click(u"searchTab"_s);
    QTRY_VERIFY(t->shows(u"searchView"_s));
    const QString id = t->importService->importedSongs().at(55).id();
    Q_EMIT t->content->miniPlayerLocateCurrentSong(id, false);
    QCOMPARE(selectedTab(), ContentTab::library);
    QTRY_VERIFY(t->shows(u"libraryView"_s));
    const auto isInSight = [this] {
        const QQuickItem *list = t->item(u"songList"_s);
        const QQuickItem *row = t->row(55);
        return row && list->boundingRect().contains(row->mapRectToItem(list, row->boundingRect()));
    };
    QTRY_VERIFY(isInSight());
    QVERIFY(t->item(u"songList"_s)->property("contentY").toReal() > 0);
}

void ContentViewTest::smallPlayerIsThereOnlyWithASong()
{
    QFETCH(ThemeType, type);
    QVERIFY(showLibrary(2));
    QVERIFY(switchTo(type));
    QVERIFY(!t->item(u"miniPlayerView"_s));
    QVERIFY(playRow(0));
    QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
    QVERIFY(layerOf(u"tabBar"_s) < layerOf(u"miniPlayerDisc"_s));
    QVERIFY(layerOf(u"miniPlayerDisc"_s) < layerOf(u"nowPlayingCover"_s));
    // It fills the window, and takes from it no press but those on the disc.
    QCOMPARE(t->item(u"miniPlayerView"_s)->size(), QSizeF(t->window->size()));
    t->click(u"playlistsTab"_s);
    QTRY_VERIFY(t->shows(u"playlistsView"_s));
    QVERIFY(openNowPlaying());
    QVERIFY(!t->shows(u"miniPlayerDisc"_s));
}

void ContentViewTest::pagesLeaveTheDiscsPlaceFreeAtTheirEnd_data()
{
    QTest::addColumn<QString>("tab");
    QTest::addColumn<QString>("list");
    QTest::newRow("songs") << u"libraryTab"_s << u"songList"_s;
    QTest::newRow("playlists") << u"playlistsTab"_s << u"playlistList"_s;
    QTest::newRow("servers") << u"webdavTab"_s << u"serverList"_s;
    QTest::newRow("found songs") << u"searchTab"_s << u"localSongList"_s;
    QTest::newRow("charts") << u"searchTab"_s << u"chartGrid"_s;
    QTest::newRow("settings") << u"settingsTab"_s << u"settingsFormScroller"_s;
}

void ContentViewTest::pagesLeaveTheDiscsPlaceFreeAtTheirEnd()
{
    QFETCH(QString, tab);
    QFETCH(QString, list);
    QVERIFY(showLibrary(2));
    t->click(tab);
    QTRY_VERIFY(t->item(list));
    const qreal before = t->item(list)->property("bottomMargin").toReal();
    QVERIFY(before < 20);
    QVERIFY(playRow(0));
    QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
    const QQuickItem *disc = t->item(u"miniPlayerDisc"_s);
    const QQuickItem *bar = t->item(u"tabBar"_s);
    const qreal taken = bar->mapToScene({}).y() - disc->mapToScene({}).y();
    QVERIFY(taken > 60);
    QVERIFY(t->item(list)->property("bottomMargin").toReal() - before >= taken);
}

void ContentViewTest::smallPlayerIsMadeAnewWithTheRefresh()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
    const QPointer<QQuickItem> before = t->item(u"miniPlayerView"_s);
    t->viewModel->refreshUI();
    QTRY_VERIFY(!before);
    QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
}

void ContentViewTest::smallPlayerOpensTheCover()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
    // It comes in at its place.
    QTRY_VERIFY(t->item(u"miniPlayerDisc"_s)->mapToScene({}).x() > t->window->width() / 2.0);
    t->click(u"miniPlayerDisc"_s);
    QTRY_VERIFY(showsNowPlaying());
    QTRY_VERIFY(t->item(u"nowPlayingCover"_s)->property("covers").toBool());
}

void ContentViewTest::playerThatIsCalledBackOnItsWayOutBeginsAnew()
{
    QVERIFY(showLibrary(2));
    QVERIFY(playRow(0));
    QVERIFY(openNowPlaying());
    const QPointer<QQuickItem> before = t->item(u"nowPlayingView"_s);
    auto *nowPlaying = before->property("nowPlaying").value<NowPlayingViewModel *>();
    nowPlaying->setCurrentPage(NowPlayingViewModel::QueuePage);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QVERIFY(!showsNowPlaying());
    QVERIFY(before);
    QVERIFY(openNowPlaying());
    QTRY_VERIFY(!before);
    QCOMPARE(nowPlaying->currentPage(), int(NowPlayingViewModel::CoverPage));
    // The keyboard is with the new one.
    QTest::keyClick(t->window, Qt::Key_PageDown);
    QCOMPARE(nowPlaying->currentPage(), int(NowPlayingViewModel::LyricsPage));
    QTest::keyClick(t->window, Qt::Key_Escape);
    QVERIFY(!showsNowPlaying());
    // One that was opened once goes once.
    QTRY_VERIFY(!t->item(u"nowPlayingView"_s));
    QCOMPARE(nowPlaying->currentPage(), int(NowPlayingViewModel::CoverPage));
}

void ContentViewTest::nothingIsDrawnWhileNothingChanges()
{
    QFETCH(ThemeType, type);
    QVERIFY(showLibrary());
    QVERIFY(switchTo(type));
    QVERIFY(playRow(0));
    t->audioPlayer->pause();
    // Covers come in; then the picture stands.
    QVERIFY(comesToRest(*t->window));
    QSignalSpy frames(t->window, &QQuickWindow::frameSwapped);
    t->player->tick(100);
    // The root shows no time: nothing of it moves with the song.
    QVERIFY(comesToRest(*t->window));
    QCOMPARE(frames.size(), 0);
    QVERIFY(openNowPlaying());
    auto *nowPlaying = t->item(u"nowPlayingView"_s)->property("nowPlaying").value<NowPlayingViewModel *>();
    for (int page = 0; page < NowPlayingViewModel::PageCount; ++page) {
        nowPlaying->setCurrentPage(page);
        QVERIFY2(comesToRest(*t->window), qPrintable(u"page %1"_s.arg(page)));
    }
}

void ContentViewTest::forcedUpdateHidesTheAnnouncements()
{
    QVERIFY(t->show());
    QQmlComponent popup(t->engine.get());
    popup.setData("import QtQuick\nItem { objectName: \"announcement\" }", QUrl());
    QQmlComponent update(t->engine.get());
    update.setData("import QtQuick\nItem { objectName: \"update\" }", QUrl());
    QVERIFY(t->window->setProperty("announcementPopup", QVariant::fromValue(&popup)));
    QVERIFY(t->window->setProperty("updatePopup", QVariant::fromValue(&update)));
    QTRY_VERIFY(t->item(u"announcement"_s));
    QTRY_VERIFY(t->item(u"update"_s));
    t->window->setProperty("isForceUpdateRequired", true);
    QTRY_VERIFY(!t->item(u"announcement"_s));
    // What has to be done is still asked for.
    QVERIFY(t->shows(u"update"_s));
    t->window->setProperty("updatePopup", QVariant::fromValue<QQmlComponent *>(nullptr));
    t->window->setProperty("announcementPopup", QVariant::fromValue<QQmlComponent *>(nullptr));
}

void ContentViewTest::layersAboveAreEmptyWithoutAnythingToTell()
{
    QVERIFY(t->show());
    const QList<QQuickItem *> layers = t->item(u"themedRootView"_s)->parentItem()->childItems();
    QStringList names;
    for (const QQuickItem *layer : layers) {
        if (!layer->objectName().isEmpty())
            names.append(layer->objectName());
    }
    QCOMPARE(names, (QStringList{u"themedRootView"_s, u"updateLayer"_s, u"announcementLayer"_s}));
    QVERIFY(t->item(u"updateLayer"_s)->childItems().isEmpty());
    QVERIFY(t->item(u"announcementLayer"_s)->childItems().isEmpty());
}

void ContentViewTest::keyboardOnTheScreenPushesAllLooksButThePinkOne()
{
    QFETCH(ThemeType, type);
    QVERIFY(t->show());
    QVERIFY(switchTo(type));
    const auto bottom = [this] {
        const QQuickItem *bar = t->item(u"tabBar"_s);
        return qRound(bar->mapToScene(QPointF(0, bar->height())).y());
    };
    const int height = t->window->height();
    QTRY_COMPARE(bottom(), height);
    contentView()->setProperty("keyboardArea", QRectF(0, height - 300, t->window->width(), 300));
    QTRY_COMPARE(bottom(), type == ThemeType::kawaiiPink ? height : height - 300);
    contentView()->setProperty("keyboardArea", QRectF());
    QTRY_COMPARE(bottom(), height);
}

QTEST_MAIN(ContentViewTest)
#include "tst_content_view.moc"
