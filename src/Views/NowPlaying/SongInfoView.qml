// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Title, artist and quality of the song. The title may be as long as it likes; the badge is never cut.
Column {
    id: root

    property string title
    property string artist
    property string qualityText
    property bool isCentred: true
    property color ink: ThemeEnvironment.theme.primaryTextColor
    property color secondaryInk: ThemeEnvironment.theme.secondaryTextColor

    readonly property int alignment: isCentred ? Text.AlignHCenter : Text.AlignLeft

    spacing: Metrics.grid

    StyledText {
        objectName: "nowPlayingTitle"
        width: parent.width
        text: root.title
        style: TextStyles.title2
        font.weight: Font.DemiBold
        color: root.ink
        horizontalAlignment: root.alignment
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Item {
        width: parent.width
        height: Math.max(artistText.height, badge.height)

        Row {
            x: root.isCentred ? Math.round((parent.width - width) / 2) : 0
            anchors.verticalCenter: parent.verticalCenter
            spacing: Metrics.rowSpacing

            StyledText {
                id: artistText

                objectName: "nowPlayingArtist"
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, root.width - badge.width - parent.spacing)
                text: root.artist
                style: TextStyles.callout
                color: root.secondaryInk
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Rectangle {
                id: badge

                objectName: "qualityBadge"
                anchors.verticalCenter: parent.verticalCenter
                width: badgeText.implicitWidth + 2 * Metrics.rowSpacing
                height: badgeText.height + Metrics.grid
                radius: height / 2
                color: "transparent"
                border.width: Metrics.hairline
                border.color: root.secondaryInk

                StyledText {
                    id: badgeText

                    objectName: "qualityText"
                    anchors.centerIn: parent
                    text: root.qualityText
                    style: TextStyles.caption2
                    color: root.secondaryInk
                    elide: Text.ElideNone
                }
            }
        }
    }
}
