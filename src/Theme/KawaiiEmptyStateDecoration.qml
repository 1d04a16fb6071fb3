// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A large sticker above what an empty screen says, in the pink look alone. It takes no room in other looks.
Column {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    visible: theme.isKawaiiPink
    Accessible.ignored: true

    KawaiiSticker {
        objectName: "sticker"
        anchors.horizontalCenter: parent.horizontalCenter
        visible: root.theme.isKawaiiPink
        size: Metrics.largeStickerSize
        imageName: root.theme.isKawaiiPink ? KawaiiDecorations.randomCartoon() : ""
        theme: root.theme
    }
}
