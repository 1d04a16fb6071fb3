// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// The icons of the application, and their choice.
GallerySections {
    id: root

    GallerySection {
        title: "应用图标"
        types: "AppIconPreview"
        cell: 136
        columnsAtMost: 4
        stageHeight: 128

        Repeater {
            model: ["AppIcon11", "AppIcon22", "AppIcon33", "AppIcon44"]

            GallerySpecimen {
                id: icon

                required property string modelData

                caption: modelData

                GalleryPicture {
                    name: icon.modelData
                    size: 128
                }
            }
        }
        Repeater {
            model: [24, 48, 64]

            GallerySpecimen {
                id: sized

                required property int modelData

                caption: modelData

                AppIconPreview {
                    imageName: "AppIcon11"
                    size: sized.modelData
                }
            }
        }
        GallerySpecimen {
            caption: "没有这张图"

            AppIconPreview {
                imageName: "AppIcon99"
            }
        }
    }
    GallerySection {
        title: "图标的卡片"
        types: "AppIconButton"
        columnsAtMost: 5

        Repeater {
            model: ["平时", "悬停", "按下", "键盘焦点", "停用"]

            GallerySpecimen {
                required property int index
                required property string modelData

                caption: modelData
                pose: index

                AppIconButton {
                    iconName: ""
                    displayName: "默认"
                    imageName: "AppIcon11"
                }
            }
        }
    }
    GallerySection {
        title: "选择应用图标"
        types: "AppIconPickerView"
        cell: GalleryMetrics.phoneColumn
        stageHeight: 0

        GallerySpecimen {
            caption: "点一下换一个"

            AppIconPickerView {
                width: GalleryMetrics.phoneColumn
                height: 400
            }
        }
    }
}
