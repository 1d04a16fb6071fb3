// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AudioPlayerService.h"
#include "Views/ServerScreenTest.h"

#include <QAccessible>
#include <QPointingDevice>

using namespace cadorel;
using namespace Qt::StringLiterals;

class ServerScreensTest : public ServerScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void everyStateComesUp_data();
    void everyStateComesUp();
    void tabOpensThePlaceAndGivesItTheKeyboard();
    void pageIsClosedByEveryWayBack_data();
    void pageIsClosedByEveryWayBack();
    void rowOpensThePageAndSongsPlay();
    void listWorksByKeyboard();
    void menuOfARow_data();
    void menuOfARow();
    void menuStaysWithItsServer();
    void deletionNamesTheServer();
    void scanShowsItsProgressOnPageAndRow();
    void failedScanIsSaidAndDismissed();
    void staleServerOffersAScan();
    void pageOfAScannedServerIsDeletedByItsMenu();
    void songsOfServersCannotBeDeleted();

private:
    QPointingDevice *m_touch = QTest::createTouchDevice();
};

void ServerScreensTest::everyStateComesUp_data()
{
    addLooks();
}

void ServerScreensTest::everyStateComesUp()
{
    const QString endless = u"很长的名字"_s.repeated(60);
    t->folders->add(u"/music"_s, {endless + u".mp3"_s, u"<b>不是标记</b> & 🎵.flac"_s});
    const WebDAVConfig named = t->addServer(endless);
    const WebDAVConfig markup = t->addServer(u"<h1>不是标题</h1> 😀"_s, u"/"_s + endless);
    const WebDAVConfig empty = t->addServer(u"空"_s, u"/empty"_s);
    t->folders->add(u"/empty"_s, {});
    QVERIFY(t->scanServer(empty));
    QVERIFY(showInLook());
    openPlace();
    check(u"list"_s);

    t->servers->scanAll();
    QVERIFY(answersOne());
    check(u"list while scanning"_s);
    QVERIFY(answersAll());
    check(u"list with a failure"_s);

    for (const WebDAVConfig &config : {named, markup, empty}) {
        openPage(config);
        check(u"page"_s);
        t->servers->page()->scan();
        check(u"page while scanning"_s);
        QVERIFY(answersAll());
        check(u"page after a scan"_s);
        t->servers->page()->close();
    }

    openPage(named);
    t->servers->page()->playSongAt(0);
    QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
    t->servers->editServer(named.uuidText());
    QTRY_VERIFY(isOpen(u"serverForm"_s));
    QTRY_VERIFY(t->servers->form()->canSubmit());
    check(u"form"_s);
    t->servers->form()->serverURL()->edit(u"http://dav.example.com"_s);
    t->servers->form()->port()->edit(endless);
    t->servers->form()->username()->edit(QString());
    t->servers->form()->save();
    check(u"form with errors"_s);
    t->item(u"formFlickable"_s)
        ->setProperty("contentY", t->item(u"formFlickable"_s)->property("contentHeight"));
    check(u"form's end"_s);
    QMetaObject::invokeMethod(t->object(u"presetSheet"_s), "open");
    QTRY_VERIFY(isOpen(u"presetSheet"_s));
    check(u"presets"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"presetSheet"_s));
    t->servers->form()->applyPreset(6);
    t->servers->form()->username()->edit(u"me"_s);
    t->servers->form()->serverURL()->edit(u"https://dav.example.com"_s);
    t->servers->form()->save();
    QTRY_VERIFY(isGone(u"serverForm"_s));
    t->folders->refuse(503);
    t->servers->page()->scan();
    QVERIFY(answersOne());
    QTRY_VERIFY(t->shows(u"scanBanner"_s) && t->shows(u"staleBanner"_s));
    check(u"page with banners"_s);
    t->servers->page()->close();
    QTRY_VERIFY(!t->shows(u"serverPage"_s));

    t->item(u"serverList"_s)->forceActiveFocus();
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Delete);
    QTRY_VERIFY(isOpen(u"deleteServerDialog"_s));
    check(u"delete dialog"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"deleteServerDialog"_s));
}

void ServerScreensTest::tabOpensThePlaceAndGivesItTheKeyboard()
{
    twoServers();
    QVERIFY(t->show());
    openPlace();
    QVERIFY(!t->shows(u"libraryView"_s));
    QTRY_VERIFY(t->item(u"serverList"_s)->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_Down);
    QVERIFY(serverRow(0)->property("showsFocus").toBool());
    // There is nothing beneath it to go back to.
    QTest::keyClick(t->window, Qt::Key_Escape);
    QVERIFY(t->shows(u"webDAVView"_s));
    QVERIFY(!t->item(u"webDAVView"_s)->findChild<QQuickItem *>(u"backButton"_s)->isVisible());
}

