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

} // namespace cadorel
