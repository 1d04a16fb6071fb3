// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Cloud/CoverImage.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>

namespace cadorel {

namespace {

/// 128 MiB at four bytes a pixel, as much as Qt's own limit for pictures that tell no size before.
constexpr qint64 mostPixels = qint64{32} * 1024 * 1024;

void prepare(QImageReader &reader)
{
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
}

QImage readScaled(QImageReader &reader, int longestSide)
{
    const auto isTooLarge = [longestSide](const QSize &size) {
        return size.width() > longestSide || size.height() > longestSide;
    };
    const auto fitting = [longestSide](const QSize &size) {
        return size.scaled(longestSide, longestSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    };
    const QSize size = reader.size();
    if (isTooLarge(size))
        reader.setScaledSize(fitting(size));
    QImage image = reader.read();
    // Formats that tell no size before they are decoded.
    if (isTooLarge(image.size()))
        return image.scaled(fitting(image.size()), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return image;
}

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
    prepare(reader);
    return isSafeToDecode(reader) ? reader.read() : QImage();
}

QImage decodedCover(const QByteArray &bytes, int longestSide)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    prepare(reader);
    return isSafeToDecode(reader) ? readScaled(reader, longestSide) : QImage();
}

QImage decodedCover(const ArtworkData &artwork, int longestSide)
{
    const QByteArray path = artwork.filePath();
    QBuffer buffer;
    QFile file(QString::fromUtf8(path));
    if (path.isEmpty())
        buffer.setData(artwork.bytes());
    QIODevice &device = path.isEmpty() ? static_cast<QIODevice &>(buffer) : file;
    if (!device.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&device);
    prepare(reader);
    return readScaled(reader, longestSide);
}

} // namespace cadorel
