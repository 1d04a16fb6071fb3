// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The look's ground of cards, behind what lies over it.
SurfaceImage {
    property AppTheme theme: ThemeEnvironment.theme
    property real cornerRadius: Metrics.cardRadius

    surface: Surfaces.themedCard(theme, cornerRadius)
}
