// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/CoverPainter.h"

#include "Services/Cloud/CoverImage.h"
#include "Utils/AppIcons.h"
#include "Utils/SymbolFiles.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int allocationLimitMegabytes = 256;
// Half-transparent grey, so that one drawing suits light and dark screens.
constexpr QColor placeholderFill(142, 142, 147, 46);
constexpr QColor placeholderNote(142, 142, 147, 190);
constexpr qreal placeholderNoteShare = 0.46;

/// Where a picture comes from: one from a server has passed through nobody's hands but its own.
enum class Origin { library, server };

QImage decodeSquare(QIODevice &device, int side, Origin origin)
{
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (origin == Origin::server && !isSafeToDecode(reader))
        return {};
    const QSize size = reader.size();
    if (size.isValid()) {
        const int shorter = qMin(size.width(), size.height());
        reader.setClipRect(
            QRect((size.width() - shorter) / 2, (size.height() - shorter) / 2, shorter, shorter));
        if (shorter > side)
            reader.setScaledSize(QSize(side, side));
    }
    QImage image = reader.read();
    // Formats that tell no size before they are decoded.
    const int shorter = qMin(image.width(), image.height());
    if (image.width() != image.height())
        image = image.copy((image.width() - shorter) / 2, (image.height() - shorter) / 2, shorter, shorter);
    return image;
}

QImage decode(QByteArray bytes, int side, Origin origin)
{
    QBuffer buffer(&bytes);
    return buffer.open(QIODevice::ReadOnly) ? decodeSquare(buffer, side, origin) : QImage();
}

QImage decode(const ArtworkData &artwork, int side)
{
    if (!artwork.isPresent())
        return {};
    const QByteArray path = artwork.filePath();
    if (!path.isEmpty()) {
        QFile file(QString::fromUtf8(path));
        return file.open(QIODevice::ReadOnly) ? decodeSquare(file, side, Origin::library) : QImage();
    }
    return decode(artwork.bytes(), side, Origin::library);
}

void paintPlaceholder(QPainter &painter, const QRectF &square)
{
    QImage note(square.size().toSize(), QImage::Format_ARGB32_Premultiplied);
    note.fill(Qt::transparent);
    {
        QPainter notePainter(&note);
        const qreal margin = square.width() * (1 - placeholderNoteShare) / 2;
        QSvgRenderer(symbolFile(AppIcons::Music::note))
            .render(&notePainter, square.adjusted(margin, margin, -margin, -margin));
        notePainter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        notePainter.fillRect(note.rect(), placeholderNote);
    }
    painter.drawImage(square.topLeft(), note);
}

/// The picture as a square with round corners, or the placeholder where it is null.
QImage paintCover(const QImage &picture, int side, qreal radius)
{
    QImage result(side, side, QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);
    const QRectF square(0, 0, side, side);
    painter.setBrush(placeholderFill);
    painter.drawRoundedRect(square, radius, radius);
    if (picture.isNull()) {
        paintPlaceholder(painter, square);
        return result;
    }
    QBrush brush(picture);
    brush.setTransform(
        QTransform::fromScale(square.width() / picture.width(), square.height() / picture.height()));
    painter.setBrush(brush);
    painter.drawRoundedRect(square, radius, radius);
    return result;
}

} // namespace

QImage drawCover(const ArtworkData &artwork, int side, qreal radius)
{
    QImageReader::setAllocationLimit(allocationLimitMegabytes);
    return paintCover(decode(artwork, side), side, radius);
}

std::optional<QImage> drawFetchedCover(const QByteArray &bytes, int side, qreal radius)
{
    QImageReader::setAllocationLimit(allocationLimitMegabytes);
    const QImage picture = decode(bytes, side, Origin::server);
    return picture.isNull() ? std::nullopt : std::optional(paintCover(picture, side, radius));
}

} // namespace cadorel
