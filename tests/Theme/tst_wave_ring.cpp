// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/WaveRing.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <numbers>

namespace cadorel {

namespace {

constexpr double gap = 6;
constexpr double spacing = 11;

/// How far a place is from the outline of a rounded rectangle at the origin.
double distanceFrom(double x, double y, double width, double height, double radius)
{
    const double outX = std::abs(x - width / 2) - (width / 2 - radius);
    const double outY = std::abs(y - height / 2) - (height / 2 - radius);
    return std::hypot(std::max(outX, 0.0), std::max(outY, 0.0)) + std::min(std::max(outX, outY), 0.0) -
           radius;
}

} // namespace

/// Where the bars about a cover stand.
class TestWaveRing : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void barsStandAroundTheCoverAndPointAway_data()
    {
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("height");
        QTest::addColumn<double>("radius");
        QTest::newRow("square") << 280.0 << 280.0 << 0.0;
        QTest::newRow("rounded") << 280.0 << 280.0 << 12.0;
        QTest::newRow("roundest of the settings") << 280.0 << 280.0 << 50.0;
        QTest::newRow("circle") << 100.0 << 100.0 << 50.0;
        QTest::newRow("rounder than a circle") << 80.0 << 80.0 << 500.0;
        QTest::newRow("wide") << 300.0 << 120.0 << 20.0;
    }
    void barsStandAroundTheCoverAndPointAway()
    {
        QFETCH(double, width);
        QFETCH(double, height);
        QFETCH(double, radius);
        const double round = std::min(radius, std::min(width, height) / 2);
        const int count = WaveRing::count(width, height, radius, gap, spacing);
        QCOMPARE(count % 4, 0);
        WaveBar before = WaveRing::bar(count - 1, count, width, height, radius, gap);
        for (int i = 0; i < count; ++i) {
            const WaveBar bar = WaveRing::bar(i, count, width, height, radius, gap);
            QVERIFY(std::abs(distanceFrom(bar.x, bar.y, width, height, round) - gap) < 0.01);
            const double radians = bar.angle * std::numbers::pi / 180;
            const double tipX = bar.x + 10 * std::sin(radians);
            const double tipY = bar.y - 10 * std::cos(radians);
            QVERIFY(std::abs(distanceFrom(tipX, tipY, width, height, round) - gap - 10) < 0.01);
            // A corner without roundness is an arc of the gap, whose chord is shorter.
            const double step = std::hypot(bar.x - before.x, bar.y - before.y);
            QVERIFY2(step > spacing * 0.6 && step < spacing * 1.4, qPrintable(QString::number(step)));
            before = bar;
        }
    }

    void theRingLooksTheSameFromAllSides()
    {
        const int count = WaveRing::count(280, 280, 12, gap, spacing);
        QList<int> seen(7, 0);
        for (int i = 0; i < count; ++i) {
            const WaveBar bar = WaveRing::bar(i, count, 280, 280, 12, gap);
            const WaveBar mirrored = WaveRing::bar(count - 1 - i, count, 280, 280, 12, gap);
            QCOMPARE(bar.level, mirrored.level);
            QVERIFY(std::abs(bar.x - (280 - mirrored.x)) < 0.01 && std::abs(bar.y - mirrored.y) < 0.01);
            QVERIFY(bar.level >= 0 && bar.level <= 6);
            ++seen[bar.level];
        }
        QVERIFY(!seen.contains(0));
    }

    void theFirstBarStandsRightOfTheUpperMiddle()
    {
        const int count = WaveRing::count(280, 280, 12, gap, spacing);
        const WaveBar bar = WaveRing::bar(0, count, 280, 280, 12, gap);
        QVERIFY(bar.x > 140 && bar.x < 140 + spacing);
        QCOMPARE(bar.y, -gap);
        QCOMPARE(bar.angle, 0.0);
        QCOMPARE(bar.level, 0);
    }

    void withoutACoverThereAreNoBars_data()
    {
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("distance");
        QTest::newRow("no width") << 0.0 << spacing;
        QTest::newRow("negative") << -5.0 << spacing;
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << spacing;
        QTest::newRow("endless") << std::numeric_limits<double>::infinity() << spacing;
        QTest::newRow("no spacing") << 100.0 << 0.0;
    }
    void withoutACoverThereAreNoBars()
    {
        QFETCH(double, width);
        QFETCH(double, distance);
        QCOMPARE(WaveRing::count(width, 100, 12, gap, distance), 0);
        QCOMPARE(WaveRing::bar(0, 0, width, 100, 12, gap), WaveBar());
    }

    void aHugeCoverHasNoEndOfBars() { QCOMPARE(WaveRing::count(1e9, 1e9, 12, gap, spacing), 400); }
    void aBarThatIsNoneIsNowhere()
    {
        QCOMPARE(WaveRing::bar(-1, 8, 100, 100, 0, gap), WaveBar());
        QCOMPARE(WaveRing::bar(8, 8, 100, 100, 0, gap), WaveBar());
    }
};

} // namespace cadorel

QTEST_APPLESS_MAIN(cadorel::TestWaveRing)
#include "tst_wave_ring.moc"
