// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What stands in place of the songs of a Subsonic server while there are none.
Item {
    id: root

    required property NavidromeServerPageViewModel page
    readonly property int content: page.content

    signal editRequested
    signal allSongsRequested

    LoadingStateView {
        objectName: "navidromeConnecting"
        anchors.fill: parent
        visible: root.content === NavidromeServerPageViewModel.Connecting
        text: "正在连接 " + root.page.host + "…"
    }
    LoadingStateView {
        objectName: "navidromeLoading"
        anchors.fill: parent
        visible: root.content === NavidromeServerPageViewModel.Loading
        text: root.page.query === "" ? "正在加载歌曲…" : "正在搜索…"
    }
    EmptyStateView {
        objectName: "navidromeEmpty"
        anchors.fill: parent
        visible: root.content === NavidromeServerPageViewModel.Empty
        systemImage: AppIcons.music.note
        title: "暂无音乐"
        description: "服务器上还没有歌曲"

        TextButton {
            implicitWidth: Metrics.menuWidth
            symbol: AppIcons.action.refresh
            text: "刷新歌曲列表"
            onClicked: root.page.refresh()
        }
    }
    EmptyStateView {
        objectName: "navidromeNothingFound"
        anchors.fill: parent
        visible: root.content === NavidromeServerPageViewModel.NothingFound
        systemImage: AppIcons.action.search
        title: "暂无结果"
        description: "没有找到“" + root.page.query + "”"

        TextButton {
            objectName: "allSongsButton"
            implicitWidth: Metrics.menuWidth
            symbol: AppIcons.playback.shuffle
            text: "随机歌曲"
            onClicked: root.allSongsRequested()
        }
    }
    EmptyStateView {
        objectName: "navidromeFailed"
        anchors.fill: parent
        visible: root.content === NavidromeServerPageViewModel.Failed
        systemImage: AppIcons.status.warning
        title: root.page.isConnected ? "加载失败" : "无法连接"
        description: root.page.failure

        TextButton {
            objectName: "navidromeRetry"
            implicitWidth: Metrics.menuWidth
            role: TextButton.Prominent
            symbol: AppIcons.action.refresh
            text: "重试"
            onClicked: root.page.refresh()
        }
        TextButton {
            objectName: "failedEditNavidrome"
            implicitWidth: Metrics.menuWidth
            symbol: AppIcons.action.edit
            text: "编辑服务器"
            onClicked: root.editRequested()
        }
    }
    EmptyStateView {
        objectName: "navidromeDisconnected"
        anchors.fill: parent
        visible: root.content === NavidromeServerPageViewModel.Disconnected
        systemImage: AppIcons.file.cloud
        title: "未连接"
        description: "连接后可以搜索服务器上的音乐并流式播放"

        TextButton {
            objectName: "connectButton"
            implicitWidth: Metrics.menuWidth
            role: TextButton.Prominent
            text: "连接"
            onClicked: root.page.refresh()
        }
    }
}
