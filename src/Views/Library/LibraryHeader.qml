// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Title of the library with the number of songs and the ways to bring music in.
Item {
    id: root

    property int songCount: 0

    signal filesRequested
    signal folderRequested
    signal musicFolderRequested
    signal serversRequested
    signal equalizerRequested

    implicitHeight: titles.implicitHeight + Metrics.screenMargin + Metrics.rowSpacing

    Column {
        id: titles

        anchors.left: parent.left
        anchors.right: equalizerButton.left
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Metrics.rowSpacing

        StyledText {
            width: parent.width
            text: "资料库"
            style: TextStyles.largeTitle
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        StyledText {
            objectName: "songCount"
            width: parent.width
            text: root.songCount + " 首歌曲"
            style: TextStyles.subheadline
            color: SystemColors.secondaryLabel
            visible: root.songCount > 0
        }
    }
    IconButton {
        id: equalizerButton

        objectName: "equalizerButton"
        anchors.right: serversButton.left
        anchors.top: titles.top
        symbol: AppIcons.audio.equalizer
        color: SystemColors.accent
        text: "均衡器"
        onClicked: root.equalizerRequested()
    }
    IconButton {
        id: serversButton

        objectName: "serversButton"
        anchors.right: importButton.left
        anchors.top: titles.top
        symbol: AppIcons.file.cloud
        color: SystemColors.accent
        text: "服务器"
        onClicked: root.serversRequested()
    }
    IconButton {
        id: importButton

        objectName: "importButton"
        anchors.right: parent.right
        anchors.rightMargin: -(width - Metrics.symbol) / 2
        anchors.top: titles.top
        symbol: AppIcons.action.add
        color: SystemColors.accent
        text: "导入音乐"
        isOpen: menu.visible
        onClicked: menu.open()

        StyledMenu {
            id: menu

            objectName: "importMenu"
            x: importButton.width - width
            y: importButton.height

            StyledMenuItem {
                objectName: "importFilesItem"
                symbol: AppIcons.file.documentBadgePlus
                text: "导入文件…"
                onTriggered: root.filesRequested()
            }
            StyledMenuItem {
                objectName: "importFolderItem"
                symbol: AppIcons.file.folderBadgePlus
                text: "导入文件夹…"
                onTriggered: root.folderRequested()
            }
            StyledMenuItem {
                objectName: "openMusicFolderItem"
                symbol: AppIcons.file.folderOutline
                text: "打开音乐文件夹"
                onTriggered: root.musicFolderRequested()
            }
        }
    }
}
