// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick

/// The text styles by role, with what they are on a desktop whose texts have their usual size.
QtObject {
    readonly property TextStyle largeTitle: TextStyle { usualSize: 34; usualLine: 41; weight: Font.Bold }
    readonly property TextStyle title1: TextStyle { usualSize: 28; usualLine: 34 }
    readonly property TextStyle title2: TextStyle { usualSize: 22; usualLine: 28 }
    readonly property TextStyle title3: TextStyle { usualSize: 20; usualLine: 25 }
    readonly property TextStyle headline: TextStyle { usualSize: 17; usualLine: 22; weight: Font.DemiBold }
    readonly property TextStyle body: TextStyle { usualSize: 17; usualLine: 22 }
    readonly property TextStyle callout: TextStyle { usualSize: 16; usualLine: 21 }
    readonly property TextStyle subheadline: TextStyle { usualSize: 15; usualLine: 20 }
    readonly property TextStyle footnote: TextStyle { usualSize: 13; usualLine: 18 }
    readonly property TextStyle caption1: TextStyle { usualSize: 12; usualLine: 16 }
    readonly property TextStyle caption2: TextStyle { usualSize: 11; usualLine: 13 }
}
