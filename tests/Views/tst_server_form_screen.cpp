// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AudioPlayerService.h"
#include "Views/ServerScreenTest.h"

#include <QAccessible>

using namespace cadorel;
using namespace Qt::StringLiterals;

class ServerFormScreenTest : public ServerScreenTest
{
    Q_OBJECT
private Q_SLOTS:
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
    void whatTheListenerScrolledToStaysWhenTheKeyboardComesBack();
};

void ServerFormScreenTest::emptyPlaceOffersTheForm()
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

void ServerFormScreenTest::formIsFilledAndSavedByKeyboard()
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
    QTRY_VERIFY(t->item(u"serverList"_s)->hasActiveFocus() || t->item(u"webDAVView"_s)->hasActiveFocus());
}

void ServerFormScreenTest::presetIsChosenByKeyboardAndMouse_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("keyboard") << true;
    QTest::newRow("mouse") << false;
}

void ServerFormScreenTest::presetIsChosenByKeyboardAndMouse()
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

void ServerFormScreenTest::formSaysWhatIsWrongAndGoesThere()
{
    QVERIFY(t->show());
    t->window->resize(390, 560);
    QTRY_COMPARE(t->window->contentItem()->height(), 560.0);
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
    const QQuickItem *note = t->item(u"usernameFieldNote"_s);
    const auto noteArea = [&] { return note->mapRectToItem(flickable, note->boundingRect()); };
    QTRY_VERIFY(noteArea().top() >= 0 && noteArea().bottom() <= flickable->height());
    QVERIFY(t->webDAVService->configs().isEmpty());
    type(u"m"_s);
    QTRY_VERIFY(!t->shows(u"usernameFieldNote"_s));
}

void ServerFormScreenTest::passwordIsMaskedUntilRevealed()
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

void ServerFormScreenTest::testOfAConnectionIsShown()
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

void ServerFormScreenTest::escapeLeavesTheForm()
{
    QVERIFY(t->show());
    openPlace();
    openForm();
    fill(u"nameField"_s, u"Home"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isGone(u"serverForm"_s));
    QVERIFY(!t->servers->form()->isOpen());
    QVERIFY(t->shows(u"webDAVView"_s));
    openForm();
    QCOMPARE(textOf(u"nameFieldText"_s), QString());
}

void ServerFormScreenTest::pressBesideTheFormKeepsIt()
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

void ServerFormScreenTest::storedPasswordArrivesWhileTheWindowLives()
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

void ServerFormScreenTest::spaceInAFieldIsTyped()
{
    QVERIFY(showLibrary());
    QVERIFY(playRow(0));
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

void ServerFormScreenTest::whatTheListenerScrolledToStaysWhenTheKeyboardComesBack()
{
    QVERIFY(t->show());
    openPlace();
    openForm();
    QQuickItem *name = t->item(u"nameFieldText"_s);
    name->forceActiveFocus(Qt::TabFocusReason);
    QVERIFY(name->hasActiveFocus());
    QQuickItem *form = t->item(u"formFlickable"_s);
    const auto hidden = [form] { return form->property("contentHeight").toReal() - form->height(); };
    t->window->resize(320, 568);
    // The names and fields of two.
    constexpr double enough = 200;
    QTRY_VERIFY(hidden() > enough);
    const double end = hidden();
    form->setProperty("contentY", end);
    QVERIFY(name->mapToItem(form, QPointF(0, name->height())).y() < 0);
    // Another window takes the keyboard and gives it back.
    QQuickWindow other;
    other.show();
    other.requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QTRY_VERIFY(!name->hasActiveFocus());
    t->window->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(t->window));
    QTRY_VERIFY(name->hasActiveFocus());
    QCOMPARE(form->property("contentY").toReal(), end);
    // The next field is out of sight as well, until the keyboard comes to it with its name.
    QTest::keyClick(t->window, Qt::Key_Tab);
    QTRY_VERIFY(form->property("contentY").toReal() < end);
    const QQuickItem *address = t->item(u"addressField"_s);
    QVERIFY(address->mapToItem(form, QPointF()).y() >= 0);
}

QTEST_MAIN(ServerFormScreenTest)
#include "tst_server_form_screen.moc"
