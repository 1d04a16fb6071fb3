// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A symbol above its names.
GallerySpecimen {
    id: root

    required property string name
    /// Name of what it stands for; empty where it has none.
    property string use
    property AppTheme theme: ThemeEnvironment.theme

    // A long name is broken at its dots.
    caption: (use === "" ? "" : use + "\n") + name.replace(/\./g, ".\u200B")

    SymbolIcon {
        name: root.name
        size: Metrics.symbolLarge
        color: root.theme.primaryTextColor
    }
}
