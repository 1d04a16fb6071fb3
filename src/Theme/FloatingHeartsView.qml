// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// Hearts that rise over what this item covers, and fade, in the pink look alone. Nothing moves and no timer runs
/// while nobody can see it, or on a desktop that wants no motion.
Item {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    readonly property FloatingHearts hearts: KawaiiDecorations.makeHearts(root)
    readonly property bool isShown: Motion.isSeen(visible, Window.visibility)
    readonly property bool isRunning: isShown && theme.isKawaiiPink && !Motion.isReduced

    Accessible.ignored: true

    Binding {
        target: root.hearts
        property: "size"
        value: Qt.size(root.width, root.height)
    }
    Binding {
        target: root.hearts
        property: "isRunning"
        value: root.isRunning
    }
    Repeater {
        model: root.hearts

        delegate: SymbolIcon {
            id: heart

            required property real heartX
            required property real heartY
            required property real heartScale
            required property real heartOpacity
            required property real heartRotation
            required property int duration

            objectName: "heart"
            x: heartX - width / 2
            y: heartY - height / 2
            opacity: heartOpacity
            rotation: heartRotation
            size: Math.round(Metrics.floatingHeart * heartScale)
            name: AppIcons.favorite.heartFill
            color: root.theme.primaryColor

            Behavior on y {
                NumberAnimation {
                    duration: heart.duration
                    easing.type: Easing.BezierSpline
                    easing.bezierCurve: Motion.easeOut
                }
            }
            Behavior on opacity {
                NumberAnimation {
                    duration: heart.duration
                    easing.type: Easing.BezierSpline
                    easing.bezierCurve: Motion.easeOut
                }
            }
        }
    }
}
