// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Covers the window while files are held over it.
Rectangle {
    id: root

    property AppTheme theme: ThemeEnvironment.theme

    color: SystemColors.scrim
    Accessible.ignored: true

    Rectangle {
        anchors.fill: parent
        anchors.margins: Metrics.screenMargin
        radius: Metrics.sheetRadius
        color: root.theme.surfaceColor
        border.color: root.theme.primaryColor
        border.width: Metrics.focusRing

        Column {
            anchors.centerIn: parent
            spacing: Metrics.cardPadding

            SymbolIcon {
                anchors.horizontalCenter: parent.horizontalCenter
                name: AppIcons.action.download
                size: Metrics.symbolHuge
                color: root.theme.primaryColor
            }
            StyledText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "松开以导入"
                style: TextStyles.title2
                color: Surfaces.ink(root.theme, root.theme.primaryColor)
            }
        }
    }
}
