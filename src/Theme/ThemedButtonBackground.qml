// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The look's ground of a button, behind what lies over it.
SurfaceImage {
    property AppTheme theme: ThemeEnvironment.theme
    property bool isPressed: false
    property real cornerRadius: Metrics.cardRadius

    surface: Surfaces.themedButton(theme, isPressed, cornerRadius)
}
