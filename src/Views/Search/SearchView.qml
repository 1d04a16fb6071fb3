// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The search: one field for the listener's library and for the online platforms, and the ways to their charts and to
/// the address of the server behind them.
FocusScope {
    id: root

    required property CadorelViewModel viewModel
    required property OnlineViewModel online
    required property PlaylistsViewModel playlists

    enum Scope { Local, Online }

    property int scope: SearchView.Local
    readonly property OnlineSearchViewModel search: online.search
    readonly property int sideMargin: Metrics.screenMargin + Math.max(0, Math.round((width - Metrics.contentWidth) / 2))
    readonly property SongList shownList: scope === SearchView.Local ? localResults.list : onlineResults.list

    /// Looks elsewhere; a text that nobody has asked the platforms for yet is asked for.
    function choose(wanted: int): void {
        scope = wanted;
        if (wanted === SearchView.Online)
            search.searchIfNew();
    }

    LocalSearchViewModel {
        id: localSearch

        viewModel: root.viewModel
        searchText: root.search.searchText
    }
    FocusScope {
        id: home

        anchors.fill: parent
        visible: !chartsPage.covers
        enabled: !chartsPage.isShown
        focus: true

        Column {
            id: top

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: root.sideMargin
            anchors.rightMargin: root.sideMargin
            bottomPadding: Metrics.rowSpacing
            spacing: Metrics.rowSpacing

            PageHeader {
                width: parent.width
                title: "搜索"
                hasBack: false

                HeaderButton {
                    objectName: "chartsButton"
                    symbol: AppIcons.music.chart
                    text: "排行榜"
                    onClicked: root.online.charts.open()
                }
                HeaderButton {
                    objectName: "apiSettingsButton"
                    symbol: AppIcons.settings.service
                    text: "API 服务器"
                    onClicked: root.online.settings.open()
                }
            }
            ThemedSearchBar {
                objectName: "onlineSearch"
                width: parent.width
                focus: true
                text: root.search.searchText
                placeholder: "搜索歌曲、艺术家、专辑"
                onEdited: text => root.search.searchText = text
                onSubmitted: {
                    if (root.scope === SearchView.Online)
                        root.search.performSearch();
                }
                onLeftDownwards: {
                    if (root.shownList.visible)
                        root.shownList.takeKeyboard();
                }
            }
            ThemedSegmentedPicker {
                objectName: "searchScope"
                width: parent.width
                name: "范围"
                options: ["本地", "在线"]
                selection: options[root.scope]
                onSelected: option => root.choose(options.indexOf(option))
            }
            ThemedSegmentedPicker {
                objectName: "searchPlatform"
                width: parent.width
                visible: root.scope === SearchView.Online
                name: "平台"
                options: root.search.platforms
                selection: options[root.search.platformIndex]
                onSelected: option => root.search.selectPlatform(options.indexOf(option))
            }
        }
        LocalResults {
            id: localResults

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: top.bottom
            anchors.bottom: parent.bottom
            visible: root.scope === SearchView.Local
            sideMargin: root.sideMargin
            viewModel: root.viewModel
            search: localSearch
            playlists: root.playlists
            onClearRequested: root.search.searchText = ""
            onOnlineRequested: root.choose(SearchView.Online)
        }
        OnlineResults {
            id: onlineResults

            anchors.fill: localResults
            visible: root.scope === SearchView.Online
            sideMargin: root.sideMargin
            viewModel: root.viewModel
            search: root.search
            playlists: root.playlists
            onChartsRequested: root.online.charts.open()
        }
    }

    TopListsPage {
        id: chartsPage

        objectName: "chartsPage"
        width: parent.width
        height: parent.height
        sideMargin: root.sideMargin
        viewModel: root.viewModel
        charts: root.online.charts
        playlists: root.playlists
        onIsShownChanged: {
            if (!isShown)
                home.forceActiveFocus(Qt.OtherFocusReason);
        }
    }
}
