// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Cadorel

/// The player's own picker of files, of a folder or of a picture, for desktops that offer none. Rises from the lower edge.
BottomSheet {
    id: root

    property bool folderMode: false
    property bool picturesMode: false
    /// What a picture is chosen for.
    property string acceptPictureText: "用作封面"
    readonly property string acceptFilesText: picturesMode ? (files.selectedCount > 0 ? acceptPictureText : "选择一张图片") : files.selectedCount > 0 ? "导入 " + files.selectedCount + " 个文件" : "选择要导入的文件"

    /// The listener has decided. @param urls files, or one folder
    signal chosen(var urls)

    function show(forFolder: bool): void {
        picturesMode = false;
        folderMode = forFolder;
        files.folderMode = forFolder;
        files.restart();
        open();
    }
    /// One picture with one of these endings is to be chosen.
    function showPictures(extensions: list<string>): void {
        picturesMode = true;
        files.singleFile = true;
        files.extensions = extensions;
        files.restart(FilePickerModel.Pictures);
        open();
    }

    title: folderMode ? "选择文件夹" : picturesMode ? "选择封面" : "选择文件"
    cancelName: "pickerCancel"
    onOpened: list.forceActiveFocus(Qt.PopupFocusReason)

    FilePickerModel {
        id: files

        objectName: root.objectName + "Files"
    }

    PickerLocationBar {
        Layout.fillWidth: true
        Layout.leftMargin: Metrics.screenMargin
        Layout.rightMargin: Metrics.screenMargin
        Layout.bottomMargin: Metrics.rowSpacing
        files: files
        picturesMode: root.picturesMode
    }
    Hairline {
        Layout.fillWidth: true
    }
    PickerList {
        id: list

        objectName: "pickerList"
        Layout.fillWidth: true
        Layout.fillHeight: true
        files: files
        picturesMode: root.picturesMode
    }
    Hairline {
        Layout.fillWidth: true
    }
    TextButton {
        objectName: "pickerAccept"
        Layout.fillWidth: true
        Layout.margins: Metrics.screenMargin
        role: TextButton.Prominent
        text: root.folderMode ? "导入此文件夹" : root.acceptFilesText
        enabled: root.folderMode ? files.folder !== "" && files.errorText === "" && !files.isLoading : files.selectedCount > 0
        onClicked: {
            const urls = files.chosenUrls();
            root.close();
            root.chosen(urls);
        }
    }
}
