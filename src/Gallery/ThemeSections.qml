// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// The choice of the look.
GallerySections {
    id: root

    /// Captions of the poses, in their order.
    readonly property var poses: ["平时", "悬停", "按下", "键盘焦点", "停用"]

    GallerySection {
        title: "外观的卡片"
        types: "ThemePreviewCard · ThemedChoiceCard"
        columnsAtMost: root.poses.length

        Repeater {
            model: root.poses

            GallerySpecimen {
                required property int index
                required property string modelData

                caption: modelData
                pose: index

                ThemePreviewCard {
                }
            }
        }
    }
    GallerySection {
        title: "选择外观"
        types: "ThemePickerView"
        cell: GalleryMetrics.phoneColumn
        stageHeight: 0

        GallerySpecimen {
            caption: "换一个试试"

            ThemePickerView {
                width: parent.width
            }
        }
    }
    GallerySection {
        title: "强调色"
        types: "ThemedAccentColorModifier · ThemeColor"
        cell: GalleryMetrics.phoneColumn
        stageHeight: 0

        GallerySpecimen {
            caption: "选中的文字"

            ThemedAccentColorModifier {
                width: parent.width
                height: Metrics.touchTarget

                TextEdit {
                    anchors.centerIn: parent
                    text: "换个颜色听歌"
                    font.pixelSize: TextStyles.title3.size
                    readOnly: true
                    persistentSelection: true
                    color: ThemeEnvironment.theme.primaryTextColor
                    selectionColor: palette.highlight
                    selectedTextColor: palette.highlightedText
                    Component.onCompleted: select(2, 4)
                }
            }
        }
    }
}
