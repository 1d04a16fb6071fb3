// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AudioPlayerService.h"
#include "ViewModels/WebDAVServerListModel.h"
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
    void headerOpensThePlaceAndEscapeClosesIt();
    void placeIsClosedByEveryWayBack_data();
    void placeIsClosedByEveryWayBack();
    void emptyPlaceOffersTheForm();
    void formIsFilledAndSavedByKeyboard();
    void presetIsChosenByKeyboardAndMouse_data();
    void presetIsChosenByKeyboardAndMouse();
    void formSaysWhatIsWrongAndGoesThere();
    void passwordIsMaskedUntilRevealed();
    void testOfAConnectionIsShown();
    void escapeLeavesTheForm();
    void pressBesideTheFormKeepsIt();
    void storedPasswordArrivesWhileTheWindowLives();
    void spaceInAFieldIsTyped();
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

    bool answersOne() const
    {
        return QTest::qWaitFor([this] { return t->folders->answerOne(); });
    }
    /// Answers until no server is being scanned or waits for it.
    bool answersAll() const
    {
        return QTest::qWaitFor([this] {
            t->folders->answerAll();
            const WebDAVServerListModel *list = t->servers->servers();
            for (int row = 0; row < list->count(); ++row) {
                const QString status = list->index(row).data(WebDAVServerListModel::StatusRole).toString();
                if (status.startsWith(u"正在"_s) || status.startsWith(u"等待"_s))
                    return false;
            }
            return true;
        });
    }
    /// Two servers, the first with three songs.
    QList<WebDAVConfig> twoServers()
    {
        t->folders->add(u"/music"_s, {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s});
        t->folders->add(u"/b"_s, {u"d.mp3"_s});
        const QList<WebDAVConfig> servers = {t->addServer(u"甲"_s), t->addServer(u"乙"_s, u"/b"_s)};
        if (!t->scanServer(servers.constFirst()))
            qFatal("a scan does not end");
        return servers;
    }
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
    showInLook();
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
    QTRY_VERIFY(t->shows(u"playerBar"_s));
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

    t->item(u"serverList"_s)->forceActiveFocus();
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Delete);
    QTRY_VERIFY(isOpen(u"deleteServerDialog"_s));
    check(u"delete dialog"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"deleteServerDialog"_s));
}

void ServerScreensTest::headerOpensThePlaceAndEscapeClosesIt()
{
    showLibrary();
    QQuickItem *button = t->item(u"serversButton"_s);
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(button);
    QVERIFY(accessible);
    QCOMPARE(accessible->text(QAccessible::Name), u"服务器"_s);
    button->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(t->item(u"serversView"_s)->property("covers").toBool());
    // What lies beneath is neither seen nor reached.
    QVERIFY(!t->shows(u"libraryView"_s));
    QVERIFY(t->item(u"serversView"_s)->hasActiveFocus() || t->item(u"serverList"_s)->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->shows(u"serversView"_s));
    QVERIFY(t->shows(u"libraryView"_s));
    QTRY_VERIFY(button->hasActiveFocus());

    // A click leaves the keyboard with the list, and there it comes back to.
    t->item(u"songList"_s)->forceActiveFocus();
    openPlace();
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(t->item(u"songList"_s)->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Return);
    QCOMPARE(currentTitle(), u"歌 0"_s);
}

void ServerScreensTest::placeIsClosedByEveryWayBack_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("button") << 0;
    QTest::newRow("back key") << 1;
    QTest::newRow("Alt+Left") << 2;
    QTest::newRow("mouse") << 3;
}

void ServerScreensTest::placeIsClosedByEveryWayBack()
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
    goBack(u"serversView"_s);
    QTRY_VERIFY(!t->shows(u"serversView"_s));
}

void ServerScreensTest::emptyPlaceOffersTheForm()
{
    QVERIFY(t->show());
    openPlace();
    QVERIFY(t->shows(u"serversEmpty"_s));
    QVERIFY(!t->shows(u"scanAllButton"_s));
    t->click(u"emptyAddServer"_s);
    QTRY_VERIFY(isOpen(u"serverForm"_s));
    QVERIFY(t->item(u"formSave"_s)->isEnabled());
    QVERIFY(t->item(u"testButton"_s)->isEnabled());
    t->click(u"formCancel"_s);
    QTRY_VERIFY(isGone(u"serverForm"_s));
    QVERIFY(!t->servers->form()->isOpen());
    QVERIFY(t->shows(u"serversEmpty"_s));
}

