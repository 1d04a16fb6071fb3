// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A button on the backdrop: a symbol, or in the pink look the drawn picture that stands for it. `text` is its name for
/// tool tip and screen reader.
ScaleButtonStyle {
    id: root

    required property string systemName
    property string kawaiiName
    /// Font size that the symbol stands at, and side of the picture.
    property real fontSize: Metrics.nowPlayingSymbol
    property real pictureSize: Metrics.symbol
    property alias glyph: icon

    ink: theme.primaryTextColor

    background: Item {
        Rectangle {
            objectName: "highlight"
            anchors.centerIn: parent
            width: Math.min(parent.width, parent.height)
            height: width
            radius: width / 2
            color: Qt.alpha(root.ink, root.showsPress ? Metrics.pressedOpacity : root.hovered ? 2 * Metrics.hoverOpacity : 0)
            visible: color.a > 0
        }
        FocusRing {
            objectName: "focusRing"
            radius: Math.min(width, height) / 2
            border.color: root.ink
            visible: root.visualFocus
        }
    }
    contentItem: Item {}

    ThemedIcon {
        id: icon

        objectName: "glyph"
        anchors.centerIn: parent
        systemName: root.systemName
        kawaiiName: root.kawaiiName
        size: isPicture ? root.pictureSize : Metrics.symbolOf(root.fontSize)
        color: root.ink
        theme: root.theme
    }
    StyledToolTip {
        text: root.text
        visible: root.text !== "" && root.hovered && !root.down
    }
}
