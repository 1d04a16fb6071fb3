// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import Cadorel

/// The lyrics of what plays: the current line stands in the middle, and a double tap on a line, or Return on the one
/// that the keyboard stands on, plays on from there. What a hand scrolls is taken back with the next line.
FocusScope {
    id: root

    required property LyricsViewModel lyrics
    /// To be read on whatever lies beneath.
    property color textColor: ThemeEnvironment.theme.primaryTextColor
    /// The page is on the screen and not beside it: else nothing moves.
    property bool isShown: Motion.isSeen(visible, Window.visibility)

    /// Playing shall go on from that line.
    signal seek(int line)

    onIsShownChanged: appear()
    Component.onCompleted: appear()

    /// What comes up, or gets lyrics, scrolls to the current line after a moment.
    function appear(): void {
        glide.stop();
        if (isShown && lyrics?.hasLyrics)
            delay.restart();
        else
            delay.stop();
    }

    Timer {
        id: delay

        interval: Metrics.lyricScrollDelay
        onTriggered: list.follow()
    }
    Connections {
        target: root.lyrics

        function onHasLyricsChanged(): void {
            // Lines that go take the keyboard along.
            if (root.activeFocus && root.lyrics.hasLyrics)
                list.forceActiveFocus(Qt.OtherFocusReason);
            list.currentIndex = list.activeFocus ? root.lyrics.currentLineIndex : -1;
            root.appear();
        }
        function onCurrentLineIndexChanged(): void {
            if (root.isShown && !delay.running)
                list.follow();
        }
    }
    Connections {
        target: root.lyrics.lines

        function onLookChanged(): void {
            list.keepPlace();
        }
    }

    ListView {
        id: list

        /// How far the current line was from the middle when the view set out for it.
        property real way: 0
        /// How much of that is done.
        property real progress: 1

        objectName: "lyricList"
        anchors.fill: parent
        // The outline of a line lies in the margin.
        anchors.leftMargin: Math.max(Metrics.screenMargin, Math.round((root.width - Metrics.contentWidth) / 2)) - Metrics.lyricSpacing / 2
        anchors.rightMargin: anchors.leftMargin
        visible: root.lyrics.hasLyrics
        clip: true
        focus: true
        activeFocusOnTab: true
        model: root.lyrics.lines
        spacing: Metrics.lyricSpacing
        topMargin: Metrics.lyricHeadroom
        bottomMargin: Metrics.lyricFootroom
        boundsBehavior: Flickable.StopAtBounds
        currentIndex: -1
        highlightFollowsCurrentItem: false
        keyNavigationEnabled: false
        Accessible.role: Accessible.List
        Accessible.name: "歌词"
        // The linter knows no methods of Qt itself.
        // qmllint disable type
        onWidthChanged: Qt.callLater(keepPlace)
        onHeightChanged: Qt.callLater(keepPlace)
        // qmllint enable type
        onActiveFocusChanged: currentIndex = activeFocus ? root.lyrics.currentLineIndex : -1
        // A hand has taken the list.
        onMovementStarted: glide.stop()
        onProgressChanged: place()

        delegate: LyricLineView {
            id: line

            readonly property real middle: y + height / 2 - list.contentY

            objectName: "lyricLine" + index
            width: ListView.view.width
            opacity: Math.max(0, Math.min(1, middle / Metrics.lyricEdge, (list.height - middle) / Metrics.lyricEdge))
            largestPointSize: root.lyrics.lines.activePointSize
            textColor: root.textColor
            isCentered: ThemeService.lyricsAlignment === LyricsAlignments.Type.center
            animates: root.isShown
            showsFocus: list.activeFocus && ListView.isCurrentItem
            onChosen: root.seek(index)
        }

        // Without lines the keys are the screen's.
        Keys.enabled: count > 0
        Keys.onPressed: event => {
            // Half of what the page shows.
            const page = Math.max(1, Math.round(height / contentHeight * count / 2));
            switch (event.key) {
            case Qt.Key_Return:
            case Qt.Key_Enter:
                if (currentIndex >= 0 && !event.isAutoRepeat)
                    root.seek(currentIndex);
                break;
            case Qt.Key_Up:
                goTo(currentIndex - 1);
                break;
            case Qt.Key_Down:
                goTo(currentIndex + 1);
                break;
            case Qt.Key_PageUp:
                goTo(currentIndex - page);
                break;
            case Qt.Key_PageDown:
                goTo(currentIndex + page);
                break;
            case Qt.Key_Home:
                goTo(0);
                break;
            case Qt.Key_End:
                goTo(count - 1);
                break;
            default:
                return;
            }
            event.accepted = true;
        }

        NumberAnimation {
            id: glide

            target: list
            property: "progress"
            from: 0
            to: 1
            duration: Motion.scaled(Metrics.lyricScrollDuration)
            easing.type: Easing.BezierSpline
            easing.bezierCurve: Motion.easeInOut
        }

        function goTo(row: int): void {
            glide.stop();
            currentIndex = Math.max(0, Math.min(count - 1, row));
            positionViewAtIndex(currentIndex, ListView.Contain);
        }

        /// Scrolls to the current line.
        function follow(): void {
            if (!root.lyrics.hasLyrics)
                return;
            glide.stop();
            if (moving) {
                cancelFlick();
                // Takes the list out of the hand.
                interactive = false;
                interactive = true;
            }
            const before = contentY;
            positionViewAtIndex(root.lyrics.currentLineIndex, ListView.Center);
            // From far away the line comes in from the side that it lies on: there is nothing to read on the way.
            const farthest = height * Metrics.lyricFarthestWay;
            way = Math.max(-farthest, Math.min(farthest, contentY - before));
            progress = 0;
            place();
            glide.restart();
        }
        /// Moves the view to where it has to be by now: the line grows while the view is on its way.
        function place(): void {
            const item = itemAtIndex(root.lyrics.currentLineIndex);
            if (!item)
                return;
            const top = originY - topMargin;
            const bottom = Math.max(top, originY + contentHeight + bottomMargin - height);
            const target = Math.max(top, Math.min(bottom, item.y + (item.height - height) / 2));
            contentY = target - way * (1 - progress);
        }
        /// The current line stays in the middle when the room for the lines changes.
        function keepPlace(): void {
            if (!root.isShown || !root.lyrics.hasLyrics || delay.running)
                return;
            glide.stop();
            positionViewAtIndex(root.lyrics.currentLineIndex, ListView.Center);
            way = 0;
            glide.restart();
        }
    }

    EmptyStateView {
        objectName: "noLyrics"
        anchors.fill: parent
        visible: !root.lyrics.hasLyrics && !root.lyrics.isLoading
        title: "暂无歌词"
        systemImage: AppIcons.misc.textBubble
        description: "当前歌曲没有可用的歌词"
        titleColor: root.textColor
        descriptionColor: Qt.rgba(root.textColor.r, root.textColor.g, root.textColor.b, 0.8)
        symbolColor: descriptionColor
        isOnPicture: true
    }
    LoadingStateView {
        objectName: "lyricsLoading"
        anchors.fill: parent
        visible: root.lyrics.isLoading && !root.lyrics.hasLyrics
        text: "正在加载歌词…"
        ink: root.textColor
    }
}
