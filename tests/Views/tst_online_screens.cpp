// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/PlaylistService.h"
#include "Views/HeldKey.h"
#include "Views/OnlineScreenTest.h"

#include <QPointingDevice>
#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The place of the online platforms in the real window, over a faked web.
class OnlineScreensTest : public OnlineScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void everyStateComesUp_data();
    void everyStateComesUp();
    void returnSubmitsTheSearchAndRowsPlay();
    void searchingShowsThatItRuns();
    void fieldIsEmptiedByItsButtonAndByEscape();
    void listIsReachedFromTheFieldAndWalkedByKeys();
    void platformIsChosenByMouseAndByKeys();
    void failureIsSaidRetriedAndCleared();
    void nothingFoundLeadsToAnotherPlatform();
    void rowOffersItsMenu_data();
    void rowOffersItsMenu();
    void menuStaysWithItsSong();
    void songIsMadeAFavouriteInItsMenu();
    void chartsOpenAndCloseByEveryWay_data();
    void chartsOpenAndCloseByEveryWay();
    void heldReturnOpensAChartOnce();
    void chartOpensPlaysAndGoesBack();
    void gridIsWalkedByKeys();
    void failedChartsAreTriedAgain();
    void addressIsSavedInTheForm();
    void wrongAddressIsAlertedAndStays();
    void resetAsksFirst();
    void testOfTheConnectionShowsNothing();

private:
    /// Searches and finds that many songs.
    void find(int count);
    /// The charts of the first platform.
    void openCharts(int count);

    QPointingDevice *m_touch = QTest::createTouchDevice();
};

void OnlineScreensTest::find(int count)
{
    showPlace();
    searchFor(u"夜"_s);
    QVERIFY(answers(u"type=search"_s, onlineAnswers::found(songs(count))));
    QTRY_COMPARE(search().songs()->count(), count);
    QTRY_VERIFY(rowOf(u"onlineSongList"_s, 0));
}

void OnlineScreensTest::openCharts(int count)
{
    showPlace();
    t->click(u"chartsButton"_s);
    QVERIFY(answers(u"type=toplists"_s, onlineAnswers::charts(topLists(count))));
    QTRY_VERIFY(covers(u"chartsPage"_s));
    QTRY_VERIFY(t->shows(u"chartGrid"_s));
}

void OnlineScreensTest::everyStateComesUp_data()
{
    addLooks();
}

void OnlineScreensTest::everyStateComesUp()
{
    const QString endless = u"很长的名字"_s.repeated(60);
    QVERIFY(showInLook());
    openPlace();
    QTRY_VERIFY(t->shows(u"searchInitial"_s));
    check(u"initial"_s);
    search().setSearchText(endless);
    search().performSearch();
    QTRY_VERIFY(t->shows(u"searchRunning"_s));
    check(u"searching"_s);
    OnlineSong markup = songs(1, MusicPlatform::qq).constFirst();
    markup.name = u"<b>不是标记</b> & 🎵"_s;
    OnlineSong vast = songs(1).constFirst();
    vast.name = vast.artist = vast.album = endless;
    QVERIFY(answers(u"type=search"_s, onlineAnswers::found({markup, vast, OnlineSong()})));
    QTRY_VERIFY(t->shows(u"onlineSongList"_s));
    check(u"results"_s);
    search().playSongAt(1);
    QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
    check(u"playing"_s);
    search().performSearch();
    QVERIFY(answers(u"type=search"_s, onlineAnswers::broken(endless)));
    QTRY_VERIFY(t->shows(u"searchFailed"_s));
    check(u"failed"_s);
    search().performSearch();
    QVERIFY(answers(u"type=search"_s, onlineAnswers::found({})));
    QTRY_VERIFY(t->shows(u"searchEmpty"_s));
    check(u"empty"_s);

    t->click(u"chartsButton"_s);
    QTRY_VERIFY(covers(u"chartsPage"_s));
    QVERIFY(t->shows(u"chartsLoading"_s));
    check(u"charts loading"_s);
    QVERIFY(answers(u"type=toplists"_s, onlineAnswers::charts({{u"1"_s, endless, endless, {}},
                                                               {u"2"_s, u"<i>榜</i>"_s, {}, {}}})));
    QTRY_VERIFY(t->shows(u"chartGrid"_s));
    check(u"charts"_s);
    charts().openChart(0);
    QTRY_VERIFY(covers(u"chartPage"_s));
    check(u"chart loading"_s);
    QVERIFY(answers(u"type=toplist"_s, onlineAnswers::chartSongs({markup, vast})));
    QTRY_VERIFY(t->shows(u"chartSongList"_s));
    check(u"chart"_s);
    charts().page()->retry();
    QVERIFY(answers(u"type=toplist"_s, onlineAnswers::broken(endless)));
    QTRY_VERIFY(t->shows(u"chartEmpty"_s));
    check(u"chart without songs"_s);
    charts().page()->close();
    QTRY_VERIFY(!t->shows(u"chartPage"_s));
    charts().selectPlatform(2);
    QVERIFY(answers(u"type=toplists"_s, onlineAnswers::broken(endless)));
    QTRY_VERIFY(t->shows(u"chartsEmpty"_s));
    check(u"no charts"_s);
    charts().close();
    QTRY_VERIFY(!t->shows(u"chartsPage"_s));

    t->online->settings()->open();
    QTRY_VERIFY(isOpen(u"apiSettings"_s));
    t->online->settings()->tempURL()->edit(endless);
    check(u"address"_s);
    t->online->settings()->saveURL();
    QTRY_VERIFY(isOpen(u"invalidURLAlert"_s));
    check(u"alert"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"invalidURLAlert"_s));
    t->online->settings()->setShowResetAlert(true);
    QTRY_VERIFY(isOpen(u"resetAlert"_s));
    check(u"question"_s);
}

