// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The look's frame over a large cover: shadows about it and a stroke on its edge.
Item {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    property real cornerRadius: Metrics.cardRadius

    Accessible.ignored: true

    SurfaceImage {
        anchors.fill: parent
        surface: Surfaces.albumCoverShadow(root.theme, root.cornerRadius)
    }
    SurfaceImage {
        anchors.fill: parent
        surface: Surfaces.albumCoverStroke(root.theme, root.cornerRadius)
    }
}
