// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Cadorel

/// Another name for a playlist.
BottomSheet {
    id: root

    required property PlaylistEditorViewModel editor

    title: "重命名"
    cancelName: "renameCancel"
    acceptName: "renameAccept"
    acceptText: "保存"
    canAccept: editor.canRename
    hugsContent: true
    // A press beside the sheet would throw away what was typed.
    closePolicy: Popup.CloseOnEscape
    visible: editor.showRenameSheet
    onOpened: nameField.takeKeyboard()
    onClosed: editor.cancelRename()
    onAccepted: editor.rename()

    LabeledField {
        id: nameField

        objectName: "renameField"
        Layout.fillWidth: true
        Layout.leftMargin: Metrics.screenMargin
        Layout.rightMargin: Metrics.screenMargin
        Layout.topMargin: Metrics.rowSpacing
        input: root.editor.renameText
        label: "歌单名称"
        placeholder: "输入新名称"
        onAccepted: root.editor.rename()
    }
    Item {
        Layout.preferredHeight: Metrics.sectionGap
    }
}
