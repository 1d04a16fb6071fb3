// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Behind a whole screen: the gradient of the look, or its background colour.
Item {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    property surface surface: Surfaces.background(theme)

    Accessible.ignored: true

    SurfaceImage {
        id: image

        objectName: "background"
        anchors.fill: parent
        surface: root.surface
        pictureSize: drawnSize

        /// Follows the size of a window that is being dragged a few times a second only: the picture is large.
        property size drawnSize: Qt.size(0, 0)
        readonly property size wantedSize: Surfaces.backgroundSize(shapeSize)

        onWantedSizeChanged: follow()

        function follow() {
            if (rest.running || wantedSize.width <= 0 || wantedSize.height <= 0 || wantedSize === drawnSize)
                return;
            drawnSize = wantedSize;
            rest.start();
        }
    }
    Timer {
        id: rest

        interval: Metrics.redrawInterval
        onTriggered: image.follow()
    }
}
