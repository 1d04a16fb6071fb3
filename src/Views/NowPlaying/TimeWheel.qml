// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// A wheel of numbers that is turned by a finger, the mouse's wheel or the arrow keys, and goes on from its end to its
/// beginning.
Tumbler {
    id: root

    /// What the numbers count, for screen readers.
    required property string name
    /// Where the wheel shall stand. Whoever owns it sets it to where placed() tells.
    required property int place
    property AppTheme theme: ThemeEnvironment.theme
    readonly property real rowHeight: availableHeight / visibleItemCount
    readonly property int bigStep: 10

    // Where a screen reader looks for them; it may set the value.
    property int value: 0
    readonly property int minimumValue: 0
    readonly property int maximumValue: count - 1
    readonly property int stepSize: 1

    property bool isReady: false
    /// Of the mouse's wheel: eighths of a degree that are no whole notch yet.
    property real turned: 0

    signal placed(int place)

    function goTo(wanted: int): void {
        if (enabled && count > 0)
            currentIndex = ((wanted % count) + count) % count;
    }

    visibleItemCount: 5
    wrap: true
    activeFocusOnTab: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.SpinBox
    Accessible.name: name
    Accessible.focusable: true
    Accessible.onIncreaseAction: root.goTo(currentIndex + 1)
    Accessible.onDecreaseAction: root.goTo(currentIndex - 1)
    Component.onCompleted: {
        positionViewAtIndex(place, Tumbler.Center);
        currentIndex = place;
        value = place;
        isReady = true;
    }
    onPlaceChanged: {
        if (isReady && currentIndex !== place)
            currentIndex = place;
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
    Keys.onPressed: event => {
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
            goTo(0);
        else if (event.key === Qt.Key_End)
            goTo(count - 1);
        else
            event.accepted = false;
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

    background: ThemedFocusRing {
        objectName: "focusRing"
        controlRadius: Metrics.cardRadius
        outset: 0
        theme: root.theme
        visible: root.visualFocus
    }
    contentItem: PathView {
        implicitHeight: Metrics.wheelHeight
        clip: true
        model: root.model
        delegate: root.delegate
        pathItemCount: root.visibleItemCount + 1
        preferredHighlightBegin: 0.5
        preferredHighlightEnd: 0.5
        highlightMoveDuration: Motion.scaled(Metrics.segmentDuration)
        dragMargin: width / 2
        snapMode: PathView.SnapToItem
        path: Path {
            startX: root.availableWidth / 2
            startY: -root.rowHeight / 2

            PathLine {
                x: root.availableWidth / 2
                y: root.availableHeight + root.rowHeight / 2
            }
        }
    }
    delegate: StyledText {
        id: number

        required property int index
        readonly property real distance: Math.abs(Tumbler.displacement)

        width: root.availableWidth
        height: root.rowHeight
        text: index
        style: TextStyles.title2
        font.weight: distance < 0.5 ? Font.DemiBold : Font.Normal
        color: Surfaces.textOn(root.theme, Surfaces.themedCard(root.theme), root.theme.primaryTextColor)
        horizontalAlignment: Text.AlignHCenter
        opacity: Math.max(0, 1 - 0.32 * distance)
        Accessible.ignored: true
    }
}
