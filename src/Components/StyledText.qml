// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// Text in one of the text styles. Never markup: titles come from files.
Text {
    property TextStyle style: TextStyles.body

    color: SystemColors.label
    font.pixelSize: style.size
    font.weight: style.weight
    lineHeight: style.line
    lineHeightMode: Text.FixedHeight
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
    // Arabic and Hebrew names, too, start where the column starts.
    horizontalAlignment: Text.AlignLeft
    elide: Text.ElideRight
}
