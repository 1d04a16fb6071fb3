// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/SurfaceImageProvider.h"

#include "Theme/SurfacePainter.h"

#include <QUrlQuery>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int cacheKilobytes = 16 * 1024;
constexpr int bytesPerKilobyte = 1024;

QImage paint(const QString &address)
{
    const Surface surface = Surface::ofAddress(address.section(u'?', 0, 0));
    const QUrlQuery query(address.section(u'?', 1));
    const double ratio = query.queryItemValue(u"ratio"_s).toDouble();
    QImage image = query.hasQueryItem(u"width"_s) ? paintSurface(surface,
                                                                 {query.queryItemValue(u"width"_s).toInt(),
                                                                  query.queryItemValue(u"height"_s).toInt()},
                                                                 ratio)
                                                  : paintStretchableSurface(surface, ratio);
    if (!image.isNull())
        return image;
    QImage nothing(1, 1, QImage::Format_ARGB32_Premultiplied);
    nothing.fill(Qt::transparent);
    return nothing;
}

} // namespace

SurfaceImageProvider::SurfaceImageProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_drawn(cacheKilobytes)
{
}

QImage SurfaceImageProvider::requestImage(const QString &address, QSize *size, const QSize &requestedSize)
{
    Q_UNUSED(requestedSize)
    QImage image;
    {
        const QMutexLocker lock(&m_mutex);
        if (const QImage *known = m_drawn.object(address))
            image = *known;
    }
    if (image.isNull()) {
        image = paint(address);
        const QMutexLocker lock(&m_mutex);
        m_drawn.insert(address, new QImage(image), 1 + image.sizeInBytes() / bytesPerKilobyte);
    }
    if (size)
        *size = image.size();
    return image;
}

} // namespace cadorel
