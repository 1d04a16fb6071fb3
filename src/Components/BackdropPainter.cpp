// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/BackdropPainter.h"

#include "Components/BoxBlur.h"
#include "Theme/Contrast.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <span>

namespace cadorel {

namespace {

/// The screen that a blur is told for.
constexpr double screenHeight = 844;
/// Of a picture that is just small enough, in its pixels.
constexpr double deviationInPicture = 4;
constexpr int shortestSide = 64;
constexpr int longestSide = 800;
/// A picture of a single pixel is none, on screens of every scale.
constexpr int smallestSide = 8;
constexpr int partsPerSide = 6;
constexpr int highest = 255;

QImage fitted(const QImage &picture, int side)
{
    const bool isTooLarge = std::max(picture.width(), picture.height()) > side;
    const QSize wanted = isTooLarge ? picture.size().scaled(side, side, Qt::KeepAspectRatio) : picture.size();
    const QSize size = wanted.expandedTo({smallestSide, smallestSide});
    if (size == picture.size())
        return picture;
    return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage opaque(const QImage &picture)
{
    QImage result(picture.size(), QImage::Format_RGB32);
    result.fill(Qt::white);
    QPainter(&result).drawImage(0, 0, picture);
    return result;
}

int channel(double value)
{
    return static_cast<int>(std::lround(std::clamp(value, 0.0, double{highest})));
}

/// Moves each channel away from the grey that is as light.
void saturate(QImage &picture, double saturation)
{
    for (int y = 0; y < picture.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(picture.scanLine(y));
        for (QRgb &pixel : std::span(line, static_cast<size_t>(picture.width()))) {
            // Rec. 709 luma.
            const double grey = 0.2126 * qRed(pixel) + 0.7152 * qGreen(pixel) + 0.0722 * qBlue(pixel);
            const auto moved = [grey, saturation](int value) {
                return channel(grey + (value - grey) * saturation);
            };
            pixel = qRgb(moved(qRed(pixel)), moved(qGreen(pixel)), moved(qBlue(pixel)));
        }
    }
}

} // namespace

int backdropSide(double blur)
{
    if (!(blur > 0))
        return longestSide;
    return static_cast<int>(std::clamp(std::round(screenHeight * deviationInPicture / blur),
                                       double{shortestSide}, double{longestSide}));
}

QImage paintBackdrop(const QImage &picture, const BackdropDrawing &drawing)
{
    QImage result = opaque(fitted(picture, backdropSide(drawing.blur)));
    if (drawing.saturation != 1)
        saturate(result, drawing.saturation);
    const double side = std::max(result.width(), result.height());
    return BoxBlur(drawing.blur / screenHeight * side).blurred(result);
}

QList<QColor> backdropColors(const QImage &backdrop)
{
    if (backdrop.isNull())
        return {};
    const QImage parts =
        backdrop.scaled(partsPerSide, partsPerSide, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_RGB32);
    QList<QColor> colors;
    for (int y = 0; y < parts.height(); ++y) {
        for (int x = 0; x < parts.width(); ++x)
            colors.append(parts.pixelColor(x, y));
    }
    std::ranges::sort(colors, {}, [](const QColor &color) { return Contrast::ratio(color, Qt::black); });
    QList<QColor> kept;
    for (int i = 0; i < backdropColorCount; ++i)
        kept.append(colors.at(i * (colors.size() - 1) / (backdropColorCount - 1)));
    return kept;
}

} // namespace cadorel
