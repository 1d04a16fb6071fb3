// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A piece of a screen, for what decorates one.
Item {
    default property alias content: body.data

    ThemedCard {
        anchors.fill: parent
        cornerRadius: Metrics.sheetRadius
    }
    Item {
        id: body

        anchors.fill: parent
        clip: true
    }
}
