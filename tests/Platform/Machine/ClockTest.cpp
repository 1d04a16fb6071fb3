// SPDX-License-Identifier: GPL-3.0-or-later
// What every Clock keeps to, run against the fake and the real one.
#include "Fakes/FakeClock.h"
#include "Platform/Linux/SystemClock.h"

#include <QTest>

using namespace cadorel;
using namespace std::chrono_literals;

class ClockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void tellsTheTimeInUtc_data() { implementations(); }
    void tellsTheTimeInUtc();
    void monotonicTimeRises_data() { implementations(); }
    void monotonicTimeRises();
    void repeats_data() { implementations(); }
    void repeats();
    void aSingleShotComesOnce_data() { implementations(); }
    void aSingleShotComesOnce();
    void aDestroyedTimerIsSilent_data() { implementations(); }
    void aDestroyedTimerIsSilent();
    void aTimerMayBeDestroyedInItsCallback_data() { implementations(); }
    void aTimerMayBeDestroyedInItsCallback();
    void aTimerMayBeReplacedInItsCallback_data() { implementations(); }
    void aTimerMayBeReplacedInItsCallback();
    void shortTimersAreNotEarly_data() { implementations(); }
    void shortTimersAreNotEarly();
    void veryLongTimersDoNotComeAtOnce_data() { implementations(); }
    void veryLongTimersDoNotComeAtOnce();

private:
    static void implementations();
    /// Lets time pass until the condition holds, 5 s at most.
    bool waitFor(const std::function<bool()> &condition);

    std::unique_ptr<Clock> m_clock;
    FakeClock *m_fake = nullptr;
};

void ClockTest::implementations()
{
    QTest::addColumn<bool>("isReal");
    QTest::newRow("fake") << false;
    QTest::newRow("system") << true;
}

void ClockTest::init()
{
    QFETCH(bool, isReal);
    m_fake = isReal ? nullptr : new FakeClock;
    m_clock.reset(isReal ? static_cast<Clock *>(new SystemClock) : m_fake);
}

bool ClockTest::waitFor(const std::function<bool()> &condition)
{
    if (!m_fake)
        return QTest::qWaitFor(condition, 5000);
    for (int step = 0; step < 5000 && !condition(); ++step)
        m_fake->advance(1ms);
    return condition();
}

void ClockTest::tellsTheTimeInUtc()
{
    QCOMPARE(m_clock->now().timeSpec(), Qt::UTC);
    if (!m_fake)
        QVERIFY(qAbs(m_clock->now().secsTo(QDateTime::currentDateTimeUtc())) <= 1);
    const QDateTime start = m_clock->now();
    QVERIFY(waitFor([&] { return m_clock->now() > start; }));
}

void ClockTest::monotonicTimeRises()
{
    const std::chrono::nanoseconds start = m_clock->monotonic();
    QVERIFY(start > 0ns);
    QVERIFY(waitFor([&] { return m_clock->monotonic() >= start + 20ms; }));
}

void ClockTest::repeats()
{
    int calls = 0;
    const std::chrono::nanoseconds start = m_clock->monotonic();
    const auto timer = m_clock->repeating(20ms, [&] { ++calls; });
    QCOMPARE(calls, 0);
    QVERIFY(waitFor([&] { return calls >= 3; }));
    QVERIFY(m_clock->monotonic() - start >= 55ms);
}

void ClockTest::aSingleShotComesOnce()
{
    int once = 0;
    int beats = 0;
    const auto timer = m_clock->singleShot(5ms, [&] { ++once; });
    const auto beat = m_clock->repeating(10ms, [&] { ++beats; });
    QVERIFY(waitFor([&] { return beats >= 3; }));
    QCOMPARE(once, 1);
}

void ClockTest::aDestroyedTimerIsSilent()
{
    int calls = 0;
    int beats = 0;
    auto repeating = m_clock->repeating(5ms, [&] { ++calls; });
    auto single = m_clock->singleShot(5ms, [&] { ++calls; });
    repeating.reset();
    single.reset();
    const auto beat = m_clock->repeating(10ms, [&] { ++beats; });
    QVERIFY(waitFor([&] { return beats >= 3; }));
    QCOMPARE(calls, 0);
}

void ClockTest::aTimerMayBeDestroyedInItsCallback()
{
    // The captured text would be freed with the callback.
    const QString text = QString(100, u'x');
    int calls = 0;
    qsizetype size = 0;
    std::unique_ptr<ClockTimer> repeating;
    std::unique_ptr<ClockTimer> single;
    repeating = m_clock->repeating(5ms, [&, text] {
        repeating.reset();
        size += text.size();
        ++calls;
    });
    single = m_clock->singleShot(5ms, [&, text] {
        single.reset();
        size += text.size();
        ++calls;
    });
    int beats = 0;
    const auto beat = m_clock->repeating(10ms, [&] { ++beats; });
    QVERIFY(waitFor([&] { return beats >= 3; }));
    QCOMPARE(calls, 2);
    QCOMPARE(size, 200);
}

void ClockTest::aTimerMayBeReplacedInItsCallback()
{
    int calls = 0;
    std::unique_ptr<ClockTimer> timer;
    std::function<void()> again = [&] {
        if (++calls < 3)
            timer = m_clock->singleShot(1ms, again);
    };
    timer = m_clock->singleShot(1ms, again);
    QVERIFY(waitFor([&] { return calls == 3; }));
}

void ClockTest::shortTimersAreNotEarly()
{
    std::chrono::nanoseconds end{};
    const std::chrono::nanoseconds start = m_clock->monotonic();
    const auto timer = m_clock->singleShot(80ms, [&] { end = m_clock->monotonic(); });
    QVERIFY(waitFor([&] { return end > 0ns; }));
    // The timer counts in whole milliseconds.
    QVERIFY(end - start >= 79ms);
}

void ClockTest::veryLongTimersDoNotComeAtOnce()
{
    int calls = 0;
    int beats = 0;
    const auto timer = m_clock->singleShot(std::chrono::hours(24 * 60), [&] { ++calls; });
    const auto beat = m_clock->repeating(10ms, [&] { ++beats; });
    QVERIFY(waitFor([&] { return beats >= 2; }));
    QCOMPARE(calls, 0);
}

QTEST_GUILESS_MAIN(ClockTest)
#include "ClockTest.moc"
