// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SheetScene.h"

#include <QDir>

#include <algorithm>
#include <cmath>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

/// The sheets of the player's screen: sleep, lyrics, more, devices.
class TestNowPlayingSheets : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<SheetScene> s;

    /// A picture for eyes, where somebody has named a folder for them.
    void save(const QString &name) const
    {
        const QString folder = qEnvironmentVariable("CADOREL_PICTURES");
        if (!folder.isEmpty())
            QVERIFY(s->window->grabWindow().save(
                QDir(folder).filePath(name + u'-' + QLatin1StringView(QTest::currentDataTag()) + u".png"_s)));
    }
    void plugInDevices() const
    {
        s->machine.setDevices(
            {{.id = u"pci"_s, .name = u"内置音频 模拟立体声"_s, .isDefault = true, .isInUse = true},
             {.id = u"bt"_s, .name = u"WH-1000XM5"_s, .kind = OutputDevice::Kind::headphones}});
    }

private Q_SLOTS:
    void init() { s = std::make_unique<SheetScene>(); }
    void cleanup()
    {
        const QStringList warnings = s->takeWarnings();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void inEachLookNothingIsCut_data() { addSheetLooks(); }
    void inEachLookNothingIsCut()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QFETCH(QSize, size);
        QFETCH(double, textScale);
        s->desktop.setTextScale(textScale);
        QVERIFY(s->switchTo(type, scheme));
        plugInDevices();
        s->sleep.select(75);
        s->offset.adjust(-500);
        QVERIFY(s->show(size));
        for (const QString &name : {u"sleepTimerSheet"_s, u"lyricsOffsetSheet"_s, u"moreOptionsSheet"_s}) {
            QVERIFY(s->open(name));
            QTRY_COMPARE(s->faults(), QStringList());
            QVERIFY(s->window->grabWindow().size() == size);
            save(name);
            s->key(Qt::Key_Escape);
            QVERIFY(s->isGone(name));
        }
        s->sleep.beginCustom();
        QTRY_VERIFY(s->isOpen(u"customTimePicker"_s));
        QTRY_COMPARE(s->faults(), QStringList());
        save(u"customTimePicker"_s);
        s->sleep.cancelCustom();
        QVERIFY(s->isGone(u"customTimePicker"_s));
        s->devices.open();
        QTRY_VERIFY(s->isOpen(u"outputDevicePicker"_s));
        QTRY_COMPARE(s->faults(), QStringList());
        save(u"outputDevicePicker"_s);
        QList<OutputDevice> many;
        for (int i = 0; i < 10; ++i)
            many.append({.id = QString::number(i),
                         .name = u"USB Audio Class 2.0 数字输出 S/PDIF 高清多媒体接口 %1"_s.arg(i),
                         .isDefault = i == 3,
                         .isInUse = i == 3});
        s->machine.setDevices(many);
        QTRY_VERIFY(s->shows(u"device10"_s));
        QTRY_COMPARE(s->faults(), QStringList());
        s->settle();
        save(u"manyOutputDevices"_s);
        s->machine.setDevices({});
        QTRY_COMPARE(s->faults(), QStringList());
        save(u"noOutputDevices"_s);
    }

    // --- Sleep

    void thePresetsStandInTheirOrderAndTheChosenOneIsChecked()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        QCOMPARE(s->text(u"sheetTitle"_s), u"定时关闭"_s);
        QStringList texts;
        for (const int minutes : SleepTimerViewModel::presetOptions())
            texts.append(s->text(u"sleepPreset%1"_s.arg(minutes)));
        QCOMPARE(texts,
                 (QStringList{u"30 分钟"_s, u"45 分钟"_s, u"1 小时"_s, u"1 小时 30 分钟"_s, u"2 小时"_s}));
        QCOMPARE(s->text(u"sleepOff"_s), u"关闭"_s);
        QCOMPARE(s->item(u"sleepOff"_s)->property("isSelected").toBool(), true);
        s->click(u"sleepPreset45"_s);
        QCOMPARE(s->sleep.sleepTimerMinutes(), 45);
        QCOMPARE(s->item(u"sleepPreset45"_s)->property("isSelected").toBool(), true);
        QCOMPARE(s->item(u"sleepOff"_s)->property("isSelected").toBool(), false);
        QAccessibleInterface *preset = SheetScene::accessible(s->item(u"sleepPreset45"_s));
        QCOMPARE(preset->role(), QAccessible::RadioButton);
        QVERIFY(preset->state().checked);
    }
    void theFootIsSeenWhileATimeIsChosen()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        QVERIFY(!s->shows(u"sleepFoot"_s));
        s->click(u"sleepPreset90"_s);
        QTRY_COMPARE(s->text(u"sleepFootText"_s), u"将在 1 小时 30 分钟 后停止播放"_s);
        s->click(u"sleepOff"_s);
        QTRY_VERIFY(!s->shows(u"sleepFoot"_s));
    }
    void arrowsWalkOverThePresetsAndReturnChooses()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        s->item(u"sleepPreset30"_s)->forceActiveFocus(Qt::TabFocusReason);
        s->key(Qt::Key_Down);
        s->key(Qt::Key_Down);
        s->key(Qt::Key_Return);
        QCOMPARE(s->sleep.sleepTimerMinutes(), 60);
        s->key(Qt::Key_Up);
        s->key(Qt::Key_Space);
        QCOMPARE(s->sleep.sleepTimerMinutes(), 45);
    }
    void aCustomTimeIsMadeOnTwoWheels()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        s->click(u"sleepCustom"_s);
        QTRY_VERIFY(s->isOpen(u"customTimePicker"_s));
        QTRY_VERIFY(s->item(u"hoursWheel"_s)->hasActiveFocus());
        QCOMPARE(s->accessibleName(u"hoursWheel"_s), u"小时"_s);
        QCOMPARE(s->accessibleName(u"minutesWheel"_s), u"分钟"_s);
        const auto isOutlined = [this](const QString &name) {
            return s->item(name)->findChild<QQuickItem *>(u"focusRing"_s)->isVisible();
        };
        QVERIFY(!isOutlined(u"hoursWheel"_s));
        s->key(Qt::Key_Down);
        QVERIFY(isOutlined(u"hoursWheel"_s));
        s->key(Qt::Key_Tab);
        QTRY_VERIFY(s->item(u"minutesWheel"_s)->hasActiveFocus());
        QVERIFY(isOutlined(u"minutesWheel"_s));
        QVERIFY(!isOutlined(u"hoursWheel"_s));
        s->key(Qt::Key_PageDown);
        s->key(Qt::Key_Down);
        QTRY_COMPARE(s->text(u"customTimeText"_s), u"共 71 分钟"_s);
        s->key(Qt::Key_Home);
        s->key(Qt::Key_Up);
        QTRY_COMPARE(s->text(u"customTimeText"_s), u"共 119 分钟"_s);
        QCOMPARE(s->sleep.sleepTimerMinutes(), 0);
        s->click(u"customTimeAccept"_s);
        QVERIFY(s->isGone(u"customTimePicker"_s));
        QCOMPARE(s->sleep.sleepTimerMinutes(), 119);
        QTRY_COMPARE(s->item(u"sleepCustom"_s)->property("mark").toString(), u"checkmark"_s);
        QVERIFY(s->isOpen(u"sleepTimerSheet"_s));
    }
    void aScreenReaderReadsAndTurnsThem()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        s->sleep.beginCustom();
        QTRY_VERIFY(s->isOpen(u"customTimePicker"_s));
        for (const auto &[name, largest] :
             {std::pair(u"hoursWheel"_s, 23), std::pair(u"minutesWheel"_s, 59)}) {
            QAccessibleInterface *wheel = QAccessible::queryAccessibleInterface(s->item(name));
            QVERIFY(wheel);
            QCOMPARE(wheel->role(), QAccessible::SpinBox);
            QAccessibleValueInterface *value = wheel->valueInterface();
            QVERIFY(value);
            QCOMPARE(value->minimumValue().toInt(), 0);
            QCOMPARE(value->maximumValue().toInt(), largest);
            QCOMPARE(value->minimumStepSize().toInt(), 1);
            // Nothing within it is told beside it.
            QCOMPARE(wheel->childCount(), 0);

            QAccessibleActionInterface *actions = wheel->actionInterface();
            QVERIFY(actions);
            actions->doAction(QAccessibleActionInterface::increaseAction());
            actions->doAction(QAccessibleActionInterface::increaseAction());
            QCOMPARE(value->currentValue().toInt(), 2);
            actions->doAction(QAccessibleActionInterface::decreaseAction());
            QCOMPARE(value->currentValue().toInt(), 1);
            value->setCurrentValue(7);
            QCOMPARE(s->item(name)->property("currentIndex").toInt(), 7);
        }
        QCOMPARE(s->sleep.customHours(), 7);
        QCOMPARE(s->sleep.customMinutes(), 7);
        QCOMPARE(s->text(u"customTimeText"_s), u"共 427 分钟"_s);
    }
    void aFingerTurnsThem()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        s->sleep.beginCustom();
        QTRY_VERIFY(s->isOpen(u"customTimePicker"_s));
        static QPointingDevice *const finger = QTest::createTouchDevice();
        const QPoint start = SheetScene::centre(s->item(u"minutesWheel"_s));
        QTest::touchEvent(s->window, finger).press(0, start, s->window);
        constexpr int way = 84;
        const double row = s->item(u"minutesWheel"_s)->property("rowHeight").toDouble();
        for (int y = 4; y <= way; y += 4)
            QTest::touchEvent(s->window, finger).move(0, start - QPoint(0, y), s->window);
        // It follows the finger to within a row; let go as quickly as this, it is thrown on.
        QTRY_VERIFY(std::abs(s->sleep.customMinutes() * row - way) <= row);
        QTest::touchEvent(s->window, finger).release(0, start - QPoint(0, way), s->window);
        QTRY_VERIFY(s->sleep.customMinutes() > 1);
        QVERIFY(s->isOpen(u"customTimePicker"_s));
    }
    void theMousesWheelTurnsThemByANotchEach()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        s->sleep.beginCustom();
        QTRY_VERIFY(s->isOpen(u"customTimePicker"_s));
        s->turnWheel(u"hoursWheel"_s, -120);
        QTRY_COMPARE(s->sleep.customHours(), 1);
        s->turnWheel(u"hoursWheel"_s, -240);
        QTRY_COMPARE(s->sleep.customHours(), 3);
        QTRY_COMPARE(s->item(u"hoursWheel"_s)->property("currentIndex").toInt(), 3);
        s->turnWheel(u"hoursWheel"_s, 120);
        QTRY_COMPARE(s->sleep.customHours(), 2);
        // Back beyond 0 it comes in from the other end.
        s->turnWheel(u"minutesWheel"_s, 120);
        QTRY_COMPARE(s->sleep.customMinutes(), 59);
        QCOMPARE(s->text(u"customTimeText"_s), u"共 179 分钟"_s);
    }
    void resetTurnsBothWheelsToZero()
    {
        QVERIFY(s->show());
        s->sleep.select(90);
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        s->sleep.beginCustom();
        QTRY_VERIFY(s->isOpen(u"customTimePicker"_s));
        QTRY_COMPARE(s->item(u"minutesWheel"_s)->property("currentIndex").toInt(), 30);
        QCOMPARE(s->text(u"customTimeReset"_s), u"重置为 0"_s);
        s->click(u"customTimeReset"_s);
        QTRY_COMPARE(s->item(u"minutesWheel"_s)->property("currentIndex").toInt(), 0);
        QTRY_COMPARE(s->item(u"hoursWheel"_s)->property("currentIndex").toInt(), 0);
        QCOMPARE(s->text(u"customTimeText"_s), u"共 0 分钟"_s);
    }
    void escapeLeavesThePickerAndTheSheetBeneathStays()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        s->sleep.beginCustom();
        QTRY_VERIFY(s->isOpen(u"customTimePicker"_s));
        s->key(Qt::Key_Down);
        s->key(Qt::Key_Escape);
        QVERIFY(s->isGone(u"customTimePicker"_s));
        QVERIFY(s->isOpen(u"sleepTimerSheet"_s));
        QCOMPARE(s->sleep.sleepTimerMinutes(), 0);
        QCOMPARE(s->sleep.showsCustomPicker(), false);
    }

    // --- Lyrics

    void eachButtonMovesTheLyrics_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("amount");
        QTest::addColumn<QString>("status");
        QTest::newRow("-1s") << u"-1s"_s << -1000 << u"歌词延后 1.0 秒"_s;
        QTest::newRow("-0.5s") << u"-0.5s"_s << -500 << u"歌词延后 0.5 秒"_s;
        QTest::newRow("-0.1s") << u"-0.1s"_s << -100 << u"歌词延后 0.1 秒"_s;
        QTest::newRow("+0.1s") << u"+0.1s"_s << 100 << u"歌词提前 0.1 秒"_s;
        QTest::newRow("+0.5s") << u"+0.5s"_s << 500 << u"歌词提前 0.5 秒"_s;
        QTest::newRow("+1s") << u"+1s"_s << 1000 << u"歌词提前 1.0 秒"_s;
        QTest::newRow("-5s") << u"-5s"_s << -5000 << u"歌词延后 5.0 秒"_s;
        QTest::newRow("+5s") << u"+5s"_s << 5000 << u"歌词提前 5.0 秒"_s;
    }
    void eachButtonMovesTheLyrics()
    {
        QFETCH(int, amount);
        QVERIFY(s->show());
        QVERIFY(s->open(u"lyricsOffsetSheet"_s));
        QCOMPARE(s->text(u"offsetStatus"_s), u"歌词与音乐同步"_s);
        QCOMPARE(s->text(u"offsetHint"_s), u"调整歌词与音乐的同步"_s);
        QCOMPARE(s->text(u"offsetSong"_s), u"夜航"_s);
        const QString button = u"offset%1"_s.arg(amount);
        QTEST(s->text(button), "text");
        s->click(button);
        QCOMPARE(s->offsets.getOffset(u"song"_s), amount);
        QTEST(s->text(u"offsetStatus"_s), "status");
        QTRY_COMPARE(s->item(u"offsetSlider"_s)->property("value").toInt(), amount);
    }
    void theButtonsStandInTheOrderOfTheirAmounts()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"lyricsOffsetSheet"_s));
        QList<std::pair<double, double>> places;
        for (const int amount : {-1000, -500, -100, 100, 500, 1000, -5000, 5000}) {
            const QPoint centre = SheetScene::centre(s->item(u"offset%1"_s.arg(amount)));
            places.append({centre.y(), centre.x()});
        }
        QVERIFY(std::is_sorted(places.cbegin(), places.cend()));
    }
    void theSliderGoesByItsSteps()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"lyricsOffsetSheet"_s));
        const QQuickItem *slider = s->item(u"offsetSlider"_s);
        QCOMPARE(slider->property("from").toInt(), -5000);
        QCOMPARE(slider->property("to").toInt(), 5000);
        QCOMPARE(slider->property("stepSize").toInt(), 100);
        s->item(u"offsetSlider"_s)->forceActiveFocus(Qt::TabFocusReason);
        s->key(Qt::Key_Right);
        QCOMPARE(s->offsets.getOffset(u"song"_s), 100);
        s->key(Qt::Key_Left);
        s->key(Qt::Key_Left);
        QCOMPARE(s->offsets.getOffset(u"song"_s), -100);
        QAccessibleInterface *interface = SheetScene::accessible(s->item(u"offsetSlider"_s));
        QVERIFY(interface->valueInterface());
        interface->valueInterface()->setCurrentValue(1500);
        QCOMPARE(s->offsets.getOffset(u"song"_s), 1500);
        const QPoint start = SheetScene::centre(slider);
        QTest::mousePress(s->window, Qt::LeftButton, {}, start);
        const QPoint end(s->window->width() - 2, start.y());
        QTest::mouseMove(s->window, end);
        QTest::mouseRelease(s->window, Qt::LeftButton, {}, end);
        QCOMPARE(s->offsets.getOffset(u"song"_s), 5000);
    }
    void aSongThatComesInMidDragGetsNothingOfIt()
    {
        s->offsets.setOffset(-300, u"other"_s);
        QVERIFY(s->show());
        QVERIFY(s->open(u"lyricsOffsetSheet"_s));
        s->settle();
        const QPoint start = SheetScene::centre(s->item(u"offsetSlider"_s));
        QTest::mousePress(s->window, Qt::LeftButton, {}, start);
        QTest::mouseMove(s->window, start + QPoint(40, 0));
        const int dragged = s->offsets.getOffset(u"song"_s);
        QVERIFY(dragged > 0);
        s->offset.setSong(u"other"_s, u"别的歌"_s);
        QTest::mouseMove(s->window, start + QPoint(80, 0));
        QTest::mouseRelease(s->window, Qt::LeftButton, {}, start + QPoint(80, 0));
        QCOMPARE(s->offsets.getOffset(u"song"_s), dragged);
        QCOMPARE(s->offsets.getOffset(u"other"_s), -300);
        QCOMPARE(s->text(u"offsetSong"_s), u"别的歌"_s);
        QCOMPARE(s->item(u"offsetSlider"_s)->property("value").toInt(), -300);
    }
    void anOffsetBeyondTheSliderStaysAsItIsStored()
    {
        s->offsets.setOffset(8000, u"song"_s);
        QVERIFY(s->show());
        QVERIFY(s->open(u"lyricsOffsetSheet"_s));
        QCOMPARE(s->text(u"offsetStatus"_s), u"歌词提前 8.0 秒"_s);
        QCOMPARE(s->item(u"offsetSlider"_s)->property("value").toInt(), 5000);
        QCOMPARE(s->offsets.getOffset(u"song"_s), 8000);
    }
    void theSliderIsFilledFromItsMiddle()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"lyricsOffsetSheet"_s));
        const QQuickItem *fill = s->item(u"sliderFill"_s);
        const double middle = s->item(u"offsetSlider"_s)->width() / 2;
        QCOMPARE(fill->width(), 0.0);
        s->offset.adjust(1000);
        QTRY_VERIFY(fill->width() > 5);
        QVERIFY(std::abs(fill->x() - middle) < 1);
        s->offset.adjust(-2000);
        QTRY_VERIFY(std::abs(fill->x() + fill->width() - middle) < 1);
        QVERIFY(fill->width() > 5);
    }
    void resetForgetsTheOffset()
    {
        s->offset.adjust(700);
        QVERIFY(s->show());
        QVERIFY(s->open(u"lyricsOffsetSheet"_s));
        QCOMPARE(s->text(u"offsetReset"_s), u"重置为 0"_s);
        s->click(u"offsetReset"_s);
        QVERIFY(!s->home.platform.preferences->contains(u"lyricsOffset_song"_s));
        QCOMPARE(s->text(u"offsetStatus"_s), u"歌词与音乐同步"_s);
    }

    // --- More

    void moreLeadsToWhereItsRowsSay()
    {
        QVERIFY(s->show());
        const QList<std::pair<QString, QString>> rows{{u"moreEqualizer"_s, u"equalizer"_s},
                                                      {u"moreLyricsOffset"_s, u"offset"_s},
                                                      {u"moreSettings"_s, u"settings"_s}};
        QString expected;
        for (const auto &[row, request] : rows) {
            QVERIFY(s->open(u"moreOptionsSheet"_s));
            s->click(row);
            QVERIFY(s->isGone(u"moreOptionsSheet"_s));
            expected += request + u' ';
            QCOMPARE(s->window->property("requests").toString(), expected);
        }
    }
    void moreSaysHowThingsStand()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"moreOptionsSheet"_s));
        QCOMPARE(s->text(u"sheetTitle"_s), u"更多选项"_s);
        QCOMPARE(s->accessibleName(u"moreDevices"_s), u"播放设备，选择 AirPlay 设备"_s);
        QCOMPARE(s->accessibleName(u"moreEqualizer"_s), u"均衡器，已关闭"_s);
        QCOMPARE(s->accessibleName(u"moreLyricsOffset"_s), u"歌词时间调整，+0.5s"_s);
        QCOMPARE(s->accessibleName(u"moreSettings"_s), u"播放界面设置，自定义播放界面"_s);
    }
    void theVolumeIsTurnedWhereTheScreenHasNoRoomForIt()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"moreOptionsSheet"_s));
        QVERIFY(s->shows(u"moreVolume"_s));
        QCOMPARE(s->accessibleName(u"volumeSlider"_s), u"音量"_s);
        s->turnWheel(u"volumeSlider"_s, -240);
        QTRY_VERIFY(std::abs(s->player.player().volume() - 0.9F) < 0.001F);
        s->click(u"muteButton"_s);
        QCOMPARE(s->player.player().volume(), 0.0F);
        s->click(u"muteButton"_s);
        QVERIFY(std::abs(s->player.player().volume() - 0.9F) < 0.001F);
        s->window->resize(1000, 700);
        QTRY_VERIFY(!s->shows(u"moreVolume"_s));
    }
    void lyricsAreMovedWhereThereAreSome()
    {
        QVERIFY(s->show());
        s->setWindow("hasLyrics", false);
        QVERIFY(s->open(u"moreOptionsSheet"_s));
        QVERIFY(!s->shows(u"moreLyricsOffset"_s));
        s->setWindow("hasLyrics", true);
        QTRY_VERIFY(s->shows(u"moreLyricsOffset"_s));
    }

    // --- Devices

    void aPickerThatGoesWithItsScreenIsClosed()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"moreOptionsSheet"_s));
        s->click(u"moreDevices"_s);
        QTRY_VERIFY(s->isOpen(u"outputDevicePicker"_s));
        s->engine.reset();
        QCOMPARE(s->devices.isOpen(), false);
    }
    void aDeviceIsChosenAndComesAndGoesWhileThePickerIsOpen()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"moreOptionsSheet"_s));
        s->click(u"moreDevices"_s);
        QTRY_VERIFY(s->isOpen(u"outputDevicePicker"_s));
        QCOMPARE(s->machine.activations, 1);
        QCOMPARE(s->text(u"noDevices"_s), u"没有找到播放设备"_s);
        plugInDevices();
        QTRY_VERIFY(s->shows(u"device2"_s));
        QVERIFY(!s->shows(u"noDevices"_s));
        QCOMPARE(s->item(u"device0"_s)->property("label").toString(), u"系统默认"_s);
        QCOMPARE(s->accessibleName(u"device0"_s), u"系统默认，内置音频 模拟立体声"_s);
        QCOMPARE(s->accessibleName(u"device1"_s), u"内置音频 模拟立体声，正在播放"_s);
        s->click(u"device2"_s);
        QCOMPARE(s->machine.chosenDevice(), u"bt"_s);
        QTRY_COMPARE(s->item(u"device2"_s)->property("isSelected").toBool(), true);
        QVERIFY(s->isOpen(u"outputDevicePicker"_s));
        s->machine.setDevices({{.id = u"pci"_s, .name = u"内置音频 模拟立体声"_s, .isDefault = true}});
        QTRY_COMPARE(s->text(u"deviceNotice"_s), u"“WH-1000XM5”已断开，声音改由系统默认设备播放"_s);
        QTRY_COMPARE(s->item(u"device0"_s)->property("isSelected").toBool(), true);
        s->key(Qt::Key_Escape);
        QVERIFY(s->isGone(u"outputDevicePicker"_s));
        QCOMPARE(s->devices.isOpen(), false);
        QVERIFY(s->isOpen(u"moreOptionsSheet"_s));
    }
    void theNameOfADeviceIsNoShortcut()
    {
        s->machine.setDevices({{.id = u"pci"_s, .name = u"内置音频"_s, .isDefault = true},
                               {.id = u"bt"_s, .name = u"Rock&Blues"_s}});
        QVERIFY(s->show());
        QVERIFY(s->open(u"moreOptionsSheet"_s));
        s->click(u"moreDevices"_s);
        QTRY_VERIFY(s->isOpen(u"outputDevicePicker"_s));
        QTRY_VERIFY(s->shows(u"device2"_s));
        QTest::keyClick(s->window, Qt::Key_B, Qt::AltModifier);
        QCOMPARE(s->machine.chosenDevice(), QString());
        QVERIFY(s->accessibleName(u"device2"_s).startsWith(u"Rock&Blues"_s));
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestNowPlayingSheets)
#include "tst_now_playing_sheets.moc"
