// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The full-screen player. It lives for as long as it is shown, and what it knows of its own goes with it.
FocusScope {
    id: root

    required property CadorelViewModel viewModel
    required property NowPlayingViewModel nowPlaying
    required property QueueViewModel queue
    required property EqualizerViewModel equalizer
    required property OutputDevicesViewModel devices
    required property NowPlayingSettingsViewModel appearance

    property AppTheme theme: ThemeEnvironment.theme
    readonly property bool isWide: width >= Metrics.sideBySideWidth
    /// Colours of what lies on the backdrop.
    readonly property color ink: backdrop.textColor
    readonly property color secondaryInk: backdrop.secondaryTextColor
    readonly property real gap: height < Metrics.lowNowPlaying ? 0 : height < Metrics.highNowPlaying ? Metrics.rowSpacing : Metrics.screenMargin

    signal closeRequested

    function showEqualizer(): void {
        equalizer.open();
    }

    Accessible.role: Accessible.Pane
    Accessible.name: "正在播放"
    Component.onCompleted: nowPlaying.appear()
    Component.onDestruction: nowPlaying.disappear()
    Keys.onPressed: event => {
        const step = event.key === Qt.Key_PageDown ? 1 : event.key === Qt.Key_PageUp ? -1 : 0;
        event.accepted = step !== 0;
        root.nowPlaying.currentPage += step;
    }

    NowPlayingBackdrop {
        id: backdrop

        objectName: "backdrop"
        anchors.fill: parent
        coverSource: root.nowPlaying.coverSource
        isRead: root.isWide || root.nowPlaying.currentPage !== NowPlayingViewModel.CoverPage
        theme: root.theme
    }
    NowPlayingTopBar {
        id: topBar

        objectName: "topBar"
        x: Metrics.grid
        y: Metrics.grid
        width: parent.width - 2 * x
        currentPage: root.nowPlaying.currentPage
        hasSleepTime: root.nowPlaying.sleep.sleepTimerMinutes > 0
        sleepText: root.nowPlaying.sleep.footText
        ink: root.ink
        onCloseRequested: root.closeRequested()
        onPageRequested: page => root.nowPlaying.currentPage = page
        onSleepTimerRequested: root.nowPlaying.showSleepTimer = true
        onMoreRequested: root.nowPlaying.showMoreOptions = true
    }
    NowPlayingPages {
        id: pages

        objectName: "nowPlayingPages"
        anchors.top: topBar.bottom
        anchors.bottom: controls.top
        anchors.bottomMargin: root.gap / 2
        width: parent.width
        nowPlaying: root.nowPlaying
        ink: root.ink
        secondaryInk: root.secondaryInk
        albumCover: drawnCover
        miniLyric: drawnLine
        lyricsPage: drawnLyrics
        queuePage: drawnQueue
    }
    NowPlayingControls {
        id: controls

        anchors.bottom: parent.bottom
        anchors.bottomMargin: Math.max(Metrics.grid, root.gap)
        width: parent.width
        nowPlaying: root.nowPlaying
        isWide: root.isWide
        gap: root.gap
        ink: root.ink
        secondaryInk: root.secondaryInk
        onEqualizerRequested: root.showEqualizer()
        onCloseRequested: root.closeRequested()
    }

    NowPlayingSheets {
        nowPlaying: root.nowPlaying
        devices: root.devices
        appearance: root.appearance
        onEqualizerRequested: root.showEqualizer()
    }

    // qmllint disable unqualified
    Component {
        id: drawnCover

        AlbumCoverView {
            objectName: "albumCoverView"
            player: root.viewModel.audioPlayer
            coverSource: root.nowPlaying.coverSource
            waveColor: backdrop.accentColor
            theme: root.theme
        }
    }
    Component {
        id: drawnLine

        MiniLyricView {
            objectName: "miniLyricView"
            lyrics: root.nowPlaying.lyrics
            textColor: root.ink
        }
    }
    Component {
        id: drawnLyrics

        LyricsView {
            objectName: "lyricsView"
            lyrics: root.nowPlaying.lyrics
            textColor: root.ink
            onSeek: line => root.nowPlaying.lyrics.seekToLine(line)
        }
    }
    Component {
        id: drawnQueue

        EmbeddedQueuePage {
            objectName: "embeddedQueuePage"
            queue: root.queue
            ink: root.ink
            secondaryInk: root.secondaryInk
            tint: backdrop.accentColor
            theme: root.theme
        }
    }
    // qmllint enable unqualified
}
