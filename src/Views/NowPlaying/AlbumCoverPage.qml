// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// The first page: the cover as large as the page allows, what song it is, and the line that is sung. Where there is no
/// height for a cover above the song's name, it stands beside it.
Item {
    id: root

    required property NowPlayingViewModel nowPlaying
    property color ink: ThemeEnvironment.theme.primaryTextColor
    property color secondaryInk: ThemeEnvironment.theme.secondaryTextColor
    /// Draws the cover with what is about it, and the line that is sung.
    property Component albumCover: null
    property Component miniLyric: null
    property AppTheme theme: ThemeEnvironment.theme

    readonly property real lyricTop: height - Metrics.miniLyricBottom - Metrics.miniLyricHeight
    /// What lies above the line that is sung, and of that what lies above the name.
    readonly property real room: lyricTop - Metrics.miniLyricTop
    readonly property real roomAbove: room - info.centredHeight - Metrics.rowSpacing
    readonly property bool isBeside: roomAbove < Metrics.leastCover && width > room
    readonly property real margin: Metrics.screenMargin
    readonly property real coverSize: Math.floor(Math.max(0, isBeside ? Math.min(room, width / 2 - margin) : Math.min(roomAbove, width - margin, Metrics.largestCover)))

    Loader {
        id: cover

        objectName: "albumCoverPlace"
        x: root.isBeside ? root.margin : Math.round((root.width - width) / 2)
        y: root.isBeside ? Math.round((root.room - height) / 2) : Math.max(0, Math.round((root.roomAbove - height) / 2))
        width: root.coverSize
        height: root.coverSize
        sourceComponent: root.albumCover
    }
    // The dancer stands at the corner between these two.
    Item {
        id: stickers

        readonly property real size: Math.min(Metrics.stickerSize, Math.round(width / 5))

        anchors.fill: cover
        anchors.margins: (cover.item as AlbumCoverView)?.hasRing ? Metrics.waveReach : 0
        visible: root.theme.nowPlayingConfig.showDecorations

        Repeater {
            model: [KawaiiCorners.TopTrailing, KawaiiCorners.BottomLeading]

            delegate: KawaiiCornerDecoration {
                required property int index
                required property int modelData

                objectName: "coverSticker" + index
                imageName: root.theme.nowPlayingConfig.showDecorations ? KawaiiDecorations.cartoonAt(Metrics.coverSticker + index) : ""
                corner: modelData
                size: stickers.size
                theme: root.theme
            }
        }
    }
    SongInfoView {
        id: info

        objectName: "songInfoView"
        x: root.isBeside ? cover.x + cover.width + root.margin : root.margin
        y: root.isBeside ? Math.round((root.room - height) / 2) : Math.round(root.room - height)
        width: root.width - x - root.margin
        isCentred: !root.isBeside
        title: root.nowPlaying.title
        artist: root.nowPlaying.artist
        qualityText: root.nowPlaying.currentQualityDisplay
        ink: root.ink
        secondaryInk: root.secondaryInk
    }
    Loader {
        objectName: "miniLyricPlace"
        x: root.margin
        y: root.lyricTop
        width: root.width - 2 * x
        height: Metrics.miniLyricHeight
        sourceComponent: root.miniLyric
    }
}
