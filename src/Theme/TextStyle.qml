// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// Size, line height (both in pixels) and weight of a text.
QtObject {
    required property int size
    required property int line
    property int weight: Font.Normal
}
