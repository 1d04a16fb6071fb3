// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

/// One of the window's places, in the bar that leads to them.
T.TabButton {
    id: root

    required property string symbol
    required property string selectedSymbol
    property bool isSelected: false
    readonly property color ink: isSelected ? SystemColors.accentText : SystemColors.secondaryLabel

    implicitHeight: Metrics.tabBarHeight
    // A click leaves the keyboard to the place that comes up. Which place that is the window says, not the button.
    focusPolicy: Qt.TabFocus
    checkable: false
    autoExclusive: false
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
