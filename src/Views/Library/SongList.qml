// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// A list of songs with keyboard, mouse and touch, and the menu of its rows. It plays nothing itself.
RowList {
    id: root

    property int sideMargin: Metrics.screenMargin
    /// Where favourites and playlists are kept; without them the menu offers neither.
    property PlaylistsViewModel playlists: null
    property string menuName: objectName + "Menu"
    /// What the menu calls taking a song out of the list; empty where songs stay.
    property string removeText
    /// Also songs whose file is not the player's can be taken out.
    property bool removesEverySong: false

    signal playRequested(int row)
    signal removeRequested(string songId, string songTitle)

    function openMenu(song: SongRow, position: point): void {
        menu.songId = song.songId;
        menu.songTitle = song.title;
        menu.isFavorite = song.isFavorite;
        menu.isRemovable = isRemovable(song);
        menu.popup(root, position);
    }
    function isRemovable(song: SongRow): bool {
        return removeText !== "" && (removesEverySong || song.isDeletable);
    }

    isBeneathMiniPlayer: true
    playsAndPauses: true
    Accessible.name: "歌曲"
    onActivated: row => root.playRequested(row)
    onDeleteKeyPressed: {
        const song = root.currentItem as SongRow;
        if (root.isRemovable(song))
            root.removeRequested(song.songId, song.title);
    }
    onMenuKeyPressed: root.openMenu(root.currentItem as SongRow, root.currentItem.mapToItem(root, root.sideMargin, Metrics.rowHeight / 2))

    delegate: SongRow {
        id: row

        width: ListView.view.width
        sideMargin: root.sideMargin
        onClicked: root.take(index)
        onMenuRequested: position => {
            root.currentIndex = index;
            root.openMenu(row, row.mapToItem(root, position));
        }
    }

    SongMenu {
        id: menu

        readonly property RowModel songs: root.model as RowModel

        objectName: root.menuName
        offersPlaylists: root.playlists !== null
        removeText: root.removeText
        onPlayRequested: {
            const row = songs.rowOf(songId);
            if (row >= 0)
                root.playRequested(row);
        }
        onFavoriteRequested: root.playlists.toggleFavorite(songs, songId)
        onAddRequested: root.playlists.addToPlaylist(songs, songId)
        onRemoveRequested: root.removeRequested(songId, songTitle)
    }
}
