// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// What a button shows: a symbol, if it has one, and its text.
Item {
    id: root

    property string symbol
    property string text
    property color ink
    property TextStyle style: TextStyles.headline

    implicitWidth: glyph.room + label.implicitWidth
    implicitHeight: row.implicitHeight

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Metrics.rowSpacing

        SymbolIcon {
            id: glyph

            readonly property real room: visible ? width + row.spacing : 0

            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            size: Metrics.symbolSmall
            color: root.ink
        }
        StyledText {
            id: label

            objectName: "label"
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, root.width - glyph.room)
            text: root.text
            style: root.style
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Metrics.smallLabel
            color: root.ink
        }
    }
}