void OnlineScreensTest::returnSubmitsTheSearchAndRowsPlay()
{
    find(3);
    QQuickItem *row = rowOf(u"onlineSongList"_s, 1);
    QCOMPARE(row->property("title").toString(), u"歌 1"_s);
    QCOMPARE(row->property("subtitle").toString(), u"歌手·专辑"_s);
    t->click(row);
    QCOMPARE(currentName(), u"歌 1"_s);
    QCOMPARE(t->audioPlayer->onlineQueue().size(), 3);
    QTRY_VERIFY(row->property("isCurrent").toBool());
    QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
    // By touch too.
    const QPoint place = TestWindow::centre(rowOf(u"onlineSongList"_s, 2));
    QTest::touchEvent(t->window, m_touch).press(0, place, t->window);
    QTest::touchEvent(t->window, m_touch).release(0, place, t->window);
    QCOMPARE(currentName(), u"歌 2"_s);
}

void OnlineScreensTest::searchingShowsThatItRuns()
{
    showPlace();
    QVERIFY(t->shows(u"searchInitial"_s));
    searchFor(u"夜"_s);
    QTRY_VERIFY(t->shows(u"searchRunning"_s));
    QVERIFY(!t->shows(u"searchInitial"_s));
    QVERIFY(!t->shows(u"onlineSongList"_s));
}

void OnlineScreensTest::fieldIsEmptiedByItsButtonAndByEscape()
{
    showPlace();
    QVERIFY(!t->shows(u"onlineSearchClear"_s));
    fill(u"onlineSearchText"_s, u"夜航"_s);
    QCOMPARE(search().searchText(), u"夜航"_s);
    t->click(u"onlineSearchClear"_s);
    QCOMPARE(search().searchText(), QString());
    QCOMPARE(textOf(u"onlineSearchText"_s), QString());
    QVERIFY(t->item(u"onlineSearchText"_s)->hasActiveFocus());
    type(u"a b"_s);
    QCOMPARE(search().searchText(), u"a b"_s); // a blank is text, and plays nothing
    QTest::keyClick(t->window, Qt::Key_Escape);
    QCOMPARE(search().searchText(), QString());
    QVERIFY(t->web->sent.isEmpty());
}

void OnlineScreensTest::listIsReachedFromTheFieldAndWalkedByKeys()
{
    find(5);
    t->item(u"onlineSearchText"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Down);
    QVERIFY(t->item(u"onlineSongList"_s)->hasActiveFocus());
    QVERIFY(rowOf(u"onlineSongList"_s, 0)->property("showsFocus").toBool());
    QTest::keyClick(t->window, Qt::Key_End);
    QTest::keyClick(t->window, Qt::Key_Return);
    QCOMPARE(currentName(), u"歌 4"_s);
}

