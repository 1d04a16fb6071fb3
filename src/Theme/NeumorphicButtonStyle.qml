// SPDX-License-Identifier: GPL-3.0-or-later
import Cadorel

/// An embossed button that sinks while it is pressed.
PressableButton {
    idleSurface: Surfaces.neumorphismRaised(theme, cornerRadius)
    pressedSurface: Surfaces.neumorphismPressed(theme, cornerRadius)
    pressedScale: Metrics.pressedScale
    easeOut: Metrics.pressDuration
}
