// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/EqualizerScreenTest.h"
#include "Views/HeldKey.h"

#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class EqualizerSheetTest : public EqualizerScreenTest
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
    void heldReturnChoosesAPresetOnce();
    void aNameIsNoShortcut();
    void chosenPresetIsInSight();
    void customKeepsTheGains();
    void wheelWalksAlongThePresets();
    void resetSetsEverythingBack();
    void tabComesToEveryControl();
    void screenReaderReadsThePresetsAndTheSwitch();
    void barsMoveOnlyInSightAndWhilePlaying();
    void everyLookIsWhole_data();
    void everyLookIsWhole();
};

void EqualizerSheetTest::everyWayLeadsToTheSheet()
{
    QVERIFY(showLibrary());
    t->click(u"settingsTab"_s);
    QTRY_VERIFY(t->shows(u"equalizerRow"_s));
    t->click(u"equalizerRowButton"_s);
    QTRY_VERIFY(isSheetOpen());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isSheetGone());

    QVERIFY(playRow(0));
    QTest::keyClick(t->window, Qt::Key_P, Qt::ControlModifier);
    QTRY_VERIFY(t->item(u"nowPlayingCover"_s)->property("covers").toBool());
    t->click(u"equalizerStatusButton"_s);
    QTRY_VERIFY(isSheetOpen());
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(isSheetGone());

    QTest::keyClick(t->window, Qt::Key_E, Qt::ControlModifier);
    QTRY_VERIFY(isSheetOpen());
}

void EqualizerSheetTest::sheetClosesAndComesBack()
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

void EqualizerSheetTest::switchIsTurnedByMouseTouchAndKeyboard()
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

void EqualizerSheetTest::statusTellsOfAStream()
{
    showSheet();
    QCOMPARE(textOf(u"equalizerStatus"_s), u"已关闭，仅对本地文件生效"_s);
    service().setEnabled(true);
    QTRY_COMPARE(textOf(u"equalizerStatus"_s), u"已开启，仅对本地文件生效"_s);
    t->audioPlayer->playOnlineSong({u"1"_s, u"歌"_s, {}, {}, MusicPlatform::netease, {}, {}}, {});
    QTRY_COMPARE(textOf(u"equalizerStatus"_s), u"仅对本地文件生效，当前歌曲来自网络"_s);
}

void EqualizerSheetTest::everyPresetMovesTheSlidersByMouse()
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
        QCOMPARE(chip->property("name").toString(), displayName(preset));
        QCOMPARE(textOf(u"presetDescription"_s), descriptionText(preset));
    }
    QCOMPARE(textOf(u"bandText0"_s), u"+4"_s);
    QCOMPARE(textOf(u"bandText9"_s), u"-4"_s);
}

void EqualizerSheetTest::presetsAreChosenByTouch()
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

void EqualizerSheetTest::presetsAreChosenByKeyboard()
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

void EqualizerSheetTest::heldReturnChoosesAPresetOnce()
{
    showSheet();
    QQuickItem *chip = t->item(u"preset1"_s);
    chip->forceActiveFocus(Qt::TabFocusReason);
    QSignalSpy chosen(chip, SIGNAL(clicked()));
    QVERIFY(chosen.isValid());
    holdReturn(t->window);
    QCOMPARE(chosen.size(), 1);
}

void EqualizerSheetTest::aNameIsNoShortcut()
{
    showSheet({1000, 760});
    t->equalizer->choosePreset(2);
    const EqualizerPreset chosen = service().currentPreset();
    QVERIFY(chosen != EqualizerPreset::rnb);
    QCOMPARE(displayName(EqualizerPreset::rnb), u"R&B"_s);
    QTest::keyClick(t->window, Qt::Key_B, Qt::AltModifier);
    QCOMPARE(service().currentPreset(), chosen);
}

void EqualizerSheetTest::chosenPresetIsInSight()
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

void EqualizerSheetTest::customKeepsTheGains()
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

void EqualizerSheetTest::wheelWalksAlongThePresets()
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

void EqualizerSheetTest::resetSetsEverythingBack()
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

void EqualizerSheetTest::tabComesToEveryControl()
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

void EqualizerSheetTest::screenReaderReadsThePresetsAndTheSwitch()
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

void EqualizerSheetTest::barsMoveOnlyInSightAndWhilePlaying()
{
    QVERIFY(showLibrary());
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

void EqualizerSheetTest::everyLookIsWhole_data()
{
    addLooks();
}

void EqualizerSheetTest::everyLookIsWhole()
{
    QVERIFY(showInLook());
    service().setEnabled(true);
    for (int band = 0; band < equalizerBandCount; ++band)
        service().setBand(band, band % 2 == 0 ? -10.5F : 11.5F);
    t->equalizer->open();
    QTRY_VERIFY(isSheetOpen());
    check(u"equalizer"_s);
    for (int band = 0; band < equalizerBandCount; ++band) {
        const QQuickItem *text = t->item(u"bandText%1"_s.arg(band));
        // Only on the narrowest window with large texts the numbers are set smaller than they want to be.
        const bool isTightest = QByteArray(QTest::currentDataTag()).endsWith("320 1.3");
        const double width = isTightest ? text->property("contentWidth").toDouble() : text->implicitWidth();
        QVERIFY2(width > 0 && width <= text->width(), qPrintable(text->property("text").toString()));
        // The sliders stand apart, each with a place for a finger.
        const QQuickItem *slider = t->item(bandName(band));
        QVERIFY(slider->height() >= 120 && slider->width() >= 28);
    }
    t->audioPlayer->playOnlineSong({u"1"_s, u"歌"_s, {}, {}, MusicPlatform::netease, {}, {}}, {});
    service().setEnabled(false);
    QCoreApplication::processEvents();
    check(u"switched off"_s);
}

QTEST_MAIN(EqualizerSheetTest)
#include "tst_equalizer_screen.moc"
