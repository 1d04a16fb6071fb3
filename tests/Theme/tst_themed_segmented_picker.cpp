// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/LookGrounds.h"
#include "Theme/ThemedScene.h"

#include <QEasingCurve>
#include <QFontInfo>
#include <QSignalSpy>

namespace cadorel {

using namespace Qt::StringLiterals;

/// The choice of a few.
class TestThemedSegmentedPicker : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;

    /// Three options of 100 pixels each; the owner keeps the choice.
    void showPicker(ThemeType type = ThemeType::classic, ColorScheme scheme = ColorScheme::light)
    {
        QVERIFY(
            s->show("ThemedSegmentedPicker { objectName: \"segment\"; width: 308; name: \"主题\"\n"
                    "options: [\"system\", \"light\", \"dark\"]; selection: \"light\"\n"
                    "label: option => ({ system: \"跟随系统\", light: \"浅色\", dark: \"深色\" })[option]\n"
                    "onSelected: option => selection = option }",
                    type, scheme));
    }
    QQuickItem *segment(int index) const { return s->item(u"segment%1"_s.arg(index)); }
    QString selection() const { return s->root()->property("selection").toString(); }
    QQuickItem *label(int index) const
    {
        return qvariant_cast<QQuickItem *>(segment(index)->property("contentItem"));
    }
    QColor colorOf(int index) const { return label(index)->property("color").value<QColor>(); }

private Q_SLOTS:
    void init() { s = std::make_unique<ThemedScene>(); }
    void cleanup()
    {
        const QStringList warnings = s->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void optionsStandInAnEvenRow()
    {
        showPicker();
        QCOMPARE(label(0)->property("text").toString(), u"跟随系统"_s);
        QCOMPARE(label(2)->property("text").toString(), u"深色"_s);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(segment(i)->width(), 100.0);
            QCOMPARE(segment(i)->mapToItem(s->root(), {}).x(), 4 + 100.0 * i);
            const auto *ground = qvariant_cast<QQuickItem *>(segment(i)->property("background"));
            QCOMPARE(ground->mapToItem(s->root(), {}).y(), 4.0);
            QCOMPARE(ground->height(), s->root()->height() - 8);
        }
    }
    void theSelectedLabelIsSemibold()
    {
        showPicker();
        for (int i = 0; i < 3; ++i) {
            const QFont font = label(i)->property("font").value<QFont>();
            QCOMPARE(font.pixelSize(), 15);
            QCOMPARE(font.weight(), i == 1 ? QFont::DemiBold : QFont::Normal);
        }
    }
    void aTapSelects()
    {
        showPicker();
        QSignalSpy selected(s->root(), SIGNAL(selected(QVariant)));
        s->click(segment(2));
        QCOMPARE(selection(), u"dark"_s);
        s->tap(segment(0));
        QTRY_COMPARE(selection(), u"system"_s);
        QCOMPARE(selected.size(), 2);
        s->click(segment(0));
        QCOMPARE(selected.size(), 2);
    }
    void thePillSlidesIn200Milliseconds()
    {
        showPicker();
        QQuickItem *pill = s->item(u"pill"_s);
        QCOMPARE(pill->x(), 104.0);
        QCOMPARE(pill->width(), 100.0);
        s->click(segment(2));
        QVERIFY2(pill->x() < 204, "it is on its way");
        QTRY_VERIFY(pill->x() > 104 && pill->x() < 204);
        QTRY_COMPARE(pill->x(), 204.0);
        const QObject *slide = s->root()->findChild<QObject *>(u"slide"_s);
        QVERIFY(slide);
        QCOMPARE(slide->property("duration").toInt(), 200);
        QEasingCurve easeInOut(QEasingCurve::BezierSpline);
        easeInOut.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
        const auto curve = slide->property("easing").value<QEasingCurve>();
        QCOMPARE(curve.toCubicSpline(), easeInOut.toCubicSpline());
    }
    void aWiderWindowMovesThePillAtOnce()
    {
        showPicker();
        s->root()->setWidth(608);
        QCOMPARE(s->item(u"pill"_s)->x(), 204.0);
        QCOMPARE(s->item(u"pill"_s)->width(), 200.0);
    }
    void anotherSelectionFromOutsideIsShown()
    {
        showPicker();
        s->root()->setProperty("selection", u"dark"_s);
        QTRY_COMPARE(s->item(u"pill"_s)->x(), 204.0);
        QVERIFY(segment(2)->property("isSelected").toBool());
    }
    void nothingIsSelectedThatIsNoOption()
    {
        showPicker();
        s->root()->setProperty("selection", u"sepia"_s);
        QVERIFY(!s->item(u"pill"_s)->isVisible());
        for (int i = 0; i < 3; ++i)
            QVERIFY(!segment(i)->property("isSelected").toBool());
        s->click(segment(1));
        QCOMPARE(selection(), u"light"_s);
        QVERIFY(s->item(u"pill"_s)->isVisible());
    }
    void fromNoChoiceThePillIsThereAtOnce()
    {
        showPicker();
        s->root()->setProperty("selection", u"sepia"_s);
        s->root()->setProperty("selection", u"dark"_s);
        QVERIFY(s->item(u"pill"_s)->isVisible());
        QCOMPARE(s->item(u"pill"_s)->x(), 204.0);
        s->root()->setProperty("selection", u"light"_s);
        QVERIFY2(s->item(u"pill"_s)->x() > 104, "from a choice to another it slides");
    }
    void whatIsOffIsNotChosen()
    {
        showPicker();
        s->root()->setEnabled(false);
        ThemedScene::accessible(segment(2))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(selection(), u"light"_s);
    }
    void optionsAreOfAnyType()
    {
        QVERIFY(s->show("ThemedSegmentedPicker { objectName: \"segment\"; width: 308; options: [10, 20]; "
                        "selection: 10; onSelected: option => selection = option }"));
        QCOMPARE(label(1)->property("text").toString(), u"20"_s);
        s->click(segment(1));
        QCOMPARE(s->root()->property("selection").toInt(), 20);
    }
    void aPickerWithoutOptionsIsEmpty() { QVERIFY(s->show("ThemedSegmentedPicker { width: 200 }")); }

