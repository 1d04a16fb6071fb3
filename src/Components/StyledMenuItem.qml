// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// An entry of StyledMenu.
MenuItem {
    id: root

    property string symbol
    property bool destructive: false
    property AppTheme theme: ThemeEnvironment.theme
    property color ink: Surfaces.textOn(theme, Surfaces.popup(theme), destructive ? SystemColors.red : theme.primaryTextColor)

    implicitHeight: Metrics.touchTarget
    leftPadding: Metrics.cardPadding
    rightPadding: Metrics.cardPadding
    spacing: Metrics.cardPadding
    Accessible.name: text
    Accessible.onPressAction: Press.byAction(root)

    background: ThemedHighlight {
        radius: Metrics.coverRadius
        isHovered: root.highlighted
        isPressed: root.down
        theme: root.theme
    }
    // The style would draw the text a second time.
    contentItem: Item {}

    Item {
        anchors.fill: parent
        anchors.leftMargin: root.leftPadding
        anchors.rightMargin: root.rightPadding
        opacity: root.enabled ? 1 : Metrics.disabledOpacity

        SymbolIcon {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            name: root.symbol
            size: Metrics.symbolSmall
            color: root.ink
            visible: root.symbol !== ""
        }
        StyledText {
            anchors.left: icon.visible ? icon.right : parent.left
            anchors.leftMargin: icon.visible ? root.spacing : 0
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            style: TextStyles.callout
            color: root.ink
        }
    }
}
