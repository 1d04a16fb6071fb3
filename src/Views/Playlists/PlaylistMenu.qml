// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What can be done with a playlist.
StyledMenu {
    id: root

    required property PlaylistEditorViewModel editor
    property string playlistId
    property bool hasCover: false
    property bool isRemovable: false
    /// The cover can be taken away from here.
    property bool removesCover: false

    StyledMenuItem {
        objectName: "renameItem"
        symbol: AppIcons.action.edit
        text: "重命名"
        onTriggered: root.editor.beginRename(root.playlistId)
    }
    StyledMenuItem {
        objectName: "coverItem"
        symbol: AppIcons.appearance.picture
        text: root.hasCover ? "更换封面" : "添加封面"
        onTriggered: root.editor.chooseCover(root.playlistId)
    }
    StyledMenuItem {
        objectName: "removeCoverItem"
        visible: root.removesCover && root.hasCover
        height: root.removesCover && root.hasCover ? implicitHeight : 0
        symbol: AppIcons.action.trash
        text: "移除封面"
        onTriggered: root.editor.removeCover(root.playlistId)
    }
    StyledMenuItem {
        objectName: "deletePlaylistItem"
        visible: root.isRemovable
        height: root.isRemovable ? implicitHeight : 0
        symbol: AppIcons.action.trash
        text: "删除歌单"
        destructive: true
        onTriggered: root.editor.askToDelete(root.playlistId)
    }
}
