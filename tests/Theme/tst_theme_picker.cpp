// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/KawaiiScene.h"
#include "Theme/LookGrounds.h"
#include "Theme/Surface.h"
#include "Theme/ThemedSurfaces.h"

namespace cadorel {

using namespace Qt::StringLiterals;

/// The choice of the look.
class TestThemePicker : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<KawaiiScene> k;
    ThemedScene *s = nullptr;

    void showPicker(ThemeType type = ThemeType::classic, ColorScheme scheme = ColorScheme::light,
                    int width = 358)
    {
        QVERIFY(s->show("ThemePickerView { width: " + QByteArray::number(width) + " }", type, scheme));
    }
    QQuickItem *card(int index) const { return s->item(u"themeCard%1"_s.arg(index)); }
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
    static Surface surfaceOf(const QQuickItem *card, const QString &name)
    {
        return within(card, name)->property("surface").value<Surface>();
    }
    static QColor colorOf(const QQuickItem *card, const QString &name)
    {
        return within(card, name)->property("color").value<QColor>();
    }
    QList<bool> selections() const
    {
        QList<bool> shown;
        for (int i = 0; i < 3; ++i)
            shown.append(within(card(i), u"selectionStroke"_s)->isVisible());
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

    void pickerSaysWhatItIs()
    {
        showPicker();
        QQuickItem *heading = s->item(u"heading"_s);
        QCOMPARE(heading->property("text").toString(), u"界面主题"_s);
        QCOMPARE(s->accessible(heading)->role(), QAccessible::Heading);
        QQuickItem *picker = s->item(u"themePicker"_s);
        QCOMPARE(s->accessibleName(picker), u"主题"_s);
        QCOMPARE(s->accessible(picker)->role(), QAccessible::Grouping);
    }

    void eachLookHasACardWithItsNameAndSymbol()
    {
        showPicker();
        const QStringList names{u"经典"_s, u"拟态风格"_s, u"可爱粉粉"_s};
        const QStringList symbols{u"music.note"_s, u"cube.fill"_s, u"heart.fill"_s};
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(card(i)->property("text").toString(), names[i]);
            QCOMPARE(within(card(i), u"symbol"_s)->property("name").toString(), symbols[i]);
            QCOMPARE(s->accessibleName(card(i)), names[i]);
            QCOMPARE(s->accessible(card(i))->role(), QAccessible::RadioButton);
            QVERIFY(card(i)->width() >= 44 && card(i)->height() >= 44);
            const QQuickItem *label = within(card(i), u"label"_s);
            QVERIFY2(!label->property("truncated").toBool(), qPrintable(names[i]));
        }
        QVERIFY(!card(3));
    }

