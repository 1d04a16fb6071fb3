// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The sections of a page, one below the other, beneath its title.
Column {
    id: root

    required property string title
    required property string summary
    property AppTheme theme: ThemeEnvironment.theme

    spacing: 2 * Metrics.sectionGap
    topPadding: Metrics.sectionGap
    bottomPadding: 2 * Metrics.sectionGap

    Column {
        width: parent.width
        spacing: Metrics.rowSpacing

        StyledText {
            width: parent.width
            text: root.title
            style: TextStyles.largeTitle
            color: Surfaces.textOn(root.theme, Surfaces.background(root.theme), root.theme.primaryTextColor)
            Accessible.role: Accessible.Heading
            Accessible.name: root.title
        }
        StyledText {
            width: parent.width
            text: root.summary
            style: TextStyles.callout
            color: Surfaces.textOn(root.theme, Surfaces.background(root.theme), root.theme.secondaryTextColor)
            wrapMode: Text.Wrap
        }
    }
}
