// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What the servers beneath it have in common, in a list of sections. It reaches for nothing outside: this Qt makes
/// headers in a place of their own.
QuietText {
    required property string section

    width: ListView.view.width
    leftPadding: Metrics.screenMargin + Math.max(0, Math.round((width - Metrics.contentWidth) / 2))
    rightPadding: leftPadding
    topPadding: Metrics.cardPadding
    bottomPadding: Metrics.grid
    text: section
    style: TextStyles.subheadline
    font.weight: Font.DemiBold
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
