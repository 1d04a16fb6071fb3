// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel
import CadorelGallery

/// The drawn pictures, and the decorations that they make.
GalleryPage {
    id: root

    title: "插画"
    summary: root.theme.isKawaiiPink ? "为这个播放器画的图，和用它们做的装饰。" : "为这个播放器画的图。装饰只在可爱粉粉里出现。"

    GallerySection {
        title: "代替图标的插画"
        types: "KawaiiIcon"
        cell: 144
        stageHeight: 64

        Repeater {
            model: GallerySamples.kawaiiIcons

            GallerySpecimen {
                id: icon

                required property string modelData

                caption: modelData

                Row {
                    height: 48
                    spacing: Metrics.rowSpacing

                    Repeater {
                        model: [24, 32, 48]

                        GalleryPicture {
                            required property int modelData

                            anchors.verticalCenter: parent?.verticalCenter
                            name: icon.modelData
                            size: modelData
                        }
                    }
                }
            }
        }
    }
    DecorationSections {
        width: parent.width
    }
    CassetteSections {
        width: parent.width
    }
    AppIconSections {
        width: parent.width
    }
}
