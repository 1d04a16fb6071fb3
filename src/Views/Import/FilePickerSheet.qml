// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T

/// The player's own picker of files or of a folder, for desktops that offer none. Rises from the lower edge.
Popup {
    id: root

    property bool folderMode: false

    /// The listener has decided. @param urls files, or one folder
    signal chosen(var urls)

    function show(forFolder: bool): void {
        folderMode = forFolder;
        files.folderMode = forFolder;
        files.restart();
        open();
    }

    parent: T.Overlay.overlay
    width: parent ? Math.min(parent.width, Metrics.sheetWidth) : Metrics.sheetWidth
    height: parent ? Math.min(parent.height - Metrics.touchTarget, Metrics.phoneHeight) : Metrics.phoneHeight
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? parent.height - height : 0
    padding: 0
    modal: true
    focus: true
    onOpened: list.forceActiveFocus(Qt.PopupFocusReason)

    T.Overlay.modal: Rectangle {
        color: SystemColors.scrim
    }
    enter: Transition {
        NumberAnimation {
            property: "y"
            from: root.parent ? root.parent.height : 0
            duration: Metrics.sheetDuration
            easing.type: Easing.OutCubic
        }
    }
    background: Rectangle {
        color: SystemColors.secondaryBackground
        radius: Metrics.sheetRadius

        // The lower corners lie on the window's edge and stay square.
        Rectangle {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            height: parent.radius
            color: parent.color
        }
    }

    FilePickerModel {
        id: files
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Accessible.role: Accessible.Dialog
        Accessible.name: titleText.text

        Item {
            Layout.fillWidth: true
            Layout.preferredHeight: Metrics.touchTarget + Metrics.rowSpacing

            TextButton {
                objectName: "pickerCancel"
                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                role: TextButton.Plain
                text: "取消"
                onClicked: root.close()
            }
            StyledText {
                id: titleText

                anchors.centerIn: parent
                text: root.folderMode ? "选择文件夹" : "选择文件"
                style: TextStyles.headline
            }
        }

        PickerLocationBar {
            Layout.fillWidth: true
            Layout.leftMargin: Metrics.screenMargin
            Layout.rightMargin: Metrics.screenMargin
            Layout.bottomMargin: Metrics.rowSpacing
            files: files
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: Metrics.hairline
            color: SystemColors.separator
        }
        PickerList {
            id: list

            objectName: "pickerList"
            Layout.fillWidth: true
            Layout.fillHeight: true
            files: files
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: Metrics.hairline
            color: SystemColors.separator
        }
        TextButton {
            objectName: "pickerAccept"
            Layout.fillWidth: true
            Layout.margins: Metrics.screenMargin
            role: TextButton.Prominent
            text: root.folderMode ? "导入此文件夹" : files.selectedCount > 0 ? "导入 " + files.selectedCount + " 个文件" : "选择要导入的文件"
            enabled: root.folderMode ? files.folder !== "" && files.errorText === "" && !files.isLoading : files.selectedCount > 0
            onClicked: {
                const urls = files.chosenUrls();
                root.close();
                root.chosen(urls);
            }
        }
    }
}