void OnlineScreensTest::platformIsChosenByMouseAndByKeys()
{
    showPlace();
    t->click(u"searchPlatform2"_s);
    QCOMPARE(search().platformIndex(), 2);
    QVERIFY(t->web->sent.isEmpty());
    fill(u"onlineSearchText"_s, u"夜"_s);
    t->item(u"searchPlatform2"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Right);
    QVERIFY(t->item(u"searchPlatform3"_s)->hasActiveFocus());
    QCOMPARE(search().platformIndex(), 2);
    QTest::keyClick(t->window, Qt::Key_Return);
    QCOMPARE(search().platformIndex(), 3);
    QVERIFY(
        answers(u"type=aggregateSearch"_s, onlineAnswers::found(songs(1) + songs(1, MusicPlatform::kuwo))));
    QTRY_VERIFY(rowOf(u"onlineSongList"_s, 1));
    QCOMPARE(rowOf(u"onlineSongList"_s, 1)->property("trailingText").toString(), u"酷我"_s);
    QAccessibleInterface *choice = QAccessible::queryAccessibleInterface(t->item(u"searchPlatform3"_s));
    QVERIFY(choice);
    QCOMPARE(choice->text(QAccessible::Name), u"聚合"_s);
    QVERIFY(choice->state().checked);
}

void OnlineScreensTest::failureIsSaidRetriedAndCleared()
{
    showPlace();
    searchFor(u"夜"_s);
    QVERIFY(answers(u"type=search"_s, onlineAnswers::broken(u"无法连接服务器"_s)));
    QTRY_VERIFY(t->shows(u"searchFailed"_s));
    QCOMPARE(t->item(u"searchFailed"_s)->property("description").toString(), u"搜索失败: 无法连接服务器"_s);
    fill(u"onlineSearchText"_s, u"别的"_s);
    t->click(u"searchRetry"_s);
    QCOMPARE(textOf(u"onlineSearchText"_s), u"夜"_s);
    QVERIFY(answers(u"keyword=夜"_s, onlineAnswers::broken(u"还是不行"_s)));
    QTRY_VERIFY(t->shows(u"searchClear"_s));
    t->click(u"searchClear"_s);
    QTRY_VERIFY(t->shows(u"searchInitial"_s));
    QCOMPARE(textOf(u"onlineSearchText"_s), QString());
}

void OnlineScreensTest::nothingFoundLeadsToAnotherPlatform()
{
    showPlace();
    searchFor(u"夜"_s);
    QVERIFY(answers(u"source=netease"_s, onlineAnswers::found({})));
    QTRY_VERIFY(t->shows(u"searchEmpty"_s));
    t->click(u"searchNextPlatform"_s);
    QCOMPARE(t->item(u"searchPlatform"_s)->property("selectedIndex").toInt(), 1);
    QVERIFY(answers(u"source=kuwo"_s, onlineAnswers::found(songs(1, MusicPlatform::kuwo))));
    QTRY_VERIFY(t->shows(u"onlineSongList"_s));
}

void OnlineScreensTest::rowOffersItsMenu_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("right button") << 0;
    QTest::newRow("long press") << 1;
    QTest::newRow("menu key") << 2;
}

void OnlineScreensTest::rowOffersItsMenu()
{
    QFETCH(const int, way);
    find(3);
    QQuickItem *row = rowOf(u"onlineSongList"_s, 2);
    const QPoint place = TestWindow::centre(row);
    switch (way) {
    case 0:
        t->click(row, Qt::RightButton);
        break;
    case 1:
        QTest::touchEvent(t->window, m_touch).press(0, place, t->window);
        QTRY_VERIFY(isOpen(u"onlineSongListMenu"_s));
        QTest::touchEvent(t->window, m_touch).release(0, place, t->window);
        break;
    default:
        t->item(u"onlineSongList"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(t->window, Qt::Key_End);
        QTest::keyClick(t->window, Qt::Key_Menu);
    }
    QTRY_VERIFY(isOpen(u"onlineSongListMenu"_s));
    QCOMPARE(currentName(), QString());
    t->click(u"playItem"_s);
    QTRY_COMPARE(currentName(), u"歌 2"_s);
}

void OnlineScreensTest::menuStaysWithItsSong()
{
    find(3);
    t->click(rowOf(u"onlineSongList"_s, 0), Qt::RightButton);
    QTRY_VERIFY(isOpen(u"onlineSongListMenu"_s));
    // An older search answers late and puts other songs before it.
    search().performSearch();
    QVERIFY(answers(u"type=search"_s,
                    onlineAnswers::found(songs(2, MusicPlatform::qq) + songs(1, MusicPlatform::netease))));
    QTRY_COMPARE(search().songs()->songs().constFirst().platform, MusicPlatform::qq);
    t->click(u"playItem"_s);
    QTRY_COMPARE(currentName(), u"歌 0"_s);
    QCOMPARE(t->audioPlayer->currentOnlineSong()->platform, MusicPlatform::netease);
}

void OnlineScreensTest::songIsMadeAFavouriteInItsMenu()
{
    find(2);
    t->click(rowOf(u"onlineSongList"_s, 1), Qt::RightButton);
    QTRY_VERIFY(isOpen(u"onlineSongListMenu"_s));
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Down);
    QTRY_VERIFY(t->item(u"favoriteItem"_s)->property("highlighted").toBool());
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(t->playlistService->isFavorite(songs(2).constLast()));
    QVERIFY(!t->playlistService->isFavorite(songs(2).constFirst()));
    QTRY_VERIFY(rowOf(u"onlineSongList"_s, 1)->property("isFavorite").toBool());
}

