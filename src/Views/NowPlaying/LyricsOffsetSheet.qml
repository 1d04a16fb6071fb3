// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// Moves the lyrics of the song against its music. Every change is seen at once.
ThemedSheet {
    id: root

    required property LyricsOffsetViewModel offset

    readonly property var amounts: [
        {
            ms: -1000,
            label: "-1s"
        },
        {
            ms: -500,
            label: "-0.5s"
        },
        {
            ms: -100,
            label: "-0.1s"
        },
        {
            ms: 100,
            label: "+0.1s"
        },
        {
            ms: 500,
            label: "+0.5s"
        },
        {
            ms: 1000,
            label: "+1s"
        }
    ]

    component AmountButton: TextButton {
        required property int ms
        required property LyricsOffsetViewModel offset

        objectName: "offset" + ms
        leftPadding: Metrics.grid
        rightPadding: Metrics.grid
        Accessible.description: ms < 0 ? "歌词延后" : "歌词提前"
        onClicked: offset.adjust(ms)
    }

    title: "歌词时间调整"
    acceptName: "lyricsOffsetDone"

    Column {
        width: parent.width
        spacing: Metrics.grid

        StyledText {
            objectName: "offsetSong"
            width: parent.width
            visible: text !== ""
            text: root.offset.songTitle
            style: TextStyles.headline
            color: Surfaces.textOn(root.theme, Surfaces.background(root.theme), root.theme.primaryTextColor)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            maximumLineCount: 2
        }
        StyledText {
            objectName: "offsetHint"
            width: parent.width
            text: "调整歌词与音乐的同步"
            style: TextStyles.footnote
            color: Surfaces.textOn(root.theme, Surfaces.background(root.theme), root.theme.secondaryTextColor)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }
    }
    ThemedCard {
        width: parent.width
        height: settings.implicitHeight + 2 * Metrics.screenMargin
        theme: root.theme

        Column {
            id: settings

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.margins: Metrics.screenMargin
            spacing: Metrics.cardPadding

            StyledText {
                objectName: "offsetStatus"
                width: parent.width
                text: root.offset.statusText
                style: TextStyles.title3
                font.weight: Font.DemiBold
                color: Surfaces.accentOn(root.theme, Surfaces.themedCard(root.theme))
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Grid {
                id: buttons

                // Earlier and later each in a line of their own where one line has no room for all.
                columns: width < Metrics.wideOffsetButtons + 6 * Metrics.textGrowth ? 3 : 6
                width: parent.width
                spacing: Metrics.rowSpacing

                Repeater {
                    model: root.amounts

                    delegate: AmountButton {
                        required property var modelData

                        width: Math.floor((buttons.width - (buttons.columns - 1) * buttons.spacing) / buttons.columns)
                        offset: root.offset
                        ms: modelData.ms
                        text: modelData.label
                    }
                }
            }
            Item {
                width: parent.width
                height: Math.max(slider.implicitHeight, farBack.implicitHeight)

                // What the ends of the slider are called, and the way there.
                AmountButton {
                    id: farBack

                    anchors.left: parent.left
                    anchors.verticalCenter: parent.verticalCenter
                    role: TextButton.Plain
                    offset: root.offset
                    ms: root.offset.smallestOffset
                    text: "-5s"
                }
                SlimSlider {
                    id: slider

                    property bool isReady: false
                    readonly property int shown: Math.max(from, Math.min(to, root.offset.currentOffset))

                    objectName: "offsetSlider"
                    anchors.left: farBack.right
                    anchors.right: farOn.left
                    anchors.leftMargin: Metrics.grid
                    anchors.rightMargin: Metrics.grid
                    anchors.verticalCenter: parent.verticalCenter
                    from: root.offset.smallestOffset
                    to: root.offset.largestOffset
                    stepSize: root.offset.offsetStep
                    origin: 0
                    snapMode: Slider.SnapAlways
                    Accessible.name: root.title
                    Accessible.description: root.offset.statusText
                    Component.onCompleted: isReady = true
                    // A screen reader sets the value as a drag does; so does a slider that is not yet complete.
                    onValueChanged: {
                        if (isReady && Math.round(value) !== shown)
                            root.offset.setOffset(value);
                    }

                    // What a finger has begun for one song moves nothing of the next.
                    Connections {
                        target: root.offset

                        function onSongChanged(): void {
                            if (!slider.pressed)
                                return;
                            slider.enabled = false;
                            slider.enabled = true;
                        }
                    }
                    Binding on value {
                        value: slider.shown
                        when: !slider.pressed
                        restoreMode: Binding.RestoreNone
                    }
                }
                AmountButton {
                    id: farOn

                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    role: TextButton.Plain
                    offset: root.offset
                    ms: root.offset.largestOffset
                    text: "+5s"
                }
            }
        }
    }
    TextButton {
        objectName: "offsetReset"
        width: parent.width
        symbol: AppIcons.action.reset
        text: "重置为 0"
        onClicked: root.offset.reset()
    }
}
