// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// A look to choose: a small picture of itself in its own colours, whatever look is around it, and its name.
// A screen reader learns what a button is from its type alone.
T.RadioButton {
    id: root

    /// The look that the card shows.
    required property AppTheme theme
    property bool isSelected: false

    implicitWidth: Metrics.previewWidth
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    padding: Metrics.rowSpacing
    leftPadding: Metrics.grid
    rightPadding: Metrics.grid
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    checkable: false
    autoExclusive: false
    text: theme.displayName
    scale: down && !Motion.isReduced ? Metrics.pressedCardScale : 1
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isSelected
    Accessible.onPressAction: Press.byAction(root)
    Keys.onReturnPressed: event => Press.byKey(root, event)
    Keys.onEnterPressed: event => Press.byKey(root, event)

    Behavior on scale {
        NumberAnimation {
            duration: Motion.scaled(Metrics.pressDuration)
            easing.type: Easing.OutQuad
        }
    }

    background: Item {
        SurfaceImage {
            objectName: "screen"
            anchors.fill: parent
            surface: Surfaces.previewScreen(root.theme, Metrics.cardRadius)
        }
        ThemedHighlight {
            anchors.fill: parent
            isHovered: root.hovered
            isPressed: root.down
            theme: root.theme
        }
        Rectangle {
            objectName: "selectionStroke"
            anchors.fill: parent
            radius: Metrics.cardRadius
            color: "transparent"
            border.width: Metrics.selectionStroke
            border.color: root.theme.primaryColor
            visible: root.isSelected
        }
        ThemedFocusRing {
            controlRadius: Metrics.cardRadius
            visible: root.visualFocus
        }
    }
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
