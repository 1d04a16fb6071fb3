// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// A large sticker above what an empty screen says, in the pink look alone. It takes no room in other looks.
Column {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    visible: theme.isKawaiiPink
    Accessible.ignored: true

    Loader {
        anchors.horizontalCenter: parent.horizontalCenter
        active: root.theme.isKawaiiPink
        sourceComponent: KawaiiSticker {
            objectName: "sticker"
            size: Metrics.largeStickerSize
            imageName: KawaiiDecorations.randomCartoon()
            theme: root.theme
        }
    }
}
