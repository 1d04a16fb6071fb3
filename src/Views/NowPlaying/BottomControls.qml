// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Cadorel

/// Ways to the lyrics, to the queue and out of the screen.
Row {
    id: root

    property int currentPage: NowPlayingViewModel.CoverPage
    property color ink: ThemeEnvironment.theme.primaryTextColor
    property color secondaryInk: ThemeEnvironment.theme.secondaryTextColor

    signal pageRequested(int page)
    signal closeRequested

    component Choice: T.AbstractButton {
        id: choice

        required property string systemName
        required property string kawaiiName
        required property color ink
        required property color secondaryInk
        property bool isCurrent: false
        readonly property color color: isCurrent || hovered ? ink : secondaryInk

        hoverEnabled: true
        focusPolicy: Qt.TabFocus
        Accessible.name: text
        Accessible.description: isCurrent ? "当前页" : ""
        Accessible.onPressAction: Press.byAction(choice)
        Keys.onPressed: event => Press.holdBack(event)
        Keys.onReleased: event => Press.holdBack(event)
        Keys.onReturnPressed: event => Press.byKey(choice, event)
        Keys.onEnterPressed: event => Press.byKey(choice, event)

        background: Rectangle {
            radius: Metrics.cardRadius
            color: Qt.alpha(choice.ink, choice.down ? Metrics.pressedOpacity : choice.hovered ? Metrics.hoverOpacity : 0)

            FocusRing {
                radius: parent.radius
                border.color: choice.ink
                visible: choice.visualFocus
            }
        }
        contentItem: Item {
            Column {
                anchors.centerIn: parent

                ThemedIcon {
                    anchors.horizontalCenter: parent.horizontalCenter
                    systemName: choice.systemName
                    kawaiiName: choice.kawaiiName
                    size: Metrics.nowPlayingSymbol
                    color: choice.color
                }
                StyledText {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: choice.text
                    style: TextStyles.caption1
                    font.weight: choice.isCurrent ? Font.DemiBold : Font.Normal
                    color: choice.color
                    elide: Text.ElideNone
                }
            }
        }
    }

    height: Math.max(Metrics.touchTarget, Metrics.nowPlayingSymbol + TextStyles.caption1.line + Metrics.rowSpacing)

    Choice {
        objectName: "lyricsButton"
        width: root.width / 3
        height: root.height
        ink: root.ink
        secondaryInk: root.secondaryInk
        systemName: AppIcons.misc.textBubble
        kawaiiName: KawaiiIcon.lyrics
        text: "歌词"
        isCurrent: root.currentPage === NowPlayingViewModel.LyricsPage
        onClicked: root.pageRequested(NowPlayingViewModel.LyricsPage)
    }
    Choice {
        objectName: "queueButton"
        width: root.width / 3
        height: root.height
        ink: root.ink
        secondaryInk: root.secondaryInk
        systemName: AppIcons.music.queue
        kawaiiName: KawaiiIcon.queue
        text: "队列"
        isCurrent: root.currentPage === NowPlayingViewModel.QueuePage
        onClicked: root.pageRequested(NowPlayingViewModel.QueuePage)
    }
    Choice {
        objectName: "collapseButton"
        width: root.width / 3
        height: root.height
        ink: root.ink
        secondaryInk: root.secondaryInk
        systemName: AppIcons.navigation.down
        kawaiiName: KawaiiIcon.chevronDown
        text: "收起"
        onClicked: root.closeRequested()
    }
}
