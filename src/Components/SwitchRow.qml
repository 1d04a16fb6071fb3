// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic

/// A setting that is on or off: its name, and the switch at the end of the line.
AbstractButton {
    id: root

    checkable: true
    implicitHeight: Metrics.touchTarget
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked

    background: Rectangle {
        radius: Metrics.controlRadius
        color: SystemColors.tertiaryBackground
        border.width: Metrics.hairline
        border.color: SystemColors.separator

        FocusRing {
            radius: parent.radius
            visible: root.visualFocus
        }
    }

    Item {
        anchors.fill: parent

        StyledText {
            anchors.left: parent.left
            anchors.leftMargin: Metrics.cardPadding
            anchors.right: track.left
            anchors.rightMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
        }
        Rectangle {
            id: track

            anchors.right: parent.right
            anchors.rightMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            width: Metrics.switchWidth
            height: Metrics.switchHeight
            radius: height / 2
            color: root.checked ? SystemColors.green : SystemColors.track

            Rectangle {
                x: root.checked ? parent.width - width - Metrics.focusRing : Metrics.focusRing
                y: Metrics.focusRing
                width: parent.height - 2 * Metrics.focusRing
                height: width
                radius: width / 2
                color: SystemColors.accentInk
            }
        }
    }
}
