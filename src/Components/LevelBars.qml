// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// Seven bars that move like the music. They follow the player only while they are in sight; decoration, so a
/// screen reader passes them over.
Item {
    id: root

    required property AudioPlayerService player
    property color color: ThemeEnvironment.theme.primaryColor

    readonly property int count: 7
    readonly property var restingLevels: [0.35, 0.6, 0.8, 1, 0.8, 0.6, 0.35]
    readonly property var levels: !Motion.isSeen(visible, Window.visibility) ? [] : Motion.isReduced ? restingLevels : player.audioLevels

    implicitWidth: count * Metrics.levelBarWidth + (count - 1) * Metrics.levelBarGap
    implicitHeight: Metrics.levelBarHeight
    Accessible.ignored: true

    Repeater {
        model: root.count
        delegate: Rectangle {
            required property int index

            x: index * (Metrics.levelBarWidth + Metrics.levelBarGap)
            y: root.height - height
            width: Metrics.levelBarWidth
            height: Math.max(width, Math.round(root.height * (root.levels[index] ?? 0)))
            radius: width / 2
            color: root.color
        }
    }
}
