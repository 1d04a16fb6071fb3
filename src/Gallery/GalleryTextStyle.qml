// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A line in a text style, and what the style is.
GallerySpecimen {
    id: root

    required property string name
    readonly property TextStyle style: TextStyles[name]
    property AppTheme theme: ThemeEnvironment.theme

    Column {
        width: parent.width

        StyledText {
            width: parent.width
            text: "音乐 Music 🎵"
            style: root.style
            color: root.theme.primaryTextColor
        }
        GalleryCaption {
            width: parent.width
            horizontalAlignment: Text.AlignLeft
            text: root.name + " " + root.style.size + "/" + root.style.line
            theme: root.theme
        }
    }
}
