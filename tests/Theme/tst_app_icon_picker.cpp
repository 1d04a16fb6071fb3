// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/KawaiiScene.h"
#include "Theme/LookGrounds.h"

#include "Fakes/ConsoleLines.h"

#include <QSignalSpy>

namespace cadorel {

using namespace Qt::StringLiterals;

/// The screen on which the application's icon is chosen.
class TestAppIconPicker : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<KawaiiScene> k;
    ThemedScene *s = nullptr;

    void showPicker(ThemeType type = ThemeType::classic, ColorScheme scheme = ColorScheme::light)
    {
        s->window()->resize(440, 600);
        QVERIFY(s->show("AppIconPickerView { width: 390; height: 540 }", type, scheme));
    }
    QQuickItem *button(int index) const { return s->item(u"iconButton%1"_s.arg(index)); }
    static QQuickItem *within(const QQuickItem *item, const QString &name)
    {
        const QList<QQuickItem *> children = item->childItems();
        for (QQuickItem *child : children) {
            if (child->objectName() == name)
                return child;
            if (QQuickItem *found = within(child, name))
                return found;
        }
        return nullptr;
    }
    QList<bool> selections() const
    {
        QList<bool> shown;
        for (int i = 0; i < 4; ++i)
            shown.append(within(button(i), u"selectionStroke"_s)->isVisible());
        return shown;
    }

private Q_SLOTS:
    void init()
    {
        k = std::make_unique<KawaiiScene>();
        s = &k->scene;
    }
    void cleanup()
    {
        QCOMPARE(s->warnings.take(), QStringList());
        k.reset();
    }

