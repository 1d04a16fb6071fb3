// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A thin bar that fills from left to right.
SurfaceImage {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    /// From 0 to 1.
    property real progress: 0

    implicitHeight: Metrics.trackHeight
    surface: Surfaces.progressTrack(theme)

    Rectangle {
        width: Math.round(Math.max(0, Math.min(1, root.progress)) * parent.width)
        height: parent.height
        radius: Math.min(width, height) / 2
        color: root.theme.primaryColor
    }
}
