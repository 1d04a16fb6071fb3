// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

namespace cadorel {

/// A vector picture drawn in the middle of an empty image, with a rim of @p rim pixels around it.
inline QImage drawPicture(const QString &path, int side, int rim = 0)
{
    QImage image(side + 2 * rim, side + 2 * rim, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(path).render(&painter, QRectF(rim, rim, side, side));
    return image;
}

/// How much of the image is covered, 0 to 1.
inline qreal coverage(const QImage &image)
{
    qreal sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += image.pixelColor(x, y).alphaF();
    }
    return sum / image.width() / image.height();
}

/// Whether nothing is drawn outside the square that @p rim surrounds.
inline bool isEmptyOutside(const QImage &image, int rim)
{
    const QRect inside = image.rect().adjusted(rim, rim, -rim, -rim);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (!inside.contains(x, y) && image.pixelColor(x, y).alpha() > 0)
                return false;
        }
    }
    return true;
}

} // namespace cadorel
