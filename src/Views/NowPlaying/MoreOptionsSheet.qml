// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What the player's screen offers beyond its buttons.
ThemedSheet {
    id: root

    /// Name of the equalizer's preset, or that it is off.
    required property string equalizerDetail
    /// By how much the lyrics of the song are moved.
    required property string lyricsOffsetText
    required property bool hasLyrics
    required property OutputDevicesViewModel devices
    required property PlaybackViewModel playback
    /// A wide window shows the volume beneath the equalizer's line.
    readonly property bool showsVolume: (parent as Item)?.width < Metrics.sideBySideWidth

    signal equalizer
    signal lyricsOffset
    signal settings

    /// What is asked for once this sheet has gone: what comes up before would lose the keyboard to it.
    property var next: null

    function goOn(request: var): void {
        next = request;
        close();
    }

    title: "更多选项"
    acceptName: "moreOptionsDone"
    onAboutToShow: next = null
    onClosed: {
        const request = next;
        next = null;
        if (request)
            request();
    }

    ThemedCard {
        objectName: "moreVolume"
        width: parent.width
        height: volume.height + 2 * Metrics.rowSpacing
        visible: root.showsVolume
        theme: root.theme

        VolumeSlider {
            id: volume

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: Metrics.rowSpacing
            anchors.rightMargin: Metrics.screenMargin
            anchors.verticalCenter: parent.verticalCenter
            playback: root.playback
            theme: root.theme
        }
    }
    ThemedSettingsSection {
        width: parent.width

        AirPlayButton {
            objectName: "moreDevices"
            devices: root.devices
        }
        SheetRow {
            objectName: "moreEqualizer"
            symbol: AppIcons.audio.equalizer
            symbolColor: SystemColors.orange
            text: "均衡器"
            detail: root.equalizerDetail
            onClicked: root.goOn(root.equalizer)
        }
        SheetRow {
            objectName: "moreLyricsOffset"
            symbol: AppIcons.timer.lyricsSync
            symbolColor: SystemColors.purple
            text: "歌词时间调整"
            detail: root.lyricsOffsetText
            visible: root.hasLyrics
            onClicked: root.goOn(root.lyricsOffset)
        }
        SheetRow {
            objectName: "moreSettings"
            symbol: AppIcons.settings.gearOutline
            symbolColor: SystemColors.gray
            text: "播放界面设置"
            detail: "自定义播放界面"
            onClicked: root.goOn(root.settings)
        }
    }

    OutputDevicePicker {
        objectName: "outputDevicePicker"
        devices: root.devices
        theme: root.theme
    }
}
