// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

/// One ready-made kind of server.
T.ItemDelegate {
    id: root

    required property int index
    required property string name
    required property string description
    required property string symbol
    property bool showsFocus: false

    implicitHeight: Metrics.rowHeight
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    text: name
    Accessible.name: name + "，" + description
    Accessible.onPressAction: root.clicked()

    background: Rectangle {
        anchors.fill: parent
        anchors.leftMargin: Metrics.rowSpacing
        anchors.rightMargin: Metrics.rowSpacing
        radius: Metrics.controlRadius
        color: root.down ? SystemColors.pressed : root.hovered ? SystemColors.hover : "transparent"

        FocusRing {
            radius: parent.radius
            visible: root.showsFocus
        }
    }
    Item {
        anchors.fill: parent

        SymbolIcon {
            id: icon

            anchors.left: parent.left
            anchors.leftMargin: Metrics.screenMargin
            anchors.verticalCenter: parent.verticalCenter
            name: root.symbol
            color: SystemColors.accent
        }
        Column {
            anchors.left: icon.right
            anchors.leftMargin: Metrics.screenMargin
            anchors.right: parent.right
            anchors.rightMargin: Metrics.screenMargin
            anchors.verticalCenter: parent.verticalCenter

            StyledText {
                width: parent.width
                text: root.name
            }
            StyledText {
                width: parent.width
                text: root.description
                style: TextStyles.footnote
                color: SystemColors.secondaryLabel
            }
        }
    }
}
