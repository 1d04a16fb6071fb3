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
#include <QUrlQuery>

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

/// The middle of a picture, as high as it is wide.
QImage squareOf(const QImage &image)
{
    const int shorter = qMin(image.width(), image.height());
    return image.width() == image.height()
               ? image
               : image.copy((image.width() - shorter) / 2, (image.height() - shorter) / 2, shorter, shorter);
}

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
    // Formats that tell no size before they are decoded.
    return squareOf(reader.read());
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

void paintRounded(QPainter &painter, const QImage &picture, const QRectF &square, qreal radius)
{
    QBrush brush(picture);
    brush.setTransform(
        QTransform::fromScale(square.width() / picture.width(), square.height() / picture.height()));
    painter.setBrush(brush);
    painter.drawRoundedRect(square, radius, radius);
}

QImage emptySquare(int side)
{
    QImage square(side, side, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::transparent);
    return square;
}

/// Smooth, and with no line about what is filled.
void prepare(QPainter &painter)
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);
}

/// The picture as a square with round corners, or the placeholder where it is null.
QImage paintCover(const QImage &picture, int side, qreal radius)
{
    QImage result = emptySquare(side);
    QPainter painter(&result);
    prepare(painter);
    const QRectF square(0, 0, side, side);
    painter.setBrush(placeholderFill);
    painter.drawRoundedRect(square, radius, radius);
    if (picture.isNull()) {
        paintPlaceholder(painter, square);
        return result;
    }
    paintRounded(painter, picture, square, radius);
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

QImage drawRounded(const QImage &picture, int side, qreal radius)
{
    QImage result = emptySquare(side);
    QPainter painter(&result);
    prepare(painter);
    const QImage square =
        squareOf(picture).scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    paintRounded(painter, square, QRectF(0, 0, side, side), radius);
    return result;
}

qreal cornerRadiusOf(const QString &address, int side)
{
    const double radius = QUrlQuery(address.section(u'?', 1)).queryItemValue(u"radius"_s).toDouble();
    return qIsFinite(radius) ? qBound(0.0, radius, 0.5) * side : 0;
}

} // namespace cadorel
