// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What can be done with a Subsonic server.
StyledMenu {
    id: root

    property bool canDisconnect: false

    signal reloadRequested
    signal editRequested
    signal disconnectRequested
    signal deleteRequested

    StyledMenuItem {
        objectName: "reloadSongsItem"
        symbol: AppIcons.action.refresh
        text: "刷新歌曲列表"
        onTriggered: root.reloadRequested()
    }
    StyledMenuItem {
        objectName: "editNavidromeItem"
        symbol: AppIcons.action.edit
        text: "编辑"
        onTriggered: root.editRequested()
    }
    StyledMenuItem {
        objectName: "disconnectItem"
        symbol: AppIcons.navigation.close
        text: "断开连接"
        enabled: root.canDisconnect
        onTriggered: root.disconnectRequested()
    }
    StyledMenuItem {
        objectName: "deleteNavidromeItem"
        symbol: AppIcons.action.trash
        text: "删除"
        destructive: true
        onTriggered: root.deleteRequested()
    }
}
