// SPDX-License-Identifier: GPL-3.0-or-later
import Cadorel

/// The look's own button: embossed, or tinted with an outline.
PressableButton {
    idleSurface: Surfaces.themedButtonStyle(theme, false, cornerRadius)
    pressedSurface: Surfaces.themedButtonStyle(theme, true, cornerRadius)
    pressedScale: Metrics.pressedScale
    easeOut: theme.useNeumorphism ? Metrics.pressDuration : 0
}
