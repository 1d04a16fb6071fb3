// SPDX-License-Identifier: GPL-3.0-or-later
import Cadorel

/// Text in the colour of what adds to something.
StyledText {
    property AppTheme theme: ThemeEnvironment.theme

    color: theme.secondaryTextColor
}
