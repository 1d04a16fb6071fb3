// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The volume, and a button that silences and brings it back. As wide as it is made; the wheel turns the volume too.
Item {
    id: root

    required property PlaybackViewModel playback
    property AppTheme theme: ThemeEnvironment.theme
    /// Of the symbol.
    property color ink: theme.secondaryTextColor
    /// Its tint and its surfaces may be others than the look's.
    readonly property alias bar: slider

    readonly property bool isSilent: playback.volume <= 0

    implicitWidth: button.width + Metrics.volumeWidth
    implicitHeight: Metrics.touchTarget

    NowPlayingButton {
        id: button

        objectName: "muteButton"
        anchors.verticalCenter: parent.verticalCenter
        systemName: root.isSilent ? AppIcons.audio.speakerMute : root.playback.volume < 0.5 ? AppIcons.audio.speakerLow : AppIcons.audio.speaker
        kawaiiName: root.isSilent ? KawaiiIcon.volumeDown : KawaiiIcon.volumeUp
        fontSize: Metrics.volumeSymbol
        text: root.isSilent ? "取消静音" : "静音"
        ink: root.ink
        theme: root.theme
        onClicked: root.playback.toggleMute()
    }
    ThemedProgressBar {
        id: slider

        objectName: "volumeSlider"
        anchors.left: button.right
        anchors.right: parent.right
        // The knob stands over either end.
        anchors.rightMargin: Metrics.draggedProgressKnob / 2
        anchors.verticalCenter: parent.verticalCenter
        height: Metrics.nowPlayingSliderHeight
        name: "音量"
        progress: root.playback.volume
        theme: root.theme
        onProgressDragged: place => root.playback.dragVolume(place)
        onEditingCanceled: root.playback.endVolumeDrag()
        onEditingChanged: isEditing => {
            if (!isEditing)
                root.playback.endVolumeDrag();
        }
    }
    WheelHandler {
        objectName: "volumeWheel"
        // A touchpad tells many small turns.
        onWheel: event => root.playback.changeVolume(Metrics.volumeStep * event.angleDelta.y / Metrics.wheelNotch)
    }
}
