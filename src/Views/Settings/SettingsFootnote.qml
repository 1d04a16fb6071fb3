// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What is to be said beneath a group of settings.
StyledText {
    property AppTheme look: ThemeEnvironment.theme

    leftPadding: Metrics.cardPadding
    rightPadding: Metrics.cardPadding
    topPadding: Metrics.rowSpacing
    width: parent?.width ?? implicitWidth
    style: TextStyles.footnote
    color: Surfaces.textOn(look, Surfaces.background(look), look.secondaryTextColor)
    wrapMode: Text.Wrap
}
