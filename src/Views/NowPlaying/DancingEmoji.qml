// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The listener's emoji, or the picture in its place, which jumps on the beat while something plays and it can be
/// seen.
Item {
    id: root

    required property AudioPlayerService player
    readonly property bool showsPicture: ThemeService.useCustomImage && ThemeService.customDancingImageSource !== ""
    readonly property bool isShown: Motion.isSeen(visible, Window.visibility)
    readonly property bool isRunning: isShown && player.isPlaying && !Motion.isReduced
    /// How high it is, 0 to 1, and to which side it leans.
    property real lift: 0
    property int side: 1

    implicitWidth: Metrics.dancingEmoji
    implicitHeight: Metrics.dancingEmoji
    Accessible.ignored: true
    onIsRunningChanged: {
        if (!isRunning && !isShown) {
            jump.stop();
            lift = 0;
        }
    }

    BeatDetector {
        id: beat
    }
    Connections {
        target: root.player
        enabled: root.isRunning

        function onAudioLevelsChanged(): void {
            if (!beat.take(root.player.audioLevels))
                return;
            root.side = -root.side;
            jump.restart();
        }
    }
    SequentialAnimation {
        id: jump

        NumberAnimation {
            target: root
            property: "lift"
            to: 1
            duration: Metrics.jumpDuration * Metrics.dancingRise
            easing.type: Easing.OutQuad
        }
        NumberAnimation {
            target: root
            property: "lift"
            to: 0
            duration: Metrics.jumpDuration * (1 - Metrics.dancingRise)
            easing.type: Easing.InQuad
        }
    }
    Item {
        id: dancer

        objectName: "dancer"
        width: parent.width
        height: parent.height
        y: -root.lift * Metrics.dancingJump
        rotation: root.lift * root.side * Metrics.dancingTilt
        transformOrigin: Item.Bottom

        Text {
            objectName: "emoji"
            anchors.fill: parent
            visible: !root.showsPicture
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            text: ThemeService.dancingEmoji
            textFormat: Text.PlainText
            font.family: "Noto Color Emoji"
            font.pixelSize: Metrics.dancingEmojiFont
            // Whatever is stored, it dances in its place.
            fontSizeMode: Text.Fit
            minimumPixelSize: 1
            maximumLineCount: 1
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        Image {
            objectName: "picture"
            anchors.fill: parent
            asynchronous: true
            antialiasing: true
            sourceSize.width: Metrics.dancingEmoji
            sourceSize.height: Metrics.dancingEmoji
            source: root.showsPicture ? ThemeService.customDancingImageSource + "&radius=" + Metrics.dancingCornerShare : ""
        }
    }
}
