// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// The stickers, and what they decorate.
GallerySections {
    id: root

    readonly property int stage: 208
    readonly property var hearts: [
        {
            x: 0.2,
            y: 0.7,
            scale: 1.1,
            opacity: 0.5,
            rotation: -12
        },
        {
            x: 0.55,
            y: 0.45,
            scale: 0.7,
            opacity: 0.4,
            rotation: 20
        },
        {
            x: 0.9,
            y: 0.8,
            scale: 0.9,
            opacity: 0.45,
            rotation: 4
        },
        {
            x: 1.2,
            y: 0.25,
            scale: 1.2,
            opacity: 0.25,
            rotation: -24
        },
        {
            x: 1.4,
            y: 0.6,
            scale: 0.6,
            opacity: 0.5,
            rotation: 28
        }
    ]
    readonly property var stickers: ["cartoon1", "cartoon3", "cartoon4", "cartoon5", "cartoon6", "cartoon7", "cartoon8", "cartoon9", "cartoon10", "cartoon11", "cartoon12", "cartoon13", "cartoon14", "cartoon15", "cartoon16"]

    GallerySection {
        title: "贴纸"
        types: "KawaiiCartoon"
        cell: 136
        stageHeight: 112

        Repeater {
            model: root.stickers

            GallerySpecimen {
                id: sticker

                required property string modelData

                caption: modelData

                GalleryPicture {
                    name: sticker.modelData
                    size: 112
                }
            }
        }
    }
    GallerySection {
        title: "装饰"
        types: "KawaiiSticker · KawaiiFloatingDecorations · KawaiiCornerDecoration · KawaiiTitleDecoration · KawaiiEmptyStateDecoration · FloatingHeartsView"
        cell: GalleryMetrics.phoneColumn
        stageHeight: root.stage

        GallerySpecimen {
            caption: "散落的贴纸"

            GalleryFrame {
                width: parent.width
                height: root.stage

                ThemedBackground {
                    anchors.fill: parent
                }

                KawaiiFloatingDecorations {
                    anchors.fill: parent
                }
            }
        }
        GallerySpecimen {
            caption: "四角的贴纸"

            GalleryFrame {
                width: parent.width
                height: root.stage

                ThemedBackground {
                    anchors.fill: parent
                }

                KawaiiCornerDecoration {
                    corner: KawaiiCorners.TopLeading
                    imageName: root.stickers[0]
                }
                KawaiiCornerDecoration {
                    corner: KawaiiCorners.TopTrailing
                    imageName: root.stickers[4]
                }
                KawaiiCornerDecoration {
                    corner: KawaiiCorners.BottomLeading
                    imageName: root.stickers[8]
                }
                KawaiiCornerDecoration {
                    corner: KawaiiCorners.BottomTrailing
                    imageName: root.stickers[12]
                }
            }
        }
        GallerySpecimen {
            caption: "升起的心"

            GalleryFrame {
                width: parent.width
                height: root.stage

                ThemedBackground {
                    anchors.fill: parent
                }

                FloatingHeartsView {
                    anchors.fill: parent
                }
                // A still shows where they could be.
                Repeater {
                    model: Motion.isReduced && ThemeEnvironment.theme.isKawaiiPink ? root.hearts : []

                    SymbolIcon {
                        required property var modelData

                        x: modelData.x * root.stage
                        y: modelData.y * root.stage
                        name: AppIcons.favorite.heartFill
                        size: 20 * modelData.scale
                        color: SystemColors.pink
                        opacity: modelData.opacity
                        rotation: modelData.rotation
                    }
                }
            }
        }
        GallerySpecimen {
            caption: "标题旁的贴纸"

            GalleryFrame {
                width: parent.width
                height: root.stage

                ThemedBackground {
                    anchors.fill: parent
                }

                Row {
                    anchors.centerIn: parent
                    spacing: Metrics.rowSpacing

                    ThemedPrimaryText {
                        anchors.verticalCenter: parent.verticalCenter
                        text: "我的歌单"
                        style: TextStyles.title2
                    }
                    KawaiiTitleDecoration {
                        anchors.verticalCenter: parent.verticalCenter
                    }
                }
            }
        }
        GallerySpecimen {
            caption: "空页面的贴纸"

            GalleryFrame {
                width: parent.width
                height: root.stage

                ThemedBackground {
                    anchors.fill: parent
                }

                Column {
                    anchors.centerIn: parent
                    spacing: Metrics.rowSpacing

                    KawaiiEmptyStateDecoration {
                        anchors.horizontalCenter: parent.horizontalCenter
                    }
                    ThemedSecondaryText {
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: "这里还没有歌"
                    }
                }
            }
        }
        GallerySpecimen {
            caption: "转了 12° 的贴纸，与半透明的贴纸"

            Row {
                spacing: Metrics.sectionGap

                KawaiiSticker {
                    imageName: root.stickers[2]
                    rotation: 12
                }
                KawaiiSticker {
                    imageName: root.stickers[6]
                    opacity: 0.5
                }
            }
        }
    }
}
