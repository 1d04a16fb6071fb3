// SPDX-License-Identifier: GPL-3.0-or-later
#include "Gallery/GalleryCovers.h"

#include "Models/Song.h"
#include "ViewModels/CoverRegistry.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 512;

void fillSky(QPainter &painter, const QColor &above, const QColor &below)
{
    QLinearGradient sky(0, 0, 0, side);
    sky.setColorAt(0, above);
    sky.setColorAt(1, below);
    painter.fillRect(0, 0, side, side, sky);
}

/// A ridge from one side to the other whose middle stands by @p swing above its ends.
void fillRidge(QPainter &painter, double height, double swing, const QColor &color)
{
    QPainterPath ridge(QPointF(0, side));
    ridge.lineTo(0, height);
    ridge.cubicTo(side * 0.3, height - swing, side * 0.6, height + swing, side, height - swing * 0.4);
    ridge.lineTo(side, side);
    painter.fillPath(ridge, color);
}

void paintHarbour(QPainter &painter)
{
    fillSky(painter, 0xf7b267, 0xf4845f);
    painter.setBrush(QColor(0xfff1d0));
    painter.drawEllipse(QPointF(344, 212), 84, 84);
    fillRidge(painter, 300, 60, 0xf25c54);
    fillRidge(painter, 370, -50, 0xb23a48);
    fillRidge(painter, 440, 30, 0x461220);
}

void paintNight(QPainter &painter)
{
    fillSky(painter, 0x14213d, 0x3d348b);
    painter.setBrush(QColor(0xf8edeb));
    painter.drawEllipse(QPointF(164, 156), 70, 70);
    painter.setBrush(QColor(0x18254a));
    painter.drawEllipse(QPointF(194, 136), 64, 64);
    painter.setBrush(QColor(0xfefae0));
    for (const QPointF star : {QPointF(340, 92), QPointF(420, 190), QPointF(300, 230), QPointF(452, 66)})
        painter.drawEllipse(star, 5, 5);
    fillRidge(painter, 390, 40, 0x2a2463);
    fillRidge(painter, 450, -30, 0x1b1744);
}

void paintRain(QPainter &painter)
{
    fillSky(painter, 0x2a9d8f, 0x99d5c9);
    painter.setPen(QPen(QColor(255, 255, 255, 150), 7, Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 24; ++i) {
        const int x = (i * 97) % side;
        const int y = (i * 173) % side;
        painter.drawLine(x, y, x - 16, y + 54);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x264653));
    painter.drawEllipse(QRectF(116, 300, 280, 280));
    painter.setBrush(QColor(0xe9c46a));
    painter.drawEllipse(QRectF(186, 370, 140, 140));
}

void paintRecord(QPainter &painter)
{
    painter.fillRect(0, 0, side, side, QColor(0xffcad4));
    painter.setBrush(QColor(0x9d4edd));
    painter.drawEllipse(QPointF(256, 256), 190, 190);
    painter.setBrush(QColor(0xc77dff));
    painter.drawEllipse(QPointF(256, 256), 142, 142);
    painter.setBrush(QColor(0xffc8dd));
    painter.drawEllipse(QPointF(256, 256), 86, 86);
    painter.setBrush(QColor(0x9d4edd));
    painter.drawEllipse(QPointF(256, 256), 22, 22);
}

QByteArray picture(void (*paint)(QPainter &))
{
    QImage image(side, side, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    paint(painter);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

QStringList makeGalleryCovers()
{
    QStringList sources;
    for (const auto paint : {paintHarbour, paintNight, paintRain, paintRecord}) {
        Song song;
        song.setArtworkData(ArtworkData(picture(paint)));
        sources.append(CoverRegistry::shared().source(song));
    }
    return sources;
}

} // namespace cadorel
