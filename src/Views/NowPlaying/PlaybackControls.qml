// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Play mode, the song before, play and pause, the next song, and the heart.
Item {
    id: root

    required property NowPlayingViewModel nowPlaying
    property color ink: ThemeEnvironment.theme.primaryTextColor

    /// Between two buttons.
    readonly property real gap: Math.max(0, (Math.min(width, Metrics.controlsWidth) - buttons.contentWidth) / 4)

    implicitHeight: Metrics.playFrame
    Accessible.role: Accessible.ToolBar
    Accessible.name: "播放控制"

    Connections {
        target: root.nowPlaying

        function onPlayModeChanged(): void {
            turn.restart();
        }
        function onIsFavoriteChanged(): void {
            bounce.restart();
        }
    }
    Row {
        id: buttons

        readonly property real contentWidth: mode.width + previous.width + play.width + next.width + heart.width

        anchors.horizontalCenter: parent.horizontalCenter
        height: parent.height
        spacing: root.gap

        NowPlayingButton {
            id: mode

            objectName: "playModeButton"
            anchors.verticalCenter: parent.verticalCenter
            systemName: root.nowPlaying.playModeSymbol
            kawaiiName: root.nowPlaying.playModeKawaiiName
            fontSize: Metrics.nowPlayingSymbol
            pictureSize: Metrics.drawnHeart
            text: root.nowPlaying.playModeLabel
            ink: root.ink
            onClicked: root.nowPlaying.togglePlayMode()

            ResponseSpring {
                id: turn

                objectName: "modeSpring"
                target: mode.glyph
                property: "scale"
                from: Motion.isReduced ? 1 : Metrics.modeSquash
                to: 1
            }
        }
        NowPlayingButton {
            id: previous

            objectName: "previousButton"
            anchors.verticalCenter: parent.verticalCenter
            systemName: AppIcons.playback.previous
            kawaiiName: KawaiiIcon.previous
            fontSize: Metrics.skipSymbol
            pictureSize: Metrics.drawnSkip
            text: "上一首"
            enabled: root.nowPlaying.hasSong
            ink: root.ink
            onClicked: root.nowPlaying.previous()
        }
        NowPlayingButton {
            id: play

            objectName: "playPauseButton"
            anchors.verticalCenter: parent.verticalCenter
            implicitWidth: Metrics.playFrame
            implicitHeight: Metrics.playFrame
            systemName: root.nowPlaying.isPlaying ? AppIcons.playback.pauseCircle : AppIcons.playback.playCircle
            kawaiiName: root.nowPlaying.isPlaying ? KawaiiIcon.pause : KawaiiIcon.play
            fontSize: Metrics.playSymbol
            pictureSize: Metrics.playFrame
            text: root.nowPlaying.isLoading ? "正在载入" : root.nowPlaying.isPlaying ? "暂停" : "播放"
            enabled: root.nowPlaying.hasSong && !root.nowPlaying.isLoading
            opacity: root.nowPlaying.hasSong ? 1 : Metrics.disabledOpacity
            glyph.visible: !root.nowPlaying.isLoading
            ink: root.ink
            onClicked: root.nowPlaying.togglePlayPause()

            Spinner {
                objectName: "loadingSpinner"
                anchors.centerIn: parent
                visible: root.nowPlaying.isLoading
                size: Metrics.loadingSpinner
                color: root.ink
            }
        }
        NowPlayingButton {
            id: next

            objectName: "nextButton"
            anchors.verticalCenter: parent.verticalCenter
            systemName: AppIcons.playback.next
            kawaiiName: KawaiiIcon.next
            fontSize: Metrics.skipSymbol
            pictureSize: Metrics.drawnSkip
            text: "下一首"
            enabled: root.nowPlaying.hasSong
            ink: root.ink
            onClicked: root.nowPlaying.next()
        }
        NowPlayingButton {
            id: heart

            readonly property bool isFavorite: root.nowPlaying.isFavorite

            objectName: "favoriteButton"
            anchors.verticalCenter: parent.verticalCenter
            systemName: isFavorite ? AppIcons.favorite.heartFill : AppIcons.favorite.heart
            kawaiiName: isFavorite ? KawaiiIcon.like : KawaiiIcon.noFavor
            fontSize: Metrics.heartSymbol
            pictureSize: Metrics.drawnHeart
            text: isFavorite ? "取消喜欢" : "喜欢"
            enabled: root.nowPlaying.hasSong
            ink: root.ink
            onClicked: root.nowPlaying.toggleFavorite()

            ResponseSpring {
                id: bounce

                objectName: "heartSpring"
                target: heart.glyph
                property: "scale"
                from: Motion.isReduced ? 1 : Metrics.heartSquash
                to: 1
            }
        }
    }
}
