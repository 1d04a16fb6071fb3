// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A setting on a card that is on or off.
SwitchRow {
    id: root

    property AppTheme look: ThemeEnvironment.theme

    width: parent?.width ?? implicitWidth
    implicitHeight: Math.max(Metrics.settingsItemHeight, TextStyles.body.line + 2 * Metrics.rowSpacing)
    background: ThemedHighlight {
        radius: Metrics.coverRadius
        isHovered: root.hovered
        isPressed: root.down
        isFocused: root.visualFocus
        theme: root.look
    }
}
