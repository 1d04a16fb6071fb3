// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeClock.h"
#include "Fakes/FakeRandom.h"
#include "Fakes/PlayerBench.h"
#include "Services/AudioLevels.h"

#include <QSignalSpy>
#include <QTest>

#include <cmath>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A clock whose reading the test sets to the nanosecond; its timers are those of the fake.
class SetClock : public FakeClock
{
public:
    std::chrono::nanoseconds reading{0};

    std::chrono::nanoseconds monotonic() const override { return reading; }
    void setSeconds(double seconds)
    {
        reading = std::chrono::nanoseconds(static_cast<qint64>(std::llround(seconds * 1e9)));
    }
};

struct LevelsBench
{
    SetClock clock;
    FakeRandom random;
    bool isPlaying = true;
    AudioLevels levels{clock, random, [this] { return isPlaying; }};

    double bar(int index) const { return levels.audioLevels().at(index); }
};

/// The waves of a bar, added up term by term.
double waves(double t, double beatPhase, double i)
{
    double sum = 0.45;
    sum += 0.25 * std::sin(t * (i + 1) * 1.8 + i / 2);
    sum += 0.35 * std::sin(beatPhase * (1.2 + i / 4));
    sum += 0.15 * std::cos(t * (i + 1) * 0.9 + i);
    return sum;
}

} // namespace

class AudioLevelsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void atFirstAllBarsReadAThird();
    void tickIsTwelveAndAHalfTimesASecond();
    void barsFollowTheWaves();
    void noiseIsOfItsRangeAndOneForEachBar();
    void peakLiftsTheBarsWhoseNumberDividesTheTwelfth();
    void accentLiftsEveryThirdBar();
    void peakAndAccentTogetherStayBelowOne();
    void noLevelIsBelowTheFloor();
    void stoppedBarsAreLowerThanMovingOnesCanBe();
    void noTimerRunsOnceNothingPlays();
    void startingAgainKeepsOneTimer();
    void beatPhaseGoesOnAcrossPauses();
    void onlyAChangeIsTold();
    void playersBarsMoveWhileItPlaysAndRestWhilePaused();
    void playerWithoutASongRunsNoTimer();
};

void AudioLevelsTest::atFirstAllBarsReadAThird()
{
    const LevelsBench bench;
    QCOMPARE(bench.levels.audioLevels(), QList<qreal>({0.3, 0.3, 0.3, 0.3, 0.3, 0.3, 0.3}));
    QCOMPARE(bench.clock.activeTimers(), 0);
}

void AudioLevelsTest::tickIsTwelveAndAHalfTimesASecond()
{
    LevelsBench bench;
    bench.levels.startAudioLevelSimulation();
    bench.clock.advance(79ms);
    QCOMPARE(bench.levels.beatPhase(), 0.0);
    bench.clock.advance(1ms);
    QCOMPARE(bench.levels.beatPhase(), 0.06);
    bench.clock.advance(10s);
    QCOMPARE(bench.levels.beatPhase(), 126 * 0.06);
}

void AudioLevelsTest::barsFollowTheWaves()
{
    // At these times neither peak nor accent touches the bars looked at: 12 t and 4 t are 40 and 13, 6
    // modulo 7.
    LevelsBench bench;
    constexpr double t = 3.37;
    bench.clock.setSeconds(t);
    bench.random.reals = QList<double>(AudioLevels::barCount, 0.0);
    bench.levels.updateAudioLevels();
    for (int i = 0; i < AudioLevels::barCount; ++i) {
        const double expected = std::fmin(1.0, std::fmax(0.15, waves(t, 0.06, i) + (i == 4 ? 0.35 : 0)));
        QVERIFY2(std::abs(bench.bar(i) - expected) < 1e-9, qPrintable(QString::number(i)));
    }
    // The second tick has gone on by one step of the beat.
    bench.random.reals = QList<double>(AudioLevels::barCount, 0.0);
    bench.levels.updateAudioLevels();
    QVERIFY(std::abs(bench.bar(0) - waves(t, 0.12, 0)) < 1e-9);
}

