// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// A sticker beside a title, in the pink look alone: any of them, turned a little to either side. It takes no room in
/// other looks.
Loader {
    id: root

    property real size: Metrics.titleStickerSize
    property AppTheme theme: ThemeEnvironment.theme

    active: theme.isKawaiiPink
    visible: active
    Accessible.ignored: true
    sourceComponent: KawaiiSticker {
        objectName: "sticker"
        size: root.size
        rotation: KawaiiDecorations.randomTilt()
        imageName: KawaiiDecorations.randomCartoon()
        theme: root.theme
    }
}
