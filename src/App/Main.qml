// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// The window: the library, the player's bar beneath it, and what lies over both.
ApplicationWindow {
    id: window

    required property CadorelViewModel viewModel
    required property LibraryViewModel library
    required property PlaybackViewModel playback
    required property WebDAVServersViewModel servers

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

    // A shortcut on Space would take it from the buttons; a key that none of them wants arrives here.
    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onSpacePressed: window.viewModel.togglePlayPause()

        FocusScope {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.bottom: playErrorBanner.visible ? playErrorBanner.top : playerBar.visible ? playerBar.top : parent.bottom
            anchors.bottomMargin: playErrorBanner.visible ? Metrics.rowSpacing : 0
            focus: true

            LibraryView {
                id: libraryView

                objectName: "libraryView"
                anchors.fill: parent
                focus: true
                visible: !serversView.covers
                enabled: !serversView.isShown
                viewModel: window.viewModel
                library: window.library
                onServersRequested: serversView.isShown = true
            }
            ServersView {
                id: serversView

                objectName: "serversView"
                width: parent.width
                height: parent.height
                viewModel: window.viewModel
                servers: window.servers
                onCloseRequested: {
                    serversView.isShown = false;
                    libraryView.forceActiveFocus(Qt.OtherFocusReason);
                }
            }
        }
        MessageBanner {
            id: playErrorBanner

            objectName: "playErrorBanner"
            anchors.bottom: playerBar.visible ? playerBar.top : parent.bottom
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
            anchors.bottom: parent.bottom
            visible: window.viewModel.hasCurrentSong
            viewModel: window.viewModel
            playback: window.playback
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
}
