// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/EqualizerService.h"
#include "ViewModels/EqualizerViewModel.h"
#include "Views/ScreenTest.h"

#include <QSignalSpy>
#include <QWheelEvent>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class EqualizerScreenTest : public ScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void everyWayLeadsToTheSheet();
    void sheetClosesAndComesBack();
    void switchIsTurnedByMouseTouchAndKeyboard();
    void statusTellsOfAStream();
    void everyPresetMovesTheSlidersByMouse();
    void presetsAreChosenByTouch();
    void presetsAreChosenByKeyboard();
    void chosenPresetIsInSight();
    void customKeepsTheGains();
    void dragIsHeardWhileItLasts();
    void draggedSliderMarksCustomAndKeepsTheOthers();
    void fingerMovesASliderAndNotTheSheet();
    void keysMoveASlider_data();
    void keysMoveASlider();
    void doubleClickOnABandSetsItToZero();
    void doubleTapOnABandSetsItToZero();
    void wheelMovesTheSliderBeneathIt();
    void wheelScrollsASheetThatIsTooHigh();
    void wheelWalksAlongThePresets();
    void preampIsSetByMouseAndKeyboard();
    void resetSetsEverythingBack();
    void switchedOffTheSlidersStillMove();
    void changesFromElsewhereAreShown();
    void tabComesToEveryControl();
    void screenReaderReadsAndSetsTheSliders();
    void screenReaderReadsThePresetsAndTheSwitch();
    void barsMoveOnlyInSightAndWhilePlaying();
    void everyLookIsWhole_data();
    void everyLookIsWhole();

private:
    QPointingDevice *m_touch = QTest::createTouchDevice();

    EqualizerService &service() const { return *t->equalizerService; }
    bool isSheetOpen() const
    {
        const QObject *sheet = t->object(u"equalizerView"_s);
        return sheet && sheet->property("opened").toBool();
    }
    bool isSheetGone() const
    {
        const QObject *sheet = t->object(u"equalizerView"_s);
        return !sheet || !sheet->property("visible").toBool();
    }
    /// Shows the window and in it the sheet, risen.
    void showSheet(QSize size = {390, 844})
    {
        QVERIFY(t->show());
        t->window->resize(size);
        QTRY_COMPARE(t->window->contentItem()->size().toSize(), size);
        t->equalizer->open();
        QTRY_VERIFY(isSheetOpen());
    }
    static QString bandName(int band) { return u"band%1"_s.arg(band); }
    /// Where a slider's handle stands at this gain.
    QPoint onSlider(const QString &name, double gain) const
    {
        const QQuickItem *slider = t->item(name);
        const auto *handle = slider->property("handle").value<QQuickItem *>();
        const bool isUpright = slider->property("orientation").toInt() == Qt::Vertical;
        const double fraction = (gain + 12) / 24;
        if (isUpright) {
            const qreal room = slider->height() - handle->height();
            return slider
                ->mapToScene(QPointF(slider->width() / 2, handle->height() / 2 + (1 - fraction) * room))
                .toPoint();
        }
        const qreal room = slider->width() - handle->width();
        return slider->mapToScene(QPointF(handle->width() / 2 + fraction * room, slider->height() / 2))
            .toPoint();
    }
    void touchDrag(QPoint from, QPoint to) const
    {
        constexpr int steps = 8;
        QTest::touchEvent(t->window, m_touch).press(0, from, t->window);
        const QSignalSpy frames(t->window, &QQuickWindow::afterAnimating);
        for (int step = 1; step <= steps; ++step) {
            QTest::touchEvent(t->window, m_touch).move(0, from + (to - from) * step / steps, t->window);
            // Moves between two frames count as one.
            const auto shown = frames.size();
            t->window->update();
            QVERIFY(QTest::qWaitFor([&frames, shown] { return frames.size() > shown; }));
        }
        QTest::touchEvent(t->window, m_touch).release(0, to, t->window);
    }
    void tap(QPoint place) const
    {
        QTest::touchEvent(t->window, m_touch).press(0, place, t->window);
        QTest::touchEvent(t->window, m_touch).release(0, place, t->window);
    }
    void turnWheel(QPoint place, int delta) const
    {
        QWheelEvent event(place, t->window->mapToGlobal(QPointF(place)), {}, QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QGuiApplication::sendEvent(t->window, &event);
    }
    double valueOf(const QString &name) const { return t->item(name)->property("value").toDouble(); }
    QString textOf(const QString &name) const { return t->item(name)->property("text").toString(); }
    /// Whether the sliders stand where the gains are.
    bool slidersShow(const EqualizerGains &gains) const
    {
        for (int band = 0; band < equalizerBandCount; ++band) {
            if (valueOf(bandName(band)) != static_cast<double>(gains.at(static_cast<std::size_t>(band))))
                return false;
        }
        return true;
    }
    QAccessibleInterface *accessible(const QString &name) const
    {
        return QAccessible::queryAccessibleInterface(t->item(name));
    }
};

