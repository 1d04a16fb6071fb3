// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A line around what would have no edge of its own, and an end to what would draw beyond it.
Item {
    id: root

    default property alias content: body.data
    property AppTheme theme: ThemeEnvironment.theme

    Item {
        id: body

        anchors.fill: parent
        clip: true
    }
    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.width: Metrics.hairline
        border.color: Qt.alpha(root.theme.primaryTextColor, 0.16)
    }
}
