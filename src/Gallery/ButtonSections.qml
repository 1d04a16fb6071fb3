// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// Everything that is pressed.
GallerySections {
    id: root

    /// Captions of the poses, in their order.
    readonly property var poses: ["平时", "悬停", "按下", "键盘焦点", "停用"]

    GallerySection {
        title: "按钮样式"
        types: "ThemedButtonStyle · NeumorphicButtonStyle · KawaiiButtonStyle · ScaleButtonStyle"
        columnsAtMost: root.poses.length

        Repeater {
            model: root.poses

            GallerySpecimen {
                required property int index
                required property string modelData

                caption: "随外观 · " + modelData
                pose: index

                ThemedButtonStyle {
                    text: "播放全部"
                }
            }
        }
        Repeater {
            model: root.poses

            GallerySpecimen {
                required property int index
                required property string modelData

                caption: "拟态 · " + modelData
                pose: index

                NeumorphicButtonStyle {
                    text: "重试"
                }
            }
        }
        Repeater {
            model: root.poses

            GallerySpecimen {
                required property int index
                required property string modelData

                caption: "可爱 · " + modelData
                pose: index

                KawaiiButtonStyle {
                    text: "收藏"
                }
            }
        }
        Repeater {
            model: root.poses

            GallerySpecimen {
                required property int index
                required property string modelData

                caption: "缩放 · " + modelData
                pose: index

                ScaleButtonStyle {
                    text: "更多"
                }
            }
        }
    }
    GallerySection {
        title: "播放按钮"
        types: "ThemedPlayButton"
        columnsAtMost: root.poses.length
        stageHeight: 104

        Repeater {
            model: root.poses

            GallerySpecimen {
                required property int index
                required property string modelData

                caption: modelData
                pose: index

                ThemedPlayButton {}
            }
        }
        GallerySpecimen {
            caption: "正在播放"

            ThemedPlayButton {
                isPlaying: true
            }
        }
        GallerySpecimen {
            caption: "小，44"

            ThemedPlayButton {
                size: 44
            }
        }
        GallerySpecimen {
            caption: "大，72"

            ThemedPlayButton {
                size: 72
                isPlaying: true
            }
        }
    }
    GallerySection {
        title: "控制按钮"
        types: "ThemedControlButton"
        columnsAtMost: root.poses.length

        Repeater {
            model: root.poses

            GallerySpecimen {
                required property int index
                required property string modelData

                caption: modelData
                pose: index

                ThemedControlButton {
                    systemName: AppIcons.playback.next
                    text: "下一首"
                }
            }
        }
        GallerySpecimen {
            caption: "上一首"

            ThemedControlButton {
                systemName: AppIcons.playback.previous
                text: "上一首"
            }
        }
        GallerySpecimen {
            caption: "随机"

            ThemedControlButton {
                systemName: AppIcons.playback.shuffle
                text: "随机播放"
            }
        }
        GallerySpecimen {
            caption: "大，56"

            ThemedControlButton {
                size: 56
                systemName: AppIcons.playback.repeatAll
                text: "循环播放"
            }
        }
    }
    GallerySection {
        title: "喜欢"
        types: "ThemedHeartButton"
        columnsAtMost: root.poses.length

        Repeater {
            model: root.poses

            GallerySpecimen {
                required property int index
                required property string modelData

                caption: modelData
                pose: index

                ThemedHeartButton {}
            }
        }
        Repeater {
            model: root.poses

            GallerySpecimen {
                required property int index
                required property string modelData

                caption: "已喜欢 · " + modelData
                pose: index

                ThemedHeartButton {
                    isFavorite: true
                }
            }
        }
    }
}
