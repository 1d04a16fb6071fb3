// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A screen of settings: its header, and beneath it groups of rows that scroll.
FocusScope {
    id: root

    property string title
    property bool hasBack: true
    property string backText: "返回设置"
    property int sideMargin: Metrics.screenMargin
    default property alias sections: column.data

    signal backRequested

    PageHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: root.sideMargin
        anchors.rightMargin: root.sideMargin
        title: root.title
        hasBack: root.hasBack
        backText: root.backText
        onBackRequested: root.backRequested()
    }
    FormFlickable {
        id: flickable

        objectName: root.objectName + "Scroller"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        contentHeight: column.y + column.height + 2 * Metrics.sectionGap
        bottomMargin: MiniPlayerRoom.height

        Column {
            id: column

            x: root.sideMargin
            y: Metrics.rowSpacing
            width: flickable.width - 2 * x
            spacing: Metrics.sectionGap
        }
    }
}
