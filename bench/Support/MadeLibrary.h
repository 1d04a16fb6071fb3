// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"
#include "Platform/Directories.h"

#include <QByteArray>
#include <QList>

namespace cadorel {

/// One song in so many has a cover.
constexpr int songsPerCover = 3;

/// Songs as an import would have left them, in Chinese and Latin; the same for the same numbers.
/// @param first number of the first song
QList<Song> madeSongs(const Directories &directories, int first, int count);

/// A library of made songs: the index, audio files too small to play, and covers, which all share the bytes
/// of one file.
void makeLibrary(const Directories &directories, int count);

/// A picture of about 22 kB.
QByteArray madeCover();

} // namespace cadorel
