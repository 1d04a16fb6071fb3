// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// A menu of a look, on an opaque ground: it can lie over anything.
Menu {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    implicitWidth: Metrics.menuWidth
    padding: Metrics.grid
    margins: Metrics.rowSpacing

    background: SurfaceImage {
        objectName: "menuGround"
        surface: Surfaces.popup(root.theme)
    }
}
