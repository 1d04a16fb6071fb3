// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// The colour behind the player's screen.
ThemedSheet {
    id: root

    readonly property var choices: [
        { name: "紫色", color: SystemColors.purple },
        { name: "蓝色", color: SystemColors.blue },
        { name: "青色", color: SystemColors.teal },
        { name: "绿色", color: SystemColors.green },
        { name: "黄色", color: SystemColors.yellow },
        { name: "橙色", color: SystemColors.orange },
        { name: "红色", color: SystemColors.red },
        { name: "粉色", color: SystemColors.pink },
        { name: "靛蓝", color: SystemColors.indigo },
        { name: "薄荷", color: SystemColors.mint },
        { name: "棕色", color: SystemColors.brown },
        { name: "灰色", color: SystemColors.gray }
    ]

    title: "选择背景颜色"
    acceptName: "backgroundColorDone"

    ThemedSettingsSection {
        width: parent.width
        title: "预览效果"

        Item {
            width: parent?.width ?? 0
            height: Metrics.colorPreview + 2 * Metrics.rowSpacing

            Rectangle {
                objectName: "colorPreview"
                anchors.fill: parent
                anchors.margins: Metrics.rowSpacing
                radius: Metrics.coverRadius
                color: ThemeService.customBackgroundColor
            }
        }
    }
    Grid {
        id: swatches

        columns: width < Metrics.wideOffsetButtons ? 3 : 4
        width: parent.width
        spacing: Metrics.cardPadding

        Repeater {
            model: root.choices

            delegate: ThemedChoiceCard {
                id: swatch

                required property int index
                required property var modelData

                objectName: "swatch" + index
                width: Math.floor((swatches.width - (swatches.columns - 1) * swatches.spacing) / swatches.columns)
                padding: Metrics.rowSpacing
                theme: root.theme
                text: modelData.name
                isSelected: String(modelData.color) === String(ThemeService.customBackgroundColor)
                onClicked: ThemeService.setCustomBackgroundColor(modelData.color)

                contentItem: Column {
                    spacing: Metrics.grid

                    Rectangle {
                        objectName: "swatchColor"
                        anchors.horizontalCenter: parent.horizontalCenter
                        width: Metrics.swatch
                        height: width
                        radius: width / 2
                        color: swatch.modelData.color

                        SymbolIcon {
                            anchors.centerIn: parent
                            name: swatch.isSelected ? AppIcons.status.checkmark : ""
                            size: Metrics.symbolSmall
                            color: SystemColors.accentInk
                        }
                    }
                    StyledText {
                        width: parent.width
                        text: swatch.text
                        style: TextStyles.footnote
                        color: Surfaces.textOn(root.theme, Surfaces.themedCard(root.theme), root.theme.primaryTextColor)
                        horizontalAlignment: Text.AlignHCenter
                    }
                }
            }
        }
    }
}
