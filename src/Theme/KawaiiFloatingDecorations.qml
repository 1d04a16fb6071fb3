// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// Pale stickers scattered over the item, in the pink look alone.
Item {
    id: root

    property int count: 8
    property AppTheme theme: ThemeEnvironment.theme

    Accessible.ignored: true

    Repeater {
        model: root.theme.isKawaiiPink ? root.count : 0

        delegate: KawaiiSticker {
            required property int index
            readonly property stickerPlace place: KawaiiDecorations.scattered(index, root.width, root.height)

            objectName: "sticker" + index
            x: place.x - width / 2
            y: place.y - height / 2
            width: size
            height: size
            size: place.size
            rotation: place.rotation
            opacity: place.opacity
            imageName: place.imageName
            theme: root.theme
        }
    }
}
