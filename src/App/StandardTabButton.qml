// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A tab of the plain bar: symbol above title, in the look's colour while it is selected.
ContentTabButton {
    id: root

    required property barAppearance appearance
    readonly property color ink: Contrast.textOn(appearance.background, isSelected ? theme.primaryColor : theme.secondaryTextColor)

    background: Item {
        ThemedHighlight {
            anchors.fill: parent
            anchors.margins: Metrics.grid / 2
            radius: Metrics.controlRadius
            isHovered: root.hovered
            isPressed: root.down
            isFocused: root.visualFocus
            theme: root.theme
        }
    }
    contentItem: Item {
        Column {
            anchors.centerIn: parent
            width: parent.width

            SymbolIcon {
                anchors.horizontalCenter: parent.horizontalCenter
                name: root.isSelected ? root.selectedSymbol : root.symbol
                color: root.ink
            }
            StyledText {
                width: parent.width
                text: root.title
                style: TextStyles.caption2
                color: root.ink
                horizontalAlignment: Text.AlignHCenter
            }
        }
    }
}
