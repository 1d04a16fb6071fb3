// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic

/// One of the window's places, in the bar that leads to them.
AbstractButton {
    id: root

    required property string symbol
    required property string selectedSymbol
    property bool isSelected: false
    readonly property color ink: isSelected ? SystemColors.accent : SystemColors.secondaryLabel

    implicitHeight: Metrics.tabBarHeight
    // The keyboard comes to the place that is shown, and the arrow keys lead on from there.
    focusPolicy: isSelected ? Qt.TabFocus : Qt.NoFocus
    hoverEnabled: true
    Accessible.role: Accessible.PageTab
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.margins: Metrics.grid
            radius: Metrics.controlRadius
            color: root.down ? SystemColors.pressed : root.hovered ? SystemColors.hover : "transparent"

            FocusRing {
                radius: parent.radius
                visible: root.visualFocus
            }
        }
    }

    Column {
        anchors.centerIn: parent

        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: root.isSelected ? root.selectedSymbol : root.symbol
            color: root.ink
        }
        StyledText {
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.text
            style: TextStyles.caption1
            color: root.ink
        }
    }
}
