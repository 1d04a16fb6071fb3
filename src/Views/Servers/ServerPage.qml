// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One server: its songs, and how its scan goes.
SlidingPage {
    id: root

    required property CadorelViewModel viewModel
    required property WebDAVServerPageViewModel page
    required property PlaylistsViewModel playlists
    property int sideMargin: Metrics.screenMargin

    signal editRequested
    signal deleteRequested

    isShown: page.isOpen
    onCloseRequested: page.close()

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
            title: root.page.name
            subtitle: root.page.summary
            backText: "返回服务器列表"
            onBackRequested: root.closeRequested()

            HeaderButton {
                objectName: "scanButton"
                symbol: AppIcons.action.refresh
                text: "扫描"
                enabled: !root.page.isScanning
                onClicked: root.page.scan()
            }
            HeaderButton {
                id: moreButton

                objectName: "serverPageMore"
                symbol: AppIcons.navigation.more
                text: "更多操作"
                isOpen: pageMenu.visible
                onClicked: pageMenu.open()

                ServerMenu {
                    id: pageMenu

                    objectName: "serverPageMenu"
                    x: moreButton.width - width
                    y: moreButton.height
                    onScanRequested: root.page.scan()
                    onEditRequested: root.editRequested()
                    onDeleteRequested: root.deleteRequested()
                }
            }
        }
        ImportProgressBar {
            objectName: "scanProgress"
            width: parent.width
            visible: root.page.isScanning
            isImporting: true
            progress: root.page.scanProgress
            text: root.page.scanText
        }
        HintBanner {
            objectName: "staleBanner"
            width: parent.width
            keyboardHeir: songList
            visible: root.page.isStale && !root.page.isScanning
            text: "服务器设置已更改，重新扫描后生效"
            actionText: "重新扫描"
            onActionRequested: root.page.scan()
        }
        MessageBanner {
            objectName: "scanBanner"
            width: parent.width
            keyboardHeir: songList
            visible: text !== "" && root.page.content === WebDAVServerPageViewModel.Songs
            text: root.page.failure
            onDismissed: root.page.dismissFailure()
        }
    }

    SongList {
        id: songList

        objectName: "serverSongList"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: top.bottom
        anchors.bottom: parent.bottom
        sideMargin: root.sideMargin
        model: root.page.songs
        playlists: root.playlists
        focus: true
        onPlayPauseRequested: root.viewModel.togglePlayPause()
        onPlayRequested: row => root.page.playSongAt(row)
    }

    EmptyStateView {
        objectName: "serverUnscanned"
        anchors.fill: songList
        visible: root.page.content === WebDAVServerPageViewModel.Unscanned
        systemImage: AppIcons.music.noteList
        title: "还没有扫描"
        description: "扫描之后，服务器上的音乐会出现在这里和资料库里"

        TextButton {
            objectName: "firstScanButton"
            implicitWidth: Metrics.menuWidth
            role: TextButton.Prominent
            symbol: AppIcons.action.refresh
            text: "扫描"
            onClicked: root.page.scan()
        }
    }
    EmptyStateView {
        objectName: "serverScanning"
        anchors.fill: songList
        visible: root.page.content === WebDAVServerPageViewModel.Scanning
        systemImage: AppIcons.file.cloud
        title: "正在查找音乐"
        description: "文件夹很多时需要几分钟，可以先离开这一页"
    }
    EmptyStateView {
        objectName: "serverLoading"
        anchors.fill: songList
        visible: root.page.content === WebDAVServerPageViewModel.Loading
        systemImage: AppIcons.file.cloud
        title: "正在加载歌曲"
        description: "上次扫描到的歌曲马上就来"
    }
    EmptyStateView {
        objectName: "serverWithoutSongs"
        anchors.fill: songList
        visible: root.page.content === WebDAVServerPageViewModel.Empty
        systemImage: AppIcons.music.note
        title: "没有找到音乐"
        description: "“" + root.page.basePath + "”里没有能播放的文件"

        TextButton {
            objectName: "emptyEditServer"
            implicitWidth: Metrics.menuWidth
            symbol: AppIcons.action.edit
            text: "更改根路径"
            onClicked: root.editRequested()
        }
    }
    EmptyStateView {
        objectName: "serverFailed"
        anchors.fill: songList
        visible: root.page.content === WebDAVServerPageViewModel.Failed
        systemImage: AppIcons.status.failure
        title: "扫描失败"
        description: root.page.failure

        TextButton {
            objectName: "retryButton"
            implicitWidth: Metrics.menuWidth
            role: TextButton.Prominent
            symbol: AppIcons.action.refresh
            text: "重试"
            onClicked: root.page.scan()
        }
        TextButton {
            objectName: "failedEditServer"
            implicitWidth: Metrics.menuWidth
            symbol: AppIcons.action.edit
            text: "编辑服务器"
            onClicked: root.editRequested()
        }
    }
}
