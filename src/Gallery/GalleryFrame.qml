// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A line around what would have no edge of its own.
Item {
    id: root

    default property alias content: body.data
    property AppTheme theme: ThemeEnvironment.theme

    Item {
        id: body

        anchors.fill: parent
    }
    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.width: Metrics.hairline
        border.color: Qt.alpha(root.theme.primaryTextColor, 0.16)
    }
}
