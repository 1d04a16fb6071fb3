// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A symbol above its name.
GallerySpecimen {
    id: root

    required property string name
    property AppTheme theme: ThemeEnvironment.theme

    SymbolIcon {
        name: root.name
        size: Metrics.symbolLarge
        color: root.theme.primaryTextColor
    }
}
