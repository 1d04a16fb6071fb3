// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/Springs.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cadorel {

namespace {

constexpr double settledWithin = 0.001;
constexpr double shortestResponse = 0.01;
constexpr double longestResponse = 2;
constexpr double leastDamping = 0.1;
constexpr double mostDamping = 5;
constexpr double msPerSecond = 1000;
constexpr double pointsPerTurn = 12;
constexpr int fewestPieces = 8;
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

QList<double> splineOf(const Spring &spring)
{
    const double length = spring.settled();
    const double turns = length * spring.frequency / (2 * std::numbers::pi);
    // An overdamped motion begins faster than it swings.
    const double wanted = turns * pointsPerTurn * std::max(spring.damping, 1.0);
    const int pieces = std::max(fewestPieces, static_cast<int>(std::ceil(wanted)));
    QList<double> points;
    double before = 0;
    for (int i = 1; i <= pieces; ++i) {
        const double share = static_cast<double>(i) / pieces;
        const double third = (share - before) / 3;
        const auto slope = [&](double at) { return spring.velocity(at * length) * length; };
        const bool isLast = i == pieces;
        points << before + third << spring.position(before * length) + slope(before) * third;
        points << share - third << (isLast ? 1 : spring.position(share * length) - slope(share) * third);
        points << share << (isLast ? 1 : spring.position(share * length));
        before = share;
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

double Springs::position(double seconds, double response, double dampingFraction)
{
    return Spring(response, dampingFraction).position(seconds);
}

double Springs::velocity(double seconds, double response, double dampingFraction)
{
    return Spring(response, dampingFraction).velocity(seconds);
}

} // namespace cadorel
