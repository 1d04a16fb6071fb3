// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// Folders and files of the picker's folder, or why there are none.
ListView {
    id: root

    required property FilePickerModel files
    property bool picturesMode: false

    property bool keyboardInUse: false

    model: files
    clip: true
    spacing: Metrics.grid
    topMargin: Metrics.rowSpacing
    bottomMargin: Metrics.rowSpacing
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: true
    currentIndex: -1
    highlightMoveDuration: 0
    Accessible.role: Accessible.List
    Accessible.name: files.folderName

    function activateByKey(event: var): void {
        if (!event.isAutoRepeat)
            files.activate(currentIndex);
    }
    function goTo(row: int): void {
        if (count > 0)
            currentIndex = Math.max(0, Math.min(count - 1, row));
    }

    Keys.onUpPressed: {
        keyboardInUse = true;
        goTo(currentIndex - 1);
    }
    Keys.onDownPressed: {
        keyboardInUse = true;
        goTo(currentIndex + 1);
    }
    // Once, however long the key is held down.
    Keys.onReturnPressed: event => activateByKey(event)
    Keys.onEnterPressed: event => activateByKey(event)
    Keys.onSpacePressed: files.activate(currentIndex)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Backspace) {
            files.up();
            event.accepted = true;
        }
    }

    ScrollBar.vertical: SlimScrollBar {}

    delegate: PickerRow {
        width: ListView.view.width
        folderMode: root.files.folderMode
        fileSymbol: root.picturesMode ? AppIcons.appearance.picture : AppIcons.file.music
        showsFocus: ListView.isCurrentItem && root.activeFocus && root.keyboardInUse
        onPressed: {
            root.keyboardInUse = false;
            root.forceActiveFocus(Qt.MouseFocusReason);
        }
        onClicked: {
            root.currentIndex = index;
            root.files.activate(index);
        }
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
