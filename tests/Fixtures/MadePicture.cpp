// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/MadePicture.h"

#include <QBuffer>
#include <QImage>
#include <QtEndian>

namespace cadorel {

namespace {

QByteArray encoded(const QColor &color, int side, const char *format)
{
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(color);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return buffer.data();
}

quint32 pngChecksum(const QByteArray &bytes)
{
    constexpr quint32 polynomial = 0xedb88320;
    quint32 value = 0xffffffff;
    for (const char byte : bytes) {
        value ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            value = (value >> 1) ^ (value & 1 ? polynomial : 0);
    }
    return ~value;
}

QByteArray pngChunk(const QByteArray &type, const QByteArray &data)
{
    return madeNumber(static_cast<quint32>(data.size())) + type + data + madeNumber(pngChecksum(type + data));
}

} // namespace

QByteArray madeJpeg(const QColor &color, int side)
{
    return encoded(color, side, "JPEG");
}

QByteArray madePng(const QColor &color, int side)
{
    return encoded(color, side, "PNG");
}

QByteArray madeNumber(quint32 number)
{
    QByteArray bytes(sizeof number, Qt::Uninitialized);
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray madePictureBlock(const QByteArray &picture, const QByteArray &mimeType,
                            const QByteArray &description)
{
    constexpr quint32 frontCover = 3;
    const auto counted = [](const QByteArray &bytes) {
        return madeNumber(static_cast<quint32>(bytes.size())) + bytes;
    };
    return madeNumber(frontCover) + counted(mimeType) + counted(description) + madeNumber(64) +
           madeNumber(64) + madeNumber(24) + madeNumber(0) + counted(picture);
}

QByteArray madePictureBomb(quint32 side)
{
    // Eight bits a channel, red, green, blue and alpha, nothing special.
    const QByteArray header = madeNumber(side) + madeNumber(side) + QByteArray("\x08\x06\0\0\0", 5);
    const QByteArray pixels = qCompress(QByteArray(1'000'000, '\0')).mid(4);
    return QByteArray("\x89PNG\r\n\x1a\n") + pngChunk("IHDR", header) + pngChunk("IDAT", pixels) +
           pngChunk("IEND", {});
}

} // namespace cadorel
