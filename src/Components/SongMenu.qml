// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What can be done with a song of a list.
StyledMenu {
    id: root

    // The song and not its row: rows move while the menu is open.
    property string songId
    property string songTitle
    property bool isFavorite: false
    property bool isRemovable: false
    /// Favourites and playlists can be changed from here.
    property bool offersPlaylists: false
    /// Text of the entry that takes the song out of the list; empty where songs stay.
    property string removeText

    signal playRequested
    signal favoriteRequested
    signal addRequested
    signal removeRequested

    StyledMenuItem {
        objectName: "playItem"
        symbol: AppIcons.playback.play
        text: "播放"
        onTriggered: root.playRequested()
    }
    StyledMenuItem {
        objectName: "favoriteItem"
        visible: root.offersPlaylists
        height: root.offersPlaylists ? implicitHeight : 0
        symbol: root.isFavorite ? AppIcons.favorite.heartSlash : AppIcons.favorite.heart
        text: root.isFavorite ? "取消喜欢" : "喜欢"
        onTriggered: root.favoriteRequested()
    }
    StyledMenuItem {
        objectName: "addToPlaylistItem"
        visible: root.offersPlaylists
        height: root.offersPlaylists ? implicitHeight : 0
        symbol: AppIcons.action.addToPlaylist
        text: "添加到歌单"
        onTriggered: root.addRequested()
    }
    StyledMenuItem {
        objectName: "deleteItem"
        visible: root.removeText !== ""
        height: root.removeText !== "" ? implicitHeight : 0
        symbol: AppIcons.action.trash
        text: root.removeText
        destructive: true
        enabled: root.isRemovable
        onTriggered: root.removeRequested()
    }
}
