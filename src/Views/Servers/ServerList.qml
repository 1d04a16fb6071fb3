// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick

/// The servers of every kind, with keyboard, mouse and touch.
RowList {
    id: root

    property int sideMargin: Metrics.screenMargin

    signal openRequested(ServerRow server)
    signal menuRequested(ServerRow server, point position)
    signal deleteRequested(ServerRow server)

    rowStep: Metrics.tallRowHeight + spacing
    isBeneathMiniPlayer: true
    Accessible.name: "服务器"
    onActivated: root.openRequested(root.currentItem as ServerRow)
    onDeleteKeyPressed: root.deleteRequested(root.currentItem as ServerRow)
    onMenuKeyPressed: root.menuRequested(root.currentItem as ServerRow, root.currentItem.mapToItem(root, root.sideMargin, Metrics.rowHeight / 2))

    delegate: ServerRow {
        id: row

        width: ListView.view.width
        sideMargin: root.sideMargin
        onClicked: root.take(index)
        onMenuRequested: position => {
            root.currentIndex = index;
            root.menuRequested(row, row.mapToItem(root, position));
        }
    }
}
