// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic

/// A list of songs with keyboard, mouse and touch. It plays nothing itself.
ListView {
    id: root

    property int sideMargin: Metrics.screenMargin
    /// The keyboard was used last: only then the row it stands on is outlined.
    property bool keyboardInUse: false

    signal playRequested(int row)
    signal menuRequested(SongRow song, point position)
    signal deleteRequested(SongRow song)
    signal playPauseRequested()

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: true
    currentIndex: -1
    highlightMoveDuration: 0
    keyNavigationEnabled: true
    bottomMargin: Metrics.rowSpacing
    Accessible.role: Accessible.List
    Accessible.name: "歌曲"

    function goTo(row: int): void {
        if (count > 0)
            currentIndex = Math.max(0, Math.min(count - 1, row));
    }

    Keys.onPressed: event => {
        keyboardInUse = true;
        const page = Math.max(1, Math.floor(height / Metrics.rowHeight) - 1);
        switch (event.key) {
        case Qt.Key_Return:
        case Qt.Key_Enter:
            if (currentIndex >= 0)
                playRequested(currentIndex);
            break;
        case Qt.Key_Delete:
            if (currentItem)
                deleteRequested(currentItem as SongRow);
            break;
        case Qt.Key_Menu:
            if (currentItem)
                menuRequested(currentItem as SongRow, currentItem.mapToItem(root, sideMargin, Metrics.rowHeight / 2));
            break;
        case Qt.Key_Home:
            goTo(0);
            break;
        case Qt.Key_End:
            goTo(count - 1);
            break;
        case Qt.Key_PageUp:
            goTo(currentIndex - page);
            break;
        case Qt.Key_PageDown:
            goTo(currentIndex + page);
            break;
        default:
            return;
        }
        event.accepted = true;
    }
    Keys.onUpPressed: {
        keyboardInUse = true;
        goTo(currentIndex - 1);
    }
    Keys.onDownPressed: {
        keyboardInUse = true;
        goTo(currentIndex + 1);
    }

    ScrollBar.vertical: SlimScrollBar {}

    delegate: SongRow {
        id: row

        width: ListView.view.width
        sideMargin: root.sideMargin
        showsFocus: ListView.isCurrentItem && root.activeFocus && root.keyboardInUse
        // The view gives its current row the keyboard, and a button takes Space for a click: it would start the song anew.
        Keys.onSpacePressed: root.playPauseRequested()
        onPressed: {
            root.keyboardInUse = false;
            root.forceActiveFocus(Qt.MouseFocusReason);
        }
        onClicked: {
            root.currentIndex = index;
            root.playRequested(index);
        }
        onMenuRequested: position => {
            root.currentIndex = index;
            root.menuRequested(row, row.mapToItem(root, position));
        }
    }
}