void AudioLevelsTest::noiseIsOfItsRangeAndOneForEachBar()
{
    LevelsBench bench;
    constexpr double t = 3.37;
    bench.clock.setSeconds(t);
    // The fake keeps what it gives within what it was asked for.
    bench.random.reals = {0, 0.05, -0.05, 5, -5, 0, 0};
    bench.levels.updateAudioLevels();
    QVERIFY(bench.random.reals.isEmpty());
    QVERIFY(std::abs(bench.bar(1) - waves(t, 0.06, 1) - 0.05) < 1e-9);
    QVERIFY(std::abs(bench.bar(2) - waves(t, 0.06, 2) + 0.05) < 1e-9);
    const double third = waves(t, 0.06, 3) + 0.12;
    QVERIFY(std::abs(bench.bar(3) - std::fmin(1.0, std::fmax(0.15, third))) < 1e-9);
}

void AudioLevelsTest::peakLiftsTheBarsWhoseNumberDividesTheTwelfth()
{
    // 12 t is 84: 12 and 14 divide it, 16, 18, 20, 22 and 24 do not. 4 t is 28, a multiple of 7: the accent
    // is with bars 0, 3 and 6.
    LevelsBench bench;
    constexpr double t = 7.0;
    bench.clock.setSeconds(t);
    bench.random.reals = QList<double>(AudioLevels::barCount, 0.0);
    bench.levels.updateAudioLevels();
    for (int i = 0; i < AudioLevels::barCount; ++i) {
        double expected = waves(t, 0.06, i);
        if (i == 0 || i == 1)
            expected += 0.35;
        if (i % 3 == 0)
            expected += 0.2;
        expected = std::fmin(1.0, std::fmax(0.15, expected));
        QVERIFY2(std::abs(bench.bar(i) - expected) < 1e-9, qPrintable(QString::number(i)));
    }
}

void AudioLevelsTest::accentLiftsEveryThirdBar()
{
    // 4 t is 29, one past a multiple of 7: bars 1 and 4. 12 t is 87 or 88, a multiple of 22 in the latter
    // case alone. The next quarter is for bars 2 and 5, and those after it are for none until 35.
    for (const auto &[quarter, lifted] : {std::pair(29, 1), {30, 2}, {31, -1}, {34, -1}, {35, 0}}) {
        LevelsBench bench;
        const double t = quarter / 4.0 + 0.01;
        bench.clock.setSeconds(t);
        bench.random.reals = QList<double>(AudioLevels::barCount, 0.0);
        bench.levels.updateAudioLevels();
        for (int i = 0; i < AudioLevels::barCount; ++i) {
            if (static_cast<int>(12 * t) % (12 + 2 * i) == 0)
                continue; // its peak is the subject of another test
            const double expected = waves(t, 0.06, i) + (i % 3 == lifted ? 0.2 : 0.0);
            QVERIFY2(std::abs(bench.bar(i) - std::fmin(1.0, std::fmax(0.15, expected))) < 1e-9,
                     qPrintable(u"%1 at %2"_s.arg(i).arg(t)));
        }
    }
}

void AudioLevelsTest::peakAndAccentTogetherStayBelowOne()
{
    // 7, 14, 21… seconds give bar 0 both; with the beat at its height the sum would pass 1.
    LevelsBench bench;
    double highest = 0;
    for (int multiple = 1; multiple < 400; ++multiple) {
        bench.clock.setSeconds(7.0 * multiple);
        bench.random.reals = QList<double>(AudioLevels::barCount, 0.12);
        bench.levels.updateAudioLevels();
        if (waves(7.0 * multiple, bench.levels.beatPhase(), 0) + 0.12 + 0.35 + 0.2 > 1)
            QCOMPARE(bench.bar(0), 1.0);
        for (const double level : bench.levels.audioLevels())
            QVERIFY(level <= 1.0);
        highest = std::fmax(highest, bench.bar(0));
    }
    QCOMPARE(highest, 1.0);
}

void AudioLevelsTest::noLevelIsBelowTheFloor()
{
    LevelsBench bench;
    double lowest = 1;
    for (int step = 0; step < 2000; ++step) {
        bench.clock.setSeconds(1 + 0.08 * step);
        bench.random.reals = QList<double>(AudioLevels::barCount, -0.12);
        bench.levels.updateAudioLevels();
        for (const double level : bench.levels.audioLevels())
            lowest = std::fmin(lowest, level);
    }
    QCOMPARE(lowest, 0.15);
}

