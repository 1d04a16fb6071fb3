// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One Subsonic server: songs that it picked, and a search in it.
SlidingPage {
    id: root

    required property CadorelViewModel viewModel
    required property NavidromeServerPageViewModel page
    required property PlaylistsViewModel playlists
    property int sideMargin: Metrics.screenMargin
    readonly property int content: page.content

    signal editRequested
    signal deleteRequested

    isShown: page.isOpen
    onCloseRequested: page.close()

    Connections {
        target: root.page

        function onListed(): void {
            songList.currentIndex = -1;
            songList.positionViewAtBeginning();
        }
    }

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
            subtitle: root.page.summary
            backText: "返回服务器列表"
            onBackRequested: root.closeRequested()

            Item {
                implicitWidth: reloadButton.implicitWidth
                implicitHeight: reloadButton.implicitHeight

                HeaderButton {
                    id: reloadButton

                    objectName: "reloadButton"
                    visible: !root.page.isBusy
                    symbol: AppIcons.action.refresh
                    text: "刷新歌曲列表"
                    onClicked: root.page.refresh()
                }
                Spinner {
                    objectName: "navidromeBusy"
                    anchors.centerIn: parent
                    visible: root.page.isBusy
                }
            }
            HeaderButton {
                id: moreButton

                objectName: "navidromePageMore"
                symbol: AppIcons.navigation.more
                text: "更多操作"
                isOpen: pageMenu.visible
                onClicked: pageMenu.open()

                NavidromeMenu {
                    id: pageMenu

                    objectName: "navidromePageMenu"
                    x: moreButton.width - width
                    y: moreButton.height
                    canDisconnect: root.page.isConnected
                    onReloadRequested: root.page.refresh()
                    onEditRequested: root.editRequested()
                    onDisconnectRequested: root.page.disconnectFromServer()
                    onDeleteRequested: root.deleteRequested()
                }
            }
        }
        Row {
            width: parent.width
            spacing: Metrics.rowSpacing

            ThemedSearchBar {
                id: searchField

                objectName: "navidromeSearch"
                width: parent.width - searchButton.width - parent.spacing
                text: root.page.searchText
                placeholder: "搜索歌曲 / 艺术家 / 专辑"
                onEdited: text => root.page.searchText = text
                onSubmitted: root.page.search()
                onLeftDownwards: songList.takeKeyboard()
            }
            TextButton {
                id: searchButton

                objectName: "navidromeSearchButton"
                height: searchField.height
                text: "搜索"
                onClicked: root.page.search()
            }
        }
        MessageBanner {
            objectName: "navidromeBanner"
            width: parent.width
            keyboardHeir: songList
            visible: text !== "" && root.content === NavidromeServerPageViewModel.Songs
            text: root.page.failure
            onDismissed: root.page.dismissFailure()
        }
    }

    SongList {
        id: songList

        objectName: "navidromeSongList"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: top.bottom
        anchors.bottom: parent.bottom
        sideMargin: root.sideMargin
        visible: root.content === NavidromeServerPageViewModel.Songs
        model: root.page.songs
        playlists: root.playlists
        focus: true
        onPlayPauseRequested: root.viewModel.togglePlayPause()
        onPlayRequested: row => root.page.playSongAt(row)
    }
    NavidromePageStates {
        anchors.left: songList.left
        anchors.right: songList.right
        anchors.top: songList.top
        anchors.bottom: songList.bottom
        page: root.page
        onEditRequested: root.editRequested()
        onAllSongsRequested: {
            root.page.searchText = "";
            root.page.search();
        }
    }
}
