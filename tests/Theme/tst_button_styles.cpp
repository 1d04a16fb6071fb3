// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeDesktopAppearance.h"
#include "Theme/LookGrounds.h"
#include "Theme/Springs.h"
#include "Theme/ThemedScene.h"
#include "Theme/ThemedSurfaces.h"

#include <QEasingCurve>
#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The button styles, in every look, by real events.
class ButtonStylesTest : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;
    double m_deepest = 0;

    static QPointingDevice *finger()
    {
        static QPointingDevice *const device = QTest::createTouchDevice();
        return device;
    }
    static void addStyles()
    {
        QTest::addColumn<QByteArray>("style");
        QTest::addColumn<double>("pressedScale");
        QTest::addColumn<ThemeType>("type");
        for (const ThemeType type : allThemeTypes()) {
            const auto row = [type](const char *style, double scale) {
                QTest::addRow("%s, %s", style, qPrintable(rawValue(type)))
                    << QByteArray(style) << scale << type;
            };
            row("ScaleButtonStyle", 0.92);
            row("NeumorphicButtonStyle", 0.97);
            row("KawaiiButtonStyle", 0.97);
            row("ThemedButtonStyle", 0.97);
        }
    }
    bool showStyle()
    {
        QFETCH(QByteArray, style);
        QFETCH(ThemeType, type);
        return s->show(style + " { text: \"播放\" }", type);
    }
    Surface surfaceOf(const QString &name) const
    {
        return s->item(name)->property("surface").value<Surface>();
    }
    static const QQuickItem *ringOf(const QQuickItem *button)
    {
        const QList<QQuickItem *> layers = button->property("background").value<QQuickItem *>()->childItems();
        for (const QQuickItem *layer : layers) {
            if (layer->objectName() == "focusRing"_L1)
                return layer;
        }
        qFatal("a button without a focus ring");
    }
    /// How well the text can be read while that surface is shown.
    double ratioOn(const QString &name, const QColor &ink) const
    {
        const QColor fill = surfaceOf(name).fill;
        return leastRatio(s->theme(), fill.isValid() ? fill : QColor(Qt::transparent), ink);
    }
    double depth() const { return s->root()->property("depth").toDouble(); }

public Q_SLOTS:
    void noteDepth() { m_deepest = std::max(m_deepest, depth()); }

