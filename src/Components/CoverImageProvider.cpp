// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/CoverImageProvider.h"

#include "Components/CoverPainter.h"
#include "Components/PictureOrder.h"
#include "Components/PictureWorkshop.h"

namespace cadorel {

namespace {

constexpr int cacheKilobytes = 24 * 1024;
constexpr int defaultSide = 96;
constexpr int largestSide = 2048;

} // namespace

CoverImageProvider::CoverImageProvider(CoverRegistry &registry, RemoteCovers *remoteCovers)
    : m_workshop(std::make_shared<PictureWorkshop>(registry, remoteCovers, cacheKilobytes))
{
}

CoverImageProvider::~CoverImageProvider() = default;

QQuickImageResponse *CoverImageProvider::requestImageResponse(const QString &address,
                                                              const QSize &requestedSize)
{
    const int asked = qMax(requestedSize.width(), requestedSize.height());
    const int side = asked > 0 ? qMin(asked, largestSide) : defaultSide;
    const qreal radius = cornerRadiusOf(address, side);
    const PictureWorkshop::Picture picture{
        .name = address + u'@' + QString::number(side),
        .fallback = [side, radius] { return drawCover({}, side, radius); }};
    const PictureWorkshop::CoverDrawing drawing{
        .key = address.section(u'?', 0, 0),
        .own = [side, radius](const ArtworkData &artwork) { return drawCover(artwork, side, radius); },
        .fetched = [side, radius](const QByteArray &bytes) { return drawFetchedCover(bytes, side, radius); }};
    auto *response = new PictureResponse;
    m_workshop->drawCover(response->order(), picture, drawing);
    return response;
}

} // namespace cadorel
