// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// One WebDAV server of a list: what it is called, where it is, whether it is connected and what it holds. The
/// dots, a long press and the right button open the menu of what can be done with it.
ThemedListRow {
    id: root

    /// The server by the roles of its list, of which `name` and `host` are shown. A delegate gives its `model`.
    required property var config
    property bool isConnected: false
    property int songCount: 0

    readonly property string status: (isConnected ? "已连接" : "未连接") + (isConnected || songCount > 0 ? " · " + songCount + " 首歌曲" : "")

    readonly property color nameColor: Surfaces.textOn(theme, Surfaces.themedRow(theme), theme.primaryTextColor)
    readonly property color quietColor: Surfaces.textOn(theme, Surfaces.themedRow(theme), theme.secondaryTextColor)

    signal tap
    signal edit
    signal deleteRequested
    signal scan

    implicitWidth: Metrics.phoneWidth - 2 * Metrics.screenMargin
    implicitHeight: Math.max(Metrics.rowCover, texts.implicitHeight) + 2 * Metrics.cardPadding
    focusPolicy: Qt.TabFocus
    showsFocus: visualFocus
    Accessible.name: config.name + "，" + config.host + "，" + status
    Keys.onMenuPressed: menu.popup(root, Qt.point(root.width - menu.width, root.height / 2))
    onClicked: tap()
    onMenuRequested: position => menu.popup(root, position)

    ThemedMenu {
        id: menu

        objectName: "serverRowMenu"
        theme: root.theme

        ThemedMenuItem {
            objectName: "scanItem"
            symbol: AppIcons.action.refresh
            text: "扫描"
            theme: root.theme
            onTriggered: root.scan()
        }
        ThemedMenuItem {
            objectName: "editItem"
            symbol: AppIcons.action.edit
            text: "编辑"
            theme: root.theme
            onTriggered: root.edit()
        }
        ThemedMenuItem {
            objectName: "deleteItem"
            symbol: AppIcons.action.delete
            text: "删除"
            destructive: true
            theme: root.theme
            onTriggered: root.deleteRequested()
        }
    }
    SurfaceImage {
        id: tile

        objectName: "tile"
        anchors.left: parent.left
        anchors.leftMargin: Metrics.cardPadding
        anchors.verticalCenter: parent.verticalCenter
        width: Metrics.rowCover
        height: Metrics.rowCover
        surface: Surfaces.controlButton(root.theme, Metrics.rowCover)

        SymbolIcon {
            anchors.centerIn: parent
            name: AppIcons.file.server
            color: root.isConnected ? root.theme.primaryColor : root.theme.secondaryTextColor
        }
    }
    Column {
        id: texts

        anchors.left: tile.right
        anchors.leftMargin: Metrics.cardPadding
        anchors.right: moreButton.left
        anchors.rightMargin: Metrics.grid
        anchors.verticalCenter: parent.verticalCenter

        StyledText {
            objectName: "serverName"
            width: parent.width
            text: root.config.name
            color: root.nameColor
        }
        StyledText {
            objectName: "serverHost"
            width: parent.width
            text: root.config.host
            style: TextStyles.footnote
            color: root.quietColor
            elide: Text.ElideMiddle
        }
        Row {
            width: parent.width
            spacing: Metrics.grid

            Rectangle {
                id: dot

                objectName: "statusDot"
                // On the first line, where the text has two.
                y: Math.round((TextStyles.footnote.line - height) / 2)
                width: Metrics.statusDot
                height: Metrics.statusDot
                radius: width / 2
                color: root.isConnected ? Surfaces.textOn(root.theme, Surfaces.themedRow(root.theme), SystemColors.green) : root.theme.secondaryTextColor
            }
            StyledText {
                objectName: "serverStatus"
                width: parent.width - dot.width - parent.spacing
                text: root.status
                style: TextStyles.footnote
                color: root.quietColor
                // A count is never cut off.
                elide: Text.ElideNone
                wrapMode: Text.Wrap
            }
        }
    }
    ThemedIconButton {
        id: moreButton

        objectName: "moreButton"
        anchors.right: parent.right
        anchors.rightMargin: Metrics.grid
        anchors.verticalCenter: parent.verticalCenter
        // Not every keyboard has a menu key.
        focusPolicy: Qt.TabFocus
        symbol: AppIcons.navigation.more
        isOpen: menu.visible
        theme: root.theme
        text: "更多操作"
        Accessible.name: "“" + root.config.name + "”的更多操作"
        onClicked: menu.popup(moreButton, Qt.point(moreButton.width - menu.width, moreButton.height))
    }
}
