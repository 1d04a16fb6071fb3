// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// How far an import is, or that the music folder is being searched.
Item {
    id: root

    property bool isImporting: false
    property bool isScanning: false
    /// From 0 to 1.
    property real progress: 0
    property string text

    readonly property string shownText: text !== "" ? text : isImporting ? "正在导入…" : "正在扫描…"

    implicitHeight: column.implicitHeight + 2 * Metrics.rowSpacing
    Accessible.role: Accessible.ProgressBar
    Accessible.name: shownText

    Column {
        id: column

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.rowSpacing

        QuietText {
            width: parent.width
            text: root.shownText
            elide: Text.ElideMiddle
        }
        ProgressTrack {
            width: parent.width
            visible: root.isImporting
            progress: root.progress
        }
    }
}
