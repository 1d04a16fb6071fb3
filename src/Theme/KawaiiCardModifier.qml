// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A card with an outline and a soft shadow, behind what lies over it.
SurfaceImage {
    property AppTheme theme: ThemeEnvironment.theme
    property real cornerRadius: Metrics.sheetRadius

    surface: Surfaces.kawaiiCard(theme, cornerRadius)
}
