// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic

/// The name of a control that shows a symbol only.
ToolTip {
    id: root

    delay: Metrics.toolTipDelay
    padding: Metrics.rowSpacing

    contentItem: StyledText {
        text: root.text
        style: TextStyles.footnote
    }
    background: Rectangle {
        color: SystemColors.tertiaryBackground
        border.color: SystemColors.separator
        border.width: Metrics.hairline
        radius: Metrics.coverRadius
    }
}
