// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The look's frame over the cover of a row.
SurfaceImage {
    property AppTheme theme: ThemeEnvironment.theme
    property real cornerRadius: Metrics.coverRadius

    surface: Surfaces.themedRowArtwork(theme, cornerRadius)
}
