// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Cadorel

/// Which playlist a song shall go into.
BottomSheet {
    id: root

    required property PlaylistsViewModel playlists

    readonly property PlaylistPickerViewModel picker: playlists.picker

    title: "选择歌单"
    cancelName: "playlistPickerCancel"
    visible: picker.isOpen
    onAboutToShow: list.currentIndex = -1
    onOpened: list.forceActiveFocus(Qt.PopupFocusReason)
    onClosed: picker.close()

    Hairline {
        Layout.fillWidth: true
    }
    PlaylistList {
        id: list

        objectName: "playlistPickerList"
        Layout.fillWidth: true
        Layout.fillHeight: true
        topMargin: Metrics.rowSpacing
        hasMenus: false
        model: root.picker.playlists
        Accessible.name: root.title
        onOpenRequested: playlist => root.picker.choose(playlist.playlistId)

        EmptyStateView {
            objectName: "playlistPickerEmpty"
            width: list.width
            height: list.height
            visible: list.count === 0
            systemImage: AppIcons.music.playlist
            title: "没有" + root.picker.kindText + "歌单"
            description: "请先创建一个" + root.picker.kindText + "歌单"
        }
    }
    Hairline {
        Layout.fillWidth: true
    }
    TextButton {
        objectName: "pickerCreatePlaylist"
        Layout.fillWidth: true
        Layout.margins: Metrics.screenMargin
        symbol: AppIcons.action.add
        text: "新建歌单"
        onClicked: root.playlists.createForPicker()
    }
}
