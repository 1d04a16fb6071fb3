// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// A round button with a symbol; `text` is its name for screen readers.
ScaleButtonStyle {
    id: root

    required property string systemName
    property real size: 44

    implicitWidth: size
    implicitHeight: size

    background: SurfaceImage {
        surface: Surfaces.controlButton(root.theme, root.size)

        ThemedFocusRing {
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
            size: Math.round(0.4 * root.size)
            color: root.theme.useNeumorphism ? root.theme.primaryTextColor : root.theme.primaryColor
            opacity: root.enabled ? 1 : Metrics.disabledOpacity
        }
    }
}
