// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One ready-made kind of server.
ListRow {
    id: root

    required property int index
    required property string name
    required property string description
    required property string symbol

    implicitHeight: Metrics.rowHeight
    hasMenu: false
    Accessible.name: name + "，" + description

    SymbolIcon {
        id: icon

        anchors.left: parent.left
        anchors.leftMargin: Metrics.screenMargin
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbol
        color: root.theme.primaryColor
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
        QuietText {
            width: parent.width
            text: root.description
        }
    }
}
