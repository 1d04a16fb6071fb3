// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QVariantList>

namespace cadorel {

/// How a spring moves from one value to another, for animations that know curves only. A spring of response r
/// (seconds) and damping fraction d is a mass of 1 on a stiffness of (2π/r)² with a damping of 4πd/r. Screens
/// know it as the singleton of this name. A response is held between 0.01 and 2 s, a damping fraction between
/// 0.25 and 4, so that every motion ends. Main thread.
class Springs : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Milliseconds until the spring stays within a thousandth of the way.
    Q_INVOKABLE static int duration(double response, double dampingFraction);
    /// Control points of the motion in fractions of duration() and of the way, for an easing of type
    /// Easing.BezierSpline. Overshoots go beyond 1.
    static QList<double> curve(double response, double dampingFraction);
    /// The same as QML takes them.
    Q_INVOKABLE static QVariantList bezierCurve(double response, double dampingFraction);

    /// Fraction of the way that is done after that many seconds, and its derivative. Any thread.
    static double position(double seconds, double response, double dampingFraction);
    static double velocity(double seconds, double response, double dampingFraction);
};

} // namespace cadorel
