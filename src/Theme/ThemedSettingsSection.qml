// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// A group of settings rows on one card, with lines between them and a heading above.
Item {
    id: root

    property string title
    /// The rows.
    default property alias content: rows.data
    property AppTheme theme: ThemeEnvironment.theme
    /// Where the lines begin: where the titles of rows with a symbol do.
    property real seamInset: 2 * Metrics.cardPadding + Metrics.settingsSquare

    /// Where a row ends and another begins.
    readonly property var seams: {
        const ends = [];
        for (let i = 0; i < rows.visibleChildren.length; ++i) {
            const row = rows.visibleChildren[i];
            if (row.height > 0)
                ends.push(row.y + row.height);
        }
        ends.pop();
        return ends;
    }

    implicitWidth: Math.max(header.implicitWidth, rows.implicitWidth) + 2 * Metrics.grid
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

        objectName: "card"
        y: header.visible ? header.height + Metrics.rowSpacing : 0
        width: parent.width
        height: rows.implicitHeight + 2 * Metrics.grid
        theme: root.theme
    }
    Repeater {
        model: root.seams

        Rectangle {
            required property real modelData

            objectName: "seam"
            x: Metrics.grid + root.seamInset
            y: rows.y + modelData
            width: root.width - x - Metrics.cardPadding
            height: Metrics.hairline
            color: Qt.alpha(root.theme.primaryTextColor, Metrics.hoverOpacity)
        }
    }
    Column {
        id: rows

        anchors.left: card.left
        anchors.leftMargin: Metrics.grid
        anchors.right: card.right
        anchors.rightMargin: Metrics.grid
        anchors.top: card.top
        anchors.topMargin: Metrics.grid
        spacing: Metrics.hairline
    }
}
