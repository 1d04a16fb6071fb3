// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// The volume where there is no room for its slider: it opens above the button.
IconButton {
    id: root

    required property AudioPlayerService player

    symbol: player.volume > 0 ? AppIcons.audio.speaker : AppIcons.audio.speakerMute
    color: SystemColors.secondaryLabel
    text: "音量"
    isOpen: popup.visible
    onClicked: popup.visible ? popup.close() : popup.open()

    Popup {
        id: popup

        objectName: "volumePopup"
        x: root.width - width
        y: -height - Metrics.grid
        margins: Metrics.rowSpacing
        topPadding: 0
        bottomPadding: 0
        leftPadding: Metrics.grid
        rightPadding: Metrics.cardPadding
        focus: true
        closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutsideParent

        background: Rectangle {
            color: SystemColors.tertiaryBackground
            border.color: SystemColors.separator
            border.width: Metrics.hairline
            radius: Metrics.cardRadius
        }

        VolumeSlider {
            player: root.player
        }
    }
}
