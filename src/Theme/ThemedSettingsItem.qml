// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

/// A row that leads somewhere: a coloured square with a symbol, a title, and a word on how things stand.
T.AbstractButton {
    id: root

    required property string icon
    required property color iconColor
    required property string title
    /// Empty shows none.
    property string subtitle
    property AppTheme theme: ThemeEnvironment.theme

    implicitWidth: Metrics.menuWidth
    implicitHeight: Math.max(Metrics.settingsItemHeight, titleText.implicitHeight + 2 * Metrics.cardPadding)
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    text: title
    Accessible.name: subtitle === "" ? title : title + "，" + subtitle
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: Rectangle {
        radius: Metrics.controlRadius
        color: root.down ? SystemColors.pressed : root.hovered ? SystemColors.hover : "transparent"

        ThemedFocusRing {
            anchors.margins: 0
            radius: parent.radius
            theme: root.theme
            visible: root.visualFocus
        }
    }
    contentItem: Item {
        SurfaceImage {
            id: square

            anchors.left: parent.left
            anchors.leftMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            width: Metrics.settingsSquare
            height: Metrics.settingsSquare
            surface: Surfaces.settingsIcon(root.theme, root.iconColor)

            SymbolIcon {
                anchors.centerIn: parent
                name: root.icon
                size: Metrics.settingsSymbol
                color: "white"
            }
        }
        StyledText {
            id: titleText

            objectName: "itemTitle"
            anchors.left: square.right
            anchors.leftMargin: Metrics.cardPadding
            anchors.right: subtitleText.left
            anchors.rightMargin: Metrics.rowSpacing
            anchors.verticalCenter: parent.verticalCenter
            text: root.title
            color: root.theme.primaryTextColor
        }
        StyledText {
            id: subtitleText

            objectName: "itemSubtitle"
            anchors.right: chevron.left
            anchors.rightMargin: Metrics.rowSpacing
            anchors.baseline: titleText.baseline
            // A long word on how things stand leaves the title half of the row.
            width: Math.min(implicitWidth, parent.width / 2 - Metrics.settingsSquare)
            text: root.subtitle
            style: TextStyles.subheadline
            color: root.theme.secondaryTextColor
        }
        SymbolIcon {
            id: chevron

            anchors.right: parent.right
            anchors.rightMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            name: AppIcons.navigation.forward
            size: TextStyles.caption1.size
            color: root.theme.secondaryTextColor
            opacity: 0.6
        }
    }
}
