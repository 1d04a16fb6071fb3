// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/RoundedImageProvider.h"

#include "Components/CoverPainter.h"

#include <QFile>
#include <QQmlFile>
#include <QUrl>

namespace cadorel {

namespace {

constexpr int defaultSide = 96;
constexpr int largestSide = 2048;
// More than any picture that is worth showing; what is larger is not read.
constexpr qint64 largestFile = 64 * 1024 * 1024;

QByteArray bytesAt(const QUrl &url)
{
    QFile file(QQmlFile::urlToLocalFileOrQrc(url));
    return !file.fileName().isEmpty() && file.open(QIODevice::ReadOnly) && file.size() <= largestFile
               ? file.readAll()
               : QByteArray();
}

} // namespace

RoundedImageProvider::RoundedImageProvider()
    : QQuickImageProvider(QQuickImageProvider::Image, QQmlImageProviderBase::ForceAsynchronousImageLoading)
{
}

QImage RoundedImageProvider::requestImage(const QString &address, QSize *size, const QSize &requestedSize)
{
    const int asked = qMax(requestedSize.width(), requestedSize.height());
    const int side = asked > 0 ? qMin(asked, largestSide) : defaultSide;
    if (size)
        *size = QSize(side, side);
    const QUrl url(QUrl::fromPercentEncoding(address.section(u'?', 0, 0).toUtf8()));
    return drawCover(ArtworkData(bytesAt(url)), side, cornerRadiusOf(address, side));
}

} // namespace cadorel
