// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// A screen of settings: its header, and beneath it groups of rows that scroll. What the keyboard comes to scrolls
/// into sight.
FocusScope {
    id: root

    property string title
    property bool hasBack: true
    property string backText: "返回设置"
    property int sideMargin: Metrics.screenMargin
    default property alias sections: column.data

    signal backRequested

    /// Where the keyboard is, anywhere in the window.
    readonly property Item keyboardItem: Window.activeFocusItem

    onKeyboardItemChanged: {
        if (holds(keyboardItem))
            reveal(keyboardItem);
    }

    /// Scrolls as little as brings the item into sight.
    function reveal(item: Item): void {
        const top = item.mapToItem(flickable.contentItem, 0, 0).y - Metrics.sectionGap;
        const bottom = top + item.height + 2 * Metrics.sectionGap;
        const wanted = Math.min(Math.max(flickable.contentY, bottom - flickable.height), top);
        flickable.contentY = Math.max(0, Math.min(wanted, flickable.contentHeight + flickable.bottomMargin - flickable.height));
    }
    function holds(item: Item): bool {
        for (let around = item; around; around = around.parent) {
            if (around === column)
                return true;
        }
        return false;
    }

    PageHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: root.sideMargin
        anchors.rightMargin: root.sideMargin
        title: root.title
        hasBack: root.hasBack
        backText: root.backText
        onBackRequested: root.backRequested()
    }
    Flickable {
        id: flickable

        objectName: root.objectName + "Scroller"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentHeight: column.y + column.height + 2 * Metrics.sectionGap
        bottomMargin: MiniPlayerRoom.height

        ScrollBar.vertical: SlimScrollBar {}

        Column {
            id: column

            x: root.sideMargin
            y: Metrics.rowSpacing
            width: flickable.width - 2 * x
            spacing: Metrics.sectionGap
        }
    }
}
