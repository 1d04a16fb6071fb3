// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The places of the window, at its lower edge. The arrow keys walk from one to the next.
FocusScope {
    id: root

    enum Tab { Library, Online, Playlists }

    property int currentTab: RootTabBar.Library
    readonly property int tabCount: 3

    /// The listener wants to be there, also where he is already. @param byKeyboard the keyboard stays in the bar
    signal tabRequested(int tab, bool byKeyboard)

    implicitHeight: Metrics.tabBarHeight
    Accessible.role: Accessible.PageTabList
    Accessible.name: "位置"

    function walkTo(tab: int): void {
        if (tab < 0 || tab >= tabCount)
            return;
        tabRequested(tab, true);
        (row.children[tab] as Item).forceActiveFocus(Qt.TabFocusReason);
    }

    Keys.onLeftPressed: walkTo(currentTab - 1)
    Keys.onRightPressed: walkTo(currentTab + 1)

    Rectangle {
        anchors.fill: parent
        color: SystemColors.secondaryBackground
    }
    Rectangle {
        width: parent.width
        height: Metrics.hairline
        color: SystemColors.separator
    }

    Row {
        id: row

        readonly property real tabWidth: Math.min(root.width / root.tabCount, Metrics.tabWidth)

        anchors.horizontalCenter: parent.horizontalCenter
        height: parent.height

        RootTabButton {
            objectName: "libraryTab"
            width: row.tabWidth
            symbol: AppIcons.music.library
            selectedSymbol: AppIcons.music.musicHouse
            text: "资料库"
            isSelected: root.currentTab === RootTabBar.Library
            onClicked: root.tabRequested(RootTabBar.Library, false)
        }
        RootTabButton {
            objectName: "onlineTab"
            width: row.tabWidth
            symbol: AppIcons.music.online
            selectedSymbol: AppIcons.music.onlineFill
            text: "在线"
            isSelected: root.currentTab === RootTabBar.Online
            onClicked: root.tabRequested(RootTabBar.Online, false)
        }
        RootTabButton {
            objectName: "playlistsTab"
            width: row.tabWidth
            symbol: AppIcons.music.playlist
            selectedSymbol: AppIcons.music.playlistFill
            text: "歌单"
            isSelected: root.currentTab === RootTabBar.Playlists
            onClicked: root.tabRequested(RootTabBar.Playlists, false)
        }
    }
}
