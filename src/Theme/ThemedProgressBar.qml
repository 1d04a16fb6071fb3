// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Window
import Cadorel

/// How far something is, and by a drag or the arrow keys where it shall go.
FocusScope {
    id: root

    /// From 0 to 1; what is beyond is drawn at the ends. Who owns it sets it to where progressDragged() tells;
    /// until then a drag alone shows where it is.
    property real progress: 0
    readonly property bool isDragging: touch.pressed
    property AppTheme theme: ThemeEnvironment.theme
    /// Of what is done, and of the ring about the knob that the keyboard speaks to.
    property color tint: theme.primaryColor
    property color focusColor: tint
    /// About what is done, where the tint alone cannot be told from what lies beneath.
    property color edge: "transparent"
    property surface trackSurface: Surfaces.progressTrack(theme)
    property surface knobSurface: Surfaces.progressKnob(theme, knobSize)
    /// For screen readers.
    property string name: "进度"
    /// To arrive at the end has a meaning of its own: a key that is held down stops short of it.
    property bool isEndFinal: false

    /// Where the knob stands.
    readonly property real shown: Progress.clamped(isDragging ? touch.reached : progress)

    // Where a screen reader looks for them; it may set the value.
    property real value: 0
    readonly property real minimumValue: 0
    readonly property real maximumValue: 1
    readonly property real stepSize: 0.05

    readonly property real knobSize: isDragging ? Metrics.draggedProgressKnob : Metrics.progressKnob
    /// Whole device pixels: a value that creeps repaints nothing until it has gone one.
    readonly property real fillWidth: Math.round(shown * width * Screen.devicePixelRatio) / Screen.devicePixelRatio

    /// A drag or a key has come to that place.
    signal progressDragged(real progress)
    /// True with every change by a drag or a key, false at its end.
    signal editingChanged(bool isEditing)
    /// A drag has been taken away before its end.
    signal editingCanceled

    onShownChanged: value = shown
    onValueChanged: {
        if (value === shown)
            return;
        goTo(value);
        value = shown;
    }

    implicitWidth: Metrics.menuWidth
    implicitHeight: Metrics.touchTarget
    activeFocusOnTab: true
    opacity: enabled ? 1 : Metrics.disabledOpacity
    Accessible.role: Accessible.Slider
    Accessible.name: name
    Accessible.focusable: true
    Accessible.onIncreaseAction: root.goTo(shown + stepSize)
    Accessible.onDecreaseAction: root.goTo(shown - stepSize)
    Keys.onLeftPressed: root.goTo(shown - stepSize)
    Keys.onRightPressed: event => {
        if (!isEndFinal || !event.isAutoRepeat || shown + stepSize < maximumValue)
            root.goTo(shown + stepSize);
    }
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
        if (event.accepted && !event.isAutoRepeat)
            root.goTo(event.key === Qt.Key_Home ? minimumValue : maximumValue);
    }

    function goTo(place: real): void {
        // A screen reader may ask for what is off.
        if (!enabled)
            return;
        progressDragged(Progress.clamped(place));
        editingChanged(true);
        editingChanged(false);
    }

    Item {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        height: Metrics.trackHeight

        SurfaceImage {
            objectName: "track"
            anchors.fill: parent
            surface: root.trackSurface
        }
        Rectangle {
            objectName: "fill"
            width: root.fillWidth
            height: parent.height
            radius: Math.min(width, height) / 2
            color: root.tint
            border.width: root.edge.a > 0 ? Metrics.hairline : 0
            border.color: root.edge
        }
    }
    SurfaceImage {
        objectName: "knob"
        x: root.fillWidth - root.knobSize / 2
        y: (root.height - height) / 2
        width: root.knobSize
        height: root.knobSize
        surface: root.knobSurface

        Rectangle {
            objectName: "halo"
            anchors.centerIn: parent
            width: parent.width + Metrics.cardPadding
            height: width
            radius: width / 2
            z: -1
            color: Qt.alpha(root.tint, Metrics.pressedOpacity)
            visible: touch.containsMouse || touch.pressed
        }
        ThemedFocusRing {
            objectName: "focusRing"
            controlRadius: root.knobSize / 2
            border.color: root.focusColor
            theme: root.theme
            visible: root.activeFocus
        }
    }
    MouseArea {
        id: touch

        property real reached: 0

        function goTo(x: real): void {
            reached = Progress.at(x, root.width);
            root.progressDragged(reached);
            root.editingChanged(true);
        }

        anchors.fill: parent
        // A bar may be drawn lower than a finger is thick.
        anchors.topMargin: Math.min(0, Math.floor((root.height - Metrics.touchTarget) / 2))
        anchors.bottomMargin: anchors.topMargin
        enabled: root.enabled
        hoverEnabled: true
        // A list that the bar lies in shall not take a drag for its own.
        preventStealing: true
        onPressed: mouse => goTo(mouse.x)
        onPositionChanged: mouse => {
            if (pressed)
                goTo(mouse.x);
        }
        onReleased: root.editingChanged(false)
        onCanceled: root.editingCanceled()
    }
}
