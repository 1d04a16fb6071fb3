// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// Outline about the control that the keyboard speaks to.
Rectangle {
    anchors.fill: parent
    color: "transparent"
    border.width: Metrics.focusRing
    border.color: SystemColors.accent
}
