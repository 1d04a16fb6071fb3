// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The volume, and a button that silences and brings it back.
Row {
    id: root

    required property AudioPlayerService player

    property real volumeBeforeMute: 1

    IconButton {
        objectName: "muteButton"
        symbol: root.player.volume > 0 ? AppIcons.audio.speaker : AppIcons.audio.speakerMute
        symbolSize: Metrics.symbolSmall
        color: SystemColors.secondaryLabel
        text: root.player.volume > 0 ? "静音" : "取消静音"
        onClicked: {
            if (root.player.volume > 0) {
                root.volumeBeforeMute = root.player.volume;
                root.player.volume = 0;
            } else {
                root.player.volume = root.volumeBeforeMute;
            }
        }
    }
    SlimSlider {
        id: slider

        objectName: "volumeSlider"
        anchors.verticalCenter: parent.verticalCenter
        width: Metrics.volumeWidth
        stepSize: 0.05
        wheelEnabled: true
        Accessible.name: "音量"
        onMoved: root.player.volume = value

        Binding on value {
            value: root.player.volume
            when: !slider.pressed
            restoreMode: Binding.RestoreNone
        }
    }
}
