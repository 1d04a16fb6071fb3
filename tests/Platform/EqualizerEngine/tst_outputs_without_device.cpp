// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/FileOutput.h"
#include "Platform/EqualizerEngine/TimedOutput.h"

#include <QElapsedTimer>
#include <QTest>

#include <atomic>
#include <cmath>

namespace cadorel {

namespace {

constexpr AudioFormat mono{.sampleRate = 48'000, .channelCount = 1};

/// Gives the numbers from 0 on, up to a limit.
struct Numbers
{
    std::atomic<qint64> given = 0;
    std::atomic<qint64> limit = std::numeric_limits<qint64>::max();

    AudioOutput::Source source()
    {
        return [this](float *interleaved, qint64 frameCount) {
            const qint64 count = std::min(frameCount, limit - given);
            for (qint64 i = 0; i < count; ++i)
                interleaved[i] = float(given++);
            return count;
        };
    }
};

} // namespace

class TestOutputsWithoutDevice : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fileOutputTakesWhatItMay()
    {
        Numbers numbers;
        FileOutput output;
        QVERIFY(!output.isOpen());
        output.open(mono, numbers.source());
        QVERIFY(output.isOpen());
        output.allow(5'000);
        QCOMPARE(numbers.given.load(), qint64(0)); // not before it plays
        output.play();
        QTRY_COMPARE(output.framesHeard(), 5'000.0);
        QCOMPARE(output.samples().size(), std::size_t(5'000));
        QCOMPARE(output.samples().back(), 4'999.0F);
        QCOMPARE(numbers.given.load(), qint64(5'000));
        output.drop();
        QCOMPARE(output.framesHeard(), 0.0);
    }

    void fileOutputWaitsForWhatIsNotReady()
    {
        Numbers numbers;
        numbers.limit = 100;
        FileOutput output;
        output.open(mono, numbers.source());
        output.allow(1'000);
        output.play();
        QTRY_COMPARE(output.framesHeard(), 100.0);
        numbers.limit = 600;
        output.wake();
        QTRY_COMPARE(output.framesHeard(), 600.0);
        numbers.limit = 2'000;
        output.wake();
        QTRY_COMPARE(output.framesHeard(), 1'000.0);
        QCOMPARE(output.samples().back(), 999.0F);
    }

    void timedOutputKeepsTheTimeOfTheMachine()
    {
        Numbers numbers;
        TimedOutput output;
        output.open(mono, numbers.source());
        QCOMPARE(output.framesHeard(), 0.0);
        QElapsedTimer timer;
        output.play();
        timer.start();
        double before = 0;
        while (timer.elapsed() < 500) {
            const double heard = output.framesHeard();
            const double latest = double(timer.nsecsElapsed()) * 48e-6;
            QVERIFY(heard >= before);
            before = heard;
            // A busy machine may make it late, never early.
            QVERIFY2(heard <= latest + 240, qPrintable(QString::number(heard - latest)));
            QTest::qWait(1);
        }
        QTRY_VERIFY(output.framesHeard() > 20'000);
        // It takes no more than it soon needs.
        QVERIFY(double(numbers.given) < output.framesHeard() + 48'000 * 0.07);
    }

    void timedOutputStandsWhilePaused()
    {
        Numbers numbers;
        TimedOutput output;
        output.open(mono, numbers.source());
        output.play();
        QTRY_VERIFY(output.framesHeard() > 2'000);
        output.pause();
        const double held = output.framesHeard();
        const qint64 given = numbers.given;
        QTest::qWait(60);
        QCOMPARE(output.framesHeard(), held);
        QCOMPARE(numbers.given.load(), given);
        output.play();
        QVERIFY(output.framesHeard() < held + 4'800);
        QTRY_VERIFY(output.framesHeard() > held + 2'000);
        output.drop();
        QCOMPARE(output.framesHeard(), 0.0);
        QTest::qWait(10);
        QCOMPARE(output.framesHeard(), 0.0);
    }

    void timedOutputStandsWhileNothingComes()
    {
        Numbers numbers;
        numbers.limit = 3'000;
        TimedOutput output;
        output.open(mono, numbers.source());
        output.play();
        QTRY_COMPARE(output.framesHeard(), 3'000.0);
        QTest::qWait(100);
        QCOMPARE(output.framesHeard(), 3'000.0);
        numbers.limit = 100'000;
        output.wake();
        // The time that it stood is not made up for.
        QVERIFY(output.framesHeard() < 3'000 + 2'400);
        QTRY_VERIFY(output.framesHeard() > 6'000);
    }

    void brokenDeviceHoldsItsTime()
    {
        Numbers numbers;
        TimedOutput output;
        output.open(mono, numbers.source());
        output.play();
        QTRY_VERIFY(output.framesHeard() > 2'000);
        output.breakDown();
        QVERIFY(!output.isOpen());
        const double held = output.framesHeard();
        output.play();
        QTest::qWait(30);
        QCOMPARE(output.framesHeard(), held);
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestOutputsWithoutDevice)
#include "tst_outputs_without_device.moc"
