// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What lies within takes the listener's accent: by these two colours, or by its palette. It is as large as what lies
/// within unless it is given a size.
Item {
    id: root

    default property alias content: body.data
    property AppTheme theme: ThemeEnvironment.theme
    readonly property color tint: ThemeColor.accent
    readonly property color accentColor: ThemeColor.accent

    implicitWidth: body.childrenRect.width
    implicitHeight: body.childrenRect.height
    palette.highlight: ThemeColor.accentFill
    palette.highlightedText: ThemeColor.accentInk
    // On the look's background and on its cards alike.
    palette.link: Surfaces.textOn(theme, Surfaces.background(theme), Surfaces.textOn(theme, Surfaces.themedCard(theme), ThemeColor.accent))

    Item {
        id: body

        anchors.fill: parent
    }
}
