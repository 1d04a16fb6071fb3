// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A large sticker above what an empty screen says, in the pink look alone. It takes no room in other looks.
Column {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    /// The same in both schemes of the look.
    readonly property bool isPink: theme.isKawaiiPink

    visible: isPink
    Accessible.ignored: true

    KawaiiSticker {
        objectName: "sticker"
        anchors.horizontalCenter: parent.horizontalCenter
        visible: root.isPink
        size: Metrics.largeStickerSize
        // Chance decides anew each time that the look becomes the pink one.
        imageName: root.isPink ? KawaiiDecorations.randomCartoon() : ""
        theme: root.theme
    }
}
