// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The round button that plays and pauses.
ScaleButtonStyle {
    id: root

    property bool isPlaying: false
    property real size: Metrics.playButton
    ink: theme.useNeumorphism ? theme.primaryColor : SystemColors.accentInk

    implicitWidth: size
    implicitHeight: size
    containmentMask: RoundTouchArea {
        diameter: root.size
    }
    text: isPlaying ? "暂停" : "播放"

    background: SurfaceImage {
        objectName: "circle"
        surface: Surfaces.playButton(root.theme, root.size)

        ThemedHighlight {
            objectName: "highlight"
            anchors.fill: parent
            radius: height / 2
            isHovered: root.hovered
            isPressed: root.showsPress
            ink: root.ink
            theme: root.theme
        }
        ThemedFocusRing {
            objectName: "focusRing"
            controlRadius: root.size / 2
            theme: root.theme
            visible: root.visualFocus
        }
    }
    contentItem: Item {
        SymbolIcon {
            objectName: "glyph"
            anchors.centerIn: parent
            // The triangle alone is heavier on its left.
            anchors.horizontalCenterOffset: root.isPlaying ? 0 : Metrics.playGlyphShift
            name: root.isPlaying ? AppIcons.playback.pause : AppIcons.playback.play
            size: Metrics.glyphOf(root.size)
            color: root.ink
        }
    }
}
