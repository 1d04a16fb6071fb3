// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel.Desktop

/// Size, line height (both in pixels) and weight of a text. They grow with the texts of the desktop.
QtObject {
    required property int usualSize
    required property int usualLine
    property int weight: Font.Normal

    readonly property int size: Math.round(usualSize * DesktopAppearance.textScale)
    readonly property int line: Math.round(usualLine * DesktopAppearance.textScale)
}
