// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A button with a text and, if wanted, a symbol before it, in the look around it.
PressableButton {
    id: root

    enum Role { Prominent, Tinted, Plain, Destructive }

    property int role: TextButton.Tinted
    readonly property bool isFilled: role === TextButton.Prominent || role === TextButton.Destructive
    readonly property bool isPlain: role === TextButton.Plain
    readonly property color fill: role === TextButton.Destructive ? SystemColors.red : theme.primaryColor

    implicitHeight: Math.max(Metrics.buttonHeight, implicitContentHeight + 2 * Metrics.rowSpacing)
    cornerRadius: Metrics.controlRadius
    // Without a look there is no ground.
    idleSurface: isFilled ? Surfaces.filledButton(theme, fill, false, cornerRadius) : Surfaces.themedButtonStyle(isPlain ? null : theme, false, cornerRadius)
    pressedSurface: isFilled ? Surfaces.filledButton(theme, fill, true, cornerRadius) : Surfaces.themedButtonStyle(theme, true, cornerRadius)
    pressedScale: Metrics.pressedScale
    easeOut: theme.useNeumorphism ? Metrics.pressDuration : 0
    ink: isFilled ? SystemColors.accentInk : isPlain ? Surfaces.ink(theme, theme.primaryColor) : Surfaces.accentOn(theme, pressedSurface)
    labelStyle: isPlain ? TextStyles.body : TextStyles.headline
}
