// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The small text that says what is shown. It can be read in every look.
StyledText {
    property AppTheme theme: ThemeEnvironment.theme

    style: TextStyles.caption1
    color: Surfaces.textOn(theme, Surfaces.background(theme), theme.secondaryTextColor)
    horizontalAlignment: Text.AlignHCenter
    wrapMode: Text.Wrap
    elide: Text.ElideNone
}