void ServerScreensTest::pageIsClosedByEveryWayBack_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("button") << 0;
    QTest::newRow("back key") << 1;
    QTest::newRow("Alt+Left") << 2;
    QTest::newRow("mouse") << 3;
}

void ServerScreensTest::pageIsClosedByEveryWayBack()
{
    QFETCH(const int, way);
    twoServers();
    QVERIFY(t->show());
    openPlace();
    openPage(t->webDAVService->configs().constFirst());
    const auto goBack = [this, way](const QString &page) {
        switch (way) {
        case 0:
            t->click(t->item(page)->findChild<QQuickItem *>(u"backButton"_s));
            break;
        case 1:
            QTest::keyClick(t->window, Qt::Key_Back);
            break;
        case 2:
            QTest::keyClick(t->window, Qt::Key_Left, Qt::AltModifier);
            break;
        default:
            QTest::mouseClick(t->window, Qt::BackButton, {}, QPoint(200, 600));
        }
    };
    goBack(u"serverPage"_s);
    QTRY_VERIFY(!t->shows(u"serverPage"_s));
    QVERIFY(t->shows(u"serverList"_s));
    QVERIFY(t->servers->page()->serverId().isEmpty());
    QTRY_VERIFY(t->item(u"serverList"_s)->hasActiveFocus());
}

void ServerScreensTest::rowOpensThePageAndSongsPlay()
{
    QVERIFY(showLibrary(2));
    twoServers();
    openPlace();
    QTRY_VERIFY(serverRow(0));
    QTRY_VERIFY(serverRow(0)->property("status").toString().startsWith(u"3 首"_s));
    t->click(serverRow(0));
    QTRY_VERIFY(t->item(u"serverPage"_s)->property("covers").toBool());
    QTRY_VERIFY(songRow(1));
    t->click(songRow(1));
    QCOMPARE(currentTitle(), u"b"_s);
    QCOMPARE(t->audioPlayer->queue().size(), 3);
    QTRY_VERIFY(songRow(1)->property("isCurrent").toBool());
    QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
    // By touch too.
    const QPoint place = TestWindow::centre(songRow(2));
    QTest::touchEvent(t->window, m_touch).press(0, place, t->window);
    QTest::touchEvent(t->window, m_touch).release(0, place, t->window);
    QCOMPARE(currentTitle(), u"c"_s);
}

void ServerScreensTest::listWorksByKeyboard()
{
    twoServers();
    QVERIFY(t->show());
    openPlace();
    QTRY_VERIFY(t->item(u"serverList"_s)->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Down);
    QVERIFY(serverRow(1)->property("showsFocus").toBool());
    QTest::keyClick(t->window, Qt::Key_Home);
    QVERIFY(serverRow(0)->property("showsFocus").toBool());
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(t->item(u"serverPage"_s)->property("covers").toBool());
    QCOMPARE(t->servers->page()->name(), u"甲"_s);
    QTRY_VERIFY(t->item(u"serverSongList"_s)->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Return);
    QCOMPARE(currentTitle(), u"a"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->shows(u"serverPage"_s));
    QTRY_VERIFY(t->item(u"serverList"_s)->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_Menu);
    QTRY_VERIFY(isOpen(u"serverMenu"_s));
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"serverMenu"_s));
    QTest::keyClick(t->window, Qt::Key_Delete);
    QTRY_VERIFY(isOpen(u"deleteServerDialog"_s));
    QTest::keyClick(t->window, Qt::Key_Tab);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_COMPARE(t->servers->servers()->count(), 1);
}

void ServerScreensTest::menuOfARow_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("right button") << 0;
    QTest::newRow("long press") << 1;
    QTest::newRow("button of the row") << 2;
}

