// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick

/// A list of songs with keyboard, mouse and touch. It plays nothing itself.
RowList {
    id: root

    property int sideMargin: Metrics.screenMargin

    signal playRequested(int row)
    signal menuRequested(SongRow song, point position)
    signal deleteRequested(SongRow song)
    signal playPauseRequested

    Accessible.name: "歌曲"
    onActivated: row => root.playRequested(row)
    onDeleteKeyPressed: root.deleteRequested(root.currentItem as SongRow)
    onMenuKeyPressed: root.menuRequested(root.currentItem as SongRow, root.currentItem.mapToItem(root, root.sideMargin, Metrics.rowHeight / 2))

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
