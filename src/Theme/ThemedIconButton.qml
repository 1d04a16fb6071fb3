// SPDX-License-Identifier: GPL-3.0-or-later
import Cadorel

/// A plain round button within a control of a look.
IconButton {
    color: theme.secondaryTextColor
}
