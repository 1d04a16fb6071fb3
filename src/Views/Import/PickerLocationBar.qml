// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Cadorel

/// Which folder the picker shows, the way up, and the folders that what is wanted mostly lies in.
ColumnLayout {
    id: root

    required property FilePickerModel files
    property bool picturesMode: false

    spacing: Metrics.rowSpacing

    RowLayout {
        spacing: Metrics.rowSpacing

        HeaderButton {
            objectName: "pickerUp"
            Layout.leftMargin: -inset
            symbol: AppIcons.navigation.parent
            text: "上一级文件夹"
            enabled: root.files.canGoUp
            onClicked: root.files.up()
        }
        ColumnLayout {
            spacing: 0

            StyledText {
                objectName: "pickerFolderName"
                Layout.fillWidth: true
                text: root.files.folderName
                style: TextStyles.headline
            }
            QuietText {
                Layout.fillWidth: true
                text: root.files.folder
                style: TextStyles.caption1
                elide: Text.ElideMiddle
            }
        }
    }
    RowLayout {
        spacing: Metrics.rowSpacing

        TextButton {
            objectName: "pickerHome"
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            text: "主目录"
            onClicked: root.files.openPlace(FilePickerModel.Home)
        }
        TextButton {
            objectName: "pickerMusic"
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            text: root.picturesMode ? "图片" : "音乐"
            onClicked: root.files.openPlace(root.picturesMode ? FilePickerModel.Pictures : FilePickerModel.Music)
        }
        TextButton {
            objectName: "pickerDownloads"
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            text: "下载"
            onClicked: root.files.openPlace(FilePickerModel.Downloads)
        }
    }
}