void EqualizerScreenTest::everyWayLeadsToTheSheet()
{
    showLibrary();
    t->click(u"equalizerButton"_s);
    QTRY_VERIFY(isSheetOpen());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isSheetGone());

    playRow(0);
    QTRY_VERIFY(t->shows(u"playerEqualizerButton"_s));
    t->click(u"playerEqualizerButton"_s);
    QTRY_VERIFY(isSheetOpen());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isSheetGone());

    QTest::keyClick(t->window, Qt::Key_E, Qt::ControlModifier);
    QTRY_VERIFY(isSheetOpen());
}

void EqualizerScreenTest::sheetClosesAndComesBack()
{
    showSheet();
    t->click(u"equalizerClose"_s);
    QTRY_VERIFY(isSheetGone());
    QVERIFY(!t->equalizer->isOpen());
    t->equalizer->open();
    QTRY_VERIFY(isSheetOpen());
    // A press beside the sheet closes it too: nothing in it waits to be kept.
    QTest::mouseClick(t->window, Qt::LeftButton, {}, QPoint(195, 20));
    QTRY_VERIFY(isSheetGone());
    QVERIFY(!t->equalizer->isOpen());
}

void EqualizerScreenTest::switchIsTurnedByMouseTouchAndKeyboard()
{
    showSheet();
    QQuickItem *enabled = t->item(u"equalizerSwitch"_s);
    t->click(enabled);
    QVERIFY(service().isEnabled());
    QVERIFY(enabled->property("checked").toBool());
    tap(TestWindow::centre(enabled));
    QVERIFY(!service().isEnabled());
    enabled->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Space);
    QVERIFY(service().isEnabled());
    service().setEnabled(false);
    QVERIFY(!enabled->property("checked").toBool());
}

void EqualizerScreenTest::statusTellsOfAStream()
{
    showSheet();
    QCOMPARE(textOf(u"equalizerStatus"_s), u"已关闭，仅对本地文件生效"_s);
    service().setEnabled(true);
    QTRY_COMPARE(textOf(u"equalizerStatus"_s), u"已开启，仅对本地文件生效"_s);
    t->audioPlayer->playOnlineSong({u"1"_s, u"歌"_s, {}, {}, MusicPlatform::netease, {}, {}}, {});
    QTRY_COMPARE(textOf(u"equalizerStatus"_s), u"仅对本地文件生效，当前歌曲来自网络"_s);
}

void EqualizerScreenTest::everyPresetMovesTheSlidersByMouse()
{
    showSheet({1000, 760});
    for (int row = 0; row < 13; ++row) {
        const EqualizerPreset preset = allEqualizerPresets().at(row);
        QQuickItem *chip = t->item(u"preset%1"_s.arg(row));
        // The wheel brings those in sight that are not.
        for (int turn = 0; turn < 30 && chip->mapToScene(QPointF(chip->width(), 0)).x() > 770; ++turn)
            turnWheel(TestWindow::centre(t->item(u"presetRow"_s)), -60);
        t->click(chip);
        QCOMPARE(service().currentPreset(), preset);
        QVERIFY(slidersShow(bandValues(preset)));
        QVERIFY(chip->property("isCurrent").toBool());
        QCOMPARE(chip->property("text").toString(), displayName(preset));
        QCOMPARE(textOf(u"presetDescription"_s), descriptionText(preset));
    }
    QCOMPARE(textOf(u"bandText0"_s), u"+4"_s);
    QCOMPARE(textOf(u"bandText9"_s), u"-4"_s);
}

