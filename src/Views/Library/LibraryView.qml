// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The library: every song in one list, or how to get the first ones in.
FocusScope {
    id: root

    required property CadorelViewModel viewModel
    required property LibraryViewModel library
    required property PlaylistsViewModel playlists

    readonly property LocalMusicImportService importService: viewModel.importService
    readonly property bool isBusy: importService.isImporting || importService.isScanning
    readonly property int sideMargin: Metrics.screenMargin + Math.max(0, Math.round((width - Metrics.contentWidth) / 2))

    /// Asks whether a song shall go for good.
    function askToDelete(songId: string, songTitle: string): void {
        deleteDialog.songId = songId;
        deleteDialog.songTitle = songTitle;
        deleteDialog.open();
    }

    /// Where the song that plays stands. @param songId its id @param isWebDAV whether it lies on a server
    function locate(songId: string, isWebDAV: bool): void {
        locating.songId = songId;
        locating.restart();
    }

    Timer {
        id: locating

        property string songId

        objectName: "locating"
        // The list may only now be coming up.
        interval: Metrics.locateDelay
        onTriggered: songList.reveal(root.library.songs.rowOf(songId))
    }
    KawaiiFloatingDecorations {
        anchors.fill: songList
    }
    Column {
        id: top

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: root.sideMargin
        anchors.rightMargin: root.sideMargin
        bottomPadding: Metrics.grid

        LibraryHeader {
            width: parent.width
            songCount: songList.count
            onFilesRequested: root.library.chooseFiles()
            onFolderRequested: root.library.chooseFolder()
            onMusicFolderRequested: root.library.openMusicFolder()
        }
        ImportProgressBar {
            objectName: "importProgress"
            width: parent.width
            visible: root.isBusy
            isImporting: root.importService.isImporting
            isScanning: root.importService.isScanning
            progress: root.importService.importProgress
            text: root.importService.importProgressText
        }
        MessageBanner {
            objectName: "importBanner"
            width: parent.width
            keyboardHeir: songList
            text: root.library.importNotice !== "" ? root.library.importNotice : root.importService.importError
            onDismissed: root.library.dismissImportError()
        }
    }

    SongList {
        id: songList

        objectName: "songList"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: top.bottom
        anchors.bottom: parent.bottom
        sideMargin: root.sideMargin
        model: root.library.songs
        playlists: root.playlists
        menuName: "songMenu"
        removeText: "删除"
        focus: true
        onPlayPauseRequested: root.viewModel.togglePlayPause()
        onPlayRequested: row => root.library.playSongAt(row)
        onRemoveRequested: (songId, songTitle) => root.askToDelete(songId, songTitle)
    }

    ConfirmDialog {
        id: deleteDialog

        property string songId
        property string songTitle

        objectName: "deleteDialog"
        title: "删除歌曲"
        message: "确定要删除 \"" + ShortNames.of(songTitle) + "\" 吗？此操作无法撤销。"
        acceptText: "删除"
        onAccepted: root.library.deleteSong(songId)
    }

    EmptyStateView {
        objectName: "emptyState"
        anchors.fill: songList
        visible: songList.count === 0 && !root.isBusy
        title: "还没有音乐"
        systemImage: AppIcons.music.noteList
        description: "把音乐文件或文件夹拖到这里，或点下面的按钮导入"

        TextButton {
            objectName: "emptyImportFiles"
            implicitWidth: Metrics.menuWidth
            role: TextButton.Prominent
            symbol: AppIcons.file.documentBadgePlus
            text: "导入文件"
            onClicked: root.library.chooseFiles()
        }
        TextButton {
            objectName: "emptyImportFolder"
            implicitWidth: Metrics.menuWidth
            symbol: AppIcons.file.folderBadgePlus
            text: "导入文件夹"
            onClicked: root.library.chooseFolder()
        }
    }
    EmptyStateView {
        objectName: "loadingState"
        anchors.fill: songList
        visible: songList.count === 0 && root.isBusy
        title: root.importService.isImporting ? "正在导入音乐" : "正在查找音乐"
        systemImage: AppIcons.action.download
        description: "歌曲会陆续出现在这里"
    }
}
