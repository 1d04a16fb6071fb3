// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The sheets of the full-screen player. Each is made when it is first asked for.
Item {
    id: root

    required property NowPlayingViewModel nowPlaying
    required property OutputDevicesViewModel devices
    required property NowPlayingSettingsViewModel appearance

    signal equalizerRequested

    component Sheet: Loader {
        property bool isNeeded: false

        active: false
        onIsNeededChanged: active = true
    }

    // qmllint disable unqualified
    Sheet {
        isNeeded: root.nowPlaying.showSleepTimer
        sourceComponent: SleepTimerSheet {
            objectName: "sleepTimerSheet"
            sleep: root.nowPlaying.sleep
            visible: root.nowPlaying.showSleepTimer
            onClosed: root.nowPlaying.showSleepTimer = false
        }
    }
    Sheet {
        isNeeded: root.nowPlaying.showMoreOptions
        sourceComponent: MoreOptionsSheet {
            objectName: "moreOptionsSheet"
            equalizerDetail: root.nowPlaying.equalizerDetail
            lyricsOffsetText: root.nowPlaying.lyricsOffsetText
            hasLyrics: root.nowPlaying.lyrics.hasLyrics
            devices: root.devices
            playback: root.nowPlaying.playback
            visible: root.nowPlaying.showMoreOptions
            onClosed: root.nowPlaying.showMoreOptions = false
            onEqualizer: root.equalizerRequested()
            onLyricsOffset: root.nowPlaying.showLyricsOffset = true
            onSettings: root.nowPlaying.showNowPlayingSettings = true
        }
    }
    Sheet {
        isNeeded: root.nowPlaying.showLyricsOffset
        sourceComponent: LyricsOffsetSheet {
            objectName: "lyricsOffsetSheet"
            offset: root.nowPlaying.offset
            visible: root.nowPlaying.showLyricsOffset
            onClosed: root.nowPlaying.showLyricsOffset = false
        }
    }
    Sheet {
        isNeeded: root.nowPlaying.showNowPlayingSettings
        sourceComponent: NowPlayingSettingsView {
            objectName: "nowPlayingSettings"
            settings: root.appearance
            visible: root.nowPlaying.showNowPlayingSettings
            onClosed: root.nowPlaying.showNowPlayingSettings = false
        }
    }
    // qmllint enable unqualified
}
