// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic

/// An entry of StyledMenu.
MenuItem {
    id: root

    property string symbol
    property bool destructive: false
    property color ink: destructive ? SystemColors.redText : SystemColors.label

    implicitHeight: Metrics.touchTarget
    leftPadding: Metrics.cardPadding
    rightPadding: Metrics.cardPadding
    spacing: Metrics.cardPadding
    Accessible.name: text

    background: Rectangle {
        radius: Metrics.coverRadius
        color: root.down ? SystemColors.pressed : root.highlighted ? SystemColors.hover : "transparent"
    }
    // The style would draw the text a second time.
    contentItem: Item {}

    Item {
        anchors.fill: parent
        anchors.leftMargin: root.leftPadding
        anchors.rightMargin: root.rightPadding
        opacity: root.enabled ? 1 : Metrics.disabledOpacity

        SymbolIcon {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            name: root.symbol
            size: Metrics.symbolSmall
            color: root.ink
            visible: root.symbol !== ""
        }
        StyledText {
            anchors.left: icon.visible ? icon.right : parent.left
            anchors.leftMargin: icon.visible ? root.spacing : 0
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            style: TextStyles.callout
            color: root.ink
        }
    }
}
