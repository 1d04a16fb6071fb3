// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The running song and what steers it: two lines and a row of buttons on a phone, one line in a wide window.
Item {
    id: root

    required property CadorelViewModel viewModel
    required property PlaybackViewModel playback
    required property EqualizerViewModel equalizer

    readonly property AudioPlayerService player: viewModel.audioPlayer
    readonly property bool wide: width >= Metrics.wideWidth
    readonly property int contentWidth: Math.min(width, Metrics.contentWidth) - 2 * Metrics.screenMargin

    implicitHeight: body.height + 2 * body.y
    Accessible.role: Accessible.ToolBar
    Accessible.name: "播放控制"

    Rectangle {
        anchors.fill: parent
        color: SystemColors.secondaryBackground
    }
    Rectangle {
        width: parent.width
        height: Metrics.hairline
        color: SystemColors.separator
    }

    Item {
        id: body

        anchors.horizontalCenter: parent.horizontalCenter
        y: root.wide ? Metrics.rowSpacing : Metrics.cardPadding
        width: root.contentWidth
        height: root.wide ? transport.height + seekBar.height - Metrics.rowSpacing : transport.y + transport.height

        readonly property int sideWidth: root.wide ? Math.round(width * 0.3) : 0

        NowPlayingLabel {
            id: identity

            objectName: "nowPlayingLabel"
            y: root.wide ? Math.round((body.height - height) / 2) : 0
            width: root.wide ? body.sideWidth : body.width
            title: root.viewModel.hasCurrentSong ? root.viewModel.currentSongTitle : "未在播放"
            artist: root.viewModel.currentArtist
            coverSource: root.playback.coverSource
            isLoading: root.player.isLoading
        }

        SeekBar {
            id: seekBar

            x: root.wide ? body.sideWidth + Metrics.sectionGap : 0
            y: root.wide ? body.height - height : identity.height + Metrics.grid
            width: root.wide ? body.width - 2 * x : body.width
            playback: root.playback
            duration: root.player.duration
        }

        Row {
            id: transport

            x: Math.round((body.width - width) / 2)
            y: root.wide ? 0 : seekBar.y + seekBar.height
            spacing: root.wide ? Metrics.rowSpacing : root.contentWidth < Metrics.phoneWidth - 2 * Metrics.screenMargin ? Metrics.grid : Metrics.cardPadding

            IconButton {
                objectName: "previousButton"
                symbol: AppIcons.playback.previous
                text: "上一首"
                enabled: root.viewModel.hasCurrentSong
                onClicked: root.viewModel.previous()
            }
            IconButton {
                objectName: "playPauseButton"
                symbol: root.player.isPlaying ? AppIcons.playback.pause : AppIcons.playback.play
                symbolSize: Metrics.symbolLarge
                text: root.player.isPlaying ? "暂停" : "播放"
                enabled: root.viewModel.hasCurrentSong
                onClicked: root.viewModel.togglePlayPause()
            }
            IconButton {
                objectName: "nextButton"
                symbol: AppIcons.playback.next
                text: "下一首"
                enabled: root.viewModel.hasCurrentSong
                onClicked: root.viewModel.next()
            }
        }

        IconButton {
            objectName: "playModeButton"
            x: root.wide ? equalizerButton.x - width : (Metrics.symbol - width) / 2
            y: root.wide ? volumeSlider.y : transport.y
            symbol: root.player.playModeSymbol
            text: root.player.playModeLabel
            color: SystemColors.secondaryLabel
            onClicked: root.player.togglePlayMode()
        }

        IconButton {
            id: equalizerButton

            objectName: "playerEqualizerButton"
            x: (root.wide ? volumeSlider.x : volumeButton.x) - width
            y: root.wide ? volumeSlider.y : transport.y
            symbol: AppIcons.audio.equalizer
            text: "均衡器"
            color: root.equalizer.isEnabled ? SystemColors.accent : SystemColors.secondaryLabel
            Accessible.description: root.equalizer.isEnabled ? "已开启" : "已关闭"
            onClicked: root.equalizer.open()
        }
        VolumeSlider {
            id: volumeSlider

            anchors.right: body.right
            y: Math.round((body.height - height) / 2)
            visible: root.wide
            player: root.player
        }
        VolumeButton {
            id: volumeButton

            objectName: "volumeButton"
            x: body.width - width - (Metrics.symbol - width) / 2
            y: transport.y
            visible: !root.wide
            player: root.player
        }
    }
}
