// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// A wheel of numbers that is turned by a finger, the mouse's wheel or the arrow keys, and goes on from its end to its
/// beginning.
// No control of the toolkit: those tell screen readers nothing, whatever role they are given.
Item {
    id: root

    /// What the numbers count, for screen readers.
    required property string name
    /// Where the wheel shall stand. Whoever owns it sets it to where placed() tells.
    required property int place
    property alias model: wheel.model
    readonly property int currentIndex: wheel.currentIndex
    readonly property real rowHeight: wheel.rowHeight
    property AppTheme theme: ThemeEnvironment.theme
    readonly property int shownRows: 5
    readonly property int bigStep: 10

    // Where a screen reader looks for them; it may set the value.
    property int value: 0
    readonly property int minimumValue: 0
    readonly property int maximumValue: wheel.count - 1
    readonly property int stepSize: 1

    property bool isReady: false
    /// The keyboard was used here last: only then the wheel is outlined.
    property bool keyboardInUse: false
    /// Of the mouse's wheel: eighths of a degree that are no whole notch yet.
    property real turned: 0

    signal placed(int place)

    function goTo(wanted: int): void {
        const count = wheel.count;
        if (enabled && count > 0)
            wheel.currentIndex = ((wanted % count) + count) % count;
    }

    implicitWidth: Metrics.wheelWidth
    implicitHeight: Metrics.wheelHeight
    activeFocusOnTab: true
    onActiveFocusChanged: keyboardInUse = false
    Accessible.role: Accessible.SpinBox
    Accessible.name: name
    Accessible.focusable: true
    Accessible.onIncreaseAction: root.goTo(currentIndex + 1)
    Accessible.onDecreaseAction: root.goTo(currentIndex - 1)
    Component.onCompleted: {
        wheel.positionViewAtIndex(place, PathView.Center);
        wheel.currentIndex = place;
        value = place;
        isReady = true;
    }
    onPlaceChanged: {
        if (isReady && currentIndex !== place)
            wheel.currentIndex = place;
    }
    onCurrentIndexChanged: {
        if (!isReady)
            return;
        value = currentIndex;
        if (currentIndex !== place)
            placed(currentIndex);
    }
    onValueChanged: {
        if (isReady && value !== currentIndex)
            goTo(value);
    }
    // The key that has brought the keyboard here is let go here.
    Keys.onReleased: event => {
        keyboardInUse = true;
        event.accepted = false;
    }
    Keys.onPressed: event => {
        keyboardInUse = true;
        const steps = {
            [Qt.Key_Up]: -1,
            [Qt.Key_Down]: 1,
            [Qt.Key_PageUp]: -bigStep,
            [Qt.Key_PageDown]: bigStep
        };
        event.accepted = true;
        if (event.key in steps)
            goTo(currentIndex + steps[event.key]);
        else if (event.key === Qt.Key_Home)
            goTo(minimumValue);
        else if (event.key === Qt.Key_End)
            goTo(maximumValue);
        else
            event.accepted = false;
    }

    ThemedFocusRing {
        objectName: "focusRing"
        controlRadius: Metrics.cardRadius
        outset: 0
        theme: root.theme
        visible: root.activeFocus && root.keyboardInUse
    }
    PathView {
        id: wheel

        readonly property real rowHeight: height / root.shownRows

        anchors.fill: parent
        clip: true
        pathItemCount: root.shownRows + 1
        preferredHighlightBegin: 0.5
        preferredHighlightEnd: 0.5
        highlightMoveDuration: Motion.scaled(Metrics.segmentDuration)
        dragMargin: width / 2
        snapMode: PathView.SnapToItem
        path: Path {
            startX: wheel.width / 2
            startY: -wheel.rowHeight / 2

            PathLine {
                x: wheel.width / 2
                y: wheel.height + wheel.rowHeight / 2
            }
        }
        delegate: StyledText {
            required property int index
            /// Rows from the middle.
            readonly property real distance: Math.abs(y + height / 2 - wheel.height / 2) / Math.max(1, height)

            width: wheel.width
            height: wheel.rowHeight
            text: index
            style: TextStyles.title2
            font.weight: distance < 0.5 ? Font.DemiBold : Font.Normal
            color: Surfaces.textOn(root.theme, Surfaces.themedCard(root.theme), root.theme.primaryTextColor)
            horizontalAlignment: Text.AlignHCenter
            opacity: Math.max(0, 1 - 0.32 * distance)
            Accessible.ignored: true
        }

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.NoButton
            onWheel: event => {
                root.turned += event.angleDelta.y;
                const notches = Math.trunc(root.turned / Metrics.wheelNotch);
                root.turned -= notches * Metrics.wheelNotch;
                root.goTo(root.currentIndex - notches);
            }
        }
    }
}
