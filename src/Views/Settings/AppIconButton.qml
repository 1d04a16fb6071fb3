// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// An application icon to choose, and its name.
// A screen reader learns what a button is from its type alone.
T.RadioButton {
    id: root

    /// Empty for the default icon.
    required property string iconName
    required property string displayName
    /// Name of its picture.
    required property string imageName
    property bool isSelected: false
    property color accentColor: ThemeColor.accent
    property AppTheme theme: ThemeEnvironment.theme

    implicitWidth: Metrics.appIconSize + 2 * Metrics.screenMargin
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    padding: Metrics.screenMargin
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    checkable: false
    autoExclusive: false
    text: displayName
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
        ThemedCard {
            anchors.fill: parent
            theme: root.theme
            cornerRadius: Metrics.sheetRadius
        }
        ThemedHighlight {
            anchors.fill: parent
            radius: Metrics.sheetRadius
            isHovered: root.hovered
            isPressed: root.down
            theme: root.theme
        }
        Rectangle {
            objectName: "selectionStroke"
            anchors.fill: parent
            radius: Metrics.sheetRadius
            color: "transparent"
            border.width: Metrics.selectionStroke
            border.color: root.accentColor
            visible: root.isSelected
        }
        ThemedFocusRing {
            controlRadius: Metrics.sheetRadius
            theme: root.theme
            visible: root.visualFocus
        }
    }
    contentItem: Column {
        spacing: Metrics.cardPadding

        AppIconPreview {
            anchors.horizontalCenter: parent.horizontalCenter
            imageName: root.imageName
            color: root.theme.secondaryTextColor
        }
        Row {
            readonly property int room: parent.width

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Metrics.grid

            StyledText {
                objectName: "label"
                width: Math.min(implicitWidth, parent.room - Metrics.symbolSmall - parent.spacing)
                text: root.displayName
                style: TextStyles.subheadline
                font.weight: root.isSelected ? Font.DemiBold : Font.Normal
                color: Surfaces.textOn(root.theme, Surfaces.themedCard(root.theme), root.theme.primaryTextColor)
            }
            SymbolIcon {
                objectName: "mark"
                anchors.verticalCenter: parent.verticalCenter
                visible: root.isSelected
                name: AppIcons.status.checkmarkCircle
                size: Metrics.symbolSmall
                color: root.accentColor
            }
        }
    }
}