void ServerScreensTest::menuOfARow()
{
    QFETCH(const int, way);
    twoServers();
    QVERIFY(t->show());
    openPlace();
    QTRY_VERIFY(serverRow(1));
    const QPoint place = TestWindow::centre(serverRow(1));
    switch (way) {
    case 0:
        t->click(serverRow(1), Qt::RightButton);
        break;
    case 1:
        QTest::touchEvent(t->window, m_touch).press(0, place, t->window);
        QTRY_VERIFY(isOpen(u"serverMenu"_s));
        QTest::touchEvent(t->window, m_touch).release(0, place, t->window);
        break;
    default:
        t->click(serverRow(1)->findChild<QQuickItem *>(u"serverMore"_s));
    }
    QTRY_VERIFY(isOpen(u"serverMenu"_s));
    QVERIFY(!t->servers->page()->isOpen());
    t->click(u"editServerItem"_s);
    QTRY_VERIFY(isOpen(u"serverForm"_s));
    QCOMPARE(textOf(u"nameFieldText"_s), u"乙"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"serverForm"_s));

    t->click(serverRow(1), Qt::RightButton);
    QTRY_VERIFY(isOpen(u"serverMenu"_s));
    t->click(u"scanServerItem"_s);
    QVERIFY(answersOne());
    QTRY_VERIFY(serverRow(1)->property("status").toString().startsWith(u"1 首"_s));
}

void ServerScreensTest::menuStaysWithItsServer()
{
    const QList<WebDAVConfig> servers = twoServers();
    QVERIFY(t->show());
    openPlace();
    QTRY_VERIFY(serverRow(1));
    t->click(serverRow(1), Qt::RightButton);
    QTRY_VERIFY(isOpen(u"serverMenu"_s));
    t->servers->deleteServer(servers.constFirst().uuidText());
    QTRY_COMPARE(t->servers->servers()->count(), 1);
    t->click(u"deleteServerItem"_s);
    QTRY_VERIFY(isOpen(u"deleteServerDialog"_s));
    QCOMPARE(t->object(u"deleteServerDialog"_s)->property("serverName").toString(), u"乙"_s);
}

void ServerScreensTest::deletionNamesTheServer()
{
    twoServers();
    QVERIFY(t->show());
    QTRY_COMPARE(t->library->songs()->count(), 3);
    openPlace();
    QTRY_VERIFY(serverRow(0));
    const auto ask = [this] {
        t->click(serverRow(0), Qt::RightButton);
        QTRY_VERIFY(isOpen(u"serverMenu"_s));
        t->click(u"deleteServerItem"_s);
        QTRY_VERIFY(isOpen(u"deleteServerDialog"_s));
    };
    ask();
    QVERIFY(t->object(u"deleteServerDialog"_s)->property("message").toString().contains(u"「甲」"_s));
    QVERIFY(t->object(u"deleteServerDialog"_s)->property("message").toString().contains(u"从资料库移除"_s));
    t->click(u"cancelButton"_s);
    QTRY_VERIFY(isGone(u"deleteServerDialog"_s));
    QCOMPARE(t->servers->servers()->count(), 2);
    ask();
    t->click(u"acceptButton"_s);
    QTRY_COMPARE(t->servers->servers()->count(), 1);
    QTRY_COMPARE(t->library->songs()->count(), 0);
    QVERIFY(t->shows(u"webDAVView"_s));
}

void ServerScreensTest::scanShowsItsProgressOnPageAndRow()
{
    const WebDAVConfig config = t->addServer(u"甲"_s);
    t->folders->add(u"/music"_s, {u"1.mp3"_s, u"a/"_s, u"b/"_s});
    t->folders->add(u"/music/a"_s, {u"2.mp3"_s});
    t->folders->add(u"/music/b"_s, {u"3.mp3"_s});
    QVERIFY(t->show());
    openPlace();
    openPage(config);
    QVERIFY(t->shows(u"serverUnscanned"_s));
    t->click(u"firstScanButton"_s);
    QTRY_VERIFY(t->shows(u"serverScanning"_s));
    QVERIFY(t->shows(u"scanProgress"_s));
    QVERIFY(!t->item(u"scanButton"_s)->isEnabled());
    QVERIFY(answersOne());
    QVERIFY(answersOne());
    QTRY_COMPARE(t->item(u"scanProgress"_s)->property("progress").toDouble(), 0.1);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->shows(u"serverPage"_s));
    QCOMPARE(serverRow(0)->property("status").toString(), u"正在扫描…"_s);
    QVERIFY(serverRow(0)->findChild<QQuickItem *>(u"serverProgress"_s)->isVisible());
    QCOMPARE(serverRow(0)->property("progress").toDouble(), 0.1);
    t->click(serverRow(0));
    QTRY_VERIFY(t->item(u"serverPage"_s)->property("covers").toBool());
    QVERIFY(answersOne());
    QTRY_VERIFY(songRow(2));
    QVERIFY(!t->shows(u"scanProgress"_s));
    QVERIFY(t->item(u"serverPage"_s)
                ->findChild<QQuickItem *>(u"pageSubtitle"_s)
                ->property("text")
                .toString()
                .startsWith(u"3 首歌曲"_s));
}

