// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QColor>

namespace cadorel {

/// A JPEG or PNG file with a plain colour. @param side length of a side in pixels
QByteArray madeJpeg(const QColor &color = Qt::red, int side = 64);
QByteArray madePng(const QColor &color = Qt::blue, int side = 64);

/// A PNG file of a few kilobytes that says it is so many pixels wide and high, and holds the beginning of
/// them.
QByteArray madePictureBomb(quint32 side);

/// A picture block as FLAC files and Vorbis comments carry it, without the header of a metadata block.
QByteArray madePictureBlock(const QByteArray &picture, const QByteArray &mimeType = "image/png",
                            const QByteArray &description = {});
/// A number as such a block holds it: 32 bits, most significant byte first.
QByteArray madeNumber(quint32 number);

} // namespace cadorel
