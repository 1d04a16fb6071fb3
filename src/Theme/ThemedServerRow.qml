// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T

/// One WebDAV server of a list: what it is called, where it is, whether it is connected and what it holds.
T.ItemDelegate {
    id: root

    /// The server: `name` and `host` of it are shown.
    required property var config
    property bool isConnected: false
    property int songCount: 0
    property AppTheme theme: ThemeEnvironment.theme

    readonly property string status: isConnected ? "已连接 · " + songCount + " 首歌曲" : "未连接"

    signal tapped
    signal editRequested
    signal deleteRequested
    signal scanRequested

    implicitWidth: Metrics.phoneWidth - 2 * Metrics.screenMargin
    implicitHeight: Math.max(Metrics.rowCover, texts.implicitHeight) + 2 * Metrics.cardPadding
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    text: config.name
    Accessible.name: config.name + "，" + config.host + "，" + status
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Keys.onMenuPressed: menu.popup(root, Qt.point(root.width, root.height / 2))
    onClicked: tapped()
    onPressAndHold: menu.popup()

    TapHandler {
        // A finger has no buttons: every touch would count.
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad | PointerDevice.Stylus
        acceptedButtons: Qt.RightButton
        onTapped: menu.popup()
    }
    StyledMenu {
        id: menu

        objectName: "serverRowMenu"

        StyledMenuItem {
            symbol: AppIcons.action.edit
            text: "编辑"
            onTriggered: root.editRequested()
        }
        StyledMenuItem {
            symbol: AppIcons.action.delete_
            text: "删除"
            onTriggered: root.deleteRequested()
        }
    }

    background: ThemedRowModifier {
        theme: root.theme

        Rectangle {
            anchors.fill: parent
            radius: Metrics.cardRadius
            color: root.down ? SystemColors.pressed : root.hovered ? SystemColors.hover : "transparent"
        }
        ThemedFocusRing {
            anchors.margins: 0
            radius: Metrics.cardRadius
            theme: root.theme
            visible: root.visualFocus
        }
    }
    contentItem: Item {
        SurfaceImage {
            id: tile

            anchors.left: parent.left
            anchors.leftMargin: Metrics.cardPadding
            anchors.verticalCenter: parent.verticalCenter
            width: Metrics.rowCover
            height: Metrics.rowCover
            surface: Surfaces.controlButton(root.theme, Metrics.rowCover)

            SymbolIcon {
                anchors.centerIn: parent
                name: "externaldrive.fill.badge.wifi"
                color: root.isConnected ? root.theme.primaryColor : root.theme.secondaryTextColor
            }
        }
        Column {
            id: texts

            anchors.left: tile.right
            anchors.leftMargin: Metrics.cardPadding
            anchors.right: scanButton.left
            anchors.rightMargin: Metrics.rowSpacing
            anchors.verticalCenter: parent.verticalCenter

            StyledText {
                objectName: "serverName"
                width: parent.width
                text: root.config.name
                color: root.theme.primaryTextColor
            }
            StyledText {
                objectName: "serverHost"
                width: parent.width
                text: root.config.host
                style: TextStyles.footnote
                color: root.theme.secondaryTextColor
                elide: Text.ElideMiddle
            }
            Row {
                width: parent.width
                spacing: Metrics.grid + Metrics.hairline

                Rectangle {
                    id: dot

                    objectName: "statusDot"
                    anchors.verticalCenter: parent.verticalCenter
                    width: Metrics.statusDot
                    height: Metrics.statusDot
                    radius: width / 2
                    color: root.isConnected ? SystemColors.green : SystemColors.gray
                }
                StyledText {
                    objectName: "serverStatus"
                    width: parent.width - dot.width - parent.spacing
                    text: root.status
                    style: TextStyles.footnote
                    color: root.theme.secondaryTextColor
                }
            }
        }
        IconButton {
            id: scanButton

            objectName: "scanButton"
            anchors.right: moreButton.left
            anchors.verticalCenter: parent.verticalCenter
            symbol: AppIcons.action.refresh
            symbolSize: Metrics.symbolSmall
            color: root.theme.primaryColor
            text: "扫描“" + root.config.name + "”"
            enabled: root.isConnected
            onClicked: root.scanRequested()
        }
        IconButton {
            id: moreButton

            objectName: "moreButton"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: AppIcons.navigation.more
            color: root.theme.secondaryTextColor
            text: "“" + root.config.name + "”的更多操作"
            onClicked: menu.popup(moreButton, Qt.point(0, moreButton.height))
        }
    }
}
