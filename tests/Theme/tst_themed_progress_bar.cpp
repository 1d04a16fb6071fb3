// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemedScene.h"

#include <QSignalSpy>

#include <limits>

namespace cadorel {

using namespace Qt::StringLiterals;

/// The bar that is dragged to a place of a song.
class TestThemedProgressBar : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;
    /// What the bar said, in order.
    QStringList m_said;

    /// A bar of 200 pixels whose owner sets what it is told.
    void showBar(const QByteArray &more = "progress: 0.25", ThemeType type = ThemeType::classic,
                 ColorScheme scheme = ColorScheme::light)
    {
        QVERIFY(s->show(
            "ThemedProgressBar { id: bar; width: 200; onProgressDragged: place => progress = place; " + more +
                " }",
            type, scheme));
        QObject::connect(s->root(), SIGNAL(progressDragged(double)), this, SLOT(hearProgress(double)));
        QObject::connect(s->root(), SIGNAL(editingChanged(bool)), this, SLOT(hearEditing(bool)));
    }
    QPoint at(int x) const { return s->root()->mapToScene(QPointF(x, s->root()->height() / 2)).toPoint(); }
    double progress() const { return s->root()->property("progress").toDouble(); }
    QRectF area(const QString &name) const
    {
        const QQuickItem *item = s->item(name);
        return item->mapRectToItem(s->root(), QRectF(0, 0, item->width(), item->height()));
    }

public Q_SLOTS:
    void hearProgress(double progress) { m_said.append(u"progress %1"_s.arg(progress)); }
    void hearEditing(bool isEditing) { m_said.append(isEditing ? u"editing"_s : u"ended"_s); }

private Q_SLOTS:
    void init()
    {
        m_said.clear();
        s = std::make_unique<ThemedScene>();
    }
    void cleanup()
    {
        const QStringList warnings = s->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void fillAndKnobStandAtTheProgress()
    {
        showBar();
        QCOMPARE(area(u"track"_s).height(), 4.0);
        QCOMPARE(area(u"track"_s).width(), 200.0);
        QCOMPARE(area(u"fill"_s).width(), 50.0);
        QCOMPARE(area(u"knob"_s).size(), QSizeF(12, 12));
        QCOMPARE(area(u"knob"_s).center(), QPointF(50, s->root()->height() / 2));
        s->root()->setProperty("progress", 1.0);
        QCOMPARE(area(u"fill"_s).width(), 200.0);
        QCOMPARE(area(u"knob"_s).center().x(), 200.0);
    }
    void theKnobGrowsWhileItIsDragged()
    {
        showBar();
        QCOMPARE(s->root()->property("isDragging").toBool(), false);
        QTest::mousePress(s->window(), Qt::LeftButton, {}, at(80));
        QCOMPARE(s->root()->property("isDragging").toBool(), true);
        QCOMPARE(area(u"knob"_s).size(), QSizeF(16, 16));
        QCOMPARE(area(u"knob"_s).center().x(), 80.0);
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, at(80));
        QCOMPARE(s->root()->property("isDragging").toBool(), false);
        QCOMPARE(area(u"knob"_s).size(), QSizeF(12, 12));
    }
    void aTouchWithoutAMoveIsADrag()
    {
        showBar();
        QTest::mousePress(s->window(), Qt::LeftButton, {}, at(150));
        QCOMPARE(progress(), 0.75);
        QCOMPARE(m_said, QStringList({u"progress 0.75"_s, u"editing"_s}));
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, at(150));
        QCOMPARE(m_said.last(), u"ended"_s);
        QCOMPARE(m_said.count(u"ended"_s), 1);
    }
    void editingIsToldWithEachChange()
    {
        showBar();
        QTest::mousePress(s->window(), Qt::LeftButton, {}, at(20));
        QTest::mouseMove(s->window(), at(40));
        QTest::mouseMove(s->window(), at(60));
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, at(60));
        QCOMPARE(m_said, QStringList({u"progress 0.1"_s, u"editing"_s, u"progress 0.2"_s, u"editing"_s,
                                      u"progress 0.3"_s, u"editing"_s, u"ended"_s}));
    }
    void aDragBeyondTheBarEndsAtItsEnds()
    {
        showBar();
        QTest::mousePress(s->window(), Qt::LeftButton, {}, at(100));
        QTest::mouseMove(s->window(), at(320));
        QCOMPARE(progress(), 1.0);
        QTest::mouseMove(s->window(), at(-30));
        QCOMPARE(progress(), 0.0);
        QCOMPARE(area(u"fill"_s).width(), 0.0);
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, at(-30));
    }
    void theMouseAloneMovesNothing()
    {
        showBar();
        QTest::mouseMove(s->window(), at(100));
        QTest::mouseMove(s->window(), at(120));
        QTRY_VERIFY(s->item(u"halo"_s)->isVisible());
        QCOMPARE(m_said, QStringList());
        QCOMPARE(progress(), 0.25);
    }
    void aFingerDragsAsAMouseDoes()
    {
        showBar();
        QPointingDevice *finger = QTest::createTouchDevice();
        QTest::touchEvent(s->window(), finger).press(0, at(100));
        QCOMPARE(progress(), 0.5);
        QTest::touchEvent(s->window(), finger).move(0, at(160));
        QTRY_COMPARE(progress(), 0.8);
        QTest::touchEvent(s->window(), finger).release(0, at(160));
        QTRY_COMPARE(m_said.last(), u"ended"_s);
    }
    void aListDoesNotTakeTheDrag()
    {
        QVERIFY(s->show("Flickable { width: 200; height: 200; contentWidth: 800; contentHeight: 800\n"
                        "ThemedProgressBar { objectName: \"bar\"; width: 200\n"
                        "onProgressDragged: place => progress = place } }"));
        const QPoint start = ThemedScene::centre(s->item(u"bar"_s));
        QTest::mousePress(s->window(), Qt::LeftButton, {}, start);
        for (int x = 10; x <= 60; x += 10)
            QTest::mouseMove(s->window(), start - QPoint(x, 0));
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, start - QPoint(60, 0));
        QCOMPARE(s->item(u"bar"_s)->property("progress").toDouble(), 0.2);
        QCOMPARE(s->root()->property("contentX").toDouble(), 0.0);
    }
    void aDragShowsWhereItIsBeforeItsOwnerFollows()
    {
        QVERIFY(s->show("ThemedProgressBar { width: 200; progress: 0.25 }"));
        QTest::mousePress(s->window(), Qt::LeftButton, {}, at(150));
        QCOMPARE(area(u"fill"_s).width(), 150.0);
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, at(150));
        QCOMPARE(area(u"fill"_s).width(), 50.0);
    }

    void aBarWithoutWidthGivesNumbers()
    {
        showBar("progress: 0.5");
        s->root()->setWidth(0);
        QCOMPARE(area(u"fill"_s).width(), 0.0);
        QCOMPARE(area(u"knob"_s).center().x(), 0.0);
        QMetaObject::invokeMethod(s->root(), "goTo", Q_ARG(double, 0.7));
        QCOMPARE(progress(), 0.7);
        // A finger that was put on the bar before it lost its width.
        s->root()->setWidth(200);
        QTest::mousePress(s->window(), Qt::LeftButton, {}, at(100));
        s->root()->setWidth(0);
        QTest::mouseMove(s->window(), at(30));
        QVERIFY(!qIsNaN(progress()) && progress() >= 0 && progress() <= 1);
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, at(30));
        QVERIFY(!qIsNaN(area(u"knob"_s).x()));
    }
    void progressBeyondTheEndsIsDrawnAtThem_data()
    {
        QTest::addColumn<double>("progress");
        QTest::addColumn<double>("width");
        QTest::newRow("below") << -3.0 << 0.0;
        QTest::newRow("above") << 1.5 << 200.0;
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0.0;
        QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 200.0;
    }
    void progressBeyondTheEndsIsDrawnAtThem()
    {
        QFETCH(double, progress);
        QFETCH(double, width);
        showBar();
        s->root()->setProperty("progress", progress);
        QCOMPARE(area(u"fill"_s).width(), width);
        QCOMPARE(area(u"knob"_s).center().x(), width);
    }

    void arrowKeysGoAStep()
    {
        showBar("progress: 0.5");
        s->root()->forceActiveFocus(Qt::TabFocusReason);
        s->key(Qt::Key_Right);
        QCOMPARE(progress(), 0.55);
        QCOMPARE(m_said, QStringList({u"progress 0.55"_s, u"editing"_s, u"ended"_s}));
        s->key(Qt::Key_Left);
        QCOMPARE(progress(), 0.5);
        s->key(Qt::Key_End);
        QCOMPARE(progress(), 1.0);
        s->key(Qt::Key_Right);
        QCOMPARE(progress(), 1.0);
        s->key(Qt::Key_Home);
        QCOMPARE(progress(), 0.0);
    }
    void theKeyboardIsSeenOnTheKnob()
    {
        showBar();
        const QQuickItem *ring = s->item(u"knob"_s)->findChild<QQuickItem *>(u"focusRing"_s);
        QVERIFY(ring);
        QVERIFY(!ring->isVisible());
        s->key(Qt::Key_Tab);
        QVERIFY(ring->isVisible());
    }
    void aScreenReaderMeetsASlider()
    {
        showBar("progress: 0.25; name: \"播放进度\"");
        QAccessibleInterface *slider = ThemedScene::accessible(s->root());
        QVERIFY(slider);
        QCOMPARE(slider->role(), QAccessible::Slider);
        QCOMPARE(slider->text(QAccessible::Name), u"播放进度"_s);
        QVERIFY(slider->valueInterface());
        QCOMPARE(slider->valueInterface()->currentValue().toDouble(), 0.25);
        QCOMPARE(slider->valueInterface()->maximumValue().toDouble(), 1.0);
        slider->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
        QCOMPARE(progress(), 0.3);
    }
    void aScreenReaderSetsTheValue()
    {
        showBar("progress: 0.25");
        QAccessibleValueInterface *value = ThemedScene::accessible(s->root())->valueInterface();
        value->setCurrentValue(0.6);
        QCOMPARE(progress(), 0.6);
        QCOMPARE(m_said, QStringList({u"progress 0.6"_s, u"editing"_s, u"ended"_s}));
        // To where it is already, and beyond the end; it goes on to follow its owner.
        value->setCurrentValue(0.6);
        QCOMPARE(m_said.size(), 3);
        value->setCurrentValue(1.5);
        QCOMPARE(progress(), 1.0);
        QCOMPARE(value->currentValue().toDouble(), 1.0);
        s->root()->setProperty("progress", 0.1);
        QCOMPARE(value->currentValue().toDouble(), 0.1);
    }
    void aValueThatItsOwnerDoesNotTakeIsNotKept()
    {
        QVERIFY(s->show("ThemedProgressBar { width: 200; progress: 0.25 }"));
        QAccessibleValueInterface *value = ThemedScene::accessible(s->root())->valueInterface();
        value->setCurrentValue(0.6);
        QCOMPARE(value->currentValue().toDouble(), 0.25);
        QCOMPARE(area(u"fill"_s).width(), 50.0);
    }
    void aBarThatIsOffGoesNowhere()
    {
        showBar("progress: 0.25; enabled: false");
        QAccessibleInterface *slider = ThemedScene::accessible(s->root());
        for (const QString &action :
             {QAccessibleActionInterface::increaseAction(), QAccessibleActionInterface::decreaseAction()})
            slider->actionInterface()->doAction(action);
        slider->valueInterface()->setCurrentValue(0.6);
        QTest::mouseClick(s->window(), Qt::LeftButton, {}, at(150));
        QCOMPARE(m_said, QStringList());
        QCOMPARE(slider->valueInterface()->currentValue().toDouble(), 0.25);
    }

    void fillAndKnobAreOfThePrimaryColor_data() { addThemes(); }
    void fillAndKnobAreOfThePrimaryColor()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        showBar("progress: 0.5", type, scheme);
        QCOMPARE(s->item(u"fill"_s)->property("color").value<QColor>(), s->theme().primaryColor());
        QTRY_COMPARE(s->grab().pixelColor(at(100)).rgb(), s->theme().primaryColor().rgb());
        QCOMPARE(s->grab().pixelColor(at(50)).rgb(), s->theme().primaryColor().rgb());
        QVERIFY(s->grab().pixelColor(at(170)) != s->theme().backgroundColor());
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestThemedProgressBar)
#include "tst_themed_progress_bar.moc"