void EqualizerScreenTest::presetsAreChosenByTouch()
{
    showSheet();
    tap(TestWindow::centre(t->item(u"preset2"_s)));
    QCOMPARE(service().currentPreset(), EqualizerPreset::pop);
    // A swipe walks along the line and chooses nothing.
    const QQuickItem *scroller = t->item(u"presetScroller"_s);
    const QPoint place = TestWindow::centre(t->item(u"preset2"_s));
    touchDrag(place, place - QPoint(120, 0));
    QVERIFY(scroller->property("contentX").toDouble() > 50);
    QCOMPARE(service().currentPreset(), EqualizerPreset::pop);
}

void EqualizerScreenTest::presetsAreChosenByKeyboard()
{
    showSheet();
    t->item(u"equalizerSwitch"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(t->window, Qt::Key_Tab);
    QCOMPARE(t->window->activeFocusItem()->objectName(), u"preset0"_s);
    for (int i = 0; i < 12; ++i)
        QTest::keyClick(t->window, Qt::Key_Right);
    QCOMPARE(t->window->activeFocusItem()->objectName(), u"preset12"_s);
    QCOMPARE(service().currentPreset(), EqualizerPreset::flat);
    QTest::keyClick(t->window, Qt::Key_Space);
    QCOMPARE(service().currentPreset(), EqualizerPreset::lateNight);
    QTest::keyClick(t->window, Qt::Key_Left);
    QTest::keyClick(t->window, Qt::Key_Return);
    QCOMPARE(service().currentPreset(), EqualizerPreset::vocal);
    // What the keyboard is on is in sight.
    const QQuickItem *chip = t->window->activeFocusItem();
    QVERIFY(chip->mapToScene(QPointF()).x() >= 0);
    QVERIFY(chip->mapToScene(QPointF(chip->width(), 0)).x() <= 390);
    // Neither end leads out of the line.
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(t->window, Qt::Key_Left);
    QCOMPARE(t->window->activeFocusItem()->objectName(), u"preset0"_s);
}

void EqualizerScreenTest::chosenPresetIsInSight()
{
    service().setCurrentPreset(EqualizerPreset::lateNight);
    showSheet();
    const auto isInSight = [this](const QString &name) {
        const QQuickItem *chip = t->item(name);
        return chip->mapToScene(QPointF()).x() >= 0 &&
               chip->mapToScene(QPointF(chip->width(), 0)).x() <= t->window->width();
    };
    QTRY_VERIFY(isInSight(u"preset12"_s));
    QVERIFY(!isInSight(u"preset0"_s));
    t->click(u"equalizerReset"_s);
    QVERIFY(isInSight(u"preset0"_s));
}

void EqualizerScreenTest::customKeepsTheGains()
{
    service().setCurrentPreset(EqualizerPreset::rock);
    showSheet();
    t->item(u"preset1"_s)->forceActiveFocus(Qt::TabFocusReason);
    for (int i = 0; i < 12; ++i)
        QTest::keyClick(t->window, Qt::Key_Right);
    QTest::keyClick(t->window, Qt::Key_Space);
    QCOMPARE(service().currentPreset(), EqualizerPreset::custom);
    QVERIFY(slidersShow(bandValues(EqualizerPreset::rock)));
    QCOMPARE(textOf(u"presetDescription"_s), u"自定义调整"_s);
}

void EqualizerScreenTest::dragIsHeardWhileItLasts()
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
    QCOMPARE(textOf(u"bandText3"_s), service().getBand(3) == 8 ? u"+8"_s : textOf(u"bandText3"_s));
}

void EqualizerScreenTest::draggedSliderMarksCustomAndKeepsTheOthers()
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

void EqualizerScreenTest::fingerMovesASliderAndNotTheSheet()
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

void EqualizerScreenTest::keysMoveASlider_data()
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

