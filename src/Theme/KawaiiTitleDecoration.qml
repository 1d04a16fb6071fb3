// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A sticker beside a title, in the pink look alone: any of them, turned a little to either side. It takes no room in
/// other looks.
Item {
    id: root

    property real size: Metrics.titleStickerSize
    property AppTheme theme: ThemeEnvironment.theme

    implicitWidth: visible ? size : 0
    implicitHeight: implicitWidth
    visible: theme.isKawaiiPink
    Accessible.ignored: true

    // Chance decides anew each time that the look becomes the pink one.
    KawaiiSticker {
        objectName: "sticker"
        size: root.size
        rotation: root.theme.isKawaiiPink ? KawaiiDecorations.randomTilt() : 0
        imageName: root.theme.isKawaiiPink ? KawaiiDecorations.randomCartoon() : ""
        theme: root.theme
    }
}
