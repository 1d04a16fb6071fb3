// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// The name of a control that shows a symbol only.
ToolTip {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    delay: Metrics.toolTipDelay
    padding: Metrics.rowSpacing

    contentItem: StyledText {
        text: root.text
        style: TextStyles.footnote
        color: Surfaces.ink(root.theme, root.theme.primaryTextColor)
    }
    background: SurfaceImage {
        surface: Surfaces.popup(root.theme, Metrics.coverRadius)
    }
}
