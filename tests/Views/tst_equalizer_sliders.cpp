// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/EqualizerBandModel.h"
#include "Views/EqualizerScreenTest.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

class EqualizerSlidersTest : public EqualizerScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void dragIsHeardWhileItLasts();
    void draggedSliderMarksCustomAndKeepsTheOthers();
    void fingerMovesASliderAndNotTheSheet();
    void keysMoveASlider_data();
    void keysMoveASlider();
    void doubleClickOnABandSetsItToZero();
    void doubleTapOnABandSetsItToZero();
    void wheelMovesTheSliderBeneathIt();
    void wheelScrollsASheetThatIsTooHigh();
    void preampIsSetByMouseAndKeyboard();
    void switchedOffTheSlidersStillMove();
    void changesFromElsewhereAreShown();
    void screenReaderReadsAndSetsTheSliders();
};

void EqualizerSlidersTest::dragIsHeardWhileItLasts()
{
    service().setEnabled(true);
    showSheet();
    const QSignalSpy heard(&service(), &EqualizerService::bandsChanged);
    QTest::mousePress(t->window, Qt::LeftButton, {}, onSlider(bandName(3), 0));
    for (const double gain : {2.0, 4.0, 6.0, 8.0}) {
        QTest::mouseMove(t->window, onSlider(bandName(3), gain));
        QVERIFY2(std::abs(service().getBand(3) - gain) <= 0.5,
                 qPrintable(QString::number(service().getBand(3))));
        // Steps of half a decibel.
        QCOMPARE(service().getBand(3) * 2, std::round(service().getBand(3) * 2));
        QCOMPARE(t->audioEngine->equalizer().band(3).gain, static_cast<double>(service().getBand(3)));
    }
    QVERIFY(heard.size() >= 4);
    QTest::mouseRelease(t->window, Qt::LeftButton, {}, onSlider(bandName(3), 8));
    QVERIFY(std::abs(service().getBand(3) - 8) <= 0.5);
    QCOMPARE(textOf(u"bandText3"_s), gainText(service().getBand(3)));
}

void EqualizerSlidersTest::draggedSliderMarksCustomAndKeepsTheOthers()
{
    service().setCurrentPreset(EqualizerPreset::rock);
    showSheet();
    QTest::mousePress(t->window, Qt::LeftButton, {}, onSlider(bandName(4), -1));
    QTest::mouseMove(t->window, onSlider(bandName(4), -4));
    QTest::mouseMove(t->window, onSlider(bandName(4), -9));
    QTest::mouseRelease(t->window, Qt::LeftButton, {}, onSlider(bandName(4), -9));
    QCOMPARE(service().currentPreset(), EqualizerPreset::custom);
    QVERIFY(t->item(u"preset13"_s)->property("isCurrent").toBool());
    EqualizerGains expected = bandValues(EqualizerPreset::rock);
    expected.at(4) = service().getBand(4);
    QVERIFY(std::abs(expected.at(4) + 9) <= 0.5F);
    QVERIFY(service().bands() == expected);
    QVERIFY(slidersShow(expected));
}

void EqualizerSlidersTest::fingerMovesASliderAndNotTheSheet()
{
    // So low that the sheet has to be scrolled.
    showSheet({390, 480});
    const QQuickItem *scroller = t->item(u"equalizerScroller"_s);
    QVERIFY(scroller->property("contentHeight").toDouble() > scroller->height());
    touchDrag(onSlider(bandName(6), 0), onSlider(bandName(6), 9));
    QVERIFY2(std::abs(service().getBand(6) - 9) <= 0.5, qPrintable(QString::number(service().getBand(6))));
    QCOMPARE(scroller->property("contentY").toDouble(), 0.0);
    touchDrag(onSlider(bandName(6), 9), onSlider(bandName(6), -3));
    QVERIFY(std::abs(service().getBand(6) + 3) <= 0.5);
    QCOMPARE(scroller->property("contentY").toDouble(), 0.0);
    // Beside the sliders a finger moves the sheet.
    const QPoint place = TestWindow::centre(t->item(u"equalizerStatus"_s));
    touchDrag(place, place - QPoint(0, 90));
    QVERIFY(scroller->property("contentY").toDouble() > 20);
}

