// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// A song of an online platform, as its model tells it; instead of a length, which the platforms do not tell, it
/// says where the song is from.
ThemedSongRow {
    required property var song

    title: song.title
    subtitle: song.subtitle
    trailingText: song.platformText
    coverSource: song.coverSource
    isCurrent: song.isCurrent
    isFavorite: song.isFavorite
}
