// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Controls.Basic
import Cadorel

/// The window: the player, and over it what the makers have to say of this version and of anything else.
ApplicationWindow {
    id: window

    required property ScreenModels screens
    /// This version may not be used any more.
    property bool isForceUpdateRequired: false
    /// What tells of updates and announcements; nothing does while they are null.
    property Component updatePopup: null
    property Component announcementPopup: null

    readonly property CadorelViewModel viewModel: screens.viewModel

    width: Metrics.phoneWidth
    height: Metrics.phoneHeight
    minimumWidth: Metrics.minimumWidth
    minimumHeight: Metrics.minimumHeight
    color: ThemeEnvironment.theme.backgroundColor
    title: viewModel.hasCurrentSong && viewModel.currentSongTitle !== "" ? screens.nowPlaying.title : "Tarnova 音乐"

    ThemedRootView {
        objectName: "themedRootView"
        anchors.fill: parent
        screens: window.screens
    }
    Loader {
        objectName: "updateLayer"
        anchors.fill: parent
        sourceComponent: window.updatePopup
    }
    Loader {
        objectName: "announcementLayer"
        anchors.fill: parent
        // Nothing may stand before an update that has to be.
        active: !window.isForceUpdateRequired
        sourceComponent: window.announcementPopup
    }
}
