// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Cadorel

/// The form for the address of the online music API.
BottomSheet {
    id: root

    required property APISettingsViewModel settings

    title: "API 服务器"
    cancelName: "apiSettingsClose"
    cancelText: "关闭"
    height: parent ? Math.min(parent.height - Metrics.touchTarget, Metrics.touchTarget + Metrics.rowSpacing + Metrics.hairline + flickable.contentHeight) : 0
    // A press beside the sheet would throw away what was typed.
    closePolicy: Popup.CloseOnEscape
    visible: settings.isOpen
    onOpened: addressField.takeFocus()
    onClosed: settings.close()

    Hairline {
        Layout.fillWidth: true
    }
    FormFlickable {
        id: flickable

        Layout.fillWidth: true
        Layout.fillHeight: true
        contentHeight: fields.implicitHeight + Metrics.screenMargin + Metrics.sectionGap

        Column {
            id: fields

            x: Metrics.screenMargin
            y: Metrics.screenMargin
            width: flickable.width - 2 * Metrics.screenMargin
            spacing: Metrics.cardPadding

            StyledText {
                width: parent.width
                text: "服务器配置"
                style: TextStyles.headline
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            LabeledField {
                id: addressField

                objectName: "apiAddress"
                width: parent.width
                input: root.settings.tempURL
                label: "API 服务器地址"
                placeholder: "输入 API 服务器地址"
                footer: "配置在线音乐搜索和排行榜的 API 服务器地址。修改后会立即生效。"
                inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
                viewport: flickable
            }
            TextButton {
                objectName: "apiSave"
                width: parent.width
                role: TextButton.Prominent
                text: "保存设置"
                onClicked: root.settings.saveURL()
            }
            TextButton {
                objectName: "apiReset"
                width: parent.width
                symbol: AppIcons.action.reset
                text: "恢复默认"
                onClicked: root.settings.showResetAlert = true
            }
            Item {
                width: parent.width
                height: Metrics.grid
            }
            TextButton {
                objectName: "apiTest"
                width: parent.width
                text: "测试连接"
                onClicked: root.settings.testConnection()
            }
            QuietText {
                width: parent.width
                text: "测试当前配置的 API 服务器是否可用。"
                wrapMode: Text.Wrap
            }
        }
    }

    ConfirmDialog {
        objectName: "invalidURLAlert"
        title: "无效的 URL"
        message: "请输入有效的 HTTP 或 HTTPS 地址"
        acceptText: "确定"
        acceptRole: TextButton.Prominent
        hasCancel: false
        visible: root.settings.showInvalidURLAlert
        onClosed: {
            root.settings.showInvalidURLAlert = false;
            addressField.takeFocus();
        }
    }
    ConfirmDialog {
        objectName: "resetAlert"
        title: "恢复默认设置"
        message: "确定要恢复为默认的 API 服务器地址吗？"
        acceptText: "恢复"
        visible: root.settings.showResetAlert
        onClosed: root.settings.showResetAlert = false
        onAccepted: root.settings.reset()
    }
}