void EqualizerScreenTest::keysMoveASlider()
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

void EqualizerScreenTest::doubleClickOnABandSetsItToZero()
{
    service().setBand(2, 7.5F);
    showSheet();
    // Far from zero: what a click sets on its way does not stay.
    const QPoint place = onSlider(bandName(2), 10);
    QTest::mouseDClick(t->window, Qt::LeftButton, {}, place);
    QTRY_COMPARE(service().getBand(2), 0.0F);
    QTRY_COMPARE(valueOf(bandName(2)), 0.0);
}

void EqualizerScreenTest::doubleTapOnABandSetsItToZero()
{
    service().setBand(2, -7.5F);
    showSheet();
    const QPoint place = onSlider(bandName(2), -7.5);
    tap(place);
    tap(place);
    QTRY_COMPARE(service().getBand(2), 0.0F);
    QTRY_COMPARE(valueOf(bandName(2)), 0.0);
}

void EqualizerScreenTest::wheelMovesTheSliderBeneathIt()
{
    showSheet();
    turnWheel(TestWindow::centre(t->item(bandName(1))), 120);
    QCOMPARE(service().getBand(1), 0.5F);
    turnWheel(TestWindow::centre(t->item(bandName(1))), -240);
    QCOMPARE(service().getBand(1), -0.5F);
    turnWheel(TestWindow::centre(t->item(u"preamp"_s)), 120);
    QCOMPARE(service().preampGain(), 0.5F);
}

void EqualizerScreenTest::wheelScrollsASheetThatIsTooHigh()
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

void EqualizerScreenTest::wheelWalksAlongThePresets()
{
    showSheet();
    const QQuickItem *scroller = t->item(u"presetScroller"_s);
    const QPoint place = TestWindow::centre(t->item(u"presetRow"_s));
    turnWheel(place, -120);
    QCOMPARE(scroller->property("contentX").toDouble(), 120.0);
    for (int i = 0; i < 50; ++i)
        turnWheel(place, -120);
    const QQuickItem *last = t->item(u"preset13"_s);
    QVERIFY(last->mapToScene(QPointF(last->width(), 0)).x() <= 390);
    for (int i = 0; i < 50; ++i)
        turnWheel(place, 120);
    QCOMPARE(scroller->property("contentX").toDouble(), 0.0);
}

void EqualizerScreenTest::preampIsSetByMouseAndKeyboard()
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

void EqualizerScreenTest::resetSetsEverythingBack()
{
    showSheet();
    QVERIFY(!t->item(u"equalizerReset"_s)->isEnabled());
    service().setBand(0, 12);
    service().setPreampGain(-3);
    service().setEnabled(true);
    t->click(u"equalizerReset"_s);
    QVERIFY(slidersShow(EqualizerGains{}));
    QCOMPARE(service().currentPreset(), EqualizerPreset::flat);
    QCOMPARE(valueOf(u"preamp"_s), 0.0);
    QVERIFY(service().isEnabled());
    QVERIFY(!t->item(u"equalizerReset"_s)->isEnabled());
    // The keyboard is not left on a button that does nothing any more.
    QTest::keyClick(t->window, Qt::Key_Space);
    QVERIFY(!service().isEnabled());
}

void EqualizerScreenTest::switchedOffTheSlidersStillMove()
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

void EqualizerScreenTest::changesFromElsewhereAreShown()
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

void EqualizerScreenTest::tabComesToEveryControl()
{
    service().setPreampGain(1);
    showSheet();
    QStringList met;
    for (int i = 0; i < 40; ++i) {
        QTest::keyClick(t->window, Qt::Key_Tab);
        const QQuickItem *item = t->window->activeFocusItem();
        QVERIFY(item);
        if (met.contains(item->objectName()))
            break;
        met.append(item->objectName());
        QVERIFY2(item->property("visualFocus").toBool(), qPrintable(item->objectName()));
    }
    QStringList expected{u"equalizerClose"_s, u"equalizerReset"_s, u"equalizerSwitch"_s, u"preset0"_s,
                         u"preamp"_s};
    for (int band = 0; band < equalizerBandCount; ++band)
        expected.append(bandName(band));
    met.sort();
    expected.sort();
    QCOMPARE(met, expected);
}

