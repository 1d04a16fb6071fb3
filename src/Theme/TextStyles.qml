// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick

/// The text styles by role.
QtObject {
    readonly property TextStyle largeTitle: TextStyle { size: 34; line: 41; weight: Font.Bold }
    readonly property TextStyle title1: TextStyle { size: 28; line: 34 }
    readonly property TextStyle title2: TextStyle { size: 22; line: 28 }
    readonly property TextStyle title3: TextStyle { size: 20; line: 25 }
    readonly property TextStyle headline: TextStyle { size: 17; line: 22; weight: Font.DemiBold }
    readonly property TextStyle body: TextStyle { size: 17; line: 22 }
    readonly property TextStyle callout: TextStyle { size: 16; line: 21 }
    readonly property TextStyle subheadline: TextStyle { size: 15; line: 20 }
    readonly property TextStyle footnote: TextStyle { size: 13; line: 18 }
    readonly property TextStyle caption1: TextStyle { size: 12; line: 16 }
    readonly property TextStyle caption2: TextStyle { size: 11; line: 13 }
}
