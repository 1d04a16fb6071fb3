// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/SymbolImageProvider.h"

#include "Utils/SymbolFiles.h"

#include <QColor>
#include <QGuiApplication>
#include <QPainter>
#include <QSvgRenderer>
#include <QUrl>
#include <QUrlQuery>
#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int cacheKilobytes = 4 * 1024;
constexpr int bytesPerKilobyte = 1024;
constexpr int defaultSide = 24;
constexpr int largestSide = 1024;

/// Pixels of a picture for the pixels asked for. Where a point is no whole number of pixels, a symbol often
/// begins or ends amid a pixel: a picture of as many pixels would be smeared over those beside, while one of
/// twice the exact size is averaged to what belongs into each.
int sideFor(int asked)
{
    const qreal ratio = qGuiApp->devicePixelRatio();
    if (qFuzzyCompare(ratio, std::round(ratio)))
        return asked;
    const qreal points = std::round(asked / ratio);
    return qMax(asked, qRound(2 * ratio * points));
}

QColor colorOf(const QString &address)
{
    // The "#" of a colour reaches us as it is or escaped, depending on how the address was put together.
    const QUrlQuery query(address.section(u'?', 1));
    const QColor color(query.queryItemValue(u"color"_s, QUrl::FullyDecoded));
    return color.isValid() ? color : QColor(Qt::black);
}

} // namespace

SymbolImageProvider::SymbolImageProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_shapes(cacheKilobytes)
{
}

QImage SymbolImageProvider::requestImage(const QString &address, QSize *size, const QSize &requestedSize)
{
    const int asked = qMin(qMax(requestedSize.width(), requestedSize.height()), largestSide);
    const int side = qMin(sideFor(asked > 0 ? asked : defaultSide), largestSide);
    if (size)
        *size = QSize(side, side);

    QImage image = shape(QUrl::fromPercentEncoding(address.section(u'?', 0, 0).toUtf8()), side);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), colorOf(address));
    return image;
}

/// Kept apart from its colours, so that a colour that fades draws no vectors.
QImage SymbolImageProvider::shape(const QString &name, int side)
{
    const QString file = symbolFile(name);
    const QString key = file + u'@' + QString::number(side);
    const QMutexLocker locker(&m_mutex);
    if (const QImage *known = m_shapes.object(key))
        return *known;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(file).render(&painter, QRectF(0, 0, side, side));
    painter.end();
    m_shapes.insert(key, new QImage(image), 1 + image.sizeInBytes() / bytesPerKilobyte);
    return image;
}

} // namespace cadorel
