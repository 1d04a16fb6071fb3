// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Title of the library with the number of songs and the ways to bring music in.
PageHeader {
    id: root

    property int songCount: 0

    signal filesRequested
    signal folderRequested
    signal musicFolderRequested

    title: "资料库"
    subtitle: songCount > 0 ? songCount + " 首歌曲" : ""
    subtitleName: "songCount"
    hasBack: false

    HeaderButton {
        id: importButton

        objectName: "importButton"
        symbol: AppIcons.action.add
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
