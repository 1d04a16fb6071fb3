// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// An application icon to choose, and its name.
ThemedChoiceCard {
    id: root

    /// Empty for the default icon.
    required property string iconName
    required property string displayName
    /// Name of its picture.
    required property string imageName
    property color accentColor: ThemeColor.accent

    implicitWidth: Metrics.appIconSize + 2 * Metrics.screenMargin
    padding: Metrics.screenMargin
    text: displayName
    cornerRadius: Metrics.sheetRadius
    strokeColor: accentColor

    contentItem: Column {
        spacing: Metrics.cardPadding

        AppIconPreview {
            anchors.horizontalCenter: parent.horizontalCenter
            imageName: root.imageName
            color: root.theme.secondaryTextColor
        }
        Row {
            readonly property int room: parent.width

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Metrics.grid

            StyledText {
                objectName: "label"
                width: Math.min(implicitWidth, parent.room - Metrics.symbolSmall - parent.spacing)
                text: root.displayName
                style: TextStyles.subheadline
                font.weight: root.isSelected ? Font.DemiBold : Font.Normal
                color: Surfaces.textOn(root.theme, Surfaces.themedCard(root.theme), root.theme.primaryTextColor)
            }
            SymbolIcon {
                objectName: "mark"
                anchors.verticalCenter: parent.verticalCenter
                visible: root.isSelected
                name: AppIcons.status.checkmarkCircle
                size: Metrics.symbolSmall
                color: root.accentColor
            }
        }
    }
}