    void aCardIsDrawnInItsOwnLookWhateverIsAroundIt_data() { addThemes(); }
    void aCardIsDrawnInItsOwnLookWhateverIsAroundIt()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        k->desktop.setColorScheme(scheme);
        showPicker(type, scheme);
        for (int i = 0; i < 3; ++i) {
            AppTheme &own = ThemeFactory::create(allThemeTypes().at(i), scheme);
            QCOMPARE(surfaceOf(card(i), u"ground"_s), ThemedSurfaces::previewScreen(&own, 12));
            QCOMPARE(surfaceOf(card(i), u"block"_s), ThemedSurfaces::previewBlock(&own));
            QCOMPARE(colorOf(card(i), u"primaryBar"_s), own.primaryTextColor());
            QCOMPARE(colorOf(card(i), u"secondaryBar"_s), own.secondaryTextColor());
            QCOMPARE(within(card(i), u"primaryBar"_s)->height(), 2.0);
            QCOMPARE(within(card(i), u"secondaryBar"_s)->height(), 2.0);
        }
    }

    void allTextsCanBeRead_data() { addThemes(); }
    void allTextsCanBeRead()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        k->desktop.setColorScheme(scheme);
        showPicker(type, scheme);
        const auto heading = s->item(u"heading"_s)->property("color").value<QColor>();
        const Surface ground = ThemedSurfaces::themedCard(&s->theme());
        QVERIFY(leastRatio(s->theme(), ground.fill, heading) >= Contrast::legible);
        for (int i = 0; i < 3; ++i) {
            AppTheme &own = ThemeFactory::create(allThemeTypes().at(i), scheme);
            QVERIFY(leastRatio(own, Qt::transparent, colorOf(card(i), u"label"_s)) >= Contrast::legible);
        }
    }

    void theBlockOfAPreviewHasShadowsInTheEmbossedLookAlone()
    {
        showPicker();
        QCOMPARE(surfaceOf(card(0), u"block"_s).shadows.size(), 0);
        QCOMPARE(surfaceOf(card(2), u"block"_s).shadows.size(), 0);
        AppTheme &embossed = ThemeFactory::create(ThemeType::neumorphism);
        const Surface block = surfaceOf(card(1), u"block"_s);
        const QList<SurfaceShadow> expected{{.color = embossed.lightShadow(), .radius = 3, .x = -1, .y = -1},
                                            {.color = embossed.darkShadow(), .radius = 3, .x = 1, .y = 1}};
        QCOMPARE(block.fill, embossed.surfaceColor());
        QCOMPARE(block.shadows, expected);
    }

    void previewsLookDifferent()
    {
        showPicker();
        QTRY_VERIFY(!s->grab().isNull());
        const QImage all = s->grab();
        QSet<QRgb> grounds;
        for (int i = 0; i < 3; ++i)
            grounds.insert(all.pixel(card(i)->mapToScene(QPointF(card(i)->width() / 2, 4)).toPoint()));
        QCOMPARE(grounds.size(), 3);
    }

    void theCurrentLookIsMarked()
    {
        showPicker();
        QCOMPARE(selections(), QList<bool>({true, false, false}));
        k->themeManager.switchTo(ThemeType::neumorphism);
        QTRY_COMPARE(selections(), QList<bool>({false, true, false}));
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(bool(s->accessible(card(i))->state().checked), i == 1);
            const QObject *stroke = within(card(i), u"selectionStroke"_s);
            const auto *border = stroke->property("border").value<QObject *>();
            QCOMPARE(border->property("width").toDouble(), 2.0);
            QCOMPARE(border->property("color").value<QColor>(),
                     ThemeFactory::create(allThemeTypes().at(i)).primaryColor());
        }
    }

    void aPressOnACardSwitchesToItsLook()
    {
        showPicker();
        s->click(card(2));
        QTRY_COMPARE(k->themeManager.currentThemeType(), ThemeType::kawaiiPink);
        QTRY_COMPARE(selections(), QList<bool>({false, false, true}));
        QCOMPARE(k->preferences.stringValue(u"selectedTheme"_s), u"kawaiiPink"_s);
        s->tap(card(1));
        QTRY_COMPARE(k->themeManager.currentThemeType(), ThemeType::neumorphism);
    }

    void arrowsWalkAndReturnChooses()
    {
        showPicker();
        card(0)->forceActiveFocus(Qt::TabFocusReason);
        s->key(Qt::Key_Left);
        QVERIFY(card(0)->hasActiveFocus());
        s->key(Qt::Key_Right);
        QVERIFY(card(1)->hasActiveFocus());
        QVERIFY(card(1)->property("visualFocus").toBool());
        QCOMPARE(k->themeManager.currentThemeType(), ThemeType::classic);
        s->key(Qt::Key_Return);
        QTRY_COMPARE(k->themeManager.currentThemeType(), ThemeType::neumorphism);
        s->key(Qt::Key_Right);
        s->key(Qt::Key_Right);
        QVERIFY(card(2)->hasActiveFocus());
        s->key(Qt::Key_Space);
        QTRY_COMPARE(k->themeManager.currentThemeType(), ThemeType::kawaiiPink);
        s->key(Qt::Key_Left);
        s->key(Qt::Key_Enter);
        QTRY_COMPARE(k->themeManager.currentThemeType(), ThemeType::neumorphism);
    }

    void thePickerTakesTheKeyboardAtTheCurrentLook()
    {
        k->themeManager.switchTo(ThemeType::neumorphism);
        showPicker();
        s->root()->forceActiveFocus();
        QTRY_VERIFY(card(1)->hasActiveFocus());
        s->key(Qt::Key_Right);
        QVERIFY(card(2)->hasActiveFocus());
    }

    void thePickerIsOneStopOfTheTabKey()
    {
        QVERIFY(s->show("Column { Item { objectName: \"before\"; activeFocusOnTab: true }\n"
                        "ThemePickerView { width: 358 }\n"
                        "Item { objectName: \"after\"; activeFocusOnTab: true } }"));
        k->themeManager.switchTo(ThemeType::neumorphism);
        QTRY_COMPARE(selections(), QList<bool>({false, true, false}));
        QQuickItem *const before = s->item(u"before"_s);
        for (const Qt::Key walk : {Qt::Key_Left, Qt::Key_Right}) {
            before->forceActiveFocus();
            s->key(Qt::Key_Tab);
            QVERIFY(card(1)->hasActiveFocus());
            s->key(walk);
            QVERIFY(!card(1)->hasActiveFocus());
            s->key(Qt::Key_Tab);
            QVERIFY(s->item(u"after"_s)->hasActiveFocus());
            s->key(Qt::Key_Backtab);
            QVERIFY(card(1)->hasActiveFocus());
            s->key(walk);
            s->key(Qt::Key_Backtab);
            QVERIFY(before->hasActiveFocus());
        }
    }

    void aScreenReaderPressesACard()
    {
        showPicker();
        QAccessibleActionInterface *actions = s->accessible(card(1))->actionInterface();
        QVERIFY(actions && actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
        actions->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(k->themeManager.currentThemeType(), ThemeType::neumorphism);
    }

    void cardsFollowTheSchemeOfTheDesktop()
    {
        showPicker();
        const QColor light = surfaceOf(card(0), u"block"_s).fill;
        k->desktop.setColorScheme(ColorScheme::dark);
        QTRY_COMPARE(surfaceOf(card(0), u"block"_s).fill,
                     ThemeFactory::create(ThemeType::classic, ColorScheme::dark).surfaceColor());
        QVERIFY(surfaceOf(card(0), u"block"_s).fill != light);
    }

    void theKeyboardStaysOnItsCardWhenTheDesktopTurnsDark()
    {
        showPicker();
        card(1)->forceActiveFocus(Qt::TabFocusReason);
        QTRY_VERIFY(card(1)->hasActiveFocus());
        k->desktop.setColorScheme(ColorScheme::dark);
        QTRY_COMPARE(surfaceOf(card(0), u"block"_s).fill,
                     ThemeFactory::create(ThemeType::classic, ColorScheme::dark).surfaceColor());
        QVERIFY(card(1)->hasActiveFocus());
    }

    void withoutMotionAPressedCardStandsStill()
    {
        k->desktop.setReducesMotion(true);
        showPicker();
        QTest::mousePress(s->window(), Qt::LeftButton, Qt::NoModifier, ThemedScene::centre(card(1)));
        QTRY_VERIFY(card(1)->property("down").toBool());
        QCOMPARE(card(1)->scale(), 1.0);
        QTest::mouseRelease(s->window(), Qt::LeftButton, Qt::NoModifier, ThemedScene::centre(card(1)));
    }

    void largeTextIsNotCut_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<int>("width");
        for (const double scale : {1.0, 1.3}) {
            for (const int width : {288, 358}) // a window of 320 or 390 pixels less its margins
                QTest::addRow("%.1f at %d", scale, width) << scale << width;
        }
    }
    void largeTextIsNotCut()
    {
        QFETCH(double, scale);
        QFETCH(int, width);
        k->desktop.setTextScale(scale);
        showPicker(ThemeType::classic, ColorScheme::light, width);
        for (int i = 0; i < 3; ++i) {
            const QQuickItem *label = within(card(i), u"label"_s);
            QVERIFY(label->height() >= label->implicitHeight());
            QVERIFY(label->mapToItem(card(i), QPointF(0, label->height())).y() <= card(i)->height());
            QVERIFY(!label->property("truncated").toBool());
        }
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestThemePicker)
#include "tst_theme_picker.moc"
