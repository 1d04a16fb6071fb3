// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel
import CadorelGallery

/// Headings and rows of the settings.
GallerySections {
    GallerySection {
        title: "设置"
        types: "ThemedSettingsSection · ThemedSettingsItem · ThemedSectionHeader"
        cell: GalleryMetrics.phoneColumn
        stageHeight: 0

        GallerySpecimen {
            caption: "一组设置"

            ThemedSettingsSection {
                width: parent.width
                title: "外观"

                ThemedSettingsItem {
                    width: parent.width
                    icon: AppIcons.settings.theme
                    iconColor: SystemColors.purple
                    title: "界面主题"
                    subtitle: "可爱粉粉"
                }
                ThemedSettingsItem {
                    width: parent.width
                    icon: AppIcons.settings.accentColor
                    iconColor: SystemColors.orange
                    title: "强调色"
                }
                ThemedSettingsItem {
                    width: parent.width
                    icon: AppIcons.settings.sound
                    iconColor: SystemColors.red
                    title: "均衡器"
                    subtitle: "摇滚"
                }
                ThemedSettingsItem {
                    width: parent.width
                    icon: AppIcons.settings.cache
                    iconColor: SystemColors.gray
                    title: "缓存"
                    subtitle: "1.2 GB"
                }
            }
        }
        GallerySpecimen {
            caption: "平时、悬停、按下、键盘焦点、停用"

            ThemedSettingsSection {
                width: parent.width
                title: "状态"

                ThemedSettingsItem {
                    width: parent.width
                    icon: AppIcons.timer.sleep
                    iconColor: SystemColors.indigo
                    title: "睡眠定时"
                    subtitle: "30 分钟"
                }
                ThemedSettingsItem {
                    width: parent.width
                    icon: AppIcons.settings.info
                    iconColor: SystemColors.blue
                    title: "悬停"
                    Component.onCompleted: GalleryPoses.take(this, GalleryPoses.Hovered)
                }
                ThemedSettingsItem {
                    width: parent.width
                    icon: AppIcons.settings.privacy
                    iconColor: SystemColors.green
                    title: "按下"
                    Component.onCompleted: GalleryPoses.take(this, GalleryPoses.Pressed)
                }
                ThemedSettingsItem {
                    width: parent.width
                    icon: AppIcons.settings.about
                    iconColor: SystemColors.teal
                    title: "键盘焦点"
                    Component.onCompleted: GalleryPoses.take(this, GalleryPoses.Focused)
                }
                ThemedSettingsItem {
                    width: parent.width
                    icon: AppIcons.settings.storage
                    iconColor: SystemColors.brown
                    title: "停用"
                    enabled: false
                }
            }
        }
        GallerySpecimen {
            caption: "长文字在末尾省略"

            ThemedSettingsSection {
                objectName: "elided"
                width: parent.width
                title: "标题太长时在末尾省略，不会碰到右边，也不会换到第二行"

                ThemedSettingsItem {
                    width: parent.width
                    icon: AppIcons.settings.storage
                    iconColor: SystemColors.brown
                    title: "一项名字特别特别长的设置，长到放不下"
                    subtitle: "说明也很长很长"
                }
                ThemedSettingsItem {
                    width: parent.width
                    icon: AppIcons.settings.appearance
                    iconColor: SystemColors.pink
                    title: "Language 语言 🌏"
                    subtitle: "简体中文"
                }
            }
        }
        GallerySpecimen {
            caption: "分组标题"

            ThemedSectionHeader {
                width: parent.width
                title: "最近播放"
            }
        }
    }
}
