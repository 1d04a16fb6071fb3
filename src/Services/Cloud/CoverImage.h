// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/ArtworkData.h"

#include <QByteArray>
#include <QImage>

class QImageReader;

namespace cadorel {

/// Whether a picture from outside may be decoded: a picture of more than 32 million pixels may not, a few
/// bytes could ask for any amount of memory, and a vector drawing is a program to be run rather than a
/// picture. Reads the beginning of the picture.
bool isSafeToDecode(QImageReader &reader);

/// The picture that encoded bytes from outside hold; a null image when they are none that is safe to decode.
/// Takes as long as decoding takes: not for the main thread, but for a picture that is known to be small.
QImage decodedCover(const QByteArray &bytes);
/// The same, scaled down to at most @p longestSide pixels either way, which mostly saves decoding the rest.
QImage decodedCover(const QByteArray &bytes, int longestSide);
/// The same for the cover of a song of the library, which may be of any kind and size, as it may where the
/// library shows it. Reads its file.
QImage decodedCover(const ArtworkData &artwork, int longestSide);

} // namespace cadorel