void ServerScreensTest::formIsFilledAndSavedByKeyboard()
{
    QVERIFY(t->show());
    openPlace();
    openForm();
    // From the first button through all fields, in the order in which they stand.
    QTest::keyClick(t->window, Qt::Key_Tab);
    for (const auto &[field, text] : {std::pair(u"nameField"_s, u"Home"_s),
                                      {u"addressField"_s, u"dav.example.com:5006"_s},
                                      {u"portField"_s, u"443"_s},
                                      {u"pathField"_s, u"music"_s},
                                      {u"usernameField"_s, u"me"_s},
                                      {u"passwordField"_s, u" p w "_s}}) {
        QTRY_VERIFY2(t->item(field + u"Text"_s)->hasActiveFocus(), qPrintable(field));
        if (field == u"addressField"_s || field == u"pathField"_s)
            QTest::keyClick(t->window, Qt::Key_End);
        type(text);
        QTest::keyClick(t->window, Qt::Key_Tab);
    }
    t->item(u"formSave"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(isGone(u"serverForm"_s));
    QCOMPARE(t->webDAVService->configs().size(), 1);
    const WebDAVConfig config = t->webDAVService->configs().constFirst();
    QCOMPARE(config.name, u"Home"_s);
    QCOMPARE(config.serverURL, u"https://dav.example.com:5006"_s);
    QCOMPARE(config.port, std::optional(443));
    QCOMPARE(config.basePath, u"/music"_s);
    QCOMPARE(config.username, u"me"_s);
    QCOMPARE(t->secrets->secret(config.passwordKeychainKey()), " p w "_ba);
    QTRY_VERIFY(serverRow(0));
    QCOMPARE(serverRow(0)->property("name").toString(), u"Home"_s);
    QTRY_VERIFY(t->item(u"serverList"_s)->hasActiveFocus() || t->item(u"serversView"_s)->hasActiveFocus());
}

void ServerScreensTest::presetIsChosenByKeyboardAndMouse_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("keyboard") << true;
    QTest::newRow("mouse") << false;
}

void ServerScreensTest::presetIsChosenByKeyboardAndMouse()
{
    QFETCH(const bool, byKeyboard);
    QVERIFY(t->show());
    openPlace();
    openForm();
    if (byKeyboard) {
        QTRY_VERIFY(t->item(u"choosePreset"_s)->hasActiveFocus());
        QTest::keyClick(t->window, Qt::Key_Space);
        QTRY_VERIFY(isOpen(u"presetSheet"_s));
        QTRY_VERIFY(t->item(u"presetList"_s)->hasActiveFocus());
        for (int i = 0; i < 6; ++i)
            QTest::keyClick(t->window, Qt::Key_Down);
        QTest::keyClick(t->window, Qt::Key_Return);
    } else {
        t->click(u"choosePreset"_s);
        QTRY_VERIFY(isOpen(u"presetSheet"_s));
        QTRY_VERIFY(rowOf(u"presetList"_s, 5));
        t->click(rowOf(u"presetList"_s, 5));
    }
    QTRY_VERIFY(isGone(u"presetSheet"_s));
    QCOMPARE(textOf(u"nameFieldText"_s), u"Alist"_s);
    QCOMPARE(textOf(u"addressFieldText"_s), u"http://"_s);
    QCOMPARE(textOf(u"portFieldText"_s), u"5244"_s);
    QCOMPARE(textOf(u"pathFieldText"_s), u"/dav"_s);
    QTRY_VERIFY(t->item(u"addressFieldText"_s)->hasActiveFocus());
    QVERIFY(isOpen(u"serverForm"_s));
}

void ServerScreensTest::formSaysWhatIsWrongAndGoesThere()
{
    QVERIFY(t->show());
    t->window->resize(390, 560);
    openPlace();
    openForm();
    fill(u"nameField"_s, u"Home"_s);
    fill(u"addressField"_s, u"https://dav.example.com"_s);
    QQuickItem *flickable = t->item(u"formFlickable"_s);
    flickable->setProperty("contentY", 0);
    t->click(u"formSave"_s);
    QTRY_COMPARE(textOf(u"usernameFieldNote"_s), u"请填写用户名"_s);
    QCOMPARE(textOf(u"passwordFieldNote"_s), u"请填写密码"_s);
    QVERIFY(!t->shows(u"nameFieldNote"_s));
    QTRY_VERIFY(t->item(u"usernameFieldText"_s)->hasActiveFocus());
    // The form has scrolled to the field, its note included.
    const QRectF note = t->item(u"usernameFieldNote"_s)
                            ->mapRectToItem(flickable, t->item(u"usernameFieldNote"_s)->boundingRect());
    QVERIFY(note.top() >= 0 && note.bottom() <= flickable->height());
    QVERIFY(t->webDAVService->configs().isEmpty());
    type(u"m"_s);
    QTRY_VERIFY(!t->shows(u"usernameFieldNote"_s));
}

void ServerScreensTest::passwordIsMaskedUntilRevealed()
{
    QVERIFY(t->show());
    openPlace();
    openForm();
    fill(u"passwordField"_s, u"secret"_s);
    QQuickItem *field = t->item(u"passwordFieldText"_s);
    QVERIFY(!field->property("displayText").toString().contains(u"secret"_s));
    // A screen reader does not read it out either.
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(field);
    QVERIFY(accessible);
    QVERIFY(accessible->state().passwordEdit);
    QQuickItem *reveal = t->item(u"passwordField"_s)->findChild<QQuickItem *>(u"revealButton"_s);
    QCOMPARE(reveal->property("text").toString(), u"显示密码"_s);
    t->click(reveal);
    QCOMPARE(field->property("displayText").toString(), u"secret"_s);
    QCOMPARE(reveal->property("text").toString(), u"隐藏密码"_s);
    t->click(u"formCancel"_s);
    QTRY_VERIFY(isGone(u"serverForm"_s));
    openForm();
    fill(u"passwordField"_s, u"other"_s);
    QVERIFY(!field->property("displayText").toString().contains(u"other"_s));
}

