// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import Cadorel

/// The queue over whatever screen is there. It shows what plays from the beginning.
BottomSheet {
    id: root

    required property QueueViewModel queue

    title: "播放队列"
    cancelName: "queueClose"
    cancelText: "关闭"
    visible: queue.isOpen
    onAboutToShow: view.showBeginning()
    onOpened: view.forceActiveFocus(Qt.PopupFocusReason)
    onClosed: queue.close()

    Hairline {
        Layout.fillWidth: true
    }
    QueueView {
        id: view

        objectName: "queueView"
        Layout.fillWidth: true
        Layout.fillHeight: true
        queue: root.queue
        showsTitle: false
        theme: root.theme
    }
}
