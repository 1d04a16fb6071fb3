// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// How far something is, and by a drag or the arrow keys where it shall go.
FocusScope {
    id: root

    /// From 0 to 1; what is beyond is drawn at the ends.
    property real progress: 0
    readonly property bool isDragging: touch.pressed
    property AppTheme theme: ThemeEnvironment.theme
    /// For screen readers.
    property string name: "进度"

    // Where a screen reader looks for them.
    readonly property real value: Progress.clamped(progress)
    readonly property real minimumValue: 0
    readonly property real maximumValue: 1
    readonly property real stepSize: 0.05

    readonly property real knobSize: isDragging ? 16 : 12

    /// A drag or a key has come to that place; who owns the progress sets it.
    signal progressDragged(real progress)
    signal editingChanged(bool isEditing)

    implicitWidth: Metrics.menuWidth
    implicitHeight: Metrics.touchTarget
    activeFocusOnTab: true
    Accessible.role: Accessible.Slider
    Accessible.name: name
    Accessible.focusable: true
    Accessible.onIncreaseAction: root.step(stepSize)
    Accessible.onDecreaseAction: root.step(-stepSize)
    Keys.onLeftPressed: root.step(-stepSize)
    Keys.onRightPressed: root.step(stepSize)

    function step(by: real): void {
        editingChanged(true);
        progressDragged(Progress.clamped(value + by));
        editingChanged(false);
    }

    Item {
        id: track

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        height: Metrics.trackHeight

        SurfaceImage {
            anchors.fill: parent
            surface: Surfaces.progressTrack(root.theme)
        }
        Rectangle {
            objectName: "fill"
            width: parent.width * root.value
            height: parent.height
            radius: height / 2
            color: root.theme.primaryColor
        }
        SurfaceImage {
            objectName: "knob"
            x: parent.width * root.value - root.knobSize / 2
            anchors.verticalCenter: parent.verticalCenter
            width: root.knobSize
            height: root.knobSize
            surface: Surfaces.progressKnob(root.theme, root.knobSize)

            ThemedFocusRing {
                controlRadius: root.knobSize / 2
                theme: root.theme
                visible: root.activeFocus
            }
        }
    }
    MouseArea {
        id: touch

        function tell(x: real): void {
            root.progressDragged(Progress.at(x, root.width));
        }

        anchors.fill: parent
        preventStealing: true
        onPressed: mouse => {
            root.editingChanged(true);
            tell(mouse.x);
        }
        onPositionChanged: mouse => {
            root.editingChanged(true);
            tell(mouse.x);
        }
        onReleased: root.editingChanged(false)
        onCanceled: root.editingChanged(false)
    }
}
