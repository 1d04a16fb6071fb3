// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"
#include "Views/Gallery.h"

#include <QBuffer>
#include <QImage>

namespace cadorel::gallery {

/// A picture with light and dark in it, as covers have.
QImage madePainting(QSize size = {800, 800});
/// Songs of every kind that a player's screen has to cope with; the first one has lyrics.
QList<Song> madeQueue();
/// Brings up the full-screen player.
void openPlayer(TestWindow &test);
/// Plays the first of them and stands in the middle of its lyrics.
void playWithLyrics(TestWindow &test, const QList<Song> &queue);

} // namespace cadorel::gallery