    void arrowKeysWalkAndReturnChooses()
    {
        showPicker();
        s->key(Qt::Key_Tab);
        QVERIFY(segment(1)->hasActiveFocus());
        s->key(Qt::Key_Left);
        QVERIFY(segment(0)->hasActiveFocus());
        s->key(Qt::Key_Right);
        s->key(Qt::Key_Right);
        QVERIFY(segment(2)->hasActiveFocus());
        s->key(Qt::Key_Right);
        QVERIFY(segment(2)->hasActiveFocus());
        QCOMPARE(selection(), u"light"_s);
        s->key(Qt::Key_Return);
        QCOMPARE(selection(), u"dark"_s);
        s->key(Qt::Key_Left);
        s->key(Qt::Key_Left);
        s->key(Qt::Key_Space);
        QCOMPARE(selection(), u"system"_s);
    }
    void thePickerTakesTheKeyboardAtItsChoice()
    {
        showPicker();
        s->root()->forceActiveFocus();
        QVERIFY(segment(1)->hasActiveFocus());
        s->key(Qt::Key_Right);
        QVERIFY(segment(2)->hasActiveFocus());
        QVERIFY(s->show("ThemedSegmentedPicker { objectName: \"segment\"; width: 308; options: [10, 20] }"));
        s->root()->forceActiveFocus();
        QVERIFY2(segment(0)->hasActiveFocus(), "where nothing is chosen it is the first");
    }
    void thePickerIsOneStopOfTheTabKey()
    {
        QVERIFY(s->show("Column { Item { objectName: \"before\"; activeFocusOnTab: true }\n"
                        "ThemedSegmentedPicker { objectName: \"segment\"; width: 308; options: [1, 2, 3]; "
                        "selection: 2 }\n"
                        "Item { objectName: \"after\"; activeFocusOnTab: true } }"));
        QQuickItem *const before = s->item(u"before"_s);
        QQuickItem *const after = s->item(u"after"_s);
        for (const Qt::Key walk : {Qt::Key_Left, Qt::Key_Right}) {
            before->forceActiveFocus();
            s->key(Qt::Key_Tab);
            QVERIFY(segment(1)->hasActiveFocus());
            s->key(walk);
            QVERIFY(!segment(1)->hasActiveFocus());
            s->key(Qt::Key_Tab);
            QVERIFY(after->hasActiveFocus());
            s->key(Qt::Key_Backtab);
            QVERIFY(segment(1)->hasActiveFocus());
            s->key(walk);
            s->key(Qt::Key_Backtab);
            QVERIFY(before->hasActiveFocus());
        }
    }
    void aScreenReaderMeetsRadioButtons()
    {
        showPicker();
        QCOMPARE(ThemedScene::accessibleName(s->root()), u"主题"_s);
        for (int i = 0; i < 3; ++i) {
            QAccessibleInterface *button = ThemedScene::accessible(segment(i));
            QCOMPARE(button->role(), QAccessible::RadioButton);
            QCOMPARE(bool(button->state().checked), i == 1);
        }
        ThemedScene::accessible(segment(2))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(selection(), u"dark"_s);
    }

    void labelsCanBeRead_data() { addThemes(); }
    void labelsCanBeRead()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        showPicker(type, scheme);
        const QImage picture = s->grab();
        // A free place beside the label, in the middle of its height.
        const auto ground = [&](int index) {
            return picture.pixelColor(
                segment(index)->mapToScene({12, segment(index)->height() / 2}).toPoint());
        };
        const QColor track = ThemedSurfaces::themedSegmentedPicker(&s->theme()).fill;
        for (const int other : {0, 2})
            QVERIFY(leastRatio(s->theme(), track, colorOf(other)) >= Contrast::legible);
        const auto pill = s->root()->property("pillColor").value<QColor>();
        QVERIFY(Contrast::ratio(colorOf(1), pill) >= Contrast::legible);
        QVERIFY(colorOf(1) != colorOf(0));
        QVERIFY(ground(1) != ground(0) || type == ThemeType::neumorphism);
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestThemedSegmentedPicker)
#include "tst_themed_segmented_picker.moc"
