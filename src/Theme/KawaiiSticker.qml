// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A sticker; the pink look alone has any. `rotation` and `opacity` are those of every item.
Item {
    id: root

    /// Name of its picture.
    property string imageName
    property real size: Metrics.stickerSize
    property AppTheme theme: ThemeEnvironment.theme

    implicitWidth: size
    implicitHeight: size
    Accessible.ignored: true

    Image {
        // Stickers of nearly one size share one picture.
        readonly property int drawnSize: Math.ceil(root.size / Metrics.stickerStep) * Metrics.stickerStep

        objectName: "picture"
        anchors.fill: parent
        asynchronous: true
        antialiasing: true
        fillMode: Image.PreserveAspectFit
        sourceSize.width: drawnSize
        sourceSize.height: drawnSize
        source: root.theme.isKawaiiPink && drawnSize > 0 ? KawaiiIcon.artworkFile(root.imageName) : ""
    }
}
