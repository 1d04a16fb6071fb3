// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The charts of the platforms, and the page of one of them.
SlidingPage {
    id: root

    required property CadorelViewModel viewModel
    required property TopListsViewModel charts
    required property PlaylistsViewModel playlists
    property int sideMargin: Metrics.screenMargin

    isShown: charts.isOpen
    onCloseRequested: charts.close()

    FocusScope {
        id: overview

        anchors.fill: parent
        visible: !chartPage.covers
        enabled: !chartPage.isShown
        focus: true

        Column {
            id: top

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: root.sideMargin
            anchors.rightMargin: root.sideMargin
            bottomPadding: Metrics.grid

            PageHeader {
                width: parent.width
                title: "排行榜"
                titleStyle: TextStyles.largeTitle
                backText: "返回搜索"
                onBackRequested: root.closeRequested()
            }
            ThemedSegmentedPicker {
                objectName: "chartsPlatform"
                width: parent.width
                name: "平台"
                options: root.charts.platforms
                selection: options[root.charts.platformIndex]
                onSelected: option => root.charts.selectPlatform(options.indexOf(option))
            }
        }
        ChartGrid {
            id: grid

            objectName: "chartGrid"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: root.sideMargin - spacing / 2
            anchors.rightMargin: root.sideMargin - spacing / 2
            anchors.top: top.bottom
            anchors.bottom: parent.bottom
            visible: root.charts.content === TopListsViewModel.Charts
            focus: true
            model: root.charts.charts
            onOpenRequested: row => root.charts.openChart(row)
        }
        LoadingStateView {
            objectName: "chartsLoading"
            anchors.fill: grid
            visible: root.charts.content === TopListsViewModel.Loading
            text: "加载排行榜..."
        }
        EmptyStateView {
            objectName: "chartsEmpty"
            anchors.fill: grid
            visible: root.charts.content === TopListsViewModel.Empty
            systemImage: AppIcons.music.chart
            title: "暂无排行榜"
            description: "请稍后再试"

            TextButton {
                objectName: "chartsRetry"
                implicitWidth: Metrics.menuWidth
                role: TextButton.Prominent
                symbol: AppIcons.action.refresh
                text: "重试"
                onClicked: root.charts.retry()
            }
        }
    }

    TopListPage {
        id: chartPage

        objectName: "chartPage"
        width: parent.width
        height: parent.height
        sideMargin: root.sideMargin
        viewModel: root.viewModel
        page: root.charts.page
        playlists: root.playlists
        onIsShownChanged: {
            if (!isShown)
                overview.forceActiveFocus(Qt.OtherFocusReason);
        }
    }
}
