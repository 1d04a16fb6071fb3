// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick

/// Lengths of the gallery alone, in device-independent pixels.
QtObject {
    readonly property int pageWidth: 1120
    readonly property int lookPickerWidth: 264
    /// A specimen that is shown as wide as a phone would.
    readonly property int phoneColumn: 344
}
