// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// How a line of lyrics comes in when it becomes the current one: what is added to its place, size and opacity.
QtObject {
    id: root

    property int style: ThemeService.lyricAnimationStyle
    /// From 0 to 1, and a little beyond where it springs.
    property real progress: 1

    readonly property real offsetX: style === LyricAnimationStyles.Type.slide ? (progress - 1) * Metrics.lyricEntrance : 0
    readonly property real offsetY: style === LyricAnimationStyles.Type.typewriter ? (progress - 1) * Metrics.lyricEntrance : 0
    readonly property real scale: 1 + (progress - 1) * (style === LyricAnimationStyles.Type.bounce ? Metrics.lyricBounce : style === LyricAnimationStyles.Type.scale ? Metrics.lyricGrowth : 0)
    readonly property bool fades: style === LyricAnimationStyles.Type.fade || style === LyricAnimationStyles.Type.slide || style === LyricAnimationStyles.Type.typewriter
    readonly property real opacity: fades ? Math.max(0, Math.min(1, progress)) : 1

    readonly property NumberAnimation animation: ResponseSpring {
        readonly property bool springs: root.style === LyricAnimationStyles.Type.bounce || root.style === LyricAnimationStyles.Type.typewriter

        target: root
        property: "progress"
        from: 0
        to: 1
        response: Metrics.lyricEntranceResponse
        damping: root.style === LyricAnimationStyles.Type.bounce ? Metrics.lyricBounceDamping : Metrics.lyricEntranceDamping
        easeOut: springs ? 0 : Metrics.lyricEntranceDuration
    }

    function start(): void {
        animation.restart();
    }
    function finish(): void {
        animation.stop();
        progress = 1;
    }
}
