// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick

/// Playlists with keyboard, mouse and touch.
RowList {
    id: root

    property int sideMargin: Metrics.screenMargin
    property bool hasMenus: true

    signal openRequested(PlaylistRow playlist)
    signal menuRequested(PlaylistRow playlist, point position)
    signal deleteRequested(PlaylistRow playlist)

    Accessible.name: "歌单"
    onActivated: root.openRequested(root.currentItem as PlaylistRow)
    onDeleteKeyPressed: root.deleteRequested(root.currentItem as PlaylistRow)
    onMenuKeyPressed: {
        if (root.hasMenus)
            root.menuRequested(root.currentItem as PlaylistRow, root.currentItem.mapToItem(root, root.sideMargin, Metrics.rowHeight / 2));
    }

    delegate: PlaylistRow {
        id: row

        width: ListView.view.width
        sideMargin: root.sideMargin
        hasMenu: root.hasMenus
        onClicked: root.take(index)
        onMenuRequested: position => {
            root.currentIndex = index;
            root.menuRequested(row, row.mapToItem(root, position));
        }
    }
}
