// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel
import CadorelGallery

/// Bars, pickers and fields.
GallerySections {
    id: root

    GallerySection {
        title: "进度条"
        types: "ThemedProgressBar"
        cell: 240
        stageHeight: Metrics.touchTarget

        GallerySpecimen {
            caption: "0"

            ThemedProgressBar {
                width: parent.width
                name: "进度 0"
            }
        }
        GallerySpecimen {
            caption: "0.4，点一下或拖动"

            ThemedProgressBar {
                width: parent.width
                progress: 0.4
                onProgressDragged: to => progress = to
            }
        }
        GallerySpecimen {
            caption: "1"

            ThemedProgressBar {
                width: parent.width
                progress: 1
                name: "进度 1"
            }
        }
        GallerySpecimen {
            caption: "拖动中"
            pose: GalleryPoses.Pressed

            ThemedProgressBar {
                width: parent.width
                progress: 0.4
                name: "拖动中的进度"
            }
        }
        GallerySpecimen {
            caption: "键盘焦点"
            pose: GalleryPoses.Focused

            ThemedProgressBar {
                width: parent.width
                progress: 0.6
                name: "有焦点的进度"
            }
        }
        GallerySpecimen {
            caption: "1.7，画在尽头"

            ThemedProgressBar {
                width: parent.width
                progress: 1.7
                name: "超出的进度"
            }
        }
        GallerySpecimen {
            caption: "不是数，画在起点"

            ThemedProgressBar {
                width: parent.width
                progress: NaN
                name: "未知的进度"
            }
        }
        GallerySpecimen {
            caption: "停用"
            pose: GalleryPoses.Disabled

            ThemedProgressBar {
                width: parent.width
                progress: 0.4
                name: "停用的进度"
            }
        }
    }
    GallerySection {
        title: "分段选择"
        types: "ThemedSegmentedPicker"
        cell: 320
        stageHeight: Metrics.touchTarget

        GallerySpecimen {
            caption: "三项，点一下换一项"

            ThemedSegmentedPicker {
                width: parent.width
                name: "歌曲来源"
                options: ["全部", "本地", "服务器"]
                selection: "本地"
                onSelected: option => selection = option
            }
        }
        GallerySpecimen {
            caption: "选中第一项"

            ThemedSegmentedPicker {
                width: parent.width
                name: "排序"
                options: ["标题", "艺术家", "专辑", "时间"]
                selection: "标题"
                onSelected: option => selection = option
            }
        }
        GallerySpecimen {
            caption: "键盘焦点"
            pose: GalleryPoses.Focused

            ThemedSegmentedPicker {
                width: parent.width
                name: "对齐"
                options: ["靠左", "居中", "靠右"]
                selection: "靠右"
                onSelected: option => selection = option
            }
        }
        GallerySpecimen {
            caption: "没有选中"

            ThemedSegmentedPicker {
                width: parent.width
                name: "音质"
                options: ["128k", "320k", "flac"]
                onSelected: option => selection = option
            }
        }
        GallerySpecimen {
            caption: "名字太长时在末尾省略"

            ThemedSegmentedPicker {
                objectName: "elided"
                width: parent.width
                name: "长名字"
                options: ["特别特别长的一项名字", "Another long option", "短"]
                selection: "短"
                onSelected: option => selection = option
            }
        }
        GallerySpecimen {
            caption: "停用"
            pose: GalleryPoses.Disabled

            ThemedSegmentedPicker {
                width: parent.width
                name: "停用的选择"
                options: ["开", "关"]
                selection: "开"
            }
        }
    }
    GallerySection {
        title: "搜索栏"
        types: "ThemedSearchBar"
        cell: 320
        stageHeight: Metrics.touchTarget

        GallerySpecimen {
            caption: "空"

            ThemedSearchBar {
                width: parent.width
                placeholder: "搜索歌曲、艺术家、专辑"
            }
        }
        GallerySpecimen {
            caption: "有字，右边可清空"

            ThemedSearchBar {
                width: parent.width
                placeholder: "搜索"
                text: "夜航 Night Voyage 🌙"
            }
        }
        GallerySpecimen {
            caption: "键盘焦点"
            pose: GalleryPoses.Focused

            ThemedSearchBar {
                width: parent.width
                placeholder: "搜索"
            }
        }
        GallerySpecimen {
            caption: "停用"
            pose: GalleryPoses.Disabled

            ThemedSearchBar {
                width: parent.width
                placeholder: "搜索"
            }
        }
        GallerySpecimen {
            caption: "很长的字"

            ThemedSearchBar {
                width: parent.width
                placeholder: "搜索"
                text: "一首名字特别特别长的歌，长到搜索栏里无论如何也放不下它"
            }
        }
    }
}
