// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What the online platforms have found, or why there is nothing.
Item {
    id: root

    required property CadorelViewModel viewModel
    required property OnlineSearchViewModel search
    required property PlaylistsViewModel playlists
    property int sideMargin: Metrics.screenMargin
    readonly property alias list: songList

    signal chartsRequested

    SongList {
        id: songList

        objectName: "onlineSongList"
        anchors.fill: parent
        sideMargin: root.sideMargin
        visible: root.search.content === OnlineSearchViewModel.Results
        model: root.search.songs
        playlists: root.playlists
        onPlayPauseRequested: root.viewModel.togglePlayPause()
        onPlayRequested: row => root.search.playSongAt(row)
    }
    EmptyStateView {
        objectName: "searchInitial"
        anchors.fill: parent
        visible: root.search.content === OnlineSearchViewModel.Initial
        systemImage: AppIcons.music.online
        title: "搜索在线音乐"
        description: "输入关键词搜索歌曲"

        TextButton {
            objectName: "initialCharts"
            implicitWidth: Metrics.menuWidth
            symbol: AppIcons.music.chart
            text: "排行榜"
            onClicked: root.chartsRequested()
        }
    }
    LoadingStateView {
        objectName: "searchRunning"
        anchors.fill: parent
        visible: root.search.content === OnlineSearchViewModel.Searching
        text: "搜索中..."
    }
    EmptyStateView {
        objectName: "searchFailed"
        anchors.fill: parent
        visible: root.search.content === OnlineSearchViewModel.Failed
        systemImage: AppIcons.status.failure
        title: "搜索失败"
        description: root.search.error

        TextButton {
            objectName: "searchRetry"
            implicitWidth: Metrics.menuWidth
            role: TextButton.Prominent
            symbol: AppIcons.action.refresh
            text: "重试"
            onClicked: root.search.retry()
        }
        TextButton {
            objectName: "searchClear"
            implicitWidth: Metrics.menuWidth
            text: "清空"
            onClicked: root.search.clear()
        }
    }
    EmptyStateView {
        objectName: "searchEmpty"
        anchors.fill: parent
        visible: root.search.content === OnlineSearchViewModel.Empty
        systemImage: AppIcons.action.search
        title: "没有结果"
        description: "没有找到相关歌曲"

        TextButton {
            objectName: "searchNextPlatform"
            implicitWidth: Metrics.menuWidth
            role: TextButton.Prominent
            text: "换个平台再试一次"
            onClicked: root.search.tryNextPlatform()
        }
    }
}
