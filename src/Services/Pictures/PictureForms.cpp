// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Pictures/PictureForms.h"

#include <QBuffer>
#include <QPainter>

#include <algorithm>

namespace cadorel {

namespace {

QSize scaledSize(const QImage &image, double scale)
{
    return QSize(qRound(image.width() * scale), qRound(image.height() * scale)).expandedTo(QSize(1, 1));
}

/// Every pixel of the original counts, which a painter does not see to.
QImage scaledDown(const QImage &image, double scale)
{
    return image.scaled(scaledSize(image, scale), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

std::optional<QByteArray> encoded(const QImage &image, const char *format, int quality)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, format, quality))
        return std::nullopt;
    return buffer.data();
}

} // namespace

QImage resizeImage(const QImage &image, const QSize &targetSize)
{
    const double scale = std::max(static_cast<double>(targetSize.width()) / image.width(),
                                  static_cast<double>(targetSize.height()) / image.height());
    const QSizeF size = QSizeF(image.size()) * scale;
    const QRectF place(
        QPointF((targetSize.width() - size.width()) / 2, (targetSize.height() - size.height()) / 2), size);
    QImage canvas(targetSize, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QImage source = scale < 1 ? scaledDown(image, scale) : image;
    painter.drawImage(place, source, QRectF(QPointF(), QSizeF(source.size())));
    return canvas;
}

QImage fittedImage(const QImage &image, int longestSide)
{
    const double scale = std::min({static_cast<double>(longestSide) / image.width(),
                                   static_cast<double>(longestSide) / image.height(), 1.0});
    QImage fitted = scale < 1 ? scaledDown(image, scale) : image;
    fitted.setDevicePixelRatio(1);
    if (!fitted.hasAlphaChannel())
        return fitted.convertToFormat(QImage::Format_RGB32);
    QImage opaque(fitted.size(), QImage::Format_RGB32);
    opaque.fill(Qt::white);
    QPainter(&opaque).drawImage(0, 0, fitted);
    return opaque;
}

std::optional<QByteArray> pngData(const QImage &image)
{
    constexpr int defaultQuality = -1;
    return encoded(image, "png", defaultQuality);
}

std::optional<QByteArray> jpegData(const QImage &image, int quality)
{
    return encoded(image, "jpeg", quality);
}

} // namespace cadorel
