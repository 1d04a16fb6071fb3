// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The look's frame over a large cover: shadows about it and a stroke on its edge.
Item {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    property real cornerRadius: Metrics.cardRadius
    /// Otherwise there is the stroke alone.
    property bool showsShadow: true

    Accessible.ignored: true

    SurfaceImage {
        objectName: "shadow"
        anchors.fill: parent
        visible: root.showsShadow
        surface: Surfaces.albumCoverShadow(root.theme, root.cornerRadius)
    }
    SurfaceImage {
        anchors.fill: parent
        surface: Surfaces.albumCoverStroke(root.theme, root.cornerRadius)
    }
}
