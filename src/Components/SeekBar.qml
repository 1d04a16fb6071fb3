// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// Where the song is and where it shall go. A drag moves the handle alone; letting go seeks, once.
Item {
    id: root

    required property PlaybackViewModel playback
    /// Seconds; 0 while unknown.
    property real duration: 0

    /// Fraction that a drag has reached; -1 without one.
    property real dragged: -1

    /// What an arrow key goes on or back, in seconds.
    readonly property int keyStep: 5

    implicitHeight: slider.implicitHeight

    function timeText(seconds: real): string {
        const whole = Math.floor(seconds);
        return Math.floor(whole / 60) + ":" + String(whole % 60).padStart(2, "0");
    }

    StyledText {
        id: elapsed

        objectName: "currentTimeText"
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(widest.advanceWidth, implicitWidth)
        text: root.dragged >= 0 ? root.timeText(root.dragged * root.duration) : root.playback.currentTimeText
        style: TextStyles.caption1
        color: SystemColors.secondaryLabel
        elide: Text.ElideNone
    }
    SlimSlider {
        id: slider

        objectName: "seekSlider"
        anchors.left: elapsed.right
        anchors.leftMargin: Metrics.rowSpacing
        anchors.right: total.left
        anchors.rightMargin: Metrics.rowSpacing
        anchors.verticalCenter: parent.verticalCenter
        enabled: root.playback.canSeek
        stepSize: root.duration > 0 ? root.keyStep / root.duration : 0
        Accessible.name: "播放进度"
        onMoved: {
            if (pressed)
                root.dragged = value;
            else
                root.playback.seek(value);
        }
        onPressedChanged: {
            if (pressed || root.dragged < 0)
                return;
            const fraction = root.dragged;
            root.dragged = -1;
            root.playback.seek(fraction);
        }

        Binding on value {
            value: root.playback.sliderPosition
            when: !slider.pressed
            restoreMode: Binding.RestoreNone
        }
    }
    StyledText {
        id: total

        objectName: "durationText"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(widest.advanceWidth, implicitWidth)
        text: root.playback.durationText
        style: TextStyles.caption1
        color: SystemColors.secondaryLabel
        elide: Text.ElideNone
        horizontalAlignment: Text.AlignRight
    }
    // The slider keeps its length while the time grows from 0:09 to 59:59.
    TextMetrics {
        id: widest

        font: elapsed.font
        text: "00:00"
    }
}
