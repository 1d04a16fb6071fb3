// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// Where the song is, with its times, and by a drag where it shall go.
Item {
    id: root

    required property NowPlayingViewModel nowPlaying
    property color ink: ThemeEnvironment.theme.primaryTextColor
    property color secondaryInk: ThemeEnvironment.theme.secondaryTextColor

    /// Another song has another slider: a finger that is still down on the one before moves nothing any more.
    readonly property string identity: "progress_slider_" + nowPlaying.currentSongId

    readonly property color tint: SystemColors.playedPart
    readonly property bool isOnDark: ink.hslLightness > 0.5
    /// On a light ground the groove is dark enough to show the white, and on a white one an edge does.
    readonly property color groove: Qt.alpha(ink, isOnDark ? Metrics.grooveOpacity : Metrics.darkGrooveOpacity)
    readonly property color edge: isOnDark ? "transparent" : Qt.alpha(ink, Metrics.grooveOpacity)

    implicitHeight: times.y + times.height

    // A bound component could not be made by a loader that is of another file.
    // qmllint disable unqualified
    IdentityLoader {
        id: slider

        width: parent.width
        height: Metrics.nowPlayingSliderHeight
        identity: root.identity
        sourceComponent: ThemedProgressBar {
            id: seeker

            /// What a screen reader tells. It speaks of each change of what has the keyboard: there the clock alone
            /// changes nothing, or it would talk over the song once a second.
            property string told

            function tell(): void {
                told = root.nowPlaying.displayTimeText + " / " + root.nowPlaying.durationText;
            }

            objectName: root.identity
            // The same song that begins anew under the finger has no length for a moment.
            enabled: root.nowPlaying.playback.canSeek || root.nowPlaying.isDragging
            isEndFinal: true
            Accessible.description: told
            Component.onCompleted: tell()
            onActiveFocusChanged: tell()
            name: "播放进度"
            progress: root.nowPlaying.sliderPosition
            tint: root.tint
            focusColor: root.ink
            edge: root.edge
            trackSurface: Surfaces.progressTrackOf(root.groove)
            knobSurface: Surfaces.progressKnobOf(root.tint, knobSize)
            onProgressDragged: place => root.nowPlaying.dragTo(place)
            onEditingChanged: isEditing => {
                if (isEditing)
                    root.nowPlaying.beginDrag();
                else
                    root.nowPlaying.endDrag();
                tell();
            }
            onEditingCanceled: {
                root.nowPlaying.cancelDrag();
                tell();
            }

            Connections {
                target: root.nowPlaying

                function onDisplayTimeTextChanged(): void {
                    if (!seeker.activeFocus)
                        seeker.tell();
                }
                function onDurationTextChanged(): void {
                    seeker.tell();
                }
            }
        }
    }
    // qmllint enable unqualified
    Item {
        id: times

        y: slider.height - Metrics.grid
        width: parent.width
        height: elapsed.height

        StyledText {
            id: elapsed

            objectName: "displayTime"
            anchors.left: parent.left
            text: root.nowPlaying.displayTimeText
            style: TextStyles.caption1
            color: root.secondaryInk
            elide: Text.ElideNone
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Accessible.description: "已播放"
        }
        StyledText {
            objectName: "duration"
            anchors.right: parent.right
            text: root.nowPlaying.durationText
            style: TextStyles.caption1
            color: root.secondaryInk
            elide: Text.ElideNone
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Accessible.description: "总时长"
        }
    }
}
