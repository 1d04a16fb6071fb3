// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// Folders and files of the picker's folder, or why there are none.
RowList {
    id: root

    required property FilePickerModel files
    property bool picturesMode: false

    model: files
    spacing: Metrics.grid
    topMargin: Metrics.rowSpacing
    rowStep: Metrics.compactRowHeight + spacing
    Accessible.name: files.folderName
    onActivated: row => files.activate(row)
    // One goes back from an empty folder as well.
    Keys.enabled: true
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Backspace) {
            files.up();
            event.accepted = true;
        }
    }

    delegate: PickerRow {
        width: ListView.view.width
        folderMode: root.files.folderMode
        fileSymbol: root.picturesMode ? AppIcons.appearance.picture : AppIcons.file.music
        onClicked: root.take(index)
    }

    EmptyStateView {
        objectName: "pickerEmpty"
        anchors.fill: parent
        visible: root.count === 0 && !root.files.isLoading
        systemImage: root.files.errorText !== "" ? AppIcons.status.failure : AppIcons.file.folderOutline
        title: root.files.errorText !== "" ? "打不开文件夹" : root.picturesMode ? "没有图片" : "没有音乐"
        description: root.files.errorText !== "" ? root.files.errorText : root.picturesMode ? "这个文件夹里没有文件夹，也没有能读取的图片" : "这个文件夹里没有文件夹，也没有能播放的文件"
    }
}
