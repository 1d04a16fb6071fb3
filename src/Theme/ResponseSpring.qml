// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Moves a value as a spring does, for the behaviours of items. A desktop that wants no motion gets none.
NumberAnimation {
    /// Seconds of one swing without damping.
    property real response: 0.3
    /// From 1 on there is no overshoot.
    property real damping: 0.6
    /// Milliseconds of a plain ease-out in place of the spring; 0 is the spring.
    property int easeOut: 0

    duration: Motion.scaled(easeOut > 0 ? easeOut : Springs.duration(response, damping))
    easing.type: Easing.BezierSpline
    easing.bezierCurve: easeOut > 0 ? Motion.easeOut : Springs.bezierCurve(response, damping)
}
