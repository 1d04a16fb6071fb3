// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What can be done with a server.
StyledMenu {
    id: root

    signal scanRequested
    signal editRequested
    signal deleteRequested

    StyledMenuItem {
        objectName: "scanServerItem"
        symbol: AppIcons.action.refresh
        text: "扫描"
        onTriggered: root.scanRequested()
    }
    StyledMenuItem {
        objectName: "editServerItem"
        symbol: AppIcons.action.edit
        text: "编辑"
        onTriggered: root.editRequested()
    }
    StyledMenuItem {
        objectName: "deleteServerItem"
        symbol: AppIcons.action.trash
        text: "删除"
        destructive: true
        onTriggered: root.deleteRequested()
    }
}
