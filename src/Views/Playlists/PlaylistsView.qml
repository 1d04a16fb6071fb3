// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The listener's playlists, and the page of one of them.
FocusScope {
    id: root

    required property CadorelViewModel viewModel
    required property PlaylistsViewModel playlists

    readonly property PlaylistEditorViewModel editor: playlists.editor
    readonly property int sideMargin: Metrics.screenMargin + Math.max(0, Math.round((width - Metrics.contentWidth) / 2))

    FocusScope {
        anchors.fill: parent
        visible: !playlistPage.covers
        enabled: !playlistPage.isShown
        focus: true

        KawaiiFloatingDecorations {
            anchors.fill: playlistList
        }
        Column {
            id: top

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: root.sideMargin
            anchors.rightMargin: root.sideMargin
            bottomPadding: Metrics.grid

            PageHeader {
                width: parent.width
                title: "歌单"
                hasBack: false

                HeaderButton {
                    objectName: "createPlaylistButton"
                    symbol: AppIcons.action.add
                    text: "新建歌单"
                    onClicked: root.editor.beginCreate()
                }
            }
            MessageBanner {
                objectName: "coverBanner"
                width: parent.width
                keyboardHeir: playlistList
                text: root.editor.coverNotice
                onDismissed: root.editor.dismissCoverNotice()
            }
        }
        PlaylistList {
            id: playlistList

            objectName: "playlistList"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: top.bottom
            anchors.bottom: parent.bottom
            sideMargin: root.sideMargin
            isBeneathMiniPlayer: true
            model: root.playlists.playlists
            focus: true
            onOpenRequested: playlist => root.playlists.openPlaylist(playlist.playlistId)
            onDeleteRequested: playlist => root.editor.askToDelete(playlist.playlistId)
            onMenuRequested: (playlist, position) => {
                playlistMenu.playlistId = playlist.playlistId;
                playlistMenu.hasCover = playlist.hasCover;
                playlistMenu.isRemovable = !playlist.isProtected;
                playlistMenu.popup(playlistList, position);
            }
        }
        EmptyStateView {
            objectName: "playlistsEmpty"
            anchors.fill: playlistList
            visible: playlistList.count === 0
            systemImage: AppIcons.music.playlist
            title: "没有歌单"
            description: "点击右上角创建新歌单"
        }
    }

    PlaylistPage {
        id: playlistPage

        objectName: "playlistPage"
        width: parent.width
        height: parent.height
        sideMargin: root.sideMargin
        viewModel: root.viewModel
        playlists: root.playlists
        onIsShownChanged: {
            if (!isShown)
                playlistList.forceActiveFocus(Qt.OtherFocusReason);
        }
    }

    PlaylistMenu {
        id: playlistMenu

        objectName: "playlistMenu"
        editor: root.editor
    }
    RenameSheet {
        objectName: "renameSheet"
        editor: root.editor
    }
    ConfirmDialog {
        objectName: "deletePlaylistDialog"
        visible: root.editor.asksToDelete
        title: "删除歌单"
        message: "确定删除“" + ShortNames.of(root.editor.pendingDeleteName) + "”吗？此操作不可撤销。"
        acceptText: "删除"
        onAccepted: root.editor.confirmDelete()
        onRejected: root.editor.cancelDelete()
    }
    FilePickerSheet {
        id: pictureSheet

        objectName: "pictureSheet"
        onChosen: urls => root.editor.takeCover(urls)
    }
    Connections {
        target: root.editor

        function onOwnPictureDialogRequested(): void {
            pictureSheet.showPictures(root.editor.pictureExtensions);
        }
    }
}
