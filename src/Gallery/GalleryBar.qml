// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel
import CadorelGallery

/// What the gallery is seen in: the look, light or dark, the size of texts; and which page of it.
Item {
    id: root

    required property GalleryAppearance appearance
    property int page: 0
    property AppTheme theme: ThemeEnvironment.theme
    readonly property bool isWide: width >= Metrics.contentWidth

    signal pageChosen(int page)

    function toggleScheme(): void {
        appearance.setDark(!appearance.dark);
    }
    function toggleScale(): void {
        appearance.setTextScale(appearance.textScale > 1 ? 1 : 1.3);
    }

    implicitHeight: controls.height + 2 * Metrics.cardPadding

    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: Metrics.hairline
        color: Qt.alpha(root.theme.primaryTextColor, 0.16)
    }
    Item {
        id: controls

        readonly property real rest: width - schemeButton.width - scaleButton.width - 2 * Metrics.cardPadding

        anchors.top: parent.top
        anchors.topMargin: Metrics.cardPadding
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width - 2 * Metrics.screenMargin, GalleryMetrics.pageWidth)
        height: pages.y + pages.height

        StyledText {
            id: heading

            anchors.verticalCenter: looks.verticalCenter
            text: "外观一览"
            style: TextStyles.headline
            color: root.theme.primaryTextColor
            visible: root.isWide
        }
        ThemedSegmentedPicker {
            id: looks

            objectName: "look"
            x: root.isWide ? heading.width + Metrics.sectionGap : 0
            width: root.isWide ? GalleryMetrics.lookPickerWidth : controls.rest
            name: "界面主题"
            options: [0, 1, 2]
            label: option => ["经典", "拟态", "粉粉"][option]
            selection: ThemeManager.currentThemeIndex
            onSelected: option => ThemeManager.currentThemeIndex = option
        }
        ThemedSegmentedPicker {
            id: pages

            objectName: "page"
            x: root.isWide ? looks.x + looks.width + Metrics.sectionGap : 0
            y: root.isWide ? 0 : looks.height + Metrics.rowSpacing
            width: root.isWide ? controls.rest - x : controls.width
            name: "页面"
            options: [0, 1, 2, 3]
            label: option => ["控件", "图标", "插画", "文字"][option]
            selection: root.page
            onSelected: option => root.pageChosen(option)
        }
        ThemedControlButton {
            id: schemeButton

            objectName: "scheme"
            anchors.right: scaleButton.left
            anchors.rightMargin: Metrics.cardPadding
            anchors.verticalCenter: looks.verticalCenter
            systemName: root.appearance.dark ? AppIcons.appearance.moon : AppIcons.appearance.sun
            text: root.appearance.dark ? "换到浅色" : "换到深色"
            onClicked: root.toggleScheme()
        }
        ThemedControlButton {
            id: scaleButton

            objectName: "scale"
            anchors.right: parent.right
            anchors.verticalCenter: looks.verticalCenter
            systemName: root.appearance.textScale > 1 ? AppIcons.action.remove : AppIcons.action.add
            text: root.appearance.textScale > 1 ? "文字恢复原来的大小" : "放大文字"
            onClicked: root.toggleScale()
        }
    }
}
