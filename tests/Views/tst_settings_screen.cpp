// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/APIConfigService.h"
#include "Services/EqualizerService.h"
#include "Theme/ThemeManager.h"
#include "ViewModels/ContentViewModel.h"
#include "ViewModels/EqualizerViewModel.h"
#include "Views/HeldKey.h"
#include "Views/ScreenTest.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The tab of the settings, and the pages that it leads to.
class SettingsScreenTest : public ScreenTest
{
    Q_OBJECT

private:
    void showSettings()
    {
        QVERIFY(t->show());
        openSettings();
    }
    void openSettings()
    {
        t->click(u"settingsTab"_s);
        QTRY_VERIFY(t->shows(u"settingsForm"_s));
    }
    bool covers(const QString &page) const
    {
        const QQuickItem *item = t->item(page);
        return item && item->property("covers").toBool();
    }
    QString subtitleOf(const QString &row) const { return t->item(row)->property("subtitle").toString(); }

private Q_SLOTS:
    void cloudTabGoesAndComesWithItsSwitch()
    {
        showSettings();
        QVERIFY(t->shows(u"webdavTab"_s));
        QVERIFY(t->item(u"showWebDAVSwitch"_s)->property("checked").toBool());
        t->click(u"showWebDAVSwitch"_s);
        QTRY_VERIFY(!t->shows(u"webdavTab"_s));
        QCOMPARE(t->platform.preferences->boolValue(u"showWebDAVTab"_s), std::optional(false));
        QTRY_VERIFY(t->shows(u"showWebDAVSwitch"_s));
        QVERIFY(!t->item(u"showWebDAVSwitch"_s)->property("checked").toBool());
        // By the keyboard, and by a screen reader.
        t->item(u"showWebDAVSwitch"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(t->window, Qt::Key_Return);
        QTRY_VERIFY(t->shows(u"webdavTab"_s));
        QTRY_VERIFY(t->shows(u"showWebDAVSwitch"_s));
        QAccessibleInterface *accessible =
            QAccessible::queryAccessibleInterface(t->item(u"showWebDAVSwitch"_s));
        QVERIFY(accessible);
        QCOMPARE(accessible->role(), QAccessible::CheckBox);
        QCOMPARE(accessible->text(QAccessible::Name), u"显示网盘功能"_s);
        QVERIFY(accessible->state().checked);
        accessible->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QTRY_VERIFY(!t->shows(u"webdavTab"_s));
    }

    void rowsSayHowThingsStand()
    {
        showSettings();
        QCOMPARE(subtitleOf(u"equalizerRow"_s), u"已关闭"_s);
        t->equalizerService->setEnabled(true);
        QTRY_COMPARE(subtitleOf(u"equalizerRow"_s), QString());
        QCOMPARE(subtitleOf(u"apiServerRow"_s), u"默认"_s);
        t->apiConfig->setBaseURL(u"https://music.example"_s);
        QTRY_COMPARE(subtitleOf(u"apiServerRow"_s), u"自定义"_s);
        t->apiConfig->resetToDefault();
        QTRY_COMPARE(subtitleOf(u"apiServerRow"_s), u"默认"_s);
        QVERIFY(subtitleOf(u"aboutRow"_s).startsWith(u'v'));
    }

    void rowsOpenTheirSheets()
    {
        showSettings();
        t->click(u"equalizerRowButton"_s);
        QTRY_VERIFY(t->equalizer->isOpen());
        QTRY_VERIFY(t->object(u"equalizerView"_s)->property("opened").toBool());
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(!t->equalizer->isOpen());
        QTRY_VERIFY(!t->object(u"equalizerView"_s)->property("visible").toBool());
        t->click(u"apiServerRowButton"_s);
        QTRY_VERIFY(t->object(u"apiSettings"_s) && t->object(u"apiSettings"_s)->property("opened").toBool());
    }

    void playersSettingsRiseAndGo()
    {
        showSettings();
        const auto sheet = [this] { return t->object(u"playerSettings"_s); };
        for (int i = 0; i < 2; ++i) {
            t->click(u"nowPlayingRowButton"_s);
            QTRY_VERIFY(sheet() && sheet()->property("opened").toBool());
            t->click(u"nowPlayingSettingsDone"_s);
            QTRY_VERIFY(!sheet()->property("visible").toBool());
        }
    }

    void returnFlipsTheSwitchOnce()
    {
        showSettings();
        QQuickItem *const row = t->item(u"showWebDAVSwitch"_s);
        row->forceActiveFocus(Qt::TabFocusReason);
        holdReturn(t->window);
        QTRY_VERIFY(!t->content->showWebDAVTab());
        QTRY_VERIFY(t->item(u"showWebDAVSwitch"_s)->hasActiveFocus());
        QVERIFY(!t->item(u"showWebDAVSwitch"_s)->property("checked").toBool());
    }

    void lookIsChosenOnItsPage()
    {
        showSettings();
        t->click(u"appearanceRowButton"_s);
        QTRY_VERIFY(covers(u"themeSettingsView"_s));
        QVERIFY(!t->shows(u"settingsForm"_s));
        t->click(u"themeCard2"_s);
        QTRY_COMPARE(t->themeManager->currentThemeType(), ThemeType::kawaiiPink);
    }

    void pagesAreLeftByTheirWaysBack()
    {
        showSettings();
        t->click(u"appearanceRowButton"_s);
        QTRY_VERIFY(covers(u"themeSettingsView"_s));
        t->click(u"appIconRowButton"_s);
        QTRY_VERIFY(covers(u"appIconPage"_s));
        QTRY_VERIFY(t->shows(u"appIconPickerView"_s));
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(!t->shows(u"appIconPage"_s));
        QVERIFY(covers(u"themeSettingsView"_s));
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(!t->shows(u"themeSettingsView"_s));
        QVERIFY(t->shows(u"settingsForm"_s));
        t->click(u"aboutRowButton"_s);
        QTRY_VERIFY(covers(u"aboutView"_s));
        QVERIFY(t->item(u"aboutVersion"_s)->property("text").toString().startsWith(u"Version "_s));
        t->click(t->item(u"aboutView"_s)->findChild<QQuickItem *>(u"backButton"_s));
        QTRY_VERIFY(!t->shows(u"aboutView"_s));
    }

    void whatTheKeyboardComesToIsInSight()
    {
        QVERIFY(t->show());
        t->window->resize(320, 480);
        QTRY_COMPARE(t->window->contentItem()->size().toSize(), QSize(320, 480));
        openSettings();
        t->item(u"aboutRowButton"_s)->forceActiveFocus(Qt::TabFocusReason);
        const auto isInSight = [this](const QString &name) {
            const QQuickItem *row = t->item(name);
            const QQuickItem *view = t->item(u"settingsFormScroller"_s);
            const QRectF area = row->mapRectToItem(view, QRectF(0, 0, row->width(), row->height()));
            return area.top() >= 0 && area.bottom() <= view->height();
        };
        QTRY_VERIFY(isInSight(u"aboutRow"_s));
        QVERIFY(!isInSight(u"appearanceRow"_s));
        t->item(u"appearanceRowButton"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTRY_VERIFY(isInSight(u"appearanceRow"_s));
    }

    void everyLookIsWhole_data() { addLooks(); }
    void everyLookIsWhole()
    {
        QVERIFY(showInLook());
        openSettings();
        check(u"settings"_s);
        t->click(u"appearanceRowButton"_s);
        QTRY_VERIFY(covers(u"themeSettingsView"_s));
        check(u"appearance"_s);
        // On the smallest window it is beneath what is seen.
        t->item(u"appIconRowButton"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(t->window, Qt::Key_Return);
        QTRY_VERIFY(covers(u"appIconPage"_s));
        check(u"icons"_s);
        for (const QString &page : {u"appIconPage"_s, u"themeSettingsView"_s}) {
            QTest::keyClick(t->window, Qt::Key_Escape);
            QTRY_VERIFY(!t->shows(page));
        }
        t->click(u"nowPlayingRowButton"_s);
        QTRY_VERIFY(t->object(u"playerSettings"_s)->property("opened").toBool());
        check(u"player"_s);
    }
};

QTEST_MAIN(SettingsScreenTest)
#include "tst_settings_screen.moc"
