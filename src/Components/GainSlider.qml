// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Window
import Cadorel

/// A gain in decibels, upright or level: the track is filled from zero to the handle. It shows what is published
/// and asks for what the listener wants.
Slider {
    id: root

    /// Decibels as published.
    required property real gain
    /// The same for a listener, without the unit.
    required property string gainText
    required property string name
    /// What is set here is heard; else the slider is paler.
    property bool isHeard: true

    property AppTheme theme: ThemeEnvironment.theme

    signal gainRequested(real decibels)

    /// Where a screen reader looks for the ends.
    readonly property real minimumValue: from
    readonly property real maximumValue: to
    readonly property real fineStep: 0.5
    readonly property real coarseStep: 3
    readonly property bool isUpright: orientation === Qt.Vertical
    readonly property color fill: isHeard ? theme.primaryColor : SystemColors.gray
    readonly property real reach: (isUpright ? availableHeight : availableWidth) - Metrics.gainHandleSize
    readonly property real zeroPosition: reach * (isUpright ? to : -from) / (to - from)
    readonly property real handlePosition: Math.round(visualPosition * reach * Screen.devicePixelRatio) / Screen.devicePixelRatio

    function request(decibels: real): void {
        gainRequested(Math.max(from, Math.min(to, decibels)));
    }

    implicitWidth: Metrics.touchTarget
    implicitHeight: Metrics.touchTarget
    padding: 0
    stepSize: fineStep
    snapMode: Slider.SnapAlways
    live: true
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: name
    Accessible.description: gainText + " 分贝"
    Accessible.onIncreaseAction: request(gain + fineStep)
    Accessible.onDecreaseAction: request(gain - fineStep)
    // A screen reader sets the value as a drag does.
    onValueChanged: {
        if (value !== gain)
            request(value);
    }
    Keys.onPressed: event => {
        const steps = {
            [Qt.Key_Up]: fineStep,
            [Qt.Key_Right]: fineStep,
            [Qt.Key_Down]: -fineStep,
            [Qt.Key_Left]: -fineStep,
            [Qt.Key_PageUp]: coarseStep,
            [Qt.Key_PageDown]: -coarseStep
        };
        if (event.modifiers & ~Qt.KeypadModifier)
            return;
        if (event.key in steps)
            request(gain + steps[event.key]);
        else if (event.key === Qt.Key_Home)
            request(from);
        else if (event.key === Qt.Key_End)
            request(to);
        else if (event.key === Qt.Key_0)
            request(0);
        else
            return;
        // Who goes on with the keyboard after a click sees where it is.
        focusReason = Qt.TabFocusReason;
        event.accepted = true;
    }

    Binding on value {
        value: root.gain
        when: !root.pressed
        restoreMode: Binding.RestoreNone
    }
    // The press beneath it still sets the value when it is let go, so zero comes after that.
    TapHandler {
        onDoubleTapped: afterRelease.start()
    }
    Timer {
        id: afterRelease

        interval: 0
        onTriggered: root.gainRequested(0)
    }

    background: Item {
        SurfaceImage {
            x: root.isUpright ? Math.round((root.width - width) / 2) : Metrics.gainHandleSize / 2
            y: root.isUpright ? Metrics.gainHandleSize / 2 : Math.round((root.height - height) / 2)
            width: root.isUpright ? Metrics.trackHeight : root.reach
            height: root.isUpright ? root.reach : Metrics.trackHeight
            surface: Surfaces.progressTrack(root.theme)

            Rectangle {
                readonly property real start: Math.min(root.zeroPosition, root.handlePosition)
                readonly property real length: Math.abs(root.zeroPosition - root.handlePosition)

                x: root.isUpright ? 0 : start
                y: root.isUpright ? start : 0
                width: root.isUpright ? parent.width : length
                height: root.isUpright ? length : parent.height
                radius: Metrics.trackHeight / 2
                color: root.fill
            }
        }
    }
    handle: Rectangle {
        x: root.isUpright ? Math.round((root.width - width) / 2) : root.handlePosition
        y: root.isUpright ? root.handlePosition : Math.round((root.height - height) / 2)
        width: Metrics.gainHandleSize
        height: Metrics.gainHandleSize
        radius: width / 2
        color: root.pressed || root.hovered ? root.fill : SystemColors.accentInk
        border.color: root.fill
        border.width: Metrics.focusRing

        FocusRing {
            anchors.margins: -2 * Metrics.focusRing
            radius: width / 2
            visible: root.visualFocus
        }
    }
}
