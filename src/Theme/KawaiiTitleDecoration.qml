// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A sticker beside a title, in the pink look alone: any of them, turned a little to either side. It takes no room in
/// other looks.
Item {
    id: root

    property real size: Metrics.titleStickerSize
    property AppTheme theme: ThemeEnvironment.theme
    /// The same in both schemes of the look.
    readonly property bool isPink: theme.isKawaiiPink

    implicitWidth: visible ? size : 0
    implicitHeight: implicitWidth
    visible: isPink
    Accessible.ignored: true

    // Chance decides anew each time that the look becomes the pink one.
    KawaiiSticker {
        objectName: "sticker"
        size: root.size
        rotation: root.isPink ? KawaiiDecorations.randomTilt() : 0
        imageName: root.isPink ? KawaiiDecorations.randomCartoon() : ""
        theme: root.theme
    }
}
