// SPDX-License-Identifier: GPL-3.0-or-later
import Cadorel

/// Outline on the edge of the control that the keyboard speaks to.
ThemedFocusRing {
    outset: 0
}
