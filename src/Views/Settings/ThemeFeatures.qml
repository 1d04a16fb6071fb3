// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// What a look is like, in words; the embossed look says nothing of itself.
Column {
    id: root

    property AppTheme theme: ThemeEnvironment.theme
    readonly property var features: theme.isKawaiiPink ? [
        {
            symbol: AppIcons.settings.theme,
            label: "渐变粉色背景"
        },
        {
            symbol: AppIcons.appearance.layered,
            label: "超大圆角 (28pt)"
        },
        {
            symbol: AppIcons.favorite.starFill,
            label: "卡通装饰贴纸"
        },
        {
            symbol: AppIcons.favorite.heartFill,
            label: "粉色图标"
        }
    ] : theme.isClassic ? [
        {
            symbol: AppIcons.settings.appearance,
            label: "跟随系统深浅色"
        },
        {
            symbol: AppIcons.appearance.layered,
            label: "简约风格"
        }
    ] : []

    visible: features.length > 0

    ThemedSettingsSection {
        width: parent.width
        title: "主题特点"
        theme: root.theme

        Repeater {
            model: root.features

            delegate: SheetRowContent {
                required property var modelData

                width: parent?.width ?? 0
                symbol: modelData.symbol
                title: modelData.label
                theme: root.theme
                Accessible.role: Accessible.StaticText
                Accessible.name: title
            }
        }
    }
    SettingsFootnote {
        look: root.theme
        visible: root.theme.isKawaiiPink
        text: "粉粉主题充满可爱元素，适合喜欢卡哇伊风格的你 💕"
    }
}