void ServerScreensTest::testOfAConnectionIsShown()
{
    QVERIFY(t->show());
    openPlace();
    openForm();
    t->folders->add(u""_s, {u"a.mp3"_s});
    fill(u"addressField"_s, u"https://dav.example.com"_s);
    fill(u"usernameField"_s, u"me"_s);
    fill(u"passwordField"_s, u"wrong"_s);
    t->folders->refuse(401);
    QQuickItem *button = t->item(u"testButton"_s);
    button->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_COMPARE(textOf(u"testMessage"_s), u"正在测试…"_s);
    QVERIFY(!button->isEnabled());
    QVERIFY(answersOne());
    QTRY_COMPARE(textOf(u"testMessage"_s), u"认证失败，请检查用户名和密码"_s);
    QVERIFY(button->isEnabled());
    QVERIFY(!t->item(u"testResult"_s)->property("succeeded").toBool());

    fill(u"passwordField"_s, u"right"_s);
    QTRY_COMPARE(textOf(u"testMessage"_s), QString());
    t->folders->refuse(0);
    button->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Return);
    QVERIFY(answersOne());
    QTRY_COMPARE(textOf(u"testMessage"_s), u"连接成功"_s);
    QVERIFY(t->item(u"testResult"_s)->property("succeeded").toBool());
    QVERIFY(t->webDAVService->configs().isEmpty());
}

void ServerScreensTest::escapeLeavesTheForm()
{
    QVERIFY(t->show());
    openPlace();
    openForm();
    fill(u"nameField"_s, u"Home"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"serverForm"_s));
    QVERIFY(!t->servers->form()->isOpen());
    QVERIFY(t->shows(u"serversView"_s));
    openForm();
    QCOMPARE(textOf(u"nameFieldText"_s), QString());
}

void ServerScreensTest::pressBesideTheFormKeepsIt()
{
    QVERIFY(t->show());
    t->window->resize(1000, 640);
    QTRY_COMPARE(t->window->contentItem()->width(), 1000.0);
    openPlace();
    openForm();
    fill(u"nameField"_s, u"Home"_s);
    QTest::mouseClick(t->window, Qt::LeftButton, {}, QPoint(20, 320));
    QVERIFY(isOpen(u"serverForm"_s));
    QCOMPARE(textOf(u"nameFieldText"_s), u"Home"_s);
}

void ServerScreensTest::storedPasswordArrivesWhileTheWindowLives()
{
    const WebDAVConfig config = t->addServer(u"甲"_s);
    QVERIFY(t->show());
    openPlace();
    t->secrets->hold();
    t->servers->editServer(config.uuidText());
    QTRY_VERIFY(isOpen(u"serverForm"_s));
    QQuickItem *field = t->item(u"passwordField"_s);
    QVERIFY(field->findChild<QQuickItem *>(u"waitingMark"_s)->isVisible());
    QVERIFY(!field->findChild<QQuickItem *>(u"revealButton"_s)->isVisible());
    QVERIFY(!t->item(u"formSave"_s)->isEnabled());
    fill(u"nameField"_s, u"Home"_s);
    QCOMPARE(textOf(u"nameFieldText"_s), u"Home"_s);
    t->secrets->release();
    QTRY_COMPARE(textOf(u"passwordFieldText"_s), u"secret"_s);
    QVERIFY(field->findChild<QQuickItem *>(u"revealButton"_s)->isVisible());
    QVERIFY(t->item(u"formSave"_s)->isEnabled());
    t->click(u"formSave"_s);
    QTRY_VERIFY(isGone(u"serverForm"_s));
    QCOMPARE(t->secrets->secret(config.passwordKeychainKey()), "secret"_ba);
    QCOMPARE(t->webDAVService->configs().constFirst().name, u"Home"_s);
}

void ServerScreensTest::spaceInAFieldIsTyped()
{
    showLibrary();
    playRow(0);
    QVERIFY(t->audioPlayer->isPlaying());
    openPlace();
    openForm();
    fill(u"nameField"_s, u"my home"_s);
    QCOMPARE(textOf(u"nameFieldText"_s), u"my home"_s);
    QVERIFY(t->audioPlayer->isPlaying());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"serverForm"_s));
    // Outside of it, it is the player's.
    QTest::keyClick(t->window, Qt::Key_Space);
    QTRY_VERIFY(!t->audioPlayer->isPlaying());
}

void ServerScreensTest::rowOpensThePageAndSongsPlay()
{
    showLibrary(2);
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
    QTRY_VERIFY(t->shows(u"playerBar"_s));
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
    QVERIFY(t->shows(u"serversView"_s));
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
