// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/Springs.h"

#include <QEasingCurve>
#include <QTest>

#include <cmath>
#include <limits>
#include <numbers>

using namespace cadorel;

namespace {

/// The curve as an animation runs it.
QEasingCurve easing(double response, double damping)
{
    const QList<double> points = Springs::curve(response, damping);
    QEasingCurve curve(QEasingCurve::BezierSpline);
    for (qsizetype i = 0; i + 5 < points.size(); i += 6) {
        curve.addCubicBezierSegment({points.at(i), points.at(i + 1)}, {points.at(i + 2), points.at(i + 3)},
                                    {points.at(i + 4), points.at(i + 5)});
    }
    return curve;
}

/// The spring's own equation, taken in steps too small to matter: x'' = k (1 - x) - c x'.
double simulated(double seconds, double response, double damping)
{
    const double stiffness = std::pow(2 * std::numbers::pi / response, 2);
    const double friction = 4 * std::numbers::pi * damping / response;
    constexpr int steps = 100'000;
    const double h = seconds / steps;
    double x = 0;
    double v = 0;
    for (int i = 0; i < steps; ++i) {
        // Midpoint rule.
        const double middleX = x + v * h / 2;
        const double middleV = v + (stiffness * (1 - x) - friction * v) * h / 2;
        x += middleV * h;
        v += (stiffness * (1 - middleX) - friction * middleV) * h;
    }
    return x;
}

} // namespace

class SpringsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void motionObeysTheSpring_data() { addSprings(); }
    void motionObeysTheSpring();
    void curveFollowsTheMotion_data() { addSprings(); }
    void curveFollowsTheMotion();
    void motionEndsWhenItIsSettled_data() { addSprings(); }
    void motionEndsWhenItIsSettled();
    void looseSpringOvershoots();
    void tightSpringDoesNotOvershoot();
    void absurdSpringsAreBounded_data();
    void absurdSpringsAreBounded();

private:
    static void addSprings()
    {
        QTest::addColumn<double>("response");
        QTest::addColumn<double>("damping");
        QTest::newRow("scale button") << 0.2 << 0.7;
        QTest::newRow("tinted button") << 0.3 << 0.6;
        QTest::newRow("heart") << 0.3 << 0.5;
        QTest::newRow("loose") << 0.5 << 0.3;
        QTest::newRow("critical") << 0.4 << 1.0;
        QTest::newRow("nearly critical, below") << 0.4 << 0.999;
        QTest::newRow("nearly critical, above") << 0.4 << 1.001;
        QTest::newRow("overdamped") << 0.3 << 2.0;
        QTest::newRow("very overdamped") << 0.3 << 4.0;
    }
};

void SpringsTest::motionObeysTheSpring()
{
    QFETCH(double, response);
    QFETCH(double, damping);
    for (const double turns : {0.05, 0.2, 0.5, 0.8, 1.3, 2.1}) {
        const double seconds = turns * response;
        QVERIFY(std::abs(Springs::position(seconds, response, damping) -
                         simulated(seconds, response, damping)) < 1e-5);
        constexpr double step = 1e-6;
        const double slope = (Springs::position(seconds + step, response, damping) -
                              Springs::position(seconds - step, response, damping)) /
                             (2 * step);
        QVERIFY(std::abs(Springs::velocity(seconds, response, damping) - slope) < 1e-3 / response);
    }
    QCOMPARE(Springs::position(0, response, damping), 0.0);
    QCOMPARE(Springs::velocity(0, response, damping), 0.0);
    QCOMPARE(Springs::position(-1, response, damping), 0.0);
}

