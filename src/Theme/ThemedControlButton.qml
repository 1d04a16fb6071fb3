// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A round button with a symbol; `text` is its name for screen readers.
ScaleButtonStyle {
    id: root

    required property string systemName
    property real size: Metrics.controlButton

    implicitWidth: size
    implicitHeight: size
    containmentMask: RoundTouchArea {
        diameter: root.size
    }

    background: SurfaceImage {
        objectName: "circle"
        surface: Surfaces.controlButton(root.theme, root.size)

        ThemedHighlight {
            anchors.fill: parent
            radius: height / 2
            isHovered: root.hovered
            isPressed: root.showsPress
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
            name: root.systemName
            size: Metrics.glyphOf(root.size)
            color: root.theme.useNeumorphism ? root.theme.primaryTextColor : root.theme.primaryColor
        }
    }
    StyledToolTip {
        text: root.text
        visible: root.text !== "" && root.hovered && !root.down
    }
}
