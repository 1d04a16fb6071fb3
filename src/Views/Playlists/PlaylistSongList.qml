// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// The songs of the playlist that the page shows.
SongList {
    id: root

    required property CadorelViewModel viewModel
    required property PlaylistPageViewModel page

    removeText: "从歌单移除"
    removesEverySong: true
    focus: visible
    onPlayPauseRequested: root.viewModel.togglePlayPause()
    onPlayRequested: row => root.page.playSongAt(row)
    onRemoveRequested: songId => root.page.removeSong(songId)
}
