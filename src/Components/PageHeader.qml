// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Cadorel

/// The way back, if there is one, what the page shows, and buttons for it.
Item {
    id: root

    property string title
    property string subtitle
    property TextStyle titleStyle: TextStyles.largeTitle
    property bool hasBack: true
    property string backText: "返回"
    default property alias actions: buttons.data

    signal backRequested

    implicitHeight: titles.y + titles.implicitHeight + Metrics.rowSpacing

    IconButton {
        id: backButton

        objectName: "backButton"
        anchors.left: parent.left
        anchors.leftMargin: visible ? -(width - Metrics.symbol) / 2 : 0
        width: visible ? implicitWidth : 0
        visible: root.hasBack
        y: titles.y + Math.round((titleText.height - height) / 2)
        symbol: AppIcons.navigation.back
        color: SystemColors.accent
        text: root.backText
        onClicked: root.backRequested()
    }
    Column {
        id: titles

        anchors.left: backButton.right
        anchors.right: buttons.left
        anchors.rightMargin: Metrics.grid
        y: Metrics.screenMargin

        StyledText {
            id: titleText

            objectName: "pageTitle"
            width: parent.width
            height: Math.max(implicitHeight, TextStyles.largeTitle.line)
            text: root.title
            style: root.titleStyle
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        StyledText {
            objectName: "pageSubtitle"
            width: parent.width
            text: root.subtitle
            style: TextStyles.subheadline
            color: SystemColors.secondaryLabel
            visible: text !== ""
        }
    }
    RowLayout {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: -(Metrics.touchTarget - Metrics.symbol) / 2
        y: backButton.y
        spacing: 0
    }
}
