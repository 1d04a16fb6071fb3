// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The kinds of servers that can be added.
StyledMenu {
    id: root

    signal webDAVRequested
    signal navidromeRequested

    StyledMenuItem {
        objectName: "addWebDAVItem"
        symbol: AppIcons.file.server
        text: "添加 WebDAV"
        onTriggered: root.webDAVRequested()
    }
    StyledMenuItem {
        objectName: "addNavidromeItem"
        symbol: AppIcons.music.noteList
        text: "添加 Navidrome"
        onTriggered: root.navidromeRequested()
    }
}
