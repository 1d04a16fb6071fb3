// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// A screen on the background of the look that is around it.
Item {
    default property alias content: body.data
    readonly property alias theme: background.theme

    ThemedBackground {
        id: background

        anchors.fill: parent
    }
    Item {
        id: body

        anchors.fill: parent
    }
}
