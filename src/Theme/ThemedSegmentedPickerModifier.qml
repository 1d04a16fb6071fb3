// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The look's ground of a segmented picker, behind what lies over it.
SurfaceImage {
    property AppTheme theme: ThemeEnvironment.theme
    property real cornerRadius: Metrics.coverRadius

    surface: Surfaces.themedSegmentedPicker(theme, cornerRadius)
}
