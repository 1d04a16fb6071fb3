// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The online platforms: the search, and the ways to their charts and to the address of the server behind them.
FocusScope {
    id: root

    required property CadorelViewModel viewModel
    required property OnlineViewModel online
    required property PlaylistsViewModel playlists

    readonly property OnlineSearchViewModel search: online.search
    readonly property int sideMargin: Metrics.screenMargin + Math.max(0, Math.round((width - Metrics.contentWidth) / 2))

    FocusScope {
        id: home

        anchors.fill: parent
        visible: !chartsPage.covers
        enabled: !chartsPage.isShown
        focus: true

        Column {
            id: top

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: root.sideMargin
            anchors.rightMargin: root.sideMargin
            bottomPadding: Metrics.grid
            spacing: Metrics.grid

            PageHeader {
                width: parent.width
                title: "在线音乐"
                hasBack: false

                IconButton {
                    objectName: "chartsButton"
                    symbol: AppIcons.music.chart
                    color: SystemColors.accent
                    text: "排行榜"
                    onClicked: root.online.charts.open()
                }
                IconButton {
                    objectName: "apiSettingsButton"
                    symbol: AppIcons.settings.service
                    color: SystemColors.accent
                    text: "API 服务器"
                    onClicked: root.online.settings.open()
                }
            }
            SearchField {
                objectName: "onlineSearch"
                width: parent.width
                focus: true
                text: root.search.searchText
                placeholder: "搜索歌曲、艺术家"
                onEdited: text => root.search.searchText = text
                onSubmitted: root.search.performSearch()
                onLeftDownwards: {
                    if (songList.visible) {
                        songList.forceActiveFocus(Qt.TabFocusReason);
                        songList.keyboardInUse = true;
                        songList.goTo(Math.max(0, songList.currentIndex));
                    }
                }
            }
            SegmentedControl {
                objectName: "searchPlatform"
                width: parent.width
                name: "平台"
                options: root.search.platforms
                current: root.search.platformIndex
                onChosen: index => root.search.selectPlatform(index)
            }
        }

        SongList {
            id: songList

            objectName: "onlineSongList"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: top.bottom
            anchors.bottom: parent.bottom
            sideMargin: root.sideMargin
            visible: root.search.content === OnlineSearchViewModel.Results
            model: root.search.songs
            playlists: root.playlists
            onPlayPauseRequested: root.viewModel.togglePlayPause()
            onPlayRequested: row => root.search.playSongAt(row)
        }
        EmptyStateView {
            objectName: "searchInitial"
            anchors.fill: songList
            visible: root.search.content === OnlineSearchViewModel.Initial
            systemImage: AppIcons.music.online
            title: "搜索在线音乐"
            description: "输入关键词搜索歌曲"

            TextButton {
                objectName: "initialCharts"
                implicitWidth: Metrics.menuWidth
                symbol: AppIcons.music.chart
                text: "排行榜"
                onClicked: root.online.charts.open()
            }
        }
        LoadingStateView {
            objectName: "searchRunning"
            anchors.fill: songList
            visible: root.search.content === OnlineSearchViewModel.Searching
            text: "搜索中..."
        }
        EmptyStateView {
            objectName: "searchFailed"
            anchors.fill: songList
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
            anchors.fill: songList
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

    TopListsPage {
        id: chartsPage

        objectName: "chartsPage"
        width: parent.width
        height: parent.height
        sideMargin: root.sideMargin
        viewModel: root.viewModel
        charts: root.online.charts
        playlists: root.playlists
        onIsShownChanged: {
            if (!isShown)
                home.forceActiveFocus(Qt.OtherFocusReason);
        }
    }
    ApiSettingsSheet {
        objectName: "apiSettings"
        settings: root.online.settings
    }
}
