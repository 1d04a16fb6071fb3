// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Cadorel

/// What the forms for servers of every kind have in common.
BottomSheet {
    id: root

    required property ServerFormViewModel form
    /// What stands above the fields.
    property alias opening: openingColumn.data
    /// The fields between the address and the account.
    property alias details: detailColumn.data
    /// For those fields: what they scroll in.
    readonly property FormFlickable viewport: flickable
    property string namePlaceholder
    property string addressPlaceholder

    /// The keyboard goes to the first field.
    function focusName(): void {
        nameField.takeFocus();
    }

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
    onClosed: form.cancel()
    onAccepted: form.save()

    Hairline {
        Layout.fillWidth: true
    }
    FormFlickable {
        id: flickable

        objectName: "formFlickable"
        Layout.fillWidth: true
        Layout.fillHeight: true
        contentHeight: fields.implicitHeight + 2 * Metrics.screenMargin

        Column {
            id: fields

            x: Metrics.screenMargin
            y: Metrics.screenMargin
            width: flickable.width - 2 * Metrics.screenMargin
            spacing: Metrics.cardPadding

            Column {
                id: openingColumn

                width: parent.width
                visible: children.length > 0
            }
            LabeledField {
                id: nameField

                objectName: "nameField"
                width: parent.width
                input: root.form.name
                label: "名称"
                placeholder: root.namePlaceholder
                viewport: flickable
            }
            LabeledField {
                objectName: "addressField"
                width: parent.width
                input: root.form.serverURL
                label: "服务器地址"
                placeholder: root.addressPlaceholder
                inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
                viewport: flickable
            }
            Column {
                id: detailColumn

                width: parent.width
                spacing: fields.spacing
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
}
