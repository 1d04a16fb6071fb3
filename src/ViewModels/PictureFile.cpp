// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/PictureFile.h"

#include <QImageReader>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Twice the side of a playlist's cover: what is left of a photograph of 50 million pixels.
constexpr int shorterSide = 600;
/// A cover is scaled by its shorter side: a strip would become as long as memory lasts.
constexpr int largestRatio = 10;

bool isStrip(const QSize &size)
{
    return std::max(size.width(), size.height()) > largestRatio * std::min(size.width(), size.height());
}

} // namespace

QStringList pictureExtensions()
{
    const QList<QByteArray> readable = QImageReader::supportedImageFormats();
    QStringList extensions;
    for (const auto &extension :
         {u"jpg"_s, u"jpeg"_s, u"png"_s, u"webp"_s, u"bmp"_s, u"gif"_s, u"tif"_s, u"tiff"_s}) {
        if (readable.contains(extension.toLatin1()))
            extensions.append(extension);
    }
    return extensions;
}

QImage readPicture(const QString &path)
{
    // An address that is of no file has no path.
    if (path.isEmpty())
        return {};
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isValid() && isStrip(size))
        return {};
    if (std::min(size.width(), size.height()) > shorterSide)
        reader.setScaledSize(size.scaled(shorterSide, shorterSide, Qt::KeepAspectRatioByExpanding));
    const QImage picture = reader.read();
    return isStrip(picture.size()) ? QImage() : picture;
}

} // namespace cadorel
