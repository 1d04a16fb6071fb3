// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel
import CadorelGallery

/// The vocabulary of symbols.
GalleryPage {
    id: root

    /// Headings of the families, by their names in the sources.
    readonly property var headings: ({
            Playback: "播放",
            Audio: "声音",
            Music: "音乐",
            Navigation: "导航",
            Action: "操作",
            Favorite: "喜欢",
            File: "文件",
            User: "人物",
            Settings: "设置",
            Timer: "时间",
            Status: "状态",
            Appearance: "外观",
            Animation: "动画",
            Misc: "其他"
        })

    title: "图标"
    summary: "每个用途的名字，和它现在用的图形。"

    GallerySection {
        title: "大小与颜色"
        types: "SymbolIcon"

        Repeater {
            model: [Metrics.symbolTiny, Metrics.symbolSmall, Metrics.symbol, Metrics.symbolLarge, Metrics.symbolHuge]

            GallerySpecimen {
                id: sized

                required property int modelData

                caption: modelData

                SymbolIcon {
                    name: AppIcons.music.note
                    size: sized.modelData
                    color: root.theme.primaryTextColor
                }
            }
        }
        GallerySpecimen {
            caption: "primaryColor"

            SymbolIcon {
                name: AppIcons.favorite.heartFill
                color: root.theme.primaryColor
            }
        }
        GallerySpecimen {
            caption: "secondaryTextColor"

            SymbolIcon {
                name: AppIcons.favorite.heartFill
                color: root.theme.secondaryTextColor
            }
        }
        GallerySpecimen {
            caption: "不认识的名字"

            SymbolIcon {
                name: "No such symbol"
                color: root.theme.primaryTextColor
            }
        }
    }
    Repeater {
        model: GallerySamples.iconFamilies

        GallerySection {
            id: family

            required property var modelData

            title: root.headings[modelData.name]
            types: "AppIcons." + modelData.name
            cell: 120
            stageHeight: Metrics.touchTarget

            Repeater {
                model: family.modelData.icons

                GallerySymbol {
                    required property var modelData

                    name: modelData.symbol
                    use: modelData.constant
                }
            }
        }
    }
    GallerySection {
        title: "没有用途名的图形"
        types: "SymbolFiles"
        cell: 120
        stageHeight: Metrics.touchTarget

        Repeater {
            model: GallerySamples.otherSymbols

            GallerySymbol {
                required property string modelData

                name: modelData
            }
        }
    }
}
