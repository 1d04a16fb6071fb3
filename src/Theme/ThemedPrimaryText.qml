// SPDX-License-Identifier: GPL-3.0-or-later
import Cadorel

/// Text in the colour of what a listener reads first.
StyledText {
    property AppTheme theme: ThemeEnvironment.theme

    color: theme.primaryTextColor
}