void OnlineScreensTest::chartsOpenAndCloseByEveryWay_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("button") << 0;
    QTest::newRow("back key") << 1;
    QTest::newRow("Escape") << 2;
    QTest::newRow("mouse") << 3;
}

void OnlineScreensTest::chartsOpenAndCloseByEveryWay()
{
    QFETCH(const int, way);
    openCharts(3);
    t->click(rowOf(u"chartGrid"_s, 1));
    QTRY_VERIFY(covers(u"chartPage"_s));
    const auto goBack = [this, way](const QString &page) {
        switch (way) {
        case 0:
            t->click(t->item(page)->findChild<QQuickItem *>(u"backButton"_s));
            break;
        case 1:
            QTest::keyClick(t->window, Qt::Key_Back);
            break;
        case 2:
            QTest::keyClick(t->window, Qt::Key_Escape);
            break;
        default:
            QTest::mouseClick(t->window, Qt::BackButton, {}, QPoint(200, 600));
        }
    };
    goBack(u"chartPage"_s);
    QTRY_VERIFY(!t->shows(u"chartPage"_s));
    QVERIFY(t->shows(u"chartGrid"_s));
    goBack(u"chartsPage"_s);
    QTRY_VERIFY(!t->shows(u"chartsPage"_s));
    QVERIFY(t->shows(u"searchInitial"_s));
    QVERIFY(!charts().isOpen());
}

void OnlineScreensTest::heldReturnOpensAChartOnce()
{
    openCharts(3);
    QQuickItem *grid = t->item(u"chartGrid"_s);
    grid->forceActiveFocus();
    QTest::keyClick(t->window, Qt::Key_Right);
    QSignalSpy opened(grid, SIGNAL(openRequested(int)));
    QVERIFY(opened.isValid());
    holdReturn(t->window);
    QCOMPARE(opened.size(), 1);
}

void OnlineScreensTest::chartOpensPlaysAndGoesBack()
{
    openCharts(3);
    t->click(rowOf(u"chartGrid"_s, 2));
    QTRY_VERIFY(covers(u"chartPage"_s));
    QVERIFY(t->shows(u"chartLoading"_s));
    QVERIFY(!t->item(u"playAllButton"_s)->isEnabled());
    QVERIFY(answers(u"id=c2"_s, onlineAnswers::chartSongs(songs(4))));
    QTRY_COMPARE(textOf(u"playAllButton"_s), u"播放全部 (4)"_s);
    t->click(u"playAllButton"_s);
    QCOMPARE(currentName(), u"歌 0"_s);
    QCOMPARE(t->audioPlayer->onlineQueue().size(), 4);
    QTRY_VERIFY(rowOf(u"chartSongList"_s, 2));
    t->click(rowOf(u"chartSongList"_s, 2));
    QCOMPARE(currentName(), u"歌 2"_s);
    // The keyboard was with the list and comes back to the grid.
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(t->item(u"chartGrid"_s)->hasActiveFocus());
}

void OnlineScreensTest::gridIsWalkedByKeys()
{
    openCharts(5);
    QTRY_VERIFY(t->item(u"chartGrid"_s)->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_Right);
    QCOMPARE(t->item(u"chartGrid"_s)->property("currentIndex").toInt(), 0);
    QTest::keyClick(t->window, Qt::Key_Right);
    QTest::keyClick(t->window, Qt::Key_Down);
    QCOMPARE(t->item(u"chartGrid"_s)->property("currentIndex").toInt(), 3);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(covers(u"chartPage"_s));
    QCOMPARE(charts().page()->name(), u"榜 3"_s);
}

