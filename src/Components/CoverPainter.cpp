// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/CoverPainter.h"

#include "Utils/AppIcons.h"

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

QImage decodeSquare(QIODevice &device, int side)
{
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
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

QImage decode(const ArtworkData &artwork, int side)
{
    if (!artwork.isPresent())
        return {};
    const QByteArray path = artwork.filePath();
    if (!path.isEmpty()) {
        QFile file(QString::fromUtf8(path));
        return file.open(QIODevice::ReadOnly) ? decodeSquare(file, side) : QImage();
    }
    QByteArray bytes = artwork.bytes();
    QBuffer buffer(&bytes);
    return buffer.open(QIODevice::ReadOnly) ? decodeSquare(buffer, side) : QImage();
}

void paintPlaceholder(QPainter &painter, const QRectF &square)
{
    QImage note(square.size().toSize(), QImage::Format_ARGB32_Premultiplied);
    note.fill(Qt::transparent);
    {
        QPainter notePainter(&note);
        const qreal margin = square.width() * (1 - placeholderNoteShare) / 2;
        QSvgRenderer(symbolFile(u"music.note"_s))
            .render(&notePainter, square.adjusted(margin, margin, -margin, -margin));
        notePainter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        notePainter.fillRect(note.rect(), placeholderNote);
    }
    painter.drawImage(square.topLeft(), note);
}

} // namespace

QImage drawCover(const ArtworkData &artwork, int side, qreal radius)
{
    QImageReader::setAllocationLimit(allocationLimitMegabytes);
    const QImage picture = decode(artwork, side);

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

} // namespace cadorel
