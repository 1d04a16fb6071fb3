// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// Bars about a cover that move like the music. The item is as large as the cover; the bars stand around it, up to
/// Metrics.waveReach from it. They follow the player only while they are in sight and something plays, and lie down
/// when it stops.
Item {
    id: root

    required property AudioPlayerService player
    /// Of the cover.
    property real cornerRadius: 0
    property color color: ThemeColor.accent

    readonly property bool isShown: Motion.isSeen(visible, Window.visibility)
    readonly property bool isRunning: isShown && player.isPlaying && !Motion.isReduced
    /// Of the last tick that something played.
    property var levels: []
    /// How much of its level a bar shows: falls to nothing when the music stops.
    property real energy: isRunning ? 1 : 0
    readonly property int count: WaveRing.count(width, height, cornerRadius, Metrics.waveGap, Metrics.waveSpacing)
    readonly property real restingScale: Metrics.waveBarWidth / Metrics.waveBarLength

    Accessible.ignored: true

    Behavior on energy {
        NumberAnimation {
            duration: Metrics.restDuration
            easing.type: Easing.BezierSpline
            easing.bezierCurve: Motion.easeOut
        }
    }
    Connections {
        target: root.player
        enabled: root.isRunning

        function onAudioLevelsChanged(): void {
            // A copy: the levels themselves fall at once when the music stops.
            root.levels = [...root.player.audioLevels];
        }
    }
    Repeater {
        model: root.count

        delegate: Rectangle {
            id: bar

            required property int index
            readonly property waveBar place: WaveRing.bar(index, root.count, root.width, root.height, root.cornerRadius, Metrics.waveGap)

            objectName: "bar"
            x: place.x - width / 2
            y: place.y - height
            width: Metrics.waveBarWidth
            height: Metrics.waveBarLength
            radius: width / 2
            antialiasing: true
            color: root.color
            transform: [
                Scale {
                    origin.y: bar.height
                    yScale: root.restingScale + (1 - root.restingScale) * (root.levels[bar.place.level] ?? 0) * root.energy
                },
                Rotation {
                    origin.x: bar.width / 2
                    origin.y: bar.height
                    angle: bar.place.angle
                }
            ]
        }
    }
}