void EqualizerSlidersTest::keysMoveASlider_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<double>("expected");
    QTest::newRow("up") << int(Qt::Key_Up) << 3.5;
    QTest::newRow("right") << int(Qt::Key_Right) << 3.5;
    QTest::newRow("down") << int(Qt::Key_Down) << 2.5;
    QTest::newRow("left") << int(Qt::Key_Left) << 2.5;
    QTest::newRow("page up") << int(Qt::Key_PageUp) << 6.0;
    QTest::newRow("page down") << int(Qt::Key_PageDown) << 0.0;
    QTest::newRow("home") << int(Qt::Key_Home) << -12.0;
    QTest::newRow("end") << int(Qt::Key_End) << 12.0;
    QTest::newRow("zero") << int(Qt::Key_0) << 0.0;
}

void EqualizerSlidersTest::keysMoveASlider()
{
    QFETCH(int, key);
    QFETCH(double, expected);
    service().setBand(8, 3);
    service().setPreampGain(3);
    showSheet();
    for (const QString &name : {bandName(8), u"preamp"_s}) {
        t->item(name)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(t->window, static_cast<Qt::Key>(key));
        QCOMPARE(valueOf(name), expected);
    }
    QCOMPARE(service().getBand(8), static_cast<float>(expected));
    QCOMPARE(service().preampGain(), static_cast<float>(expected));
    // No key leads past the ends.
    for (int i = 0; i < 50; ++i)
        QTest::keyClick(t->window, Qt::Key_Up);
    QCOMPARE(service().preampGain(), 12.0F);
}

void EqualizerSlidersTest::doubleClickOnABandSetsItToZero()
{
    service().setBand(2, 7.5F);
    showSheet();
    // Far from zero: what a click sets on its way does not stay.
    const QPoint place = onSlider(bandName(2), 10);
    QTest::mouseDClick(t->window, Qt::LeftButton, {}, place);
    QTRY_COMPARE(service().getBand(2), 0.0F);
    QTRY_COMPARE(valueOf(bandName(2)), 0.0);
}

void EqualizerSlidersTest::doubleTapOnABandSetsItToZero()
{
    service().setBand(2, -7.5F);
    showSheet();
    const QPoint place = onSlider(bandName(2), -7.5);
    tap(place);
    tap(place);
    QTRY_COMPARE(service().getBand(2), 0.0F);
    QTRY_COMPARE(valueOf(bandName(2)), 0.0);
}

void EqualizerSlidersTest::wheelMovesTheSliderBeneathIt()
{
    showSheet();
    turnWheel(TestWindow::centre(t->item(bandName(1))), 120);
    QCOMPARE(service().getBand(1), 0.5F);
    turnWheel(TestWindow::centre(t->item(bandName(1))), -240);
    QCOMPARE(service().getBand(1), -0.5F);
    turnWheel(TestWindow::centre(t->item(u"preamp"_s)), 120);
    QCOMPARE(service().preampGain(), 0.5F);
}

void EqualizerSlidersTest::wheelScrollsASheetThatIsTooHigh()
{
    showSheet({390, 480});
    const QQuickItem *scroller = t->item(u"equalizerScroller"_s);
    turnWheel(onSlider(bandName(5), 3), -120);
    QTRY_VERIFY(scroller->property("contentY").toDouble() > 0);
    QVERIFY(service().bands() == EqualizerGains{});
    QTRY_VERIFY(!scroller->property("moving").toBool());
    // The slider that has the keyboard is meant.
    t->item(bandName(5))->forceActiveFocus(Qt::TabFocusReason);
    const double before = scroller->property("contentY").toDouble();
    turnWheel(TestWindow::centre(t->item(bandName(5))), 120);
    QCOMPARE(service().getBand(5), 0.5F);
    QCOMPARE(scroller->property("contentY").toDouble(), before);
}

