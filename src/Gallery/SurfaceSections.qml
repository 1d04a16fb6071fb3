// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel
import CadorelGallery

/// The grounds that everything lies on.
GallerySections {
    id: root

    readonly property int block: 88

    GallerySection {
        title: "浮起与凹下"
        types: "NeumorphismRaisedModifier · NeumorphismPressedModifier"
        columnsAtMost: 4
        stageHeight: root.block + 2 * Metrics.screenMargin

        GallerySpecimen {
            caption: "浮起"

            NeumorphismRaisedModifier {
                width: root.block
                height: root.block
            }
        }
        GallerySpecimen {
            caption: "浮起，强度 0.5"

            NeumorphismRaisedModifier {
                width: root.block
                height: root.block
                intensity: 0.5
            }
        }
        GallerySpecimen {
            caption: "浮起，圆形"

            NeumorphismRaisedModifier {
                width: root.block
                height: root.block
                cornerRadius: root.block / 2
            }
        }
        GallerySpecimen {
            caption: "凹下"

            NeumorphismPressedModifier {
                width: root.block
                height: root.block
            }
        }
        GallerySpecimen {
            caption: "凹下，强度 0.5"

            NeumorphismPressedModifier {
                width: root.block
                height: root.block
                intensity: 0.5
            }
        }
        GallerySpecimen {
            caption: "凹下，圆形"

            NeumorphismPressedModifier {
                width: root.block
                height: root.block
                cornerRadius: root.block / 2
            }
        }
        GallerySpecimen {
            caption: "凹下，细槽"

            NeumorphismPressedModifier {
                width: root.block
                height: Metrics.handleSize
                cornerRadius: Metrics.handleSize / 2
            }
        }
    }
    GallerySection {
        title: "卡片与按钮的底"
        types: "KawaiiCardModifier · ThemedCard · ThemedButtonBackground · ThemedSegmentedPickerModifier"
        columnsAtMost: 6
        stageHeight: root.block + 2 * Metrics.screenMargin

        GallerySpecimen {
            caption: "KawaiiCard"

            KawaiiCardModifier {
                width: root.block
                height: root.block
            }
        }
        GallerySpecimen {
            caption: "随外观的卡片"

            ThemedCard {
                width: root.block
                height: root.block
            }
        }
        GallerySpecimen {
            caption: "卡片，圆角 24"

            ThemedCard {
                width: root.block
                height: root.block
                cornerRadius: 24
            }
        }
        GallerySpecimen {
            caption: "按钮的底"

            ThemedButtonBackground {
                width: root.block
                height: Metrics.buttonHeight
            }
        }
        GallerySpecimen {
            caption: "按钮的底，按下"

            ThemedButtonBackground {
                width: root.block
                height: Metrics.buttonHeight
                isPressed: true
            }
        }
        GallerySpecimen {
            caption: "分段的底"

            ThemedSegmentedPickerModifier {
                width: root.block
                height: Metrics.buttonHeight
            }
        }
    }
    GallerySection {
        title: "行、封面边与页面"
        types: "ThemedRowModifier · AutoThemedRowModifier · ThemedArtworkModifier · ThemedListModifier · ThemedViewModifier"
        cell: 224
        stageHeight: root.block + 2 * Metrics.screenMargin

        GallerySpecimen {
            caption: "行的底"

            ThemedRowModifier {
                width: parent.width
                height: Metrics.rowHeight
            }
        }
        GallerySpecimen {
            caption: "行的底，取自周围"

            AutoThemedRowModifier {
                width: parent.width
                height: Metrics.rowHeight
            }
        }
        GallerySpecimen {
            caption: "行里封面的边"

            ArtworkImageView {
                source: GallerySamples.covers[2]
                cornerRadius: Metrics.coverRadius

                ThemedArtworkModifier {
                    anchors.fill: parent
                }
            }
        }
        GallerySpecimen {
            caption: "列表页"

            GalleryFrame {
                width: parent.width
                height: root.block

                ThemedListModifier {
                    anchors.fill: parent

                    ThemedPrimaryText {
                        anchors.centerIn: parent
                        text: "列表在这里"
                    }
                }
            }
        }
        GallerySpecimen {
            caption: "普通页"

            GalleryFrame {
                width: parent.width
                height: root.block

                ThemedViewModifier {
                    anchors.fill: parent

                    ThemedSecondaryText {
                        anchors.centerIn: parent
                        text: "内容在这里"
                    }
                }
            }
        }
    }
}
