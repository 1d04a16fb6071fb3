// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel

/// A song of an online platform. Instead of a length, which the platforms do not tell, it says where the song is
/// from.
ThemedSongRow {
    /// The song by the roles of its list: `title`, `subtitle`, `platformText`, `coverSource`, `isCurrent` and
    /// `isFavorite`. A delegate gives its `model`.
    required property var song

    title: song.title
    subtitle: song.subtitle ?? ""
    trailingText: song.platformText ?? ""
    coverSource: song.coverSource ?? ""
    isCurrent: song.isCurrent ?? false
    isFavorite: song.isFavorite ?? false
}
