// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/Springs.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace cadorel {

namespace {

constexpr double settledWithin = 0.001;
constexpr double shortestResponse = 0.01;
constexpr double longestResponse = 2;
constexpr double leastDamping = 0.25;
constexpr double mostDamping = 4;
constexpr double msPerSecond = 1000;
// QEasingCurve has room for ten and writes beyond it for more.
constexpr int pieces = 10;
constexpr int samples = 2000;
constexpr int mostKept = 64;

/// A spring that is let go at 0 and comes to rest at 1.
struct Spring
{
    Spring(double response, double dampingFraction)
        : frequency(2 * std::numbers::pi / held(response, shortestResponse, longestResponse))
        , damping(held(dampingFraction, leastDamping, mostDamping))
    {
    }

    static double held(double value, double low, double high)
    {
        return std::isfinite(value) ? std::clamp(value, low, high) : low;
    }

    double position(double seconds) const
    {
        const double t = std::max(seconds, 0.0);
        const double fall = std::exp(-damping * frequency * t);
        if (isCritical())
            return 1 - fall * (1 + frequency * t);
        if (damping < 1)
            return 1 - fall * (std::cos(turning() * t) +
                               damping * frequency / turning() * std::sin(turning() * t));
        const auto [slow, fast] = rates();
        return 1 - (fast * std::exp(-slow * t) - slow * std::exp(-fast * t)) / (fast - slow);
    }

    double velocity(double seconds) const
    {
        const double t = std::max(seconds, 0.0);
        const double fall = std::exp(-damping * frequency * t);
        if (isCritical())
            return fall * frequency * frequency * t;
        if (damping < 1)
            return fall * frequency * frequency / turning() * std::sin(turning() * t);
        const auto [slow, fast] = rates();
        return slow * fast * (std::exp(-slow * t) - std::exp(-fast * t)) / (fast - slow);
    }

    double settled() const
    {
        // Beyond this the distance never exceeds the limit again: by its envelope where it swings.
        const auto isBeyond = [this](double t) {
            const double left = damping < 1 && !isCritical()
                                    ? std::exp(-damping * frequency * t) / std::sqrt(1 - damping * damping)
                                    : 1 - position(t);
            return left > settledWithin;
        };
        double early = 0;
        double late = 1 / frequency;
        while (isBeyond(late))
            late *= 2;
        constexpr int halvings = 50;
        for (int i = 0; i < halvings; ++i) {
            const double middle = std::midpoint(early, late);
            (isBeyond(middle) ? early : late) = middle;
        }
        return late;
    }

    /// How dense the knots of a spline of even quality lie: the fourth root of the motion's fourth
    /// derivative.
    double bend(double seconds) const
    {
        if (damping < 1 || isCritical())
            return std::exp(-damping * frequency * seconds / 4);
        const auto [slow, fast] = rates();
        const double share = std::pow(slow / fast, 0.75);
        return std::exp(-fast * seconds / 4) + share * std::exp(-slow * seconds / 4);
    }

    bool isCritical() const
    {
        constexpr double nearly = 1e-4;
        return std::abs(damping - 1) < nearly;
    }
    /// Of the oscillation, radians a second.
    double turning() const { return frequency * std::sqrt(1 - damping * damping); }
    /// At which the two parts of a motion without oscillation fall.
    std::pair<double, double> rates() const
    {
        const double apart = std::sqrt(damping * damping - 1);
        return {frequency * (damping - apart), frequency * (damping + apart)};
    }

    double frequency;
    double damping;
};

/// Where the pieces of a spline meet, in seconds: the more the motion bends, the closer.
std::vector<double> knotsOf(const Spring &spring)
{
    const double length = spring.settled();
    std::vector<double> bends{0};
    for (int i = 0; i < samples; ++i)
        bends.push_back(bends.back() + spring.bend(length * (i + 0.5) / samples));
    std::vector<double> knots;
    for (int piece = 0; piece <= pieces; ++piece) {
        const double wanted = bends.back() * piece / pieces;
        const auto reached = std::ranges::lower_bound(bends, wanted);
        knots.push_back(length * static_cast<double>(reached - bends.begin()) / samples);
    }
    return knots;
}

QList<double> splineOf(const Spring &spring)
{
    const std::vector<double> knots = knotsOf(spring);
    const double length = knots.back();
    QList<double> points;
    for (std::size_t i = 1; i < knots.size(); ++i) {
        const double from = knots[i - 1];
        const double to = knots[i];
        const double third = (to - from) / 3;
        const bool isLast = i + 1 == knots.size();
        points << (from + third) / length << spring.position(from) + spring.velocity(from) * third;
        points << (to - third) / length << (isLast ? 1 : spring.position(to) - spring.velocity(to) * third);
        points << to / length << (isLast ? 1 : spring.position(to));
    }
    return points;
}

} // namespace

int Springs::duration(double response, double dampingFraction)
{
    return static_cast<int>(std::ceil(Spring(response, dampingFraction).settled() * msPerSecond));
}

QList<double> Springs::curve(double response, double dampingFraction)
{
    static QHash<std::pair<double, double>, QList<double>> known;
    const Spring spring(response, dampingFraction);
    const std::pair key(spring.frequency, spring.damping);
    if (const auto found = known.constFind(key); found != known.constEnd())
        return *found;
    if (known.size() >= mostKept)
        known.clear();
    return *known.insert(key, splineOf(spring));
}

QVariantList Springs::bezierCurve(double response, double dampingFraction)
{
    const QList<double> points = curve(response, dampingFraction);
    return {points.begin(), points.end()};
}

double Springs::position(double seconds, double response, double dampingFraction)
{
    return Spring(response, dampingFraction).position(seconds);
}

double Springs::velocity(double seconds, double response, double dampingFraction)
{
    return Spring(response, dampingFraction).velocity(seconds);
}

} // namespace cadorel
