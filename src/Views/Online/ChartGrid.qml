// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic

/// Charts side by side, with keyboard, mouse and touch.
GridView {
    id: root

    readonly property int spacing: Metrics.cardPadding
    readonly property int columns: Math.max(2, Math.floor(width / (Metrics.cardWidth + spacing)))
    /// The keyboard was used last: only then the card it stands on is outlined.
    property bool keyboardInUse: false

    signal openRequested(int row)

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    cellWidth: Math.floor(width / columns)
    cellHeight: Metrics.cardHeight + spacing
    currentIndex: -1
    highlightMoveDuration: 0
    topMargin: Metrics.rowSpacing
    bottomMargin: Metrics.rowSpacing + MiniPlayerRoom.height
    // See ListTabStop.
    activeFocusOnTab: activeFocus
    Accessible.role: Accessible.List
    Accessible.name: "排行榜"

    Keys.onPressed: event => {
        keyboardInUse = true;
        const isArrow = event.key === Qt.Key_Up || event.key === Qt.Key_Down || event.key === Qt.Key_Left || event.key === Qt.Key_Right;
        if (currentIndex < 0 && isArrow && Press.isPlain(event)) {
            currentIndex = 0;
            event.accepted = true;
        }
    }
    // Once, however long the key is held down.
    function activateByKey(event: var): void {
        if (currentIndex >= 0 && !event.isAutoRepeat)
            openRequested(currentIndex);
    }
    Keys.onReturnPressed: event => activateByKey(event)
    Keys.onEnterPressed: event => activateByKey(event)

    ScrollBar.vertical: SlimScrollBar {}

    ListTabStop {
        list: root
        onEntered: {
            root.keyboardInUse = true;
            root.currentIndex = Math.max(0, root.currentIndex);
            root.positionViewAtIndex(root.currentIndex, GridView.Contain);
            root.currentItem.forceActiveFocus(Qt.TabFocusReason);
        }
    }

    delegate: Item {
        id: cell

        required property int index
        required property string name
        required property string updateFrequency
        readonly property alias card: card

        width: root.cellWidth
        height: root.cellHeight

        ChartCard {
            id: card

            anchors.fill: parent
            anchors.margins: root.spacing / 2
            name: cell.name
            updateFrequency: cell.updateFrequency
            showsFocus: cell.GridView.isCurrentItem && root.activeFocus && root.keyboardInUse
            onPressed: {
                root.keyboardInUse = false;
                root.forceActiveFocus(Qt.MouseFocusReason);
            }
            onClicked: {
                root.currentIndex = cell.index;
                root.openRequested(cell.index);
            }
        }
    }
}
