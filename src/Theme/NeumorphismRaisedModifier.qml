// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The embossed ground of what lies over it, raised.
SurfaceImage {
    property AppTheme theme: ThemeEnvironment.theme
    property real cornerRadius: Metrics.cardRadius
    /// Share of the shadows' usual strength.
    property real intensity: 1

    surface: Surfaces.neumorphismRaised(theme, cornerRadius, intensity)
}
