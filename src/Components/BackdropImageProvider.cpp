// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/BackdropImageProvider.h"

#include "Components/BackdropColors.h"
#include "Components/BackdropPainter.h"
#include "Components/PictureOrder.h"
#include "Components/PictureWorkshop.h"
#include "Services/Cloud/CoverImage.h"
#include "Services/Pictures/CustomPictures.h"

#include <QUrlQuery>

#include <algorithm>
#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int cacheKilobytes = 8 * 1024;
constexpr auto providerPrefix = "image://"_L1;
constexpr auto coverKind = "cover/"_L1;
constexpr auto customKind = "custom/"_L1;
constexpr auto noCover = "cover/none"_L1;

QImage nothing()
{
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

double blurOf(const QString &address)
{
    const double blur = QUrlQuery(address.section(u'?', 1)).queryItemValue(u"blur"_s).toDouble();
    return std::isfinite(blur) ? std::clamp(blur, 0.0, BackdropImageProvider::largestBlur) : 0;
}

std::optional<QImage> painted(const QImage &picture, const BackdropDrawing &drawing)
{
    return picture.isNull() ? std::nullopt : std::optional(paintBackdrop(picture, drawing));
}

/// Leaves the colours of its picture before that is shown.
class BackdropResponse : public PictureResponse
{
public:
    explicit BackdropResponse(const QString &address)
        : m_address(address)
    {
    }

    QQuickTextureFactory *textureFactory() const override
    {
        const QImage image = order()->image();
        const bool isPicture = !image.isNull() && !image.hasAlphaChannel();
        BackdropColors::shared().keep(m_address, isPicture ? backdropColors(image) : QList<QColor>());
        return PictureResponse::textureFactory();
    }

private:
    const QString m_address;
};

} // namespace

BackdropImageProvider::BackdropImageProvider(CoverRegistry &registry, RemoteCovers *remoteCovers,
                                             std::shared_ptr<const CustomPictures> pictures)
    : m_pictures(std::move(pictures))
    , m_workshop(std::make_shared<PictureWorkshop>(registry, remoteCovers, cacheKilobytes))
{
}

BackdropImageProvider::~BackdropImageProvider() = default;

QString BackdropImageProvider::addressOf(const QString &source, double blur)
{
    if (!source.startsWith(providerPrefix))
        return {};
    const QString picture = source.sliced(providerPrefix.size());
    if (picture.section(u'?', 0, 0) == noCover ||
        (!picture.startsWith(coverKind) && !picture.startsWith(customKind)))
        return {};
    const double bounded = std::isfinite(blur) ? std::clamp(blur, 0.0, largestBlur) : 0;
    const QChar separator = picture.contains(u'?') ? u'&' : u'?';
    return QString(providerPrefix) + QLatin1StringView(id) + u'/' + picture + separator + u"blur="_s +
           QString::number(std::lround(bounded));
}

QQuickImageResponse *BackdropImageProvider::requestImageResponse(const QString &address,
                                                                 const QSize &requestedSize)
{
    // Drawn as small as its blur allows, whatever size it is shown at.
    Q_UNUSED(requestedSize)
    auto *response = new BackdropResponse(address);
    if (address.startsWith(coverKind))
        drawCover(response->order(), address);
    else
        drawCustom(response->order(), address);
    return response;
}

void BackdropImageProvider::drawCover(const std::shared_ptr<PictureOrder> &order, const QString &address)
{
    const BackdropDrawing drawing{.blur = blurOf(address), .saturation = coverSaturation};
    // Twice the side: decoders that shrink while they read do so by whole steps, not smoothly.
    const int side = 2 * backdropSide(drawing.blur);
    const PictureWorkshop::CoverDrawing cover{
        .key = address.section(u'?', 0, 0).sliced(coverKind.size()),
        .own = [side, drawing](
                   const ArtworkData &artwork) { return painted(decodedCover(artwork, side), drawing); },
        .fetched =
            [side, drawing](const QByteArray &bytes) { return painted(decodedCover(bytes, side), drawing); }};
    m_workshop->drawCover(order, {.name = address, .fallback = nothing}, cover);
}

void BackdropImageProvider::drawCustom(const std::shared_ptr<PictureOrder> &order, const QString &address)
{
    const QString name = address.section(u'?', 0, 0).mid(customKind.size());
    const BackdropDrawing drawing{.blur = blurOf(address), .saturation = 1};
    m_workshop->draw(order, {.name = address, .fallback = nothing}, [pictures = m_pictures, name, drawing] {
        return painted(pictures ? pictures->image(name) : QImage(), drawing);
    });
}

} // namespace cadorel
