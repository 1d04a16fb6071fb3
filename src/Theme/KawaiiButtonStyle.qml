// SPDX-License-Identifier: GPL-3.0-or-later
import Cadorel

/// A tinted button with an outline that fills while it is pressed.
PressableButton {
    idleSurface: Surfaces.kawaiiButton(theme, false, cornerRadius)
    pressedSurface: Surfaces.kawaiiButton(theme, true, cornerRadius)
    pressedScale: Metrics.pressedScale
}
