// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// A round button that shows a symbol; `text` is its name for tool tip and screen reader.
AbstractButton {
    id: root

    required property string symbol
    property AppTheme theme: ThemeEnvironment.theme
    property color color: theme.primaryTextColor
    property int symbolSize: Metrics.symbol
    /// What the button opens is open: the tool tip would lie over it.
    property bool isOpen: false

    implicitWidth: Metrics.touchTarget
    implicitHeight: Metrics.touchTarget
    // A click leaves the keyboard where it was, so that Space goes on playing and pausing.
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Accessible.name: text
    Accessible.onPressAction: Press.byAction(root)
    Keys.onPressed: event => Press.holdBack(event)
    Keys.onReleased: event => Press.holdBack(event)
    Keys.onReturnPressed: event => Press.byKey(root, event)
    Keys.onEnterPressed: event => Press.byKey(root, event)

    background: ThemedHighlight {
        radius: height / 2
        isHovered: root.hovered
        isPressed: root.down
        isFocused: root.visualFocus
        theme: root.theme
    }
    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            name: root.symbol
            size: root.symbolSize
            color: root.color
            opacity: root.enabled ? 1 : Metrics.disabledOpacity
        }
    }

    StyledToolTip {
        objectName: "toolTip"
        text: root.text
        visible: root.hovered && !root.down && !root.isOpen
    }
}
