// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/SymbolImageProvider.h"

#include "Utils/SymbolFiles.h"

#include <QColor>
#include <QPainter>
#include <QSvgRenderer>
#include <QUrl>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int cacheKilobytes = 4 * 1024;
constexpr int bytesPerKilobyte = 1024;
constexpr int defaultSide = 24;
constexpr int largestSide = 1024;
constexpr auto colorKey = "color="_L1;

QImage draw(const QString &name, const QColor &color, int side)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(symbolFile(name)).render(&painter, QRectF(0, 0, side, side));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

} // namespace

SymbolImageProvider::SymbolImageProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
    , m_drawn(cacheKilobytes)
{
}

QImage SymbolImageProvider::requestImage(const QString &address, QSize *size, const QSize &requestedSize)
{
    const int asked = qMax(requestedSize.width(), requestedSize.height());
    const int side = asked > 0 ? qMin(asked, largestSide) : defaultSide;
    if (size)
        *size = QSize(side, side);

    const QString key = address + u'@' + QString::number(side);
    if (const QImage *known = m_drawn.object(key))
        return *known;
    // The "#" of a colour reaches us as it is or escaped, depending on how the address was put together.
    const QString query = QUrl::fromPercentEncoding(address.section(u'?', 1).toUtf8());
    const QColor color(query.startsWith(colorKey) ? query.mid(colorKey.size()) : QString());
    const QImage image = draw(address.section(u'?', 0, 0), color.isValid() ? color : QColor(Qt::black), side);
    m_drawn.insert(key, new QImage(image), 1 + image.sizeInBytes() / bytesPerKilobyte);
    return image;
}

} // namespace cadorel
