// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A page that comes in from the right over what lies beneath it, and goes back there. Escape, Alt+Left and the
/// mouse's back button ask for it to close.
FocusScope {
    id: root

    property bool isShown: false
    /// Nothing beneath the page can be seen.
    readonly property bool covers: isShown && !slide.running
    property real offset: isShown ? 0 : 1

    signal closeRequested

    x: Math.round(offset * width)
    visible: isShown || slide.running
    enabled: isShown
    onIsShownChanged: {
        if (isShown)
            forceActiveFocus(Qt.OtherFocusReason);
    }

    Behavior on offset {
        NumberAnimation {
            id: slide

            duration: Metrics.sheetDuration
            easing.type: Easing.OutCubic
        }
    }
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Escape || event.key === Qt.Key_Back || event.matches(StandardKey.Back);
        if (event.accepted)
            closeRequested();
    }

    ThemedBackground {
        anchors.fill: parent

        TapHandler {
            // A finger has no buttons: every touch would count.
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad | PointerDevice.Stylus
            acceptedButtons: Qt.BackButton
            // Takes the press: a page beneath this one has its own turn.
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: root.closeRequested()
        }
    }
}
