// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What the search of the library has found, or why there is nothing.
Item {
    id: root

    required property CadorelViewModel viewModel
    required property LocalSearchViewModel search
    required property PlaylistsViewModel playlists
    property int sideMargin: Metrics.screenMargin
    readonly property alias list: songList

    signal clearRequested
    signal onlineRequested

    ThemedSectionHeader {
        id: header

        objectName: "localResultsHeader"
        x: root.sideMargin
        width: parent.width - 2 * x
        height: visible ? implicitHeight + Metrics.rowSpacing : 0
        visible: songList.visible
        title: "歌曲 (" + songList.count + ")"
    }
    SongList {
        id: songList

        objectName: "localSongList"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        sideMargin: root.sideMargin
        visible: root.search.content === LocalSearchViewModel.Results
        model: root.search.songs
        playlists: root.playlists
        onPlayPauseRequested: root.viewModel.togglePlayPause()
        onPlayRequested: row => root.search.playSongAt(row)
    }
    EmptyStateView {
        objectName: "localSearchInitial"
        anchors.fill: parent
        visible: root.search.content === LocalSearchViewModel.Initial
        systemImage: AppIcons.action.search
        title: "搜索本地音乐"
        description: "输入关键词搜索您的音乐库"
    }
    EmptyStateView {
        objectName: "localSearchEmpty"
        anchors.fill: parent
        visible: root.search.content === LocalSearchViewModel.Empty
        systemImage: AppIcons.action.search
        title: "没有结果"
        description: "没有找到 \"" + root.search.searchText + "\""

        TextButton {
            objectName: "localSearchOnline"
            implicitWidth: Metrics.menuWidth
            role: TextButton.Prominent
            text: "去在线搜索"
            onClicked: root.onlineRequested()
        }
        TextButton {
            objectName: "localSearchClear"
            implicitWidth: Metrics.menuWidth
            text: "清空搜索"
            onClicked: root.clearRequested()
        }
    }
}
