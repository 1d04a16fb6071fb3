// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One playlist: what it is, and its songs.
SlidingPage {
    id: root

    required property CadorelViewModel viewModel
    required property PlaylistsViewModel playlists
    property int sideMargin: Metrics.screenMargin

    readonly property PlaylistPageViewModel page: playlists.page
    readonly property bool isMissing: page.content === PlaylistPageViewModel.Missing

    isShown: page.isOpen
    onCloseRequested: page.close()

    Column {
        id: top

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: root.sideMargin
        anchors.rightMargin: root.sideMargin
        bottomPadding: Metrics.rowSpacing
        spacing: Metrics.rowSpacing

        PageHeader {
            width: parent.width
            title: root.page.name
            backText: "返回歌单列表"
            onBackRequested: root.closeRequested()

            HeaderButton {
                id: moreButton

                objectName: "playlistPageMore"
                visible: !root.isMissing
                symbol: AppIcons.navigation.moreCircle
                text: "更多操作"
                isOpen: pageMenu.visible
                onClicked: pageMenu.open()

                PlaylistMenu {
                    id: pageMenu

                    objectName: "playlistPageMenu"
                    x: moreButton.width - width
                    y: moreButton.height
                    editor: root.playlists.editor
                    playlistId: root.page.playlistId
                    hasCover: root.page.hasCover
                    removesCover: true
                }
            }
        }
        MessageBanner {
            objectName: "pageCoverBanner"
            width: parent.width
            keyboardHeir: songList
            text: root.playlists.editor.coverNotice
            onDismissed: root.playlists.editor.dismissCoverNotice()
        }
        Item {
            width: parent.width
            // Higher on a desktop of large texts.
            height: Math.max(Metrics.playlistCover, summary.height + Metrics.rowSpacing + playAll.height)
            visible: !root.isMissing

            PlaylistCover {
                id: cover

                objectName: "playlistPageCover"
                source: root.page.coverSource
                size: Metrics.playlistCover
                cornerRadius: Metrics.cardRadius
            }
            QuietText {
                id: summary

                objectName: "playlistSummary"
                anchors.left: cover.right
                anchors.leftMargin: Metrics.screenMargin
                anchors.right: parent.right
                anchors.top: parent.top
                text: root.page.isLoading ? "加载中..." : root.page.summary
                style: TextStyles.subheadline
                wrapMode: Text.Wrap
                maximumLineCount: 2
            }
            TextButton {
                id: playAll

                objectName: "playAllButton"
                anchors.left: cover.right
                anchors.leftMargin: Metrics.screenMargin
                anchors.bottom: parent.bottom
                width: Math.min(parent.width - x, Metrics.menuWidth)
                role: TextButton.Prominent
                symbol: AppIcons.playback.playOutline
                text: "播放全部"
                enabled: root.page.content === PlaylistPageViewModel.Songs
                onClicked: root.page.playAll()
            }
        }
    }

    // One list for each kind: rows that a list keeps for later use would go on showing songs of the other model.
    PlaylistSongList {
        id: songList

        objectName: "playlistSongList"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: top.bottom
        anchors.bottom: parent.bottom
        visible: !root.page.isOnline
        sideMargin: root.sideMargin
        viewModel: root.viewModel
        page: root.page
        playlists: root.playlists
        model: root.page.songs
    }
    PlaylistSongList {
        objectName: "playlistOnlineSongList"
        anchors.fill: songList
        visible: root.page.isOnline
        sideMargin: root.sideMargin
        viewModel: root.viewModel
        page: root.page
        playlists: root.playlists
        model: root.page.onlineSongs
    }

    EmptyStateView {
        objectName: "playlistEmpty"
        anchors.fill: songList
        visible: root.page.content === PlaylistPageViewModel.Empty
        systemImage: AppIcons.music.note
        title: "歌单是空的"
        description: root.page.isOnline ? "从在线搜索添加歌曲到此歌单" : "从资料库添加歌曲到此歌单"
    }
    EmptyStateView {
        objectName: "playlistMissing"
        anchors.fill: songList
        visible: root.isMissing
        systemImage: AppIcons.status.failure
        title: "歌单不存在"
        description: "该歌单可能已被删除"
    }
}
