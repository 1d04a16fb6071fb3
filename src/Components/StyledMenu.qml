// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic

/// A menu in the player's look.
Menu {
    id: root

    implicitWidth: Metrics.menuWidth
    padding: Metrics.grid
    margins: Metrics.rowSpacing

    background: Rectangle {
        color: SystemColors.tertiaryBackground
        border.color: SystemColors.separator
        border.width: Metrics.hairline
        radius: Metrics.cardRadius
    }
}