void EqualizerScreenTest::screenReaderReadsAndSetsTheSliders()
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

void EqualizerScreenTest::screenReaderReadsThePresetsAndTheSwitch()
{
    showSheet();
    for (int row = 0; row < 14; ++row) {
        QAccessibleInterface *chip = accessible(u"preset%1"_s.arg(row));
        QCOMPARE(chip->role(), QAccessible::RadioButton);
        QCOMPARE(chip->text(QAccessible::Name), displayName(allEqualizerPresets().at(row)));
        QCOMPARE(chip->text(QAccessible::Description), descriptionText(allEqualizerPresets().at(row)));
        QCOMPARE(bool(chip->state().checked), row == 0);
    }
    accessible(u"preset7"_s)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(service().currentPreset(), EqualizerPreset::rnb);
    QVERIFY(accessible(u"preset7"_s)->state().checked);

    QAccessibleInterface *enabled = accessible(u"equalizerSwitch"_s);
    QCOMPARE(enabled->role(), QAccessible::CheckBox);
    QCOMPARE(enabled->text(QAccessible::Name), u"启用均衡器"_s);
    QVERIFY(!enabled->state().checked);
    service().setEnabled(true);
    QVERIFY(enabled->state().checked);
}

void EqualizerScreenTest::barsMoveOnlyInSightAndWhilePlaying()
{
    showLibrary();
    service().setEnabled(true);
    t->library->playSongAt(0);
    QVERIFY(t->audioPlayer->isPlaying());
    t->equalizer->open();
    QTRY_VERIFY(isSheetOpen());
    const QQuickItem *bars = t->item(u"levelBars"_s);
    const auto heights = [bars] {
        QList<qreal> list;
        const QList<QQuickItem *> children = bars->childItems();
        for (const QQuickItem *bar : children) {
            if (bar->width() > 0)
                list.append(bar->height());
        }
        return list;
    };
    QCOMPARE(heights().size(), 7);
    t->clock->advance(80ms);
    const QList<qreal> before = heights();
    t->clock->advance(800ms);
    QVERIFY(heights() != before);
    QVERIFY(heights().constFirst() > bars->height() * 0.1);
    t->audioPlayer->pause();
    const QList<qreal> paused = heights();
    QCOMPARE(QSet<qreal>(paused.cbegin(), paused.cend()).size(), 1);
    t->clock->advance(2s);
    QCOMPARE(heights(), paused);

    t->audioPlayer->play();
    t->equalizer->close();
    QTRY_VERIFY(isSheetGone());
    const QSignalSpy followed(bars, SIGNAL(levelsChanged()));
    t->clock->advance(800ms);
    QCOMPARE(followed.size(), 0);
}

void EqualizerScreenTest::everyLookIsWhole_data()
{
    addLooks();
}

void EqualizerScreenTest::everyLookIsWhole()
{
    showInLook();
    service().setEnabled(true);
    for (int band = 0; band < equalizerBandCount; ++band)
        service().setBand(band, band % 2 == 0 ? -10.5F : 11.5F);
    t->equalizer->open();
    QTRY_VERIFY(isSheetOpen());
    check(u"equalizer"_s);
    for (int band = 0; band < equalizerBandCount; ++band) {
        const QQuickItem *text = t->item(u"bandText%1"_s.arg(band));
        QVERIFY2(text->implicitWidth() <= text->width(), qPrintable(text->property("text").toString()));
        // The sliders stand apart, each with a place for a finger.
        const QQuickItem *slider = t->item(bandName(band));
        QVERIFY(slider->height() >= 120 && slider->width() >= 28);
    }
    t->audioPlayer->playOnlineSong({u"1"_s, u"歌"_s, {}, {}, MusicPlatform::netease, {}, {}}, {});
    service().setEnabled(false);
    QCoreApplication::processEvents();
    check(u"switched off"_s);
}

QTEST_MAIN(EqualizerScreenTest)
#include "tst_equalizer_screen.moc"
