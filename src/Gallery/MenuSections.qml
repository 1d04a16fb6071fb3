// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// Menus, and the small buttons that open them.
GallerySections {
    id: root

    /// Captions of the poses, in their order.
    readonly property var poses: ["平时", "悬停", "按下", "键盘焦点", "停用"]

    GallerySection {
        title: "图标按钮"
        types: "ThemedIconButton"
        columnsAtMost: root.poses.length

        Repeater {
            model: root.poses

            GallerySpecimen {
                required property int index
                required property string modelData

                caption: modelData
                pose: index

                ThemedIconButton {
                    symbol: AppIcons.navigation.more
                    text: "更多"
                }
            }
        }
    }
    GallerySection {
        title: "菜单"
        types: "ThemedMenu · ThemedMenuItem"
        cell: GalleryMetrics.phoneColumn
        stageHeight: 0

        GallerySpecimen {
            caption: "点一下打开"

            Column {
                width: Metrics.menuWidth

                ThemedIconButton {
                    anchors.horizontalCenter: parent.horizontalCenter
                    symbol: AppIcons.navigation.moreCircle
                    text: "打开菜单"
                    onClicked: menu.popup()

                    ThemedMenu {
                        id: menu

                        ThemedMenuItem {
                            symbol: AppIcons.playback.play
                            text: "播放"
                        }
                        ThemedMenuItem {
                            symbol: AppIcons.action.addToPlaylist
                            text: "添加到歌单"
                        }
                        ThemedMenuItem {
                            symbol: AppIcons.action.trash
                            text: "删除"
                            destructive: true
                        }
                    }
                }
            }
        }
        GallerySpecimen {
            caption: "平时、悬停、按下、停用、删除"

            ThemedCard {
                width: Metrics.menuWidth
                height: states.height + 2 * Metrics.grid

                Column {
                    id: states

                    x: Metrics.grid
                    y: Metrics.grid
                    width: parent.width - 2 * x

                    ThemedMenuItem {
                        width: parent.width
                        symbol: AppIcons.playback.play
                        text: "播放"
                    }
                    ThemedMenuItem {
                        width: parent.width
                        symbol: AppIcons.favorite.heart
                        text: "喜欢"
                        highlighted: true
                    }
                    ThemedMenuItem {
                        width: parent.width
                        symbol: AppIcons.action.edit
                        text: "编辑"
                        down: true
                    }
                    ThemedMenuItem {
                        width: parent.width
                        symbol: AppIcons.action.addToPlaylist
                        text: "添加到歌单"
                        enabled: false
                    }
                    ThemedMenuItem {
                        width: parent.width
                        symbol: AppIcons.action.trash
                        text: "删除"
                        destructive: true
                    }
                }
            }
        }
    }
}
