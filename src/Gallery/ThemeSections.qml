// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The choice of the look.
GallerySections {
    GallerySection {
        title: "选择外观"
        types: "ThemePickerView · ThemePreviewCard"
        cell: GalleryMetrics.phoneColumn
        stageHeight: 0

        GallerySpecimen {
            caption: "换一个试试"

            ThemePickerView {
                width: parent.width
            }
        }
    }
}