void SpringsTest::curveFollowsTheMotion()
{
    QFETCH(double, response);
    QFETCH(double, damping);
    const QEasingCurve curve = easing(response, damping);
    const double length = Springs::duration(response, damping) / 1000.0;
    constexpr int places = 997;
    for (int i = 0; i <= places; ++i) {
        const double share = static_cast<double>(i) / places;
        const double expected = Springs::position(share * length, response, damping);
        const double actual = curve.valueForProgress(share);
        // What is rounded up to a whole millisecond shows where the motion is fastest.
        QVERIFY2(std::abs(actual - expected) < 0.006,
                 qPrintable(QString::asprintf("%f: %f instead of %f", share, actual, expected)));
    }
    QCOMPARE(curve.valueForProgress(0), 0.0);
    QCOMPARE(curve.valueForProgress(1), 1.0);
}

void SpringsTest::motionEndsWhenItIsSettled()
{
    QFETCH(double, response);
    QFETCH(double, damping);
    const double end = Springs::duration(response, damping) / 1000.0;
    for (int i = 0; i < 1000; ++i) {
        const double later = end * (1 + i / 500.0);
        QVERIFY(std::abs(Springs::position(later, response, damping) - 1) <= 0.001);
    }
    // And not much later than that.
    double last = 0;
    for (int i = 0; i < 1000; ++i) {
        const double earlier = end * i / 1000;
        if (std::abs(Springs::position(earlier, response, damping) - 1) > 0.001)
            last = earlier;
    }
    QVERIFY(end - last <= response / 2 / std::sqrt(std::max(1e-4, 1 - damping * damping)) + 0.002);
}

void SpringsTest::looseSpringOvershoots()
{
    // The first peak of a step response lies exp(-πd / √(1 - d²)) above the end.
    for (const double damping : {0.3, 0.5, 0.6, 0.7}) {
        const QEasingCurve curve = easing(0.3, damping);
        double peak = 0;
        for (int i = 0; i <= 1000; ++i)
            peak = std::max(peak, curve.valueForProgress(i / 1000.0));
        const double expected = 1 + std::exp(-std::numbers::pi * damping / std::sqrt(1 - damping * damping));
        QVERIFY2(std::abs(peak - expected) < 0.004, qPrintable(QString::number(peak)));
    }
}

void SpringsTest::tightSpringDoesNotOvershoot()
{
    for (const double damping : {1.0, 1.5, 4.0}) {
        const QEasingCurve curve = easing(0.3, damping);
        double before = 0;
        for (int i = 0; i <= 1000; ++i) {
            const double value = curve.valueForProgress(i / 1000.0);
            QVERIFY(value <= 1.0001 && value >= before - 1e-4);
            before = value;
        }
    }
}

void SpringsTest::absurdSpringsAreBounded_data()
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    constexpr double endless = std::numeric_limits<double>::infinity();
    QTest::addColumn<double>("response");
    QTest::addColumn<double>("damping");
    QTest::newRow("zero") << 0.0 << 0.0;
    QTest::newRow("negative") << -1.0 << -1.0;
    QTest::newRow("huge") << 1e300 << 1e300;
    QTest::newRow("tiny") << 1e-300 << 1e-300;
    QTest::newRow("no number") << none << none;
    QTest::newRow("endless") << endless << -endless;
}

void SpringsTest::absurdSpringsAreBounded()
{
    QFETCH(double, response);
    QFETCH(double, damping);
    const int duration = Springs::duration(response, damping);
    QVERIFY(duration > 0 && duration <= 25'000);
    const QList<double> points = Springs::curve(response, damping);
    QVERIFY(!points.isEmpty() && points.size() % 6 == 0 && points.size() <= 6 * 10);
    double before = 0;
    for (qsizetype i = 0; i < points.size(); ++i) {
        QVERIFY(std::isfinite(points.at(i)) && std::abs(points.at(i)) <= 2);
        if (i % 2 == 0) {
            QVERIFY(points.at(i) >= before);
            before = points.at(i);
        }
    }
    QCOMPARE(points.at(points.size() - 2), 1.0);
    QCOMPARE(points.last(), 1.0);
}

QTEST_APPLESS_MAIN(SpringsTest)
#include "tst_springs.moc"
