// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The heading of a group of rows.
Item {
    id: root

    property string title
    property AppTheme theme: ThemeEnvironment.theme

    implicitWidth: label.implicitWidth
    implicitHeight: label.implicitHeight
    Accessible.role: Accessible.Heading
    Accessible.name: title

    StyledText {
        id: label

        objectName: "sectionTitle"
        width: parent.width
        text: root.title
        style: TextStyles.subheadline
        font.weight: Font.DemiBold
        color: root.theme.secondaryTextColor
        Accessible.ignored: true
    }
}
