// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import Cadorel

/// Cover, lyrics and queue, side by side, one of them in sight. Where there is room the first page shows the lyrics beside
/// the cover.
T.SwipeView {
    id: root

    required property NowPlayingViewModel nowPlaying
    property color ink: ThemeEnvironment.theme.primaryTextColor
    property color secondaryInk: ThemeEnvironment.theme.secondaryTextColor
    /// See AlbumCoverPage.
    property Component albumCover: null
    property Component miniLyric: null
    property Component lyricsPage: null
    property Component queuePage: null

    readonly property ListView list: contentItem as ListView
    readonly property bool isWide: width >= Metrics.sideBySideWidth
    readonly property real wideMargin: Math.max(0, (width - Metrics.sideBySideContent) / 2)

    /// A page, drawn and animated only while some of it is in sight.
    component Page: Item {
        id: page

        required property ListView list
        // Where the window is resized, the page that is in sight moves before the list does.
        readonly property bool isSeen: T.SwipeView.isCurrentItem || list && x + width > list.contentX && x < list.contentX + list.width
        default property alias content: body.data

        Item {
            id: body

            anchors.fill: parent
            visible: page.isSeen
        }
    }

    // What there is to be reached lies on the pages.
    activeFocusOnTab: false
    focusPolicy: Qt.NoFocus
    currentIndex: nowPlaying.currentPage
    onCurrentIndexChanged: nowPlaying.currentPage = currentIndex

    contentItem: ListView {
        objectName: "pageList"
        model: root.contentModel
        interactive: root.interactive
        currentIndex: root.currentIndex
        orientation: ListView.Horizontal
        snapMode: ListView.SnapOneItem
        boundsBehavior: Flickable.StopAtBounds
        highlightRangeMode: ListView.StrictlyEnforceRange
        preferredHighlightBegin: 0
        preferredHighlightEnd: 0
        highlightMoveDuration: Metrics.sheetDuration
        highlightResizeDuration: 0
        maximumFlickVelocity: 4 * width
        // The arrows seek.
        keyNavigationEnabled: false
        clip: true
    }

    Page {
        objectName: "albumCoverWithInfoPage"
        list: root.list

        AlbumCoverPage {
            objectName: "albumCoverPage"
            x: root.isWide ? root.wideMargin : 0
            width: root.isWide ? Math.round(parent.width / 2) - x : parent.width
            height: parent.height
            nowPlaying: root.nowPlaying
            ink: root.ink
            secondaryInk: root.secondaryInk
            albumCover: root.albumCover
            // The lyrics beside it show the same line.
            miniLyric: root.isWide ? null : root.miniLyric
        }
        Loader {
            objectName: "sideLyrics"
            x: Math.round(parent.width / 2)
            width: parent.width - x - root.wideMargin
            height: parent.height
            active: root.isWide
            sourceComponent: root.lyricsPage
        }
    }
    Page {
        objectName: "lyricsPage"
        list: root.list

        Loader {
            anchors.fill: parent
            asynchronous: true
            sourceComponent: root.lyricsPage
        }
    }
    Page {
        objectName: "queuePage"
        list: root.list

        Loader {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(parent.width, Metrics.queueWidth)
            height: parent.height
            asynchronous: true
            sourceComponent: root.queuePage
        }
    }
}
