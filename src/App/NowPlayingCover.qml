// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A screen that comes up from the lower edge over the whole window, and goes back there. It is made when it comes up
/// and thrown away when it has gone.
FocusScope {
    id: root

    property bool isShown: false
    property alias sourceComponent: loader.sourceComponent
    /// Nothing beneath it can be seen.
    readonly property bool covers: isShown && !slide.running
    property real offset: isShown ? 0 : 1

    y: Math.round(offset * height)
    visible: isShown || slide.running
    enabled: isShown

    Behavior on offset {
        NumberAnimation {
            id: slide

            duration: Metrics.sheetDuration
            easing.type: Easing.OutCubic
        }
    }

    // Presses that the screen itself does not want are not for what lies beneath.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onWheel: wheel => wheel.accepted = true
        Accessible.ignored: true
    }
    Loader {
        id: loader

        anchors.fill: parent
        active: root.visible
        focus: true
    }
}
