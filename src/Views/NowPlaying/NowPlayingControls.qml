// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What stands beneath the pages: progress, the equalizer's line, the controls and the ways to the pages. In a wide window
/// the last three share one line, so that the pages have its height, and the volume finds room beneath the equalizer's.
Item {
    id: root

    required property NowPlayingViewModel nowPlaying
    property bool isWide: false
    /// Between its lines.
    property real gap: Metrics.rowSpacing
    property color ink: ThemeEnvironment.theme.primaryTextColor
    property color secondaryInk: ThemeEnvironment.theme.secondaryTextColor

    readonly property real contentWidth: Math.min(width, isWide ? Metrics.contentWidth : Metrics.sheetWidth) - 2 * Metrics.sectionGap
    readonly property real sideWidth: Math.floor((contentWidth - Metrics.wideControlsWidth) / 2) - Metrics.screenMargin

    /// Where what follows the progress begins.
    readonly property real wideTop: progress.height + gap
    readonly property real narrowTop: progress.height + Math.round(gap / 2)
    readonly property real wideHeight: Math.max(controls.height, status.height + volume.height)

    signal equalizerRequested
    signal closeRequested

    implicitHeight: isWide ? wideTop + wideHeight : bottomControls.y + bottomControls.height

    Item {
        id: body

        anchors.horizontalCenter: parent.horizontalCenter
        width: root.contentWidth
        height: parent.height

        NowPlayingProgress {
            id: progress

            objectName: "progressView"
            width: parent.width
            nowPlaying: root.nowPlaying
            ink: root.ink
            secondaryInk: root.secondaryInk
        }
        EqualizerStatusLine {
            id: status

            objectName: "eqStatus"
            y: root.isWide ? root.wideTop + Math.round((root.wideHeight - height - volume.height) / 2) : root.narrowTop
            width: root.isWide ? root.sideWidth : parent.width
            isCentred: !root.isWide
            nowPlaying: root.nowPlaying
            ink: root.ink
            secondaryInk: root.secondaryInk
            onEqualizerRequested: root.equalizerRequested()
        }
        VolumeSlider {
            id: volume

            objectName: "nowPlayingVolume"
            // Its symbol stands beneath the other one.
            x: -Math.round((Metrics.touchTarget - Metrics.symbolOf(Metrics.volumeSymbol)) / 2)
            y: status.y + status.height
            width: root.sideWidth - x
            visible: root.isWide
            // An invisible one would go on taking the arrows.
            enabled: root.isWide
            playback: root.nowPlaying.playback
            ink: root.secondaryInk
            bar.tint: root.ink
            bar.trackSurface: Surfaces.progressTrackOf(Qt.alpha(root.ink, Metrics.grooveOpacity))
            bar.knobSurface: Surfaces.progressKnobOf(root.ink, bar.knobSize)
        }
        PlaybackControls {
            id: controls

            objectName: "playbackControls"
            anchors.horizontalCenter: parent.horizontalCenter
            y: root.isWide ? root.wideTop + Math.round((root.wideHeight - height) / 2) : root.narrowTop + status.height + root.gap
            width: root.isWide ? Metrics.wideControlsWidth : parent.width
            nowPlaying: root.nowPlaying
            ink: root.ink
        }
        BottomControls {
            id: bottomControls

            objectName: "bottomControls"
            anchors.right: parent.right
            y: root.isWide ? root.wideTop + Math.round((root.wideHeight - height) / 2) : controls.y + controls.height + root.gap
            width: root.isWide ? root.sideWidth : parent.width
            currentPage: root.nowPlaying.currentPage
            ink: root.ink
            secondaryInk: root.secondaryInk
            onPageRequested: page => root.nowPlaying.currentPage = page
            onCloseRequested: root.closeRequested()
        }
    }
}
