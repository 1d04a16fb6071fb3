// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/MadePicture.h"

#include <QBuffer>
#include <QImage>

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

} // namespace cadorel
