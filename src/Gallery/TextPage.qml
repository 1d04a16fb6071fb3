// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// The text styles, what mixed lines look like, and all colours.
GalleryPage {
    id: root

    readonly property var themeColors: ["backgroundColor", "surfaceColor", "primaryColor", "primaryTextColor", "secondaryTextColor", "lightShadow", "darkShadow"]
    readonly property var systemColors: ["background", "secondaryBackground", "tertiaryBackground", "label", "secondaryLabel", "tertiaryLabel", "separator", "gray", "brown", "red", "orange", "yellow", "green", "mint", "teal", "blue", "indigo", "purple", "pink", "accent"]

    title: "文字与颜色"
    summary: "文字的样式，中文、拉丁字母与表情同在一行，外观与系统的颜色。"

    GallerySection {
        title: "文字样式"
        types: "TextStyles"
        cell: 320
        columnsAtMost: 2
        stageHeight: 0

        Repeater {
            model: ["largeTitle", "title1", "title2", "title3", "headline", "body", "callout", "subheadline", "footnote", "caption1", "caption2"]

            GalleryTextStyle {
                required property string modelData

                name: modelData
            }
        }
    }
    GallerySection {
        title: "同在一行"
        types: "Noto Sans CJK SC · Noto Color Emoji"
        cell: GalleryMetrics.phoneColumn
        stageHeight: 0

        Repeater {
            model: ["夜航 Night Voyage 🌙 2046", "Ünïcödé、かな、한국어 ✨ gjpqy", "（标点，全角）(half) “引号” 3:05", "❤️ 喜欢 ♥ Loved 💗"]

            GallerySpecimen {
                id: mixed

                required property string modelData

                Column {
                    width: parent.width

                    ThemedPrimaryText {
                        objectName: "sample"
                        width: parent.width
                        text: mixed.modelData
                        theme: root.theme
                    }
                    ThemedSecondaryText {
                        objectName: "sample"
                        width: parent.width
                        text: mixed.modelData
                        style: TextStyles.footnote
                        theme: root.theme
                    }
                    ThemedAccentText {
                        objectName: "sample"
                        width: parent.width
                        text: mixed.modelData
                        style: TextStyles.headline
                        theme: root.theme
                    }
                }
            }
        }
    }
    GallerySection {
        title: "外观的颜色"
        types: "AppTheme"
        cell: 128
        stageHeight: 0

        Repeater {
            model: root.themeColors

            GallerySwatch {
                required property string modelData

                name: modelData
                color: root.theme[modelData]
            }
        }
    }
    GallerySection {
        title: "外观的背景"
        types: "ThemedBackground"
        cell: root.width
        stageHeight: 0

        GallerySpecimen {
            GalleryFrame {
                width: parent.width
                height: 160

                ThemedBackground {
                    anchors.fill: parent
                }
            }
        }
    }
    GallerySection {
        title: "系统的颜色"
        types: "SystemColors"
        cell: 128
        stageHeight: 0

        Repeater {
            model: root.systemColors

            GallerySwatch {
                required property string modelData

                name: modelData
                color: SystemColors[modelData]
            }
        }
    }
}
