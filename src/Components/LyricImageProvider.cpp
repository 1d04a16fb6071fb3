// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/LyricImageProvider.h"

#include "Components/BlurredText.h"

namespace cadorel {

namespace {

constexpr int cacheKilobytes = 8 * 1024;
constexpr int bytesPerKilobyte = 1024;

} // namespace

LyricImageProvider::LyricImageProvider()
    : QQuickImageProvider(QQuickImageProvider::Image, QQmlImageProviderBase::ForceAsynchronousImageLoading)
    , m_drawn(cacheKilobytes)
{
}

QImage LyricImageProvider::requestImage(const QString &address, QSize *size, const QSize &requestedSize)
{
    Q_UNUSED(requestedSize)
    QImage image;
    {
        const QMutexLocker lock(&m_mutex);
        if (const QImage *known = m_drawn.object(address))
            image = *known;
    }
    if (image.isNull()) {
        image = BlurredText::ofQuery(address.section(u'?', 1)).drawn();
        const QMutexLocker lock(&m_mutex);
        m_drawn.insert(address, new QImage(image), 1 + image.sizeInBytes() / bytesPerKilobyte);
    }
    if (size)
        *size = image.size();
    return image;
}

} // namespace cadorel
