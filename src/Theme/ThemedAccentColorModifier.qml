// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What lies within takes the listener's accent: by these two colours, or by its palette.
Item {
    default property alias content: body.data
    readonly property color tint: ThemeColor.accent
    readonly property color accentColor: ThemeColor.accent

    palette.highlight: ThemeColor.accentFill
    palette.highlightedText: ThemeColor.accentInk
    palette.link: ThemeColor.accentText

    Item {
        id: body

        anchors.fill: parent
    }
}
