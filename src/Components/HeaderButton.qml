// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A button of a page's header: a symbol on a round ground of the look, with room for a finger about it.
IconButton {
    id: root

    readonly property real inset: (Metrics.touchTarget - Metrics.headerButton) / 2

    color: theme.primaryColor
    symbolSize: Metrics.symbolHeader
    topInset: inset
    bottomInset: inset
    leftInset: inset
    rightInset: inset

    background: SurfaceImage {
        objectName: "ground"
        surface: Surfaces.controlButton(root.theme, Metrics.headerButton)
        opacity: root.enabled ? 1 : Metrics.disabledOpacity

        ThemedHighlight {
            anchors.fill: parent
            radius: height / 2
            isHovered: root.hovered
            isPressed: root.down
            theme: root.theme
        }
        ThemedFocusRing {
            objectName: "focusRing"
            controlRadius: Metrics.headerButton / 2
            theme: root.theme
            visible: root.visualFocus
        }
    }
}
