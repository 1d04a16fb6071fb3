// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The form for a new WebDAV server, or for one that is there.
ServerFormSheet {
    id: root

    readonly property WebDAVServerFormViewModel webDAV: form as WebDAVServerFormViewModel

    title: form.isEditing ? "编辑服务器" : "添加服务器"
    namePlaceholder: "例如 家里的 NAS"
    addressPlaceholder: "https://"
    onOpened: presetButton.forceActiveFocus(Qt.PopupFocusReason)

    opening: TextButton {
        id: presetButton

        objectName: "choosePreset"
        width: parent.width
        symbol: AppIcons.file.cloud
        text: "选择预设配置"
        onClicked: presetSheet.open()
    }
    details: [
        LabeledField {
            objectName: "portField"
            width: parent.width
            input: root.webDAV.port
            label: "端口（可选）"
            placeholder: "默认端口"
            inputMethodHints: Qt.ImhDigitsOnly
            viewport: root.viewport
        },
        LabeledField {
            objectName: "pathField"
            width: parent.width
            input: root.webDAV.basePath
            label: "根路径"
            placeholder: "/"
            footer: "根路径是音乐文件所在的目录，如 /dav/Music"
            inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
            viewport: root.viewport
        }
    ]

    PresetSheet {
        id: presetSheet

        objectName: "presetSheet"
        presets: root.webDAV.presets
        onChosen: row => root.webDAV.applyPreset(row)
    }
}
