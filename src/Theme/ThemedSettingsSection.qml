// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// A group of settings rows on one card, beneath its heading.
Item {
    id: root

    property string title
    /// The rows.
    default property alias content: rows.data
    property AppTheme theme: ThemeEnvironment.theme

    implicitWidth: Math.max(header.implicitWidth, rows.implicitWidth)
    implicitHeight: card.y + card.height
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    ThemedSectionHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Metrics.cardPadding
        anchors.rightMargin: Metrics.cardPadding
        title: root.title
        theme: root.theme
        visible: root.title !== ""
    }
    ThemedCard {
        id: card

        y: header.visible ? header.height + Metrics.rowSpacing : 0
        width: parent.width
        height: rows.implicitHeight + 2 * Metrics.grid
        theme: root.theme
    }
    Column {
        id: rows

        anchors.left: card.left
        anchors.right: card.right
        anchors.top: card.top
        anchors.topMargin: Metrics.grid
    }
}
