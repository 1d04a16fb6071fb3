// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A plain round button within a control of a look.
IconButton {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    color: theme.secondaryTextColor

    background: ThemedHighlight {
        radius: height / 2
        isHovered: root.hovered
        isPressed: root.down
        isFocused: root.visualFocus
        theme: root.theme
    }
}
