// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The servers of the listener, the page of one of them, and the forms in which they are set up.
FocusScope {
    id: root

    required property CadorelViewModel viewModel
    required property WebDAVServersViewModel servers
    required property PlaylistsViewModel playlists
    required property NavidromeServersViewModel navidrome

    readonly property int sideMargin: Metrics.screenMargin + Math.max(0, Math.round((width - Metrics.contentWidth) / 2))

    /// Asks whether a WebDAV server shall go with its songs.
    function askToDelete(serverId: string, serverName: string): void {
        deleteDialog.serverId = serverId;
        deleteDialog.serverName = serverName;
        deleteDialog.open();
    }
    /// Asks whether a Subsonic server shall go.
    function askToDeleteNavidrome(serverId: string, serverName: string): void {
        deleteNavidromeDialog.serverId = serverId;
        deleteNavidromeDialog.serverName = serverName;
        deleteNavidromeDialog.open();
    }

    FocusScope {
        anchors.fill: parent
        focus: true
        visible: !serverPage.covers && !navidromePage.covers
        enabled: !serverPage.isShown && !navidromePage.isShown

        KawaiiFloatingDecorations {
            anchors.fill: serverList
        }
        PageHeader {
            id: header

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: root.sideMargin
            anchors.rightMargin: root.sideMargin
            title: "网盘"
            hasBack: false

            HeaderButton {
                objectName: "scanAllButton"
                visible: serverList.count > 0
                symbol: AppIcons.action.refresh
                text: "扫描所有服务器"
                onClicked: {
                    root.servers.scanAll();
                    root.navidrome.refresh();
                }
            }
            HeaderButton {
                id: addButton

                objectName: "addServerButton"
                symbol: AppIcons.action.add
                text: "添加服务器"
                isOpen: addMenu.visible
                onClicked: addMenu.open()

                AddServerMenu {
                    id: addMenu

                    objectName: "addServerMenu"
                    x: addButton.width - width
                    y: addButton.height
                    onWebDAVRequested: root.servers.addServer()
                    onNavidromeRequested: root.navidrome.addServer()
                }
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
            model: ServerListModel {
                webDAV: root.servers.servers
                navidrome: root.navidrome.servers
            }
            section.property: "kindText"
            section.delegate: ServerKindHeader {}
            focus: true
            onOpenRequested: server => (server.isNavidrome ? root.navidrome : root.servers).openServer(server.serverId)
            onDeleteRequested: server => {
                if (server.isNavidrome)
                    root.askToDeleteNavidrome(server.serverId, server.name);
                else
                    root.askToDelete(server.serverId, server.name);
            }
            onMenuRequested: (server, position) => {
                const menu = server.isNavidrome ? navidromeMenu : serverMenu;
                menu.serverId = server.serverId;
                menu.serverName = server.name;
                menu.popup(serverList, position);
            }
        }
        EmptyStateView {
            objectName: "serversEmpty"
            anchors.fill: serverList
            visible: serverList.count === 0
            systemImage: AppIcons.file.cloud
            title: "未配置连接"
            description: "添加 WebDAV 或 Navidrome 服务器以访问云端音乐"

            TextButton {
                objectName: "emptyAddServer"
                implicitWidth: Metrics.menuWidth
                role: TextButton.Prominent
                symbol: AppIcons.action.add
                text: "添加 WebDAV"
                onClicked: root.servers.addServer()
            }
            TextButton {
                objectName: "emptyAddNavidrome"
                implicitWidth: Metrics.menuWidth
                symbol: AppIcons.action.add
                text: "添加 Navidrome"
                onClicked: root.navidrome.addServer()
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
    NavidromePage {
        id: navidromePage

        objectName: "navidromePage"
        width: parent.width
        height: parent.height
        sideMargin: root.sideMargin
        viewModel: root.viewModel
        page: root.navidrome.page
        playlists: root.playlists
        onEditRequested: root.navidrome.editServer(root.navidrome.page.serverId)
        onDeleteRequested: root.askToDeleteNavidrome(root.navidrome.page.serverId, root.navidrome.page.name)
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
    NavidromeMenu {
        id: navidromeMenu

        property string serverId
        property string serverName

        objectName: "navidromeMenu"
        canDisconnect: root.navidrome.connectedServerId === serverId
        onReloadRequested: root.navidrome.openServer(navidromeMenu.serverId)
        onEditRequested: root.navidrome.editServer(navidromeMenu.serverId)
        onDisconnectRequested: root.navidrome.page.disconnectFromServer()
        onDeleteRequested: root.askToDeleteNavidrome(navidromeMenu.serverId, navidromeMenu.serverName)
    }
    ConfirmDialog {
        id: deleteDialog

        property string serverId
        property string serverName

        objectName: "deleteServerDialog"
        title: "删除服务器"
        message: "确定要删除「" + ShortNames.of(serverName) + "」吗？它的歌曲会从资料库移除，服务器上的文件不变。"
        acceptText: "删除"
        onAccepted: root.servers.deleteServer(serverId)
    }
    ConfirmDialog {
        id: deleteNavidromeDialog

        property string serverId
        property string serverName

        objectName: "deleteNavidromeDialog"
        title: "删除服务器"
        message: "确定要删除「" + ShortNames.of(serverName) + "」吗？"
        acceptText: "删除"
        onAccepted: root.navidrome.deleteServer(serverId)
    }
    WebDAVFormSheet {
        objectName: "serverForm"
        form: root.servers.form
    }
    NavidromeFormSheet {
        objectName: "navidromeForm"
        form: root.navidrome.form
    }
}
