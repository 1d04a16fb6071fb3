// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/CustomImageProvider.h"

#include "Components/CoverPainter.h"
#include "Services/Pictures/CustomPictures.h"

#include <utility>

namespace cadorel {

namespace {

/// A side that nobody asked for goes with the other.
QSize fitting(const QSize &size, const QSize &requested)
{
    const QSize asked(requested.width() > 0 ? requested.width() : size.width(),
                      requested.height() > 0 ? requested.height() : size.height());
    const bool fits = size.width() <= asked.width() && size.height() <= asked.height();
    return fits ? size : size.scaled(asked, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

/// Side of a square of that picture.
int sideOf(const QSize &size, const QSize &requested)
{
    const int shorter = qMin(size.width(), size.height());
    const int asked = qMax(requested.width(), requested.height());
    return asked > 0 ? qMin(asked, shorter) : shorter;
}

} // namespace

CustomImageProvider::CustomImageProvider(std::shared_ptr<const CustomPictures> pictures)
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_pictures(std::move(pictures))
{
}

QImage CustomImageProvider::requestImage(const QString &address, QSize *size, const QSize &requestedSize)
{
    const QString name = address.section(u'?', 0, 0);
    QImage image = m_pictures->image(name);
    if (image.isNull()) {
        image = QImage(1, 1, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
    }
    if (size)
        *size = image.size();
    const int side = sideOf(image.size(), requestedSize);
    if (const qreal radius = cornerRadiusOf(address, side); radius > 0)
        return drawRounded(image, side, radius);
    const QSize fitted = fitting(image.size(), requestedSize);
    return fitted == image.size() ? image
                                  : image.scaled(fitted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace cadorel
