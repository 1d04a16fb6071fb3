// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Where one part of a screen ends and another begins.
Rectangle {
    implicitHeight: Metrics.hairline
    color: Qt.alpha(ThemeEnvironment.theme.primaryTextColor, Metrics.pressedOpacity)
    Accessible.ignored: true
}
