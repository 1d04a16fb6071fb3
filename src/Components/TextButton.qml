// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic

/// A button with a text and, if wanted, a symbol before it.
AbstractButton {
    id: root

    enum Role { Prominent, Tinted, Plain, Destructive }

    property int role: TextButton.Tinted
    property string symbol
    readonly property color fill: role === TextButton.Prominent ? SystemColors.accentFill
        : role === TextButton.Destructive ? SystemColors.redFill
        : role === TextButton.Tinted ? SystemColors.accentTint : "transparent"
    readonly property color ink: role === TextButton.Prominent || role === TextButton.Destructive
        ? SystemColors.accentInk : SystemColors.accentText

    implicitHeight: Metrics.buttonHeight
    implicitWidth: content.implicitWidth + leftPadding + rightPadding
    leftPadding: Metrics.screenMargin
    rightPadding: Metrics.screenMargin
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    opacity: enabled ? 1 : Metrics.disabledOpacity
    Accessible.name: text
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    background: Rectangle {
        radius: Metrics.controlRadius
        color: root.fill

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: root.down ? SystemColors.pressed : root.hovered ? SystemColors.hover : "transparent"
        }
        FocusRing {
            anchors.margins: -Metrics.focusRing - 1
            radius: Metrics.controlRadius + Metrics.focusRing + 1
            visible: root.visualFocus
        }
    }

    Row {
        id: content

        anchors.centerIn: parent
        spacing: Metrics.rowSpacing

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            size: Metrics.symbolSmall
            color: root.ink
        }
        StyledText {
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            style: root.role === TextButton.Plain ? TextStyles.body : TextStyles.headline
            color: root.ink
        }
    }
}
