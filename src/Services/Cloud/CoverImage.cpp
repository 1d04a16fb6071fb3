// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Cloud/CoverImage.h"

#include <QBuffer>
#include <QImageReader>

namespace cadorel {

namespace {

/// 128 MiB at four bytes a pixel, as much as Qt's own limit for pictures that tell no size before.
constexpr qint64 mostPixels = qint64{32} * 1024 * 1024;

} // namespace

bool isSafeToDecode(QImageReader &reader)
{
    const QByteArray format = reader.format();
    if (format.startsWith("svg") || format == "pdf")
        return false;
    const QSize size = reader.size();
    return qint64{size.width()} * size.height() <= mostPixels;
}

QImage decodedCover(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    return isSafeToDecode(reader) ? reader.read() : QImage();
}

} // namespace cadorel
