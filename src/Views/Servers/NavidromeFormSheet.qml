// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The form for a new Subsonic server, or for one that is there.
ServerFormSheet {
    id: root

    readonly property NavidromeServerFormViewModel navidrome: form as NavidromeServerFormViewModel

    title: form.isEditing ? "编辑 Navidrome" : "添加 Navidrome"
    namePlaceholder: "例如 家里的音乐"
    addressPlaceholder: "http://"
    onOpened: root.focusName()

    details: LabeledField {
        objectName: "apiPathField"
        width: parent.width
        input: root.navidrome.apiBasePath
        label: "API 路径"
        placeholder: "/rest"
        footer: "一般保持为 /rest；如果你做了反代并改变路径，可在此调整。"
        inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
        viewport: root.viewport
    }
}
