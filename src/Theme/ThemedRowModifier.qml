// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The look's ground of a row of a list, behind what lies over it.
SurfaceImage {
    property AppTheme theme: ThemeEnvironment.theme

    surface: Surfaces.themedRow(theme)
}
