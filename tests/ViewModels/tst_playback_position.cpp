// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/PlayerBench.h"
#include "ViewModels/PlaybackPosition.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestPlaybackPosition : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<PlayerBench> m_bench;
    std::unique_ptr<PlaybackPosition> m_position;

    PlaybackPosition &position() { return *m_position; }
    void tick(double seconds) { m_bench->stream().tick(seconds); }
    void pass(int milliseconds) { m_bench->home.clock().advance(std::chrono::milliseconds(milliseconds)); }
    int timers() { return m_bench->playbackTimers(); }

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<PlayerBench>();
        m_bench->start();
        m_bench->player().playSong(fileSong(u"a"_s), fileSongs({u"a"_s}));
        m_bench->answerDuration(200);
        m_position = std::make_unique<PlaybackPosition>(m_bench->player(), m_bench->home.clock());
    }
    void cleanup()
    {
        m_position.reset();
        m_bench.reset();
    }

    void followsThePlayer()
    {
        QSignalSpy changes(&position(), &PlaybackPosition::changed);
        tick(1.25);
        QCOMPARE(position().milliseconds(), 1250);
        tick(1.5);
        QCOMPARE(position().milliseconds(), 1500);
        QCOMPARE(changes.size(), 2);
    }

    void beginsWhereThePlayerStands()
    {
        tick(42);
        const PlaybackPosition late(m_bench->player(), m_bench->home.clock());
        QCOMPARE(late.milliseconds(), 42000);
    }

    void aPositionThatIsReachedBetweenTwoTicksIsTold()
    {
        tick(10);
        QSignalSpy changes(&position(), &PlaybackPosition::changed);
        position().waitFor(10120);
        pass(119);
        QCOMPARE(changes.size(), 0);
        pass(1);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(position().milliseconds(), 10120);
        QCOMPARE(timers(), 0);
    }

    void noTimerRunsForWhatIsFarAhead()
    {
        tick(10);
        position().waitFor(12000);
        QCOMPARE(timers(), 0);
        position().waitFor(std::nullopt);
        QCOMPARE(timers(), 0);
    }

    void noTimerRunsForWhatHasPassed()
    {
        tick(10);
        position().waitFor(10000);
        QCOMPARE(timers(), 0);
        position().waitFor(9000);
        QCOMPARE(timers(), 0);
    }

    void aNewWishTakesThePlaceOfTheLast()
    {
        tick(10);
        QSignalSpy changes(&position(), &PlaybackPosition::changed);
        position().waitFor(10100);
        position().waitFor(10200);
        QCOMPARE(timers(), 1);
        pass(150);
        QCOMPARE(changes.size(), 0);
        position().waitFor(std::nullopt);
        pass(1000);
        QCOMPARE(changes.size(), 0);
    }

    void aTickThatIsALittleBehindDoesNotGoBack()
    {
        tick(10);
        position().waitFor(10200);
        pass(200);
        QCOMPARE(position().milliseconds(), 10200);
        pass(50);
        tick(10.17);
        QCOMPARE(position().milliseconds(), 10200);
        pass(250);
        tick(10.42);
        QCOMPARE(position().milliseconds(), 10420);
    }

    void aJumpBackGoesBack()
    {
        tick(10);
        position().waitFor(10200);
        pass(200);
        tick(5);
        QCOMPARE(position().milliseconds(), 5000);
    }

    void aJumpAheadGoesAhead()
    {
        tick(10);
        pass(100);
        tick(50);
        QCOMPARE(position().milliseconds(), 50000);
    }

    void nothingIsReachedWhileThePlayerStands()
    {
        tick(10);
        QSignalSpy changes(&position(), &PlaybackPosition::changed);
        position().waitFor(10200);
        m_bench->player().pause();
        QCOMPARE(timers(), 0);
        pass(1000);
        position().waitFor(10200);
        pass(1000);
        QCOMPARE(changes.size(), 0);
        QCOMPARE(position().milliseconds(), 10000);
    }

    void whatPlaysOnIsWaitedForFromTheNextTick()
    {
        tick(10);
        m_bench->player().pause();
        pass(5000);
        m_bench->player().play();
        position().waitFor(10200);
        QCOMPARE(timers(), 0);
        tick(10.05);
        position().waitFor(10200);
        QSignalSpy changes(&position(), &PlaybackPosition::changed);
        pass(150);
        QCOMPARE(changes.size(), 1);
    }

    void theBeginningOfASongIsNoSignThatItSounds()
    {
        tick(10);
        tick(0);
        position().waitFor(100);
        QCOMPARE(timers(), 0);
    }

    void aSoughtPositionIsThatMillisecond_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<int>("milliseconds");
        // As fractions both are a little less.
        QTest::newRow("10.345") << 10.345 << 10345;
        QTest::newRow("62.34") << 62.34 << 62340;
        QTest::newRow("to a sample of 44.1 kHz") << std::round(10.345 * 44100) / 44100 << 10345;
        QTest::newRow("huge") << 1e300 << std::numeric_limits<int>::max();
        QTest::newRow("the beginning") << 0.0 << 0;
    }

    void aSoughtPositionIsThatMillisecond()
    {
        QFETCH(double, seconds);
        tick(1);
        tick(seconds);
        QTEST(position().milliseconds(), "milliseconds");
    }

    void theOneWhoWaitsMayEndInTheCall()
    {
        tick(10);
        position().waitFor(10100);
        connect(&position(), &PlaybackPosition::changed, this, [this] { m_position.reset(); });
        pass(100);
        QVERIFY(!m_position);
    }
};

QTEST_GUILESS_MAIN(TestPlaybackPosition)
#include "tst_playback_position.moc"
