// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The servers as a page over the library.
SlidingPage {
    id: root

    required property CadorelViewModel viewModel
    required property WebDAVServersViewModel servers
    required property PlaylistsViewModel playlists
    required property NavidromeServersViewModel navidrome

    WebDAVView {
        anchors.fill: parent
        focus: true
        viewModel: root.viewModel
        servers: root.servers
        playlists: root.playlists
        navidrome: root.navidrome
    }
}
