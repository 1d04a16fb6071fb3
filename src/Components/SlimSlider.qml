// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Window
import Cadorel

/// A slider with a thin track. The handle stands on whole device pixels, so that a value that creeps repaints
/// nothing until it has gone one pixel.
Slider {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    /// What is drawn in the accent begins at this value.
    property real origin: from

    readonly property real room: availableWidth - Metrics.handleSize
    readonly property real handleX: Math.round(visualPosition * room * Screen.devicePixelRatio) / Screen.devicePixelRatio

    /// Where a screen reader looks for the ends.
    readonly property real minimumValue: from
    readonly property real maximumValue: to

    implicitHeight: Metrics.touchTarget - Metrics.cardPadding
    padding: 0
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    live: true

    background: SurfaceImage {
        y: Math.round((root.height - height) / 2)
        width: root.availableWidth
        height: Metrics.trackHeight
        surface: Surfaces.progressTrack(root.theme)

        Rectangle {
            readonly property real start: (root.origin - root.from) / (root.to - root.from) * (root.room + Metrics.handleSize)
            readonly property real end: root.handleX + Metrics.handleSize / 2

            objectName: "sliderFill"
            x: Math.min(start, end)
            width: Math.abs(end - start)
            height: parent.height
            radius: height / 2
            color: root.theme.primaryColor
            visible: root.enabled
        }
    }
    handle: Rectangle {
        x: root.handleX
        y: Math.round((root.height - height) / 2)
        width: Metrics.handleSize
        height: Metrics.handleSize
        radius: width / 2
        color: root.pressed || root.hovered ? root.theme.primaryColor : SystemColors.accentInk
        border.color: root.theme.primaryColor
        border.width: Metrics.focusRing
        visible: root.enabled

        FocusRing {
            anchors.margins: -2 * Metrics.focusRing
            radius: width / 2
            visible: root.visualFocus
        }
    }
}
