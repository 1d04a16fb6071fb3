// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The picture of a switch, for the control that it belongs to: which of two ways it stands.
Item {
    id: root

    property bool isOn: false
    property AppTheme theme: ThemeEnvironment.theme
    readonly property int knobSize: height - 2 * Metrics.focusRing

    implicitWidth: Metrics.switchWidth
    implicitHeight: Metrics.switchHeight
    Accessible.ignored: true

    SurfaceImage {
        objectName: "groove"
        anchors.fill: parent
        surface: Surfaces.switchTrack(root.theme, root.isOn, root.height / 2)
    }
    Rectangle {
        objectName: "knob"
        x: root.isOn ? root.width - width - Metrics.focusRing : Metrics.focusRing
        y: Metrics.focusRing
        width: root.knobSize
        height: width
        radius: width / 2
        color: SystemColors.accentInk

        Behavior on x {
            NumberAnimation {
                duration: Motion.scaled(Metrics.segmentDuration)
                easing.type: Easing.BezierSpline
                easing.bezierCurve: Motion.easeInOut
            }
        }
    }
}
