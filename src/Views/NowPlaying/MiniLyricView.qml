// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The current line of the lyrics by itself; nothing before the first one.
Item {
    id: root

    required property LyricsViewModel lyrics
    /// To be read on whatever lies beneath.
    property color textColor: ThemeEnvironment.theme.primaryTextColor
    property int horizontalAlignment: Text.AlignHCenter
    /// Changes are seen.
    property bool isShown: Motion.isSeen(visible, Window.visibility)

    implicitWidth: words.implicitWidth
    implicitHeight: Metrics.miniLyricHeight
    Accessible.role: Accessible.StaticText
    Accessible.name: lyrics.currentText

    function take(): void {
        words.text = lyrics?.currentText ?? "";
    }

    Component.onCompleted: take()
    onIsShownChanged: {
        change.stop();
        words.opacity = 1;
        take();
    }

    Connections {
        target: root.lyrics

        function onCurrentTextChanged(): void {
            if (root.isShown && !Motion.isReduced && !change.running)
                change.start();
            else
                root.take();
        }
    }
    StyledText {
        id: words

        objectName: "miniLyric"
        anchors.fill: parent
        style: TextStyles.callout
        color: root.textColor
        horizontalAlignment: root.horizontalAlignment
        wrapMode: Text.Wrap
        maximumLineCount: Math.max(1, Math.floor(root.height / style.line))
        Accessible.ignored: true
    }
    SequentialAnimation {
        id: change

        NumberAnimation {
            target: words
            property: "opacity"
            to: 0
            duration: Metrics.miniLyricFadeOut
        }
        ScriptAction { script: root.take() }
        NumberAnimation {
            target: words
            property: "opacity"
            to: 1
            duration: Metrics.lyricStyleDuration - Metrics.miniLyricFadeOut
        }
    }
}
