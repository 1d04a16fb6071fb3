// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The screens of the tabs, one above the other; that of the selected tab is seen. A tab that is selected is seen also
/// when the bar has it no more.
FocusScope {
    id: root

    required property ScreenModels screens
    required property int selectedTab

    /// Gives the keyboard to the screen that is seen.
    function takeKeyboard(): void {
        (children[selectedTab] as Item).forceActiveFocus(Qt.OtherFocusReason);
    }
    /// Shows a song in the list of the library.
    function locate(songId: string, isWebDAV: bool): void {
        (libraryPage.item as LibraryView).locate(songId, isWebDAV);
    }

    // In the order of the tabs. A bound component could not be made by a loader that is of another file.
    // qmllint disable unqualified
    TabPage {
        id: libraryPage

        anchors.fill: parent
        isCurrent: root.selectedTab === ContentTabs.Tab.library
        sourceComponent: LibraryView {
            objectName: "libraryView"
            focus: true
            viewModel: root.screens.viewModel
            library: root.screens.library
            playlists: root.screens.playlists
        }
    }
    TabPage {
        anchors.fill: parent
        isCurrent: root.selectedTab === ContentTabs.Tab.playlists
        sourceComponent: PlaylistsView {
            objectName: "playlistsView"
            focus: true
            viewModel: root.screens.viewModel
            playlists: root.screens.playlists
        }
    }
    TabPage {
        anchors.fill: parent
        isCurrent: root.selectedTab === ContentTabs.Tab.webdav
        sourceComponent: WebDAVView {
            objectName: "webDAVView"
            focus: true
            viewModel: root.screens.viewModel
            servers: root.screens.servers
            playlists: root.screens.playlists
            navidrome: root.screens.navidrome
        }
    }
    TabPage {
        anchors.fill: parent
        isCurrent: root.selectedTab === ContentTabs.Tab.search
        sourceComponent: SearchView {
            objectName: "searchView"
            focus: true
            viewModel: root.screens.viewModel
            online: root.screens.online
            playlists: root.screens.playlists
        }
    }
    TabPage {
        anchors.fill: parent
        isCurrent: root.selectedTab === ContentTabs.Tab.settings
        sourceComponent: SettingsView {
            objectName: "settingsView"
            focus: true
            content: root.screens.content
            equalizer: root.screens.equalizer
            apiSettings: root.screens.online.settings
            nowPlayingSettings: root.screens.nowPlayingSettings
        }
    }
    // qmllint enable unqualified
}
