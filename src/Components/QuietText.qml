// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Text that adds to another one: paler, and still to be read on every ground of the look.
StyledText {
    style: TextStyles.footnote
    color: Surfaces.ink(ThemeEnvironment.theme, ThemeEnvironment.theme.secondaryTextColor)
}
