// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Songs of online platforms, and what can be done with one of them.
SongList {
    id: root

    required property OnlineSongListModel songs

    model: songs
    onMenuRequested: (song, position) => {
        songMenu.songId = song.songId;
        songMenu.popup(root, position);
    }

    StyledMenu {
        id: songMenu

        // The song and not its row: another search moves rows while the menu is open.
        property string songId

        objectName: root.objectName + "Menu"

        StyledMenuItem {
            objectName: "playOnlineItem"
            symbol: "play.fill"
            text: "播放"
            onTriggered: root.playRequested(root.songs.rowOf(songMenu.songId))
        }
    }
}
