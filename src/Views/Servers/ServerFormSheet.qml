// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Cadorel

/// The form for a new server, or for one that is there.
BottomSheet {
    id: root

    required property WebDAVServerFormViewModel form

    title: form.isEditing ? "编辑服务器" : "添加服务器"
    cancelName: "formCancel"
    acceptName: "formSave"
    acceptText: form.isSaving ? "正在保存…" : "保存"
    canAccept: form.canSubmit
    // A press beside the sheet would throw away what was typed.
    closePolicy: Popup.CloseOnEscape
    visible: form.isOpen
    onAboutToShow: {
        passwordField.isRevealed = false;
        flickable.contentY = 0;
    }
    onOpened: presetButton.forceActiveFocus(Qt.PopupFocusReason)
    onClosed: form.cancel()
    onAccepted: form.save()

    Rectangle {
        Layout.fillWidth: true
        Layout.preferredHeight: Metrics.hairline
        color: SystemColors.separator
    }
    Flickable {
        id: flickable

        objectName: "formFlickable"
        Layout.fillWidth: true
        Layout.fillHeight: true
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentHeight: fields.implicitHeight + 2 * Metrics.screenMargin

        ScrollBar.vertical: SlimScrollBar {}

        Column {
            id: fields

            x: Metrics.screenMargin
            y: Metrics.screenMargin
            width: flickable.width - 2 * Metrics.screenMargin
            spacing: Metrics.cardPadding

            TextButton {
                id: presetButton

                objectName: "choosePreset"
                width: parent.width
                symbol: "cloud"
                text: "选择预设配置"
                onClicked: presetSheet.open()
            }
            LabeledField {
                objectName: "nameField"
                width: parent.width
                input: root.form.name
                label: "名称"
                placeholder: "例如 家里的 NAS"
                viewport: flickable
            }
            LabeledField {
                objectName: "addressField"
                width: parent.width
                input: root.form.serverURL
                label: "服务器地址"
                placeholder: "https://"
                inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
                viewport: flickable
            }
            LabeledField {
                objectName: "portField"
                width: parent.width
                input: root.form.port
                label: "端口（可选）"
                placeholder: "默认端口"
                inputMethodHints: Qt.ImhDigitsOnly
                viewport: flickable
            }
            LabeledField {
                objectName: "pathField"
                width: parent.width
                input: root.form.basePath
                label: "根路径"
                placeholder: "/"
                footer: "根路径是音乐文件所在的目录，如 /dav/Music"
                inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
                viewport: flickable
            }
            LabeledField {
                objectName: "usernameField"
                width: parent.width
                input: root.form.username
                label: "用户名"
                inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
                viewport: flickable
            }
            LabeledField {
                id: passwordField

                objectName: "passwordField"
                width: parent.width
                input: root.form.password
                label: "密码"
                isSecret: true
                isWaiting: root.form.isLoadingPassword
                footer: "密码只保存在本机，不写进设置"
                viewport: flickable
            }
            SwitchRow {
                objectName: "enabledSwitch"
                width: parent.width
                text: "启用此服务器"
                checked: root.form.isEnabled
                onToggled: root.form.isEnabled = checked
            }
            TextButton {
                objectName: "testButton"
                width: parent.width
                text: "测试连接"
                enabled: root.form.canSubmit && !root.form.isTesting
                onClicked: root.form.test()
            }
            ServerTestResult {
                objectName: "testResult"
                width: parent.width
                isTesting: root.form.isTesting
                message: root.form.testMessage
                succeeded: root.form.testSucceeded
            }
        }
    }

    PresetSheet {
        id: presetSheet

        objectName: "presetSheet"
        presets: root.form.presets
        onChosen: row => root.form.applyPreset(row)
    }
}
