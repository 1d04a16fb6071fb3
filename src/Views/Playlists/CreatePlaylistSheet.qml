// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Cadorel

/// The form for a new playlist.
BottomSheet {
    id: root

    required property PlaylistEditorViewModel editor

    title: "新建歌单"
    cancelName: "createCancel"
    acceptName: "createAccept"
    acceptText: "创建"
    canAccept: editor.canCreate
    hugsContent: true
    // A press beside the sheet would throw away what was typed.
    closePolicy: Popup.CloseOnEscape
    visible: editor.showCreateSheet
    onOpened: nameField.takeKeyboard()
    onClosed: editor.cancelCreate()
    onAccepted: editor.createPlaylist()

    LabeledField {
        id: nameField

        objectName: "playlistNameField"
        Layout.fillWidth: true
        Layout.leftMargin: Metrics.screenMargin
        Layout.rightMargin: Metrics.screenMargin
        Layout.topMargin: Metrics.rowSpacing
        input: root.editor.newPlaylistName
        label: "歌单名称"
        placeholder: "输入歌单名称"
        onAccepted: root.editor.createPlaylist()
    }
    Column {
        Layout.fillWidth: true
        Layout.leftMargin: Metrics.screenMargin
        Layout.rightMargin: Metrics.screenMargin
        Layout.topMargin: Metrics.cardPadding
        visible: !root.editor.isTypeFixed
        spacing: Metrics.grid

        QuietText {
            text: "歌单类型"
            Accessible.ignored: true
        }
        ThemedSegmentedPicker {
            objectName: "playlistTypePicker"
            width: parent.width
            name: "类型"
            options: ["本地", "在线"]
            selection: options[root.editor.selectedType]
            onSelected: option => root.editor.selectedType = options.indexOf(option)
        }
        QuietText {
            width: parent.width
            text: root.editor.selectedType === PlaylistEditorViewModel.Local ? "存放资料库里的歌曲" : "存放在线搜索和排行榜里的歌曲"
            wrapMode: Text.Wrap
        }
    }
    Item {
        Layout.preferredHeight: Metrics.sectionGap
    }
}
