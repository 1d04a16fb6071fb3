// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Cadorel

/// The way back, if there is one, what the page shows, and buttons for it.
Item {
    id: root

    property string title
    property string subtitle
    property string subtitleName: "pageSubtitle"
    property TextStyle titleStyle: hasBack ? TextStyles.title2 : TextStyles.largeTitle
    property bool hasBack: true
    property string backText: "返回"
    property AppTheme theme: ThemeEnvironment.theme
    // Of the look's bars, the titles' colour: there is no ground of its own, since nothing scrolls beneath it.
    property barAppearance appearance: BarAppearances.setupAppearance(theme)
    default property alias actions: buttons.data

    signal backRequested

    /// What lies about the ground of a button at the edge of the page.
    readonly property int overhang: (Metrics.touchTarget - Metrics.headerButton) / 2

    implicitHeight: titles.y + titles.implicitHeight + Metrics.rowSpacing

    HeaderButton {
        id: backButton

        objectName: "backButton"
        anchors.left: parent.left
        anchors.leftMargin: visible ? -root.overhang : 0
        width: visible ? implicitWidth : 0
        visible: root.hasBack
        y: titles.y + Math.round((titleText.height - height) / 2)
        symbol: AppIcons.navigation.back
        text: root.backText
        onClicked: root.backRequested()
    }
    Column {
        id: titles

        anchors.left: backButton.right
        anchors.leftMargin: backButton.visible ? Metrics.grid : 0
        anchors.right: buttons.left
        anchors.rightMargin: Metrics.grid
        y: Metrics.screenMargin

        StyledText {
            id: titleText

            objectName: "pageTitle"
            width: Math.min(implicitWidth, parent.width - (sticker.visible ? sticker.width + Metrics.rowSpacing : 0))
            height: Math.max(implicitHeight, TextStyles.largeTitle.line)
            text: root.title
            style: root.titleStyle
            font.weight: Font.Bold
            color: Surfaces.ink(root.theme, root.appearance.title)
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        QuietText {
            objectName: root.subtitleName
            width: parent.width
            text: root.subtitle
            style: TextStyles.subheadline
            wrapMode: Text.Wrap
            maximumLineCount: 2
            visible: text !== ""
        }
    }
    KawaiiTitleDecoration {
        id: sticker

        x: titles.x + titleText.width + Metrics.rowSpacing
        y: titles.y + Math.round((titleText.height - height) / 2)
        // The places of the window have one, their pages have long names.
        visible: isPink && !root.hasBack
    }
    RowLayout {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: -root.overhang
        y: backButton.y
        spacing: 0
    }
}
