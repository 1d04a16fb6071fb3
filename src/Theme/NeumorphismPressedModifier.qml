// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The embossed ground of what lies over it, sunk.
SurfaceImage {
    property AppTheme theme: ThemeEnvironment.theme
    property real cornerRadius: Metrics.cardRadius
    /// Share of the usual strength of shadows and edges.
    property real intensity: 1

    surface: Surfaces.neumorphismPressed(theme, cornerRadius, intensity)
}
