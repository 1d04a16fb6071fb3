// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// Outline about the control that the keyboard speaks to, a little outside of it, in the accent of the look.
Rectangle {
    property AppTheme theme: ThemeEnvironment.theme
    /// Radius of the control.
    property real controlRadius: 0

    anchors.fill: parent
    anchors.margins: -2 * Metrics.focusRing
    radius: controlRadius + 2 * Metrics.focusRing
    color: "transparent"
    border.width: Metrics.focusRing
    border.color: theme.primaryColor
}
