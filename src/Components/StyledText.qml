// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Text in one of the text styles, by itself in the colour of the look around it. Never markup: titles come from files.
Text {
    property TextStyle style: TextStyles.body

    color: Surfaces.ink(ThemeEnvironment.theme, ThemeEnvironment.theme.primaryTextColor)
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
