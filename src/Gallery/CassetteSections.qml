// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel
import CadorelGallery

/// The cassettes, each with its usual place of the cover.
GallerySections {
    id: root

    readonly property int side: 240
    readonly property int smallSide: 112
    readonly property var cassettes: GallerySamples.cassettes

    GallerySection {
        title: "磁带"
        types: "CassetteCover"
        cell: root.side
        stageHeight: root.side

        Repeater {
            model: root.cassettes

            GallerySpecimen {
                id: framed

                required property int index
                required property var modelData

                caption: modelData.displayName + " " + modelData.imageName

                CassetteCover {
                    width: root.side
                    height: root.side
                    imageName: framed.modelData.imageName
                    coverSource: GallerySamples.covers[framed.index % GallerySamples.covers.length]
                    configScale: framed.modelData.scale
                    offsetX: framed.modelData.offsetX
                    offsetY: framed.modelData.offsetY
                }
            }
        }
        GallerySpecimen {
            caption: "没有磁带"

            CassetteCover {
                width: root.side
                height: root.side
                coverSource: GallerySamples.covers[0]
            }
        }
    }
    GallerySection {
        title: "没有封面，超出范围"
        types: "CassetteCover"
        cell: root.smallSide
        columnsAtMost: 6
        stageHeight: root.smallSide

        Repeater {
            model: root.cassettes

            GallerySpecimen {
                id: empty

                required property var modelData

                caption: modelData.displayName

                CassetteCover {
                    width: root.smallSide
                    height: root.smallSide
                    imageName: empty.modelData.imageName
                    configScale: empty.modelData.scale
                    offsetX: empty.modelData.offsetX
                    offsetY: empty.modelData.offsetY
                }
            }
        }
        GallerySpecimen {
            caption: "缩放 40，偏移 -9"

            GalleryFrame {
                width: root.smallSide
                height: root.smallSide

                CassetteCover {
                    anchors.fill: parent
                    imageName: root.cassettes[0].imageName
                    coverSource: GallerySamples.covers[1]
                    configScale: 40
                    offsetX: NaN
                    offsetY: -9
                }
            }
        }
    }
}