void OnlineScreensTest::failedChartsAreTriedAgain()
{
    showPlace();
    t->click(u"initialCharts"_s);
    QVERIFY(answers(u"type=toplists"_s, onlineAnswers::broken(u"no"_s)));
    QTRY_VERIFY(t->shows(u"chartsEmpty"_s));
    QTRY_VERIFY(covers(u"chartsPage"_s));
    t->click(u"chartsRetry"_s);
    QTRY_VERIFY(t->shows(u"chartsLoading"_s));
    QVERIFY(answers(u"type=toplists"_s, onlineAnswers::charts(topLists(1))));
    QTRY_VERIFY(t->shows(u"chartGrid"_s));
    t->click(u"chartsPlatform1"_s);
    QVERIFY(answers(u"source=kuwo&type=toplists"_s, onlineAnswers::charts(topLists(2))));
    QTRY_COMPARE(charts().charts()->count(), 2);
}

void OnlineScreensTest::addressIsSavedInTheForm()
{
    showPlace();
    t->click(u"apiSettingsButton"_s);
    QTRY_VERIFY(isOpen(u"apiSettings"_s));
    QTRY_VERIFY(t->item(u"apiAddressText"_s)->hasActiveFocus());
    QCOMPARE(textOf(u"apiAddressText"_s), t->apiConfig->baseURL());
    fill(u"apiAddressText"_s, u" https://music.example "_s);
    t->click(u"apiSave"_s);
    QCOMPARE(t->apiConfig->baseURL(), u"https://music.example"_s);
    QVERIFY(textOf(u"apiAddressNote"_s).contains(u"已保存"_s));
    t->click(u"apiSettingsClose"_s);
    QTRY_VERIFY(isGone(u"apiSettings"_s));
    searchFor(u"夜"_s);
    QVERIFY(t->web->sent.constLast().url.toString().startsWith(u"https://music.example/api/?"_s));
}

void OnlineScreensTest::wrongAddressIsAlertedAndStays()
{
    showPlace();
    const QString before = t->apiConfig->baseURL();
    t->click(u"apiSettingsButton"_s);
    QTRY_VERIFY(isOpen(u"apiSettings"_s));
    fill(u"apiAddressText"_s, u"ftp://music.example"_s);
    t->click(u"apiSave"_s);
    QTRY_VERIFY(isOpen(u"invalidURLAlert"_s));
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(isGone(u"invalidURLAlert"_s));
    QVERIFY(isOpen(u"apiSettings"_s));
    QCOMPARE(textOf(u"apiAddressText"_s), u"ftp://music.example"_s);
    QCOMPARE(t->apiConfig->baseURL(), before);
}

void OnlineScreensTest::resetAsksFirst()
{
    t->apiConfig->setBaseURL(u"https://music.example"_s);
    showPlace();
    t->click(u"apiSettingsButton"_s);
    QTRY_VERIFY(isOpen(u"apiSettings"_s));
    t->click(u"apiReset"_s);
    QTRY_VERIFY(isOpen(u"resetAlert"_s));
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"resetAlert"_s));
    QCOMPARE(t->apiConfig->baseURL(), u"https://music.example"_s);
    t->click(u"apiReset"_s);
    QTRY_VERIFY(isOpen(u"resetAlert"_s));
    QTest::keyClick(t->window, Qt::Key_Tab);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_COMPARE(t->apiConfig->baseURL(), APIConfigService::defaultBaseURL);
    QCOMPARE(textOf(u"apiAddressText"_s), APIConfigService::defaultBaseURL);
}

void OnlineScreensTest::testOfTheConnectionShowsNothing()
{
    showPlace();
    t->click(u"apiSettingsButton"_s);
    QTRY_VERIFY(isOpen(u"apiSettings"_s));
    const QString note = textOf(u"apiAddressNote"_s);
    t->click(u"apiTest"_s);
    QVERIFY(answers(u"source=netease&type=toplists"_s, onlineAnswers::broken(u"no"_s)));
    QTRY_VERIFY(!t->onlineMusicService->isLoadingTopLists());
    QCOMPARE(textOf(u"apiAddressNote"_s), note);
    QVERIFY(isGone(u"invalidURLAlert"_s) && isGone(u"resetAlert"_s));
}

QTEST_MAIN(OnlineScreensTest)
#include "tst_online_screens.moc"
