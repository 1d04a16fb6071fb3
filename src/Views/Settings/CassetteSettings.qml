// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// Which cassette the cover lies in, and how.
ThemedSettingsSection {
    id: root

    // Two places behind the point are what the eye tells apart; the third is shown since stored numbers have it.
    readonly property real fineStep: 0.005

    title: "磁带样式"
    seamInset: Metrics.cardPadding

    Flow {
        id: cards

        readonly property int columns: Math.max(2, Math.floor(width / (Metrics.cassetteCard + spacing)))

        width: parent?.width ?? 0
        padding: Metrics.cardPadding
        spacing: Metrics.cardPadding
        Accessible.role: Accessible.Grouping
        Accessible.name: root.title

        Repeater {
            model: AppearanceOptions.cassetteStyles

            delegate: CassetteStyleCard {
                required property var modelData

                objectName: "cassette" + modelData.rawValue
                width: Math.floor((cards.width - 2 * cards.padding - (cards.columns - 1) * cards.spacing) / cards.columns)
                theme: root.theme
                style: modelData
                isSelected: modelData.value === ThemeService.selectedCassetteStyle
                onSelected: ThemeService.setCassetteStyle(modelData.value)
            }
        }
    }
    CassettePreviewView {
        objectName: "cassettePreview"
        width: parent?.width ?? 0
        theme: root.theme
    }
    CassetteAdjustRow {
        objectName: "cassetteScale"
        theme: root.theme
        title: "封面大小"
        value: ThemeService.currentCassetteConfig.scale
        displayValue: value.toFixed(3)
        range: AppearanceOptions.cassetteScales
        step: root.fineStep
        onUpdated: value => ThemeService.setCassetteScale(value)
    }
    CassetteAdjustRow {
        objectName: "cassetteOffsetX"
        theme: root.theme
        title: "水平偏移"
        value: ThemeService.currentCassetteConfig.offsetX
        displayValue: value.toFixed(3)
        range: AppearanceOptions.cassetteOffsets
        step: root.fineStep
        onUpdated: value => ThemeService.setCassetteOffsetX(value)
    }
    CassetteAdjustRow {
        objectName: "cassetteOffsetY"
        theme: root.theme
        title: "垂直偏移"
        value: ThemeService.currentCassetteConfig.offsetY
        displayValue: value.toFixed(3)
        range: AppearanceOptions.cassetteOffsets
        step: root.fineStep
        onUpdated: value => ThemeService.setCassetteOffsetY(value)
    }
    SheetRow {
        objectName: "cassetteReset"
        theme: root.theme
        symbol: AppIcons.action.reset
        mark: ""
        text: "重置为默认"
        onClicked: ThemeService.resetCurrentCassetteConfig()
    }
}
