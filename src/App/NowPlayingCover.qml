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
    property int openings: 0

    y: Math.round(offset * height)
    // Not "the slide runs": it begins a moment after the screen is not wanted any more, which would make it twice.
    visible: isShown || offset < 1
    enabled: isShown

    onIsShownChanged: {
        // Called back on its way out, it is another screen all the same.
        if (isShown && loader.item && offset < 1)
            ++openings;
    }

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
    IdentityLoader {
        id: loader

        anchors.fill: parent
        identity: root.openings
        isPresent: root.visible
        focus: true
    }
}
