// SPDX-License-Identifier: GPL-3.0-or-later
import Cadorel

/// Text in the look's own accent.
StyledText {
    property AppTheme theme: ThemeEnvironment.theme

    color: theme.primaryColor
}
