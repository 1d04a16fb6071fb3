// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// A thin bar that fills from left to right.
Rectangle {
    id: root

    /// From 0 to 1.
    property real progress: 0

    implicitHeight: Metrics.trackHeight
    radius: height / 2
    color: SystemColors.track

    Rectangle {
        width: Math.round(Math.max(0, Math.min(1, root.progress)) * parent.width)
        height: parent.height
        radius: parent.radius
        color: SystemColors.accent
    }
}
