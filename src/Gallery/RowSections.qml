// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel
import CadorelGallery

/// Rows of lists.
GallerySections {
    id: root

    readonly property string longTitle: "一首名字特别特别长的歌，长到在手机的宽度上无论如何也放不下"

    GallerySection {
        title: "歌曲行"
        types: "ThemedSongRow"
        cell: GalleryMetrics.phoneColumn
        stageHeight: Metrics.rowHeight

        GallerySpecimen {
            caption: "平时"

            ThemedSongRow {
                width: parent.width
                title: "清晨的第一班船"
                subtitle: "林间小队 · 远岸"
                trailingText: "3:35"
                coverSource: GallerySamples.covers[0]
            }
        }
        GallerySpecimen {
            caption: "正在播放，已喜欢"

            ThemedSongRow {
                width: parent.width
                title: "🌙 夜航 Voyage ✨"
                subtitle: "阿眠 · 夜航"
                trailingText: "5:01"
                coverSource: GallerySamples.covers[1]
                isCurrent: true
                isFavorite: true
            }
        }
        GallerySpecimen {
            caption: "悬停"
            pose: GalleryPoses.Hovered

            ThemedSongRow {
                width: parent.width
                title: "雨后"
                subtitle: "林间小队"
                trailingText: "4:02"
                coverSource: GallerySamples.covers[2]
            }
        }
        GallerySpecimen {
            caption: "按下"
            pose: GalleryPoses.Pressed

            ThemedSongRow {
                width: parent.width
                title: "Last Train"
                subtitle: "The Quiet Harbour"
                trailingText: "4:36"
                coverSource: GallerySamples.covers[3]
            }
        }
        GallerySpecimen {
            caption: "键盘焦点"

            ThemedSongRow {
                width: parent.width
                title: "山谷回声"
                subtitle: "林间小队"
                trailingText: "3:18"
                coverSource: GallerySamples.covers[0]
                showsFocus: true
            }
        }
        GallerySpecimen {
            caption: "没有封面，长文字在末尾省略"

            ThemedSongRow {
                objectName: "elided"
                width: parent.width
                title: root.longTitle
                subtitle: "同样有着很长很长名字的一支乐队与他们的朋友们"
                trailingText: "1:02:05"
            }
        }
    }
    GallerySection {
        title: "在线歌曲行"
        types: "ThemedOnlineSongRow"
        cell: GalleryMetrics.phoneColumn
        stageHeight: Metrics.rowHeight

        GallerySpecimen {
            caption: "平时"

            ThemedOnlineSongRow {
                width: parent.width
                song: ({
                        title: "风起的地方",
                        subtitle: "阿箬 · 山海之间",
                        platformText: "网易云",
                        coverSource: GallerySamples.covers[2],
                        isCurrent: false,
                        isFavorite: false
                    })
            }
        }
        GallerySpecimen {
            caption: "正在播放，已喜欢"

            ThemedOnlineSongRow {
                width: parent.width
                song: ({
                        title: "Lanterns",
                        subtitle: "The Quiet Harbour",
                        platformText: "QQ 音乐",
                        coverSource: GallerySamples.covers[3],
                        isCurrent: true,
                        isFavorite: true
                    })
            }
        }
        GallerySpecimen {
            caption: "长文字在末尾省略"

            ThemedOnlineSongRow {
                objectName: "elided"
                width: parent.width
                song: ({
                        title: root.longTitle,
                        subtitle: "Someone feat. Someone Else and All of Their Friends",
                        platformText: "酷我",
                        coverSource: "",
                        isCurrent: false,
                        isFavorite: true
                    })
            }
        }
    }
    GallerySection {
        title: "服务器行"
        types: "ThemedServerRow"
        cell: GalleryMetrics.phoneColumn
        stageHeight: Metrics.rowHeight

        GallerySpecimen {
            caption: "已连接"

            ThemedServerRow {
                width: parent.width
                config: ({
                        name: "家里的 NAS",
                        host: "nas.home.arpa"
                    })
                isConnected: true
                songCount: 1284
            }
        }
        GallerySpecimen {
            caption: "未连接"

            ThemedServerRow {
                width: parent.width
                config: ({
                        name: "云盘",
                        host: "dav.example.com"
                    })
            }
        }
        GallerySpecimen {
            caption: "悬停"
            pose: GalleryPoses.Hovered

            ThemedServerRow {
                width: parent.width
                config: ({
                        name: "Studio",
                        host: "192.168.1.20"
                    })
                isConnected: true
                songCount: 36
            }
        }
        GallerySpecimen {
            caption: "按下"
            pose: GalleryPoses.Pressed

            ThemedServerRow {
                width: parent.width
                config: ({
                        name: "Studio",
                        host: "192.168.1.20"
                    })
                isConnected: true
                songCount: 36
            }
        }
        GallerySpecimen {
            caption: "键盘焦点"
            pose: GalleryPoses.Focused

            ThemedServerRow {
                width: parent.width
                config: ({
                        name: "Studio",
                        host: "192.168.1.20"
                    })
            }
        }
        GallerySpecimen {
            caption: "长文字在末尾省略"

            ThemedServerRow {
                objectName: "elided"
                width: parent.width
                config: ({
                        name: "放在客厅电视柜最里面的那一台旧机器",
                        host: "a-very-long-host-name-of-a-server.music.example.com"
                    })
                isConnected: true
                songCount: 100000
            }
        }
    }
}