void AudioLevelsTest::stoppedBarsAreLowerThanMovingOnesCanBe()
{
    LevelsBench bench;
    bench.levels.startAudioLevelSimulation();
    bench.clock.advance(1s);
    bench.levels.stopAudioLevelSimulation();
    QCOMPARE(bench.levels.audioLevels(), QList<qreal>(AudioLevels::barCount, 0.1));
    QCOMPARE(bench.clock.activeTimers(), 0);
}

void AudioLevelsTest::noTimerRunsOnceNothingPlays()
{
    LevelsBench bench;
    bench.levels.startAudioLevelSimulation();
    bench.clock.advance(80ms);
    const double phase = bench.levels.beatPhase();
    bench.isPlaying = false;
    QCOMPARE(bench.clock.activeTimers(), 1);
    bench.clock.advance(80ms);
    QCOMPARE(bench.clock.activeTimers(), 0);
    QVERIFY(!bench.levels.isRunning());
    QCOMPARE(bench.bar(6), 0.1);
    QCOMPARE(bench.levels.beatPhase(), phase);
}

void AudioLevelsTest::startingAgainKeepsOneTimer()
{
    LevelsBench bench;
    bench.levels.startAudioLevelSimulation();
    bench.clock.advance(40ms);
    bench.levels.startAudioLevelSimulation();
    QCOMPARE(bench.clock.activeTimers(), 1);
    bench.clock.advance(40ms);
    QCOMPARE(bench.levels.beatPhase(), 0.0);
    bench.clock.advance(40ms);
    QCOMPARE(bench.levels.beatPhase(), 0.06);
}

void AudioLevelsTest::beatPhaseGoesOnAcrossPauses()
{
    LevelsBench bench;
    bench.levels.startAudioLevelSimulation();
    bench.clock.advance(800ms);
    const double phase = bench.levels.beatPhase();
    QVERIFY(phase > 0.5);
    bench.levels.stopAudioLevelSimulation();
    bench.clock.advance(10s);
    QCOMPARE(bench.levels.beatPhase(), phase);
    bench.levels.startAudioLevelSimulation();
    bench.clock.advance(80ms);
    QCOMPARE(bench.levels.beatPhase(), phase + 0.06);
    QCOMPARE(bench.levels.lastBeatTime(), 0.0);
}

void AudioLevelsTest::onlyAChangeIsTold()
{
    LevelsBench bench;
    const QSignalSpy told(&bench.levels, &AudioLevels::audioLevelsChanged);
    bench.levels.stopAudioLevelSimulation();
    QCOMPARE(told.size(), 1);
    bench.levels.stopAudioLevelSimulation();
    QCOMPARE(told.size(), 1);
    bench.levels.updateAudioLevels();
    QCOMPARE(told.size(), 2);
}

void AudioLevelsTest::playersBarsMoveWhileItPlaysAndRestWhilePaused()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    const QSignalSpy told(&player, &AudioPlayerService::audioLevelsChanged);
    QCOMPARE(player.audioLevels(), QList<qreal>(AudioLevels::barCount, 0.3));
    bench.equalizer.enabled = true;
    player.playSong(fileSong(u"a"_s), {});
    bench.home.clock().advance(800ms);
    QVERIFY(told.size() >= 10);
    for (const double level : player.audioLevels())
        QVERIFY(level >= 0.15 && level <= 1.0);
    player.pause();
    QCOMPARE(player.audioLevels(), QList<qreal>(AudioLevels::barCount, 0.1));
    QCOMPARE(bench.home.clock().activeTimers(), 0);
    const auto before = told.size();
    bench.home.clock().advance(10s);
    QCOMPARE(told.size(), before);
    player.play();
    bench.home.clock().advance(80ms);
    QVERIFY(player.audioLevels().constFirst() >= 0.15);
}

void AudioLevelsTest::playerWithoutASongRunsNoTimer()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.play();
    bench.home.clock().advance(1s);
    QCOMPARE(bench.home.clock().activeTimers(), 0);
    QCOMPARE(player.audioLevels(), QList<qreal>(AudioLevels::barCount, 0.1));
}

QTEST_GUILESS_MAIN(AudioLevelsTest)
#include "tst_audio_levels.moc"
