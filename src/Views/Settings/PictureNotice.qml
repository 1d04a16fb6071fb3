// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// Why the picture that was chosen last is not taken. Takes no room while there is nothing to say.
StyledText {
    required property AppTheme look

    topPadding: Metrics.rowSpacing
    visible: text !== ""
    style: TextStyles.footnote
    color: Surfaces.textOn(look, Surfaces.background(look), SystemColors.red)
    wrapMode: Text.Wrap
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text
}