private Q_SLOTS:
    void init()
    {
        m_deepest = 0;
        s = std::make_unique<ThemedScene>();
    }
    void cleanup()
    {
        const QStringList warnings = s->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void answersMouseFingerAndKeys_data() { addStyles(); }
    void answersMouseFingerAndKeys()
    {
        QVERIFY(showStyle());
        QSignalSpy clicks(s->root(), SIGNAL(clicked()));
        s->click(s->root());
        QCOMPARE(clicks.size(), 1);
        s->tap(s->root());
        QCOMPARE(clicks.size(), 2);
        s->root()->forceActiveFocus(Qt::TabFocusReason);
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
            s->key(key);
        QCOMPARE(clicks.size(), 5);
        QAccessibleInterface *interface = ThemedScene::accessible(s->root());
        QVERIFY(interface && interface->actionInterface());
        interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicks.size(), 6);
        s->root()->setEnabled(false);
        s->click(s->root());
        QCOMPARE(clicks.size(), 6);
        QVERIFY(s->root()->opacity() < 0.5);
    }
    void aHeldReturnPressesOnce_data() { addStyles(); }
    void aHeldReturnPressesOnce()
    {
        QVERIFY(showStyle());
        const QSignalSpy clicks(s->root(), SIGNAL(clicked()));
        s->root()->forceActiveFocus(Qt::TabFocusReason);
        s->holdKey(Qt::Key_Return);
        s->holdKey(Qt::Key_Enter);
        QCOMPARE(clicks.size(), 2);
    }
    void aLongTextStaysInTheButton_data() { addStyles(); }
    void aLongTextStaysInTheButton()
    {
        QVERIFY(showStyle());
        const QQuickItem *const label = s->item(u"label"_s);
        QVERIFY(!label->property("truncated").toBool());
        s->root()->setProperty("text", u"一个名字特别特别长的按钮"_s);
        s->root()->setWidth(120);
        QTRY_VERIFY(label->property("truncated").toBool());
        QVERIFY(label->width() <= 120);
        s->root()->setProperty("symbol", u"play.fill"_s);
        QTRY_VERIFY(label->mapToItem(s->root(), QPointF(label->width(), 0)).x() <= 120);
    }
    void withoutMotionAPressIsStillSeen_data() { addStyles(); }
    void withoutMotionAPressIsStillSeen()
    {
        s->desktop.setReducesMotion(true);
        QVERIFY(showStyle());
        const QImage idle = s->grab();
        QTest::mousePress(s->window(), Qt::LeftButton, {}, ThemedScene::centre(s->root()));
        QTRY_COMPARE(depth(), 1.0);
        QCOMPARE(s->root()->scale(), 1.0);
        QVERIFY(s->grab() != idle);
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, ThemedScene::centre(s->root()));
    }
    void isAButtonWithANameForScreenReaders_data() { addStyles(); }
    void isAButtonWithANameForScreenReaders()
    {
        QVERIFY(showStyle());
        QCOMPARE(ThemedScene::accessibleName(s->root()), u"播放"_s);
        QCOMPARE(ThemedScene::accessible(s->root())->role(), QAccessible::Button);
    }
    void isLargeEnoughForAFinger_data() { addStyles(); }
    void isLargeEnoughForAFinger()
    {
        QVERIFY(showStyle());
        QVERIFY(s->root()->width() >= 44);
        QVERIFY(s->root()->height() >= 44);
        const QQuickItem *label = s->item(u"label"_s);
        QVERIFY(label->width() <= s->root()->width());
    }
    void shrinksWhileItIsHeld_data() { addStyles(); }
    void shrinksWhileItIsHeld()
    {
        QFETCH(double, pressedScale);
        QVERIFY(showStyle());
        QCOMPARE(s->root()->scale(), 1.0);
        QTest::mousePress(s->window(), Qt::LeftButton, {}, ThemedScene::centre(s->root()));
        QVERIFY(s->root()->property("showsPress").toBool());
        QTRY_COMPARE(depth(), 1.0);
        QVERIFY(qFuzzyCompare(s->root()->scale(), pressedScale));
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, ThemedScene::centre(s->root()));
        QTRY_COMPARE(depth(), 0.0);
        QCOMPARE(s->root()->scale(), 1.0);
    }
    void shortestTapIsSeen_data() { addStyles(); }
    void shortestTapIsSeen()
    {
        QVERIFY(showStyle());
        connect(s->root(), SIGNAL(depthChanged()), this, SLOT(noteDepth()));
        for (const bool byFinger : {false, true}) {
            m_deepest = 0;
            if (byFinger)
                s->tap(s->root());
            else
                s->click(s->root());
            // It is over, and is seen nevertheless.
            QVERIFY(!s->root()->property("down").toBool());
            QVERIFY(s->root()->property("showsPress").toBool());
            QTRY_VERIFY(m_deepest > 0.5);
            QTRY_COMPARE(depth(), 0.0);
        }
        s->root()->forceActiveFocus(Qt::TabFocusReason);
        m_deepest = 0;
        s->key(Qt::Key_Return);
        QTRY_VERIFY(m_deepest > 0.5);
    }
    void keyboardIsSeen_data() { addStyles(); }
    void keyboardIsSeen()
    {
        QFETCH(QByteArray, style);
        QFETCH(ThemeType, type);
        QVERIFY(s->show("Row { spacing: 20; " + style + " { text: \"上一首\" } " + style +
                            " { objectName: \"second\"; text: \"下一首\" } }",
                        type));
        QQuickItem *const first = s->root()->childItems().at(0);
        first->forceActiveFocus(Qt::MouseFocusReason);
        const QQuickItem *const ring = ringOf(s->item(u"second"_s));
        QVERIFY(!ring->isVisible());
        const QImage without = s->grab();
        s->key(Qt::Key_Tab);
        QVERIFY(s->item(u"second"_s)->hasActiveFocus());
        QVERIFY(ring->isVisible());
        QVERIFY(s->grab() != without);
        QCOMPARE(ring->property("border").value<QObject *>()->property("color").value<QColor>(),
                 s->theme().primaryColor());
        s->key(Qt::Key_Backtab);
        QVERIFY(!ring->isVisible());
        QVERIFY(ringOf(first)->isVisible());
    }
    void mouseIsSeen_data() { addStyles(); }
    void mouseIsSeen()
    {
        QVERIFY(showStyle());
        QTest::mouseMove(s->window(), {5, 5});
        const QImage away = s->grab();
        QTest::mouseMove(s->window(), ThemedScene::centre(s->root()));
        QTRY_VERIFY(s->root()->property("hovered").toBool());
        QVERIFY(s->grab() != away);
    }
    void textCanBeRead_data() { addThemes(); }
    void textCanBeRead()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        for (const QByteArray style :
             {"KawaiiButtonStyle", "ThemedButtonStyle", "ScaleButtonStyle", "NeumorphicButtonStyle"}) {
            QVERIFY(s->show(style + " { text: \"播放\" }", type, scheme));
            const auto ink = s->root()->property("ink").value<QColor>();
            for (const QString &ground : {u"idle"_s, u"pressed"_s})
                QVERIFY2(ratioOn(ground, ink) >= Contrast::legible, qPrintable(ground));
        }
    }
    void lookPicksTheStyle_data() { addThemes(); }
    void lookPicksTheStyle()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QVERIFY(s->show("ThemedButtonStyle { text: \"播放\" }", type, scheme));
        AppTheme *theme = &s->theme();
        const bool embossed = type == ThemeType::neumorphism;
        QCOMPARE(surfaceOf(u"idle"_s), embossed ? ThemedSurfaces::neumorphismRaised(theme)
                                                : ThemedSurfaces::kawaiiButton(theme, false));
        QCOMPARE(surfaceOf(u"pressed"_s), embossed ? ThemedSurfaces::neumorphismPressed(theme)
                                                   : ThemedSurfaces::kawaiiButton(theme, true));
        // Pressed, it looks like that.
        const QImage idle = s->grab();
        QTest::mousePress(s->window(), Qt::LeftButton, {}, ThemedScene::centre(s->root()));
        QTRY_COMPARE(depth(), 1.0);
        QVERIFY(s->grab() != idle);
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, ThemedScene::centre(s->root()));
    }
    void eachStyleHasItsSpring_data()
    {
        QTest::addColumn<QByteArray>("style");
        QTest::addColumn<ThemeType>("type");
        QTest::addColumn<double>("response");
        QTest::addColumn<double>("damping");
        QTest::addColumn<int>("easeOut");
        for (const ThemeType type : allThemeTypes()) {
            const auto row = [type](const char *style, double response, double damping, int easeOut) {
                QTest::addRow("%s, %s", style, qPrintable(rawValue(type)))
                    << QByteArray(style) << type << response << damping << easeOut;
            };
            row("ScaleButtonStyle", 0.2, 0.7, 0);
            row("NeumorphicButtonStyle", 0, 0, 100);
            row("KawaiiButtonStyle", 0.3, 0.6, 0);
            if (type == ThemeType::neumorphism)
                row("ThemedButtonStyle", 0, 0, 100);
            else
                row("ThemedButtonStyle", 0.3, 0.6, 0);
        }
    }
    void eachStyleHasItsSpring()
    {
        QFETCH(double, response);
        QFETCH(double, damping);
        QFETCH(int, easeOut);
        QVERIFY(showStyle());
        // It is made when it moves for the first time.
        s->click(s->root());
        const auto *spring = s->root()->findChild<QObject *>(u"spring"_s);
        QVERIFY(spring);
        QCOMPARE(spring->property("duration").toInt(),
                 easeOut > 0 ? easeOut : Springs::duration(response, damping));
        const auto curve = spring->property("easing").value<QEasingCurve>();
        QCOMPARE(curve.type(), QEasingCurve::BezierSpline);
        const QList<double> points =
            easeOut > 0 ? QList<double>{0, 0, 0.58, 1, 1, 1} : Springs::curve(response, damping);
        QEasingCurve expected(QEasingCurve::BezierSpline);
        for (qsizetype i = 0; i + 5 < points.size(); i += 6)
            expected.addCubicBezierSegment({points[i], points[i + 1]}, {points[i + 2], points[i + 3]},
                                           {points[i + 4], points[i + 5]});
        QCOMPARE(curve.toCubicSpline(), expected.toCubicSpline());
    }
    void springMovesAsItsCurveSays()
    {
        QVERIFY(s->show("Item { property real place: 0\n"
                        "Behavior on place { ResponseSpring { objectName: \"spring\"; response: 0.2; "
                        "damping: 0.3 } } }"));
        connect(s->root(), SIGNAL(placeChanged()), this, SLOT(notePlace()));
        s->root()->setProperty("place", 1);
        QTRY_COMPARE(s->root()->property("place").toDouble(), 1.0);
        QTRY_VERIFY(m_farthest > 1.05);
        QVERIFY(m_farthest < 1.4);
    }
    void desktopWithoutMotionGetsNone()
    {
        FakeDesktopAppearance appearance;
        QQmlEngine engine;
        installUserInterface(engine, {.desktopAppearance = &appearance});
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Cadorel\nResponseSpring { response: 0.3; damping: 0.6 }",
                          QUrl());
        const std::unique_ptr<QObject> spring(component.create());
        QVERIFY2(spring, qPrintable(component.errorString()));
        QCOMPARE(spring->property("duration").toInt(), Springs::duration(0.3, 0.6));
        appearance.setReducesMotion(true);
        QCOMPARE(spring->property("duration").toInt(), 0);
    }

public Q_SLOTS:
    void notePlace() { m_farthest = std::max(m_farthest, s->root()->property("place").toDouble()); }

private:
    double m_farthest = 0;
};

QTEST_MAIN(ButtonStylesTest)
#include "tst_button_styles.moc"
