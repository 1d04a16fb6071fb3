// SPDX-License-Identifier: GPL-3.0-or-later
import Cadorel

/// The look's own button: embossed, or tinted with an outline.
PressableButton {
    idleSurface: Surfaces.themedButtonStyle(theme, false, cornerRadius)
    pressedSurface: Surfaces.themedButtonStyle(theme, true, cornerRadius)
    pressedScale: 0.97
    response: 0.3
    damping: 0.6
    easeOut: theme.useNeumorphism ? Metrics.pressDuration : 0
}
