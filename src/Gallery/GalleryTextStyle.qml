// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A line in a text style, and what the style is.
GallerySpecimen {
    id: root

    required property string name
    readonly property TextStyle style: TextStyles[name]
    property AppTheme theme: ThemeEnvironment.theme

    Item {
        width: parent.width
        height: Math.max(line.height, facts.height)

        StyledText {
            id: line

            width: parent.width - facts.width - Metrics.screenMargin
            text: "音乐 Music 🎵"
            style: root.style
            color: root.theme.primaryTextColor
        }
        GalleryCaption {
            id: facts

            anchors.right: parent.right
            anchors.baseline: line.baseline
            width: Math.min(implicitWidth, parent.width / 2)
            horizontalAlignment: Text.AlignRight
            text: root.name + " " + root.style.size + "/" + root.style.line
            theme: root.theme
        }
    }
}
