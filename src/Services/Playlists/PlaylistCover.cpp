// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Playlists/PlaylistCover.h"

#include <QBuffer>
#include <QColorSpace>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace cadorel {

namespace {

constexpr QSize coverSize(300, 300);
constexpr int jpegQuality = 80;
/// What graphics cards take as a texture.
constexpr int longestSide = 16384;

/// What JPEG can hold: sRGB, nothing transparent, no texts that came with the file.
QImage flattened(const QImage &image)
{
    QImage picture = image;
    if (picture.colorSpace().isValid())
        picture.convertToColorSpace(QColorSpace::SRgb);
    QImage flat(picture.size(), QImage::Format_RGB32);
    if (flat.isNull())
        return {};
    flat.fill(Qt::white);
    QPainter painter(&flat);
    painter.drawImage(0, 0, picture);
    return flat;
}

} // namespace

QImage coveringImage(const QImage &image, const QSize &target)
{
    if (image.isNull() || target.isEmpty())
        return {};
    const double width = image.width();
    const double height = image.height();
    const double covering = std::max(target.width() / width, target.height() / height);
    const double ratio = std::min(covering, longestSide / std::max(width, height));
    const auto scaled = [ratio](double side) {
        return std::max(1, static_cast<int>(std::lround(side * ratio)));
    };
    QImage result =
        image.scaled(scaled(width), scaled(height), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    result.setDevicePixelRatio(1);
    return result;
}

std::optional<QByteArray> playlistCover(const QImage &image)
{
    const QImage cover = flattened(coveringImage(image, coverSize));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (cover.isNull() || !cover.save(&buffer, "JPEG", jpegQuality))
        return std::nullopt;
    return bytes;
}

} // namespace cadorel
