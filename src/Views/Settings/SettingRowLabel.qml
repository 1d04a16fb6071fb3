// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The name of a setting on a card and, at the end of the line, how it stands. Where the line has no room for both, how
/// it stands comes beneath.
Item {
    id: root

    property string title
    property string valueText
    property AppTheme theme: ThemeEnvironment.theme
    readonly property surface ground: Surfaces.themedCard(theme)
    readonly property bool isOneLine: titleText.implicitWidth + valueLabel.implicitWidth + Metrics.rowSpacing <= width

    implicitHeight: isOneLine ? titleText.implicitHeight : titleText.implicitHeight + valueLabel.implicitHeight

    StyledText {
        id: titleText

        objectName: "settingTitle"
        width: root.isOneLine ? implicitWidth : root.width
        text: root.title
        color: Surfaces.textOn(root.theme, root.ground, root.theme.primaryTextColor)
    }
    StyledText {
        id: valueLabel

        objectName: "settingValue"
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        width: Math.min(implicitWidth, root.width)
        text: root.valueText
        style: TextStyles.subheadline
        color: Surfaces.textOn(root.theme, root.ground, root.theme.secondaryTextColor)
    }
}
