// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/PlayerBench.h"
#include "ViewModels/SleepTimerViewModel.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The minutes that the sleep sheet writes down.
class TestSleepTimerViewModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void presetsAreHalfAnHourToTwoHours()
    {
        QCOMPARE(SleepTimerViewModel::presetOptions(), (QList<int>{30, 45, 60, 90, 120}));
    }
    void timesAreToldInMinutesBelowAnHourAndInHoursFromThereOn_data()
    {
        QTest::addColumn<int>("minutes");
        QTest::addColumn<QString>("text");
        QTest::newRow("0") << 0 << u"0 分钟"_s;
        QTest::newRow("1") << 1 << u"1 分钟"_s;
        QTest::newRow("30") << 30 << u"30 分钟"_s;
        QTest::newRow("59") << 59 << u"59 分钟"_s;
        QTest::newRow("60") << 60 << u"1 小时"_s;
        QTest::newRow("61") << 61 << u"1 小时 1 分钟"_s;
        QTest::newRow("90") << 90 << u"1 小时 30 分钟"_s;
        QTest::newRow("120") << 120 << u"2 小时"_s;
        QTest::newRow("1439") << 1439 << u"23 小时 59 分钟"_s;
    }
    void timesAreToldInMinutesBelowAnHourAndInHoursFromThereOn()
    {
        QFETCH(int, minutes);
        QTEST(SleepTimerViewModel::formatTime(minutes), "text");
    }
    void atFirstItIsOffAndTheFootSaysNothing()
    {
        const SleepTimerViewModel sleep;
        QCOMPARE(sleep.sleepTimerMinutes(), 0);
        QCOMPARE(sleep.footText(), QString());
        QCOMPARE(sleep.timeText(), QString());
        QCOMPARE(sleep.isCustom(), false);
    }
    void theFootTellsWhenTheMusicWouldEnd()
    {
        SleepTimerViewModel sleep;
        QSignalSpy changes(&sleep, &SleepTimerViewModel::sleepTimerMinutesChanged);
        sleep.select(90);
        QCOMPARE(sleep.sleepTimerMinutes(), 90);
        QCOMPARE(sleep.footText(), u"将在 1 小时 30 分钟 后停止播放"_s);
        sleep.select(90);
        QCOMPARE(changes.count(), 1);
        sleep.select(0);
        QCOMPARE(sleep.footText(), QString());
        QCOMPARE(changes.count(), 2);
    }
    void theMusicGoesOnPastTheTimeThatIsTold()
    {
        PlayerBench bench;
        AudioPlayerService &player = bench.start();
        player.playSong(fileSong(u"a"_s), {});
        bench.item().becomeReady();
        bench.stream().setState(1, StreamPlayer::TimeControlStatus::playing);
        QTRY_VERIFY(player.isPlaying());
        SleepTimerViewModel sleep;
        sleep.select(30);
        bench.home.clock().advance(std::chrono::minutes(31));
        QCoreApplication::processEvents();
        QCOMPARE(sleep.footText(), u"将在 30 分钟 后停止播放"_s);
        QCOMPARE(player.isPlaying(), true);
        QCOMPARE(bench.stream().rate(), 1.0);
        QVERIFY(sleep.children().isEmpty()); // nor is there a timer of another clock
    }
    void lessThanNothingIsOff()
    {
        SleepTimerViewModel sleep;
        sleep.select(-5);
        QCOMPARE(sleep.sleepTimerMinutes(), 0);
    }
    void onlyATimeThatIsNoPresetIsCustom()
    {
        SleepTimerViewModel sleep;
        sleep.select(60);
        QCOMPARE(sleep.isCustom(), false);
        sleep.select(75);
        QCOMPARE(sleep.isCustom(), true);
    }
    void thePickerBeginsAtWhatIsWrittenDown()
    {
        SleepTimerViewModel sleep;
        sleep.select(90);
        sleep.beginCustom();
        QCOMPARE(sleep.showsCustomPicker(), true);
        QCOMPARE(sleep.customHours(), 1);
        QCOMPARE(sleep.customMinutes(), 30);
        QCOMPARE(sleep.customTimeText(), u"共 90 分钟"_s);
    }
    void whatStandsOnTheWheelsCountsOnceItIsConfirmed()
    {
        SleepTimerViewModel sleep;
        sleep.beginCustom();
        sleep.setCustomHours(2);
        sleep.setCustomMinutes(5);
        QCOMPARE(sleep.customTimeText(), u"共 125 分钟"_s);
        QCOMPARE(sleep.sleepTimerMinutes(), 0);
        sleep.confirmCustom();
        QCOMPARE(sleep.sleepTimerMinutes(), 125);
        QCOMPARE(sleep.showsCustomPicker(), false);
    }
    void cancellingLeavesWhatWasWrittenDown()
    {
        SleepTimerViewModel sleep;
        sleep.select(45);
        sleep.beginCustom();
        sleep.setCustomHours(3);
        sleep.cancelCustom();
        QCOMPARE(sleep.sleepTimerMinutes(), 45);
        QCOMPARE(sleep.showsCustomPicker(), false);
        sleep.confirmCustom();
        QCOMPARE(sleep.sleepTimerMinutes(), 45);
    }
    void resetPutsBothWheelsToZeroAndConfirmingThatTurnsItOff()
    {
        SleepTimerViewModel sleep;
        sleep.select(45);
        sleep.beginCustom();
        sleep.resetCustom();
        QCOMPARE(sleep.customTimeText(), u"共 0 分钟"_s);
        QCOMPARE(sleep.showsCustomPicker(), true);
        sleep.confirmCustom();
        QCOMPARE(sleep.sleepTimerMinutes(), 0);
    }
    void whatIsNotOnAWheelChangesNothing()
    {
        SleepTimerViewModel sleep;
        sleep.beginCustom();
        for (const int wrong : {-1, 24, 1000})
            sleep.setCustomHours(wrong);
        for (const int wrong : {-1, 60, 1000})
            sleep.setCustomMinutes(wrong);
        QCOMPARE(sleep.customTimeText(), u"共 0 分钟"_s);
        sleep.setCustomHours(SleepTimerViewModel::hourCount() - 1);
        sleep.setCustomMinutes(SleepTimerViewModel::minuteCount() - 1);
        QCOMPARE(sleep.customTimeText(), u"共 1439 分钟"_s);
    }
};

QTEST_GUILESS_MAIN(TestSleepTimerViewModel)
#include "tst_sleep_timer_view_model.moc"
