// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What a row or a plain button shows of the mouse, the finger and the keyboard: laid over its ground, and made
/// of the look's own text colour, since a look can be light on a dark desktop.
Rectangle {
    id: root

    property bool isHovered: false
    property bool isPressed: false
    property bool isFocused: false
    /// What reads on the ground beneath.
    property color ink: theme.primaryTextColor
    /// Of the outline: where the ground is a picture, the accent may be lost on it.
    property color focusColor: theme.primaryColor
    property AppTheme theme: ThemeEnvironment.theme

    radius: Metrics.cardRadius
    color: isPressed ? Qt.alpha(ink, Metrics.pressedOpacity) : isHovered ? Qt.alpha(ink, Metrics.hoverOpacity) : "transparent"

    ThemedFocusRing {
        objectName: "focusRing"
        controlRadius: root.radius
        outset: 0
        theme: root.theme
        border.color: root.focusColor
        visible: root.isFocused
    }
}
