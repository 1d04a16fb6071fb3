// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A colour, its name and its number.
GallerySpecimen {
    id: root

    required property string name
    required property color color

    caption: name + "\n" + color.toString().toUpperCase()

    Rectangle {
        width: parent.width
        height: 64
        radius: Metrics.cardRadius
        color: root.color
        border.width: Metrics.hairline
        border.color: SystemColors.separator
    }
}
