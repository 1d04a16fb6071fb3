// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick
import Cadorel.Desktop

/// Whether and for how long things move.
QtObject {
    /// A desktop that asks for less motion gets none: things appear at their place.
    readonly property bool isReduced: DesktopAppearance.reducesMotion

    /// How long a movement takes that is made for @p duration milliseconds.
    function scaled(duration: int): int {
        return isReduced ? 0 : duration;
    }
}
