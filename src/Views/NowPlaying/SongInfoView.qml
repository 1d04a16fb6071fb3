// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Title, artist and quality of the song. The title may be as long as it likes; the badge is never cut. In the middle it
/// stands beside the artist, else beneath.
Column {
    id: root

    property string title
    property string artist
    property string qualityText
    property bool isCentred: true
    property color ink: ThemeEnvironment.theme.primaryTextColor
    property color secondaryInk: ThemeEnvironment.theme.secondaryTextColor

    /// With the badge beside the artist, whether it stands there or not.
    readonly property real centredHeight: TextStyles.title2.line + spacing + lineHeight
    readonly property real badgeHeight: TextStyles.caption2.line + Metrics.grid
    readonly property real lineHeight: Math.max(TextStyles.callout.line, badgeHeight)
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
        height: root.isCentred ? root.lineHeight : TextStyles.callout.line + Metrics.grid + root.badgeHeight

        StyledText {
            id: artistText

            objectName: "nowPlayingArtist"
            x: root.isCentred ? Math.round((parent.width - width - Metrics.rowSpacing - badge.width) / 2) : 0
            y: root.isCentred ? Math.round((root.lineHeight - TextStyles.callout.line) / 2) : 0
            width: Math.min(implicitWidth, root.isCentred ? parent.width - badge.width - Metrics.rowSpacing : parent.width)
            text: root.artist
            style: TextStyles.callout
            color: root.secondaryInk
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Rectangle {
            id: badge

            objectName: "qualityBadge"
            x: root.isCentred ? artistText.x + artistText.width + Metrics.rowSpacing : 0
            y: root.isCentred ? Math.round((root.lineHeight - height) / 2) : TextStyles.callout.line + Metrics.grid
            width: badgeText.implicitWidth + 2 * Metrics.rowSpacing
            height: root.badgeHeight
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
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                Accessible.description: "音质"
            }
        }
    }
}
