// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The way out, which page is shown, and the ways to the sleep timer and to what else there is.
Item {
    id: root

    property int currentPage: 0
    /// A time to sleep is chosen.
    property bool hasSleepTime: false
    property string sleepText
    property color ink: ThemeEnvironment.theme.primaryTextColor

    signal closeRequested
    signal pageRequested(int page)
    signal sleepTimerRequested
    signal moreRequested

    implicitHeight: Metrics.touchTarget
    Accessible.role: Accessible.ToolBar
    Accessible.name: "页面与选项"

    NowPlayingButton {
        objectName: "nowPlayingClose"
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        systemName: AppIcons.navigation.dismiss
        kawaiiName: KawaiiIcon.chevronDown
        text: "关闭"
        ink: root.ink
        onClicked: root.closeRequested()
    }
    PageDots {
        objectName: "pageDots"
        anchors.centerIn: parent
        names: ["封面", "歌词", "队列"]
        currentPage: root.currentPage
        ink: root.ink
        onPageRequested: page => root.pageRequested(page)
    }
    Row {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter

        NowPlayingButton {
            objectName: "sleepTimerButton"
            systemName: AppIcons.timer.timer
            kawaiiName: KawaiiIcon.sleepTimer
            text: "定时关闭"
            ink: root.ink
            glyph.opacity: root.hasSleepTime ? 1 : Metrics.idleTimerOpacity
            Accessible.description: root.sleepText
            onClicked: root.sleepTimerRequested()
        }
        NowPlayingButton {
            objectName: "moreButton"
            systemName: AppIcons.navigation.more
            kawaiiName: KawaiiIcon.share
            text: "更多选项"
            ink: root.ink
            onClicked: root.moreRequested()
        }
    }
}
