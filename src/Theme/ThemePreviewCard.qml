// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A look to choose: a small picture of itself in its own colours, whatever look is around it, and its name.
ThemedChoiceCard {
    id: root

    implicitWidth: Metrics.previewWidth
    padding: Metrics.rowSpacing
    leftPadding: Metrics.grid
    rightPadding: Metrics.grid
    text: theme.displayName
    ground: Surfaces.previewScreen(theme, cornerRadius)

    contentItem: Column {
        spacing: Metrics.rowSpacing

        SurfaceImage {
            objectName: "block"
            width: parent.width
            height: Metrics.previewHeight
            surface: Surfaces.previewBlock(root.theme)

            Rectangle {
                anchors.left: parent.left
                anchors.leftMargin: Metrics.rowSpacing
                anchors.verticalCenter: parent.verticalCenter
                width: Metrics.previewDot
                height: width
                radius: width / 2
                color: root.theme.primaryColor
            }
            Column {
                anchors.left: parent.left
                anchors.right: parent.right
                anchors.leftMargin: Metrics.previewDot + 2 * Metrics.rowSpacing
                anchors.rightMargin: Metrics.rowSpacing
                anchors.verticalCenter: parent.verticalCenter
                spacing: Metrics.grid

                Rectangle {
                    objectName: "primaryBar"
                    width: parent.width
                    height: Metrics.previewBar
                    radius: height / 2
                    color: root.theme.primaryTextColor
                }
                Rectangle {
                    objectName: "secondaryBar"
                    width: Math.round(parent.width * 0.6)
                    height: Metrics.previewBar
                    radius: height / 2
                    color: root.theme.secondaryTextColor
                }
            }
        }
        // Above the name: beside it, three cards of a narrow window would have no room for the names.
        SymbolIcon {
            objectName: "symbol"
            anchors.horizontalCenter: parent.horizontalCenter
            name: root.theme.icon
            size: Metrics.symbolTiny
            color: root.theme.primaryColor
        }
        StyledText {
            objectName: "label"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.text
            style: TextStyles.footnote
            font.weight: root.isSelected ? Font.DemiBold : Font.Normal
            color: Surfaces.textOn(root.theme, Surfaces.previewScreen(root.theme), root.theme.primaryTextColor)
        }
    }
}
