// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What stands in place of a list that is on its way.
Item {
    id: root

    property string text

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Column {
        anchors.centerIn: parent
        width: parent.width - 2 * Metrics.screenMargin
        spacing: Metrics.cardPadding

        Spinner {
            anchors.horizontalCenter: parent.horizontalCenter
            size: Metrics.symbolLarge
        }
        QuietText {
            width: parent.width
            text: root.text
            style: TextStyles.subheadline
            horizontalAlignment: Text.AlignHCenter
            Accessible.ignored: true
        }
    }
}
