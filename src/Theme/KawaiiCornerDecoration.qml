// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A sticker that peeks out of a corner of what this item fills, in the pink look alone.
Item {
    id: root

    property string imageName
    property real size: Metrics.stickerSize
    /// One of KawaiiCorners.
    property int corner: KawaiiCorners.TopTrailing
    property AppTheme theme: ThemeEnvironment.theme
    readonly property point centre: KawaiiDecorations.cornerCentre(corner, size, width, height)

    anchors.fill: parent
    Accessible.ignored: true

    KawaiiSticker {
        objectName: "sticker"
        x: root.centre.x - width / 2
        y: root.centre.y - height / 2
        width: size
        height: size
        visible: root.theme.isKawaiiPink
        opacity: Metrics.cornerStickerOpacity
        size: root.size
        imageName: root.imageName
        theme: root.theme
    }
}
