// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Outline about the control that the keyboard speaks to, in the accent of the look.
Rectangle {
    property AppTheme theme: ThemeEnvironment.theme
    /// Radius of the control.
    property real controlRadius: 0
    /// How far outside of the control it lies; 0 draws it on the control's edge.
    property real outset: 2 * Metrics.focusRing

    anchors.fill: parent
    anchors.margins: -outset
    radius: controlRadius + outset
    color: "transparent"
    border.width: Metrics.focusRing
    border.color: theme.primaryColor
}
