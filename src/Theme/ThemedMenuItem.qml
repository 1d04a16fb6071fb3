// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// An entry of ThemedMenu.
StyledMenuItem {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    ink: Surfaces.textOn(theme, Surfaces.themedCard(theme), destructive ? SystemColors.red : theme.primaryTextColor)

    background: ThemedHighlight {
        radius: Metrics.coverRadius
        isHovered: root.highlighted
        isPressed: root.down
        theme: root.theme
    }
}
