// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A tab of the pink look's bar: its drawn icon, paler while another one is selected.
ContentTabButton {
    id: root

    implicitHeight: Metrics.kawaiiTabIcon + 2 * Metrics.cardPadding

    background: ThemedHighlight {
        isHovered: root.hovered
        isPressed: root.down
        isFocused: root.visualFocus
        theme: root.theme
    }
    contentItem: Item {
        ThemedIcon {
            objectName: "tabIcon"
            anchors.centerIn: parent
            size: Metrics.kawaiiTabIcon
            systemName: root.symbol
            kawaiiName: root.kawaiiIcon
            theme: root.theme
            opacity: root.isSelected ? 1 : Metrics.idleTabOpacity
        }
    }

    // The icons have no words beside them.
    StyledToolTip {
        text: root.title
        // Not of a bar that is on its way out.
        visible: root.hovered && !root.down && root.Window.window !== null
    }
}
