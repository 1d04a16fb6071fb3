// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// A setting that is on or off: its name, and the switch at the end of the line.
AbstractButton {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    checkable: true
    implicitHeight: Math.max(Metrics.buttonHeight, label.implicitHeight + 2 * Metrics.rowSpacing)
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked

    background: ThemedCard {
        cornerRadius: Metrics.controlRadius
        theme: root.theme

        ThemedHighlight {
            anchors.fill: parent
            radius: Metrics.controlRadius
            isHovered: root.hovered
            isPressed: root.down
            isFocused: root.visualFocus
            theme: root.theme
        }
    }

    Item {
        anchors.fill: parent

        StyledText {
            id: label

            anchors.left: parent.left
            anchors.leftMargin: Metrics.cardPadding
            anchors.right: track.left
            anchors.rightMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            opacity: root.enabled ? 1 : Metrics.disabledOpacity
        }
        SwitchTrack {
            id: track

            anchors.right: parent.right
            anchors.rightMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            isOn: root.checked
            theme: root.theme
        }
    }
}
