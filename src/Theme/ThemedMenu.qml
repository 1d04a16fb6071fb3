// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A menu of a look, on an opaque ground: it can lie over anything.
StyledMenu {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    background: Rectangle {
        color: root.theme.surfaceColor
        border.color: Contrast.over(Qt.alpha(root.theme.primaryTextColor, Metrics.pressedOpacity), root.theme.surfaceColor)
        border.width: Metrics.hairline
        radius: Metrics.cardRadius
    }
}
