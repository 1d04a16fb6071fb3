// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The servers of the listener, the page of one of them, and the form in which they are set up.
SlidingPage {
    id: root

    required property CadorelViewModel viewModel
    required property WebDAVServersViewModel servers
    required property PlaylistsViewModel playlists

    readonly property int sideMargin: Metrics.screenMargin + Math.max(0, Math.round((width - Metrics.contentWidth) / 2))

    /// Asks whether a server shall go with its songs.
    function askToDelete(serverId: string, serverName: string): void {
        deleteDialog.serverId = serverId;
        deleteDialog.serverName = serverName;
        deleteDialog.open();
    }

    Item {
        anchors.fill: parent
        visible: !serverPage.covers
        enabled: !serverPage.isShown

        PageHeader {
            id: header

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: root.sideMargin
            anchors.rightMargin: root.sideMargin
            title: "服务器"
            backText: "返回资料库"
            onBackRequested: root.closeRequested()

            IconButton {
                objectName: "scanAllButton"
                visible: serverList.count > 0
                symbol: "arrow.clockwise"
                color: SystemColors.accent
                text: "扫描所有服务器"
                onClicked: root.servers.scanAll()
            }
            IconButton {
                objectName: "addServerButton"
                symbol: "plus"
                color: SystemColors.accent
                text: "添加服务器"
                onClicked: root.servers.addServer()
            }
        }
        ServerList {
            id: serverList

            objectName: "serverList"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: header.bottom
            anchors.bottom: parent.bottom
            sideMargin: root.sideMargin
            model: root.servers.servers
            focus: true
            onOpenRequested: server => root.servers.openServer(server.serverId)
            onDeleteRequested: server => root.askToDelete(server.serverId, server.name)
            onMenuRequested: (server, position) => {
                serverMenu.serverId = server.serverId;
                serverMenu.serverName = server.name;
                serverMenu.popup(serverList, position);
            }
        }
        EmptyStateView {
            objectName: "serversEmpty"
            anchors.fill: serverList
            visible: serverList.count === 0
            systemImage: "cloud"
            title: "未配置服务器"
            description: "添加 WebDAV 服务器，直接播放网盘或 NAS 里的音乐"

            TextButton {
                objectName: "emptyAddServer"
                implicitWidth: Metrics.menuWidth
                role: TextButton.Prominent
                symbol: "plus"
                text: "添加服务器"
                onClicked: root.servers.addServer()
            }
        }
    }

    ServerPage {
        id: serverPage

        objectName: "serverPage"
        width: parent.width
        height: parent.height
        sideMargin: root.sideMargin
        viewModel: root.viewModel
        page: root.servers.page
        playlists: root.playlists
        onEditRequested: root.servers.editServer(root.servers.page.serverId)
        onDeleteRequested: root.askToDelete(root.servers.page.serverId, root.servers.page.name)
        onIsShownChanged: {
            if (!isShown)
                serverList.forceActiveFocus(Qt.OtherFocusReason);
        }
    }

    ServerMenu {
        id: serverMenu

        // The server and not its row: rows move while the menu is open.
        property string serverId
        property string serverName

        objectName: "serverMenu"
        onScanRequested: root.servers.scanServer(serverMenu.serverId)
        onEditRequested: root.servers.editServer(serverMenu.serverId)
        onDeleteRequested: root.askToDelete(serverMenu.serverId, serverMenu.serverName)
    }
    ConfirmDialog {
        id: deleteDialog

        property string serverId
        property string serverName

        objectName: "deleteServerDialog"
        title: "删除服务器"
        message: "确定要删除「" + serverName + "」吗？它的歌曲会从资料库移除，服务器上的文件不变。"
        acceptText: "删除"
        onAccepted: root.servers.deleteServer(serverId)
    }
    ServerFormSheet {
        objectName: "serverForm"
        form: root.servers.form
    }
}
