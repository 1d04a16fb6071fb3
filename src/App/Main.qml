// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// The window: its places, the player's bar and the tabs beneath them, and what lies over all.
ApplicationWindow {
    id: window

    required property CadorelViewModel viewModel
    required property LibraryViewModel library
    required property PlaybackViewModel playback
    required property WebDAVServersViewModel servers
    required property OnlineViewModel online
    required property PlaylistsViewModel playlists
    required property NavidromeServersViewModel navidrome
    required property EqualizerViewModel equalizer

    property int currentTab: RootTabBar.Library

    /// Shows a place. @param keepsKeyboard the keyboard stays where it is
    function showTab(tab: int, keepsKeyboard: bool): void {
        currentTab = tab;
        if (!keepsKeyboard)
            (places.children[tab] as Item).forceActiveFocus(Qt.OtherFocusReason);
    }

    width: Metrics.phoneWidth
    height: Metrics.phoneHeight
    minimumWidth: Metrics.minimumWidth
    minimumHeight: Metrics.minimumHeight
    color: SystemColors.background
    title: viewModel.hasCurrentSong && viewModel.currentSongTitle !== "" ? viewModel.currentSongTitle : "Tarnova 音乐"

    Shortcut {
        sequence: "Ctrl+O"
        onActivated: window.library.chooseFiles()
    }
    Shortcut {
        sequence: "Ctrl+Left"
        onActivated: window.viewModel.previous()
    }
    Shortcut {
        sequence: "Ctrl+Right"
        onActivated: window.viewModel.next()
    }
    Shortcut {
        sequence: "Ctrl+E"
        onActivated: window.equalizer.open()
    }
    Shortcut {
        sequence: "Ctrl+1"
        onActivated: window.showTab(RootTabBar.Library, false)
    }
    Shortcut {
        sequence: "Ctrl+2"
        onActivated: window.showTab(RootTabBar.Online, false)
    }
    Shortcut {
        sequence: "Ctrl+3"
        onActivated: window.showTab(RootTabBar.Playlists, false)
    }

    // A shortcut on Space would take it from the buttons; a key that none of them wants arrives here.
    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onSpacePressed: window.viewModel.togglePlayPause()

        FocusScope {
            id: places

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.bottom: playErrorBanner.visible ? playErrorBanner.top : playerBar.visible ? playerBar.top : tabBar.top
            anchors.bottomMargin: playErrorBanner.visible ? Metrics.rowSpacing : 0
            focus: true

            // In the order of the tabs. A bound component could not be made by a loader that is of another file.
            // qmllint disable unqualified
            FocusScope {
                anchors.fill: parent
                visible: window.currentTab === RootTabBar.Library
                enabled: visible
                focus: visible

                LibraryView {
                    id: libraryView

                    objectName: "libraryView"
                    anchors.fill: parent
                    focus: true
                    visible: !serversView.covers
                    enabled: !serversView.isShown
                    viewModel: window.viewModel
                    library: window.library
                    playlists: window.playlists
                    onServersRequested: serversView.isShown = true
                    onEqualizerRequested: window.equalizer.open()
                }
                ServersView {
                    id: serversView

                    objectName: "serversView"
                    width: parent.width
                    height: parent.height
                    viewModel: window.viewModel
                    servers: window.servers
                    playlists: window.playlists
                    navidrome: window.navidrome
                    onCloseRequested: {
                        serversView.isShown = false;
                        libraryView.forceActiveFocus(Qt.OtherFocusReason);
                    }
                }
            }
            TabPage {
                anchors.fill: parent
                isCurrent: window.currentTab === RootTabBar.Online
                sourceComponent: OnlineView {
                    objectName: "onlineView"
                    focus: true
                    viewModel: window.viewModel
                    online: window.online
                    playlists: window.playlists
                }
            }
            TabPage {
                anchors.fill: parent
                isCurrent: window.currentTab === RootTabBar.Playlists
                sourceComponent: PlaylistsView {
                    objectName: "playlistsView"
                    focus: true
                    viewModel: window.viewModel
                    playlists: window.playlists
                }
            }
            // qmllint enable unqualified
        }
        MessageBanner {
            id: playErrorBanner

            objectName: "playErrorBanner"
            anchors.bottom: playerBar.visible ? playerBar.top : tabBar.top
            anchors.bottomMargin: Metrics.rowSpacing
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(parent.width, Metrics.contentWidth) - 2 * Metrics.screenMargin
            text: window.viewModel.audioPlayer.playError
            onDismissed: window.playback.dismissPlayError()
        }
        PlayerBar {
            id: playerBar

            objectName: "playerBar"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: tabBar.top
            visible: window.viewModel.hasCurrentSong
            viewModel: window.viewModel
            playback: window.playback
            equalizer: window.equalizer
        }
        RootTabBar {
            id: tabBar

            objectName: "tabBar"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            currentTab: window.currentTab
            onTabRequested: (tab, byKeyboard) => window.showTab(tab, byKeyboard)
        }
    }

    DropArea {
        id: dropArea

        objectName: "dropArea"
        anchors.fill: parent
        keys: ["text/uri-list"]
        onDropped: drop => {
            drop.acceptProposedAction();
            window.library.importUrls(drop.urls);
        }

        DropHighlight {
            objectName: "dropHighlight"
            anchors.fill: parent
            visible: dropArea.containsDrag
        }
    }

    FilePickerSheet {
        id: pickerSheet

        objectName: "pickerSheet"
        onChosen: urls => window.library.importUrls(urls)
    }
    Connections {
        target: window.library

        function onOwnPickerRequested(folder: bool): void {
            pickerSheet.show(folder);
        }
    }

    Loader {
        // The first frame does not pay for sheets that few starts come to.
        readonly property bool isNeeded: window.playlists.picker.isOpen || window.playlists.editor.showCreateSheet

        active: false
        onIsNeededChanged: active = true
        // qmllint disable unqualified
        sourceComponent: PlaylistSheets {
            playlists: window.playlists
        }
        // qmllint enable unqualified
    }
    Loader {
        readonly property bool isNeeded: window.equalizer.isOpen

        active: false
        onIsNeededChanged: active = true
        // qmllint disable unqualified
        sourceComponent: EqualizerView {
            objectName: "equalizerView"
            equalizer: window.equalizer
        }
        // qmllint enable unqualified
    }
}
