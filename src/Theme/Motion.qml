// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick
import Cadorel.Desktop

/// Whether and for how long things move.
QtObject {
    /// A desktop that asks for less motion gets none: things appear at their place.
    readonly property bool isReduced: DesktopAppearance.reducesMotion

    /// Curves of what is no spring, for an easing of type Easing.BezierSpline.
    readonly property var easeOut: [0, 0, 0.58, 1, 1, 1]
    readonly property var easeInOut: [0.42, 0, 0.58, 1, 1, 1]

    /// Whether what is @p visible in a window of that state is seen: nothing moves unseen.
    function isSeen(visible: bool, state: int): bool {
        return visible && state !== Window.Hidden && state !== Window.Minimized;
    }
    /// How long a movement takes that is made for @p duration milliseconds.
    function scaled(duration: int): int {
        return isReduced ? 0 : duration;
    }
}
