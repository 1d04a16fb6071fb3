// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What stands in place of a list that is on its way.
Item {
    id: root

    property string text
    /// For a ground that is not the look's own.
    property color ink: Surfaces.ink(ThemeEnvironment.theme, ThemeEnvironment.theme.secondaryTextColor)

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Column {
        anchors.centerIn: parent
        width: parent.width - 2 * Metrics.screenMargin
        spacing: Metrics.cardPadding

        Spinner {
            anchors.horizontalCenter: parent.horizontalCenter
            size: Metrics.symbolLarge
            color: root.ink
        }
        QuietText {
            width: parent.width
            text: root.text
            style: TextStyles.subheadline
            color: root.ink
            horizontalAlignment: Text.AlignHCenter
            Accessible.ignored: true
        }
    }
}