void EqualizerSlidersTest::preampIsSetByMouseAndKeyboard()
{
    showSheet();
    QTest::mouseClick(t->window, Qt::LeftButton, {}, onSlider(u"preamp"_s, -6));
    QVERIFY(std::abs(service().preampGain() + 6) <= 0.5F);
    // The click has brought the keyboard along.
    const float before = service().preampGain();
    QTest::keyClick(t->window, Qt::Key_Right);
    QCOMPARE(service().preampGain(), before + 0.5F);
    QTest::keyClick(t->window, Qt::Key_0);
    QTest::keyClick(t->window, Qt::Key_Left);
    QCOMPARE(textOf(u"preampText"_s), u"-0.5 dB"_s);
    QCOMPARE(service().currentPreset(), EqualizerPreset::flat);
}

void EqualizerSlidersTest::switchedOffTheSlidersStillMove()
{
    service().setEnabled(true);
    showSheet();
    const QQuickItem *slider = t->item(bandName(0));
    const auto fill = slider->property("fill").value<QColor>();
    service().setEnabled(false);
    QVERIFY(slider->property("fill").value<QColor>() != fill);
    QTest::mouseClick(t->window, Qt::LeftButton, {}, onSlider(bandName(0), 6));
    QVERIFY(std::abs(service().getBand(0) - 6) <= 0.5F);
    QVERIFY(!service().isEnabled());
}

void EqualizerSlidersTest::changesFromElsewhereAreShown()
{
    showSheet();
    service().setBand(9, -7);
    QCOMPARE(valueOf(bandName(9)), -7.0);
    QCOMPARE(textOf(u"bandText9"_s), u"-7"_s);
    service().setPreampGain(4.5F);
    QCOMPARE(valueOf(u"preamp"_s), 4.5);
    // A gain between two steps stays what it is.
    service().setBand(9, 1.3F);
    QCOMPARE(textOf(u"bandText9"_s), u"+1.3"_s);
    QCOMPARE(service().getBand(9), 1.3F);
}

void EqualizerSlidersTest::screenReaderReadsAndSetsTheSliders()
{
    service().setBand(0, 3.5F);
    showSheet();
    QAccessibleInterface *slider = accessible(bandName(0));
    QVERIFY(slider);
    QCOMPARE(slider->role(), QAccessible::Slider);
    QCOMPARE(slider->text(QAccessible::Name), u"32 赫兹"_s);
    QCOMPARE(slider->text(QAccessible::Description), u"+3.5 分贝"_s);
    QAccessibleValueInterface *value = slider->valueInterface();
    QVERIFY(value);
    QCOMPARE(value->currentValue().toDouble(), 3.5);
    QCOMPARE(value->minimumValue().toDouble(), -12.0);
    QCOMPARE(value->maximumValue().toDouble(), 12.0);
    value->setCurrentValue(-6.0);
    QCOMPARE(service().getBand(0), -6.0F);
    QCOMPARE(slider->text(QAccessible::Description), u"-6 分贝"_s);
    // Again, and the slider still follows the service.
    value->setCurrentValue(2.0);
    QCOMPARE(service().getBand(0), 2.0F);
    service().setBand(0, 9);
    QCOMPARE(value->currentValue().toDouble(), 9.0);
    value->setCurrentValue(1000);
    QCOMPARE(service().getBand(0), 12.0F);

    QCOMPARE(accessible(u"preamp"_s)->text(QAccessible::Name), u"前级增益"_s);
    accessible(u"preamp"_s)->valueInterface()->setCurrentValue(-1.5);
    QCOMPARE(service().preampGain(), -1.5F);
    accessible(bandName(9))->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
    QCOMPARE(service().getBand(9), 0.5F);
}

QTEST_MAIN(EqualizerSlidersTest)
#include "tst_equalizer_sliders.moc"
