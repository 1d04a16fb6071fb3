// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One chart and its songs.
SlidingPage {
    id: root

    required property CadorelViewModel viewModel
    required property TopListPageViewModel page
    required property PlaylistsViewModel playlists
    property int sideMargin: Metrics.screenMargin

    isShown: page.isOpen
    onCloseRequested: page.close()

    Column {
        id: top

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: root.sideMargin
        anchors.rightMargin: root.sideMargin
        bottomPadding: Metrics.rowSpacing

        PageHeader {
            width: parent.width
            title: root.page.name
            subtitle: root.page.updateFrequency
            backText: "返回排行榜"
            onBackRequested: root.closeRequested()
        }
        TextButton {
            objectName: "playAllButton"
            symbol: AppIcons.playback.play
            text: "播放全部 (" + songList.count + ")"
            enabled: songList.count > 0
            onClicked: root.page.playAll()
        }
    }
    SongList {
        id: songList

        objectName: "chartSongList"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: top.bottom
        anchors.bottom: parent.bottom
        sideMargin: root.sideMargin
        visible: root.page.content === TopListPageViewModel.Songs
        model: root.page.songs
        playlists: root.playlists
        focus: true
        onPlayPauseRequested: root.viewModel.togglePlayPause()
        onPlayRequested: row => root.page.playSongAt(row)
    }
    LoadingStateView {
        objectName: "chartLoading"
        anchors.fill: songList
        visible: root.page.content === TopListPageViewModel.Loading
        text: "加载歌曲列表..."
    }
    EmptyStateView {
        objectName: "chartEmpty"
        anchors.fill: songList
        visible: root.page.content === TopListPageViewModel.Empty
        systemImage: AppIcons.music.note
        title: "暂无歌曲"
        description: "请稍后再试"

        TextButton {
            objectName: "chartRetry"
            implicitWidth: Metrics.menuWidth
            symbol: AppIcons.action.refresh
            text: "重试"
            onClicked: root.page.retry()
        }
    }
}