    void iconsStandInTwoColumnsUnderTheTitle_data() { addThemes(); }
    void iconsStandInTwoColumnsUnderTheTitle()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        showPicker(type, scheme);
        QCOMPARE(s->item(u"pageTitle"_s)->property("text").toString(), u"应用图标"_s);
        const QStringList names{u"默认"_s, u"图标 2"_s, u"图标 3"_s, u"图标 4"_s};
        for (int i = 0; i < 4; ++i) {
            QVERIFY(button(i));
            QCOMPARE(s->accessibleName(button(i)), names[i]);
            QCOMPARE(s->accessible(button(i))->role(), QAccessible::RadioButton);
            QCOMPARE(button(i)->x(), button(i % 2)->x());
            QCOMPARE(button(i)->y(), button(i - i % 2)->y());
        }
        QVERIFY(button(1)->x() >= button(0)->x() + button(0)->width());
        QVERIFY(button(2)->y() >= button(0)->y() + button(0)->height());
        QVERIFY(!button(4));
        QTRY_VERIFY(k->arePicturesReady());
        for (int i = 0; i < 4; ++i)
            QVERIFY(!within(button(i), u"symbol"_s)->isVisible());
    }

    void allTextsCanBeRead_data() { addThemes(); }
    void allTextsCanBeRead()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        showPicker(type, scheme);
        const auto leastOf = [this](const QQuickItem *text, const QColor &fill) {
            return leastRatio(s->theme(), fill, text->property("color").value<QColor>());
        };
        QVERIFY(leastOf(s->item(u"pageTitle"_s), Qt::transparent) >= Contrast::legible);
        const Surface ground = ThemedSurfaces::themedCard(&s->theme());
        for (int i = 0; i < 4; ++i)
            QVERIFY(leastOf(within(button(i), u"label"_s), ground.fill) >= Contrast::legible);
    }

    void aPressChoosesTheIconAndMarksItInTheAccent()
    {
        showPicker();
        QCOMPARE(selections(), QList<bool>({true, false, false, false}));
        s->click(button(2));
        QTRY_COMPARE(selections(), QList<bool>({false, false, true, false}));
        QCOMPARE(k->system.iconName, u"AppIcon33"_s);
        QVERIFY(s->accessible(button(2))->state().checked);
        QVERIFY(!s->accessible(button(0))->state().checked);
        const QObject *stroke = within(button(2), u"selectionStroke"_s);
        const auto strokeColor = [stroke] {
            return stroke->property("border").value<QObject *>()->property("color").value<QColor>();
        };
        const QColor usual = strokeColor();
        k->themeService.setPresetColor(4);
        QVERIFY(strokeColor() != usual);
        QCOMPARE(strokeColor(), k->themeService.accentColor());
        QCOMPARE(within(button(2), u"mark"_s)->property("color").value<QColor>(), strokeColor());
        s->tap(button(0));
        QTRY_COMPARE(selections(), QList<bool>({true, false, false, false}));
        QCOMPARE(k->system.iconName, std::nullopt);
    }

    void tabComesToTheChosenIconAndOnceOnly()
    {
        k->appIconService.setAppIcon(u"AppIcon33"_s);
        QTRY_COMPARE(k->appIconService.currentIndex(), 2);
        showPicker();
        s->root()->forceActiveFocus();
        QTRY_VERIFY(button(2)->hasActiveFocus());
        s->key(Qt::Key_Up);
        QVERIFY(button(0)->hasActiveFocus());
        QQuickItem *const back = s->item(u"backButton"_s);
        s->key(Qt::Key_Backtab);
        QVERIFY(back->hasActiveFocus());
        s->key(Qt::Key_Tab);
        QVERIFY(button(2)->hasActiveFocus());
    }
    void anIconThatIsNotOfferedLeavesTheFirstForTheKeyboard()
    {
        k->appIconService.setAppIcon(u"AppIcon99"_s);
        QTRY_COMPARE(k->appIconService.currentIconName(), u"AppIcon99"_s);
        QCOMPARE(k->appIconService.currentIndex(), -1);
        showPicker();
        QCOMPARE(selections(), QList<bool>({false, false, false, false}));
        s->root()->forceActiveFocus();
        QTRY_VERIFY(button(0)->hasActiveFocus());
    }

    void aFailureLeavesTheSelection()
    {
        ConsoleLines lines;
        k->system.iconError = u"Permission denied"_s;
        showPicker();
        s->click(button(1));
        QCOMPARE(lines.take(), QStringList{u"Error setting alternate icon: Permission denied"_s});
        QCoreApplication::processEvents();
        QCOMPARE(selections(), QList<bool>({true, false, false, false}));
    }

    void aDesktopWithoutAlternateIconsLeavesTheSelection()
    {
        ConsoleLines lines;
        k->system.hasAlternateIcons = false;
        showPicker();
        s->click(button(1));
        QCOMPARE(lines.take(), QStringList{u"Alternate icons not supported"_s});
        QCoreApplication::processEvents();
        QCOMPARE(selections(), QList<bool>({true, false, false, false}));
    }

    void keysWalkOverTheGridAndChoose()
    {
        showPicker();
        button(0)->forceActiveFocus(Qt::TabFocusReason);
        s->key(Qt::Key_Up);
        QVERIFY(button(0)->hasActiveFocus());
        s->key(Qt::Key_Down);
        QVERIFY(button(2)->hasActiveFocus());
        s->key(Qt::Key_Right);
        QVERIFY(button(3)->hasActiveFocus());
        s->key(Qt::Key_Return);
        QTRY_COMPARE(k->system.iconName, u"AppIcon44"_s);
        s->key(Qt::Key_Up);
        s->key(Qt::Key_Space);
        QTRY_COMPARE(k->system.iconName, u"AppIcon22"_s);
    }

    void theArrowAsksToGoBack()
    {
        showPicker();
        const QSignalSpy spy(s->root(), SIGNAL(backRequested()));
        s->click(s->item(u"backButton"_s));
        QCOMPARE(spy.count(), 1);
    }

    void anIconWithoutAPictureShowsASymbol()
    {
        QVERIFY(s->show("AppIconPreview { imageName: \"AppIcon99\" }"));
        QCOMPARE(s->item(u"picture"_s)->property("source").toUrl(), QUrl());
        const QQuickItem *symbol = s->item(u"symbol"_s);
        QVERIFY(symbol->isVisible());
        QCOMPARE(symbol->property("name").toString(), u"app.fill"_s);
    }

    void largeTextIsNotCut()
    {
        k->desktop.setTextScale(1.3);
        showPicker();
        for (int i = 0; i < 4; ++i) {
            const QQuickItem *label = within(button(i), u"label"_s);
            QVERIFY(label->height() >= label->implicitHeight());
            QVERIFY(!label->property("truncated").toBool());
        }
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestAppIconPicker)
#include "tst_app_icon_picker.moc"
