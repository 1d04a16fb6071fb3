// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// What any list of songs can open: the choice of a playlist, and a new one.
Item {
    id: root

    required property PlaylistsViewModel playlists

    PlaylistPickerSheet {
        objectName: "playlistPickerSheet"
        playlists: root.playlists
    }
    CreatePlaylistSheet {
        objectName: "createPlaylistSheet"
        editor: root.playlists.editor
    }
}
