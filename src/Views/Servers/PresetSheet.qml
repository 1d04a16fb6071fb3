// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Cadorel

/// The ready-made kinds of servers to start from.
BottomSheet {
    id: root

    required property WebDAVPresetListModel presets

    signal chosen(int row)

    title: "选择预设"
    cancelName: "presetCancel"
    onAboutToShow: list.currentIndex = -1
    onOpened: list.forceActiveFocus(Qt.PopupFocusReason)

    Hairline {
        Layout.fillWidth: true
    }
    RowList {
        id: list

        objectName: "presetList"
        Layout.fillWidth: true
        Layout.fillHeight: true
        topMargin: Metrics.rowSpacing
        model: root.presets
        Accessible.name: root.title
        onActivated: row => {
            root.close();
            root.chosen(row);
        }

        delegate: PresetRow {
            width: ListView.view.width
            onClicked: list.take(index)
        }
    }
}