void ServerScreensTest::failedScanIsSaidAndDismissed()
{
    const QList<WebDAVConfig> servers = twoServers();
    QVERIFY(t->show());
    openPlace();
    openPage(servers.constFirst());
    t->folders->refuse(401);
    t->click(u"scanButton"_s);
    QVERIFY(answersOne());
    QTRY_VERIFY(t->shows(u"scanBanner"_s));
    QCOMPARE(textOf(u"scanBanner"_s), u"认证失败，请检查用户名和密码"_s);
    QVERIFY(songRow(0));
    t->click(t->item(u"scanBanner"_s)->findChild<QQuickItem *>(u"dismissButton"_s));
    QTRY_VERIFY(!t->shows(u"scanBanner"_s));

    // Without songs the failure takes their place.
    t->servers->page()->close();
    QTRY_VERIFY(!t->shows(u"serverPage"_s));
    openPage(servers.constLast());
    t->click(u"firstScanButton"_s);
    QVERIFY(answersOne());
    QTRY_VERIFY(t->shows(u"serverFailed"_s));
    QVERIFY(!t->shows(u"scanBanner"_s));
    t->folders->refuse(0);
    t->click(u"retryButton"_s);
    QVERIFY(answersOne());
    QTRY_VERIFY(songRow(0));
    QVERIFY(!t->shows(u"serverFailed"_s));
}

void ServerScreensTest::staleServerOffersAScan()
{
    const QList<WebDAVConfig> servers = twoServers();
    QVERIFY(t->show());
    openPlace();
    openPage(servers.constFirst());
    QVERIFY(!t->shows(u"staleBanner"_s));
    t->click(u"serverPageMore"_s);
    QTRY_VERIFY(isOpen(u"serverPageMenu"_s));
    t->click(u"editServerItem"_s);
    QTRY_VERIFY(isOpen(u"serverForm"_s));
    QTRY_VERIFY(t->item(u"formSave"_s)->isEnabled());
    fill(u"pathField"_s, u"/b"_s);
    t->click(u"formSave"_s);
    QTRY_VERIFY(isGone(u"serverForm"_s));
    QTRY_VERIFY(t->shows(u"staleBanner"_s));
    QCOMPARE(textOf(u"staleBanner"_s), u"服务器设置已更改，重新扫描后生效"_s);
    t->click(u"hintAction"_s);
    QVERIFY(answersOne());
    QTRY_VERIFY(!t->shows(u"staleBanner"_s));
    QTRY_COMPARE(t->servers->page()->songs()->count(), 1);
    QTRY_COMPARE(songRow(0)->property("title").toString(), u"d"_s);
}

void ServerScreensTest::pageOfAScannedServerIsDeletedByItsMenu()
{
    const QList<WebDAVConfig> servers = twoServers();
    QVERIFY(t->show());
    openPlace();
    openPage(servers.constFirst());
    t->click(u"serverPageMore"_s);
    QTRY_VERIFY(isOpen(u"serverPageMenu"_s));
    t->click(u"deleteServerItem"_s);
    QTRY_VERIFY(isOpen(u"deleteServerDialog"_s));
    t->click(u"acceptButton"_s);
    QTRY_VERIFY(!t->shows(u"serverPage"_s));
    QCOMPARE(t->servers->servers()->count(), 1);
    QTRY_VERIFY(t->item(u"serverList"_s)->hasActiveFocus());
}

void ServerScreensTest::songsOfServersCannotBeDeleted()
{
    t->addFile(u"a.mp3"_s, {u"本地"_s, {}, {}, 100, {}});
    QVERIFY(t->scan());
    twoServers();
    QVERIFY(t->show());
    QTRY_COMPARE(t->library->songs()->count(), 4);
    QTRY_VERIFY(t->row(1));
    t->click(t->row(1), Qt::RightButton);
    QTRY_VERIFY(isOpen(u"songMenu"_s));
    QVERIFY(!t->item(u"deleteItem"_s)->isEnabled());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"songMenu"_s));
    QTest::keyClick(t->window, Qt::Key_Delete);
    QVERIFY(isGone(u"deleteDialog"_s));
    t->click(t->row(0), Qt::RightButton);
    QTRY_VERIFY(isOpen(u"songMenu"_s));
    QVERIFY(t->item(u"deleteItem"_s)->isEnabled());
}

QTEST_MAIN(ServerScreensTest)
#include "tst_server_screens.moc"
