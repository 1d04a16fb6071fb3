// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/BlurredText.h"

#include "Theme/SurfaceMask.h"

#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QTextLayout>
#include <QUrl>
#include <QUrlQuery>

#include <algorithm>
#include <array>
#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int largestPixelSize = 128;
constexpr int mostLinesOfAll = 64;
constexpr double largestRadius = 8;
constexpr double smallestRatio = 0.5;
constexpr double largestRatio = 4;
/// In pixels of the screen.
constexpr int largestSide = 4096;

constexpr double deviationOfRadius = 0.5;
/// Of the deviation: beyond, a Gaussian adds nothing that is seen.
constexpr double reachOfDeviation = 3;

/// Where the channels lie in a pixel.
constexpr std::array channelShifts{24, 16, 8, 0};
constexpr int alphaShift = 24;
constexpr float fullChannel = 255;

double number(const QUrlQuery &query, const QString &name, double least, double most)
{
    const double value = query.queryItemValue(name).toDouble();
    return std::isfinite(value) ? std::clamp(value, least, most) : least;
}

/// The lines of the text in their column.
class Column
{
public:
    explicit Column(const BlurredText &wanted)
        : m_layout(wanted.text, fontOf(wanted))
    {
        QTextOption option(wanted.alignment | Qt::AlignAbsolute);
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        // As the items of the screens measure their texts: breaks are the same at every scale.
        option.setUseDesignMetrics(true);
        m_layout.setTextOption(option);
        m_layout.beginLayout();
        while (m_layout.lineCount() < wanted.mostLines && m_height * wanted.ratio < largestSide) {
            QTextLine line = m_layout.createLine();
            if (!line.isValid())
                break;
            line.setLineWidth(wanted.width);
            line.setPosition({0, m_height});
            m_height += line.height();
        }
        m_layout.endLayout();
    }

    double height() const { return m_height; }

    void paint(QImage &image, const QColor &color, double margin, double ratio) const
    {
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        painter.setPen(color);
        painter.translate(margin, margin);
        painter.scale(ratio, ratio);
        m_layout.draw(&painter, {0, 0});
    }

private:
    static QFont fontOf(const BlurredText &wanted)
    {
        QFont font = QGuiApplication::font();
        font.setPixelSize(wanted.pixelSize);
        font.setWeight(wanted.isBold ? QFont::Bold : QFont::Normal);
        // Coloured edges would be blurred into the text.
        font.setStyleStrategy(QFont::StyleStrategy(font.styleStrategy() | QFont::NoSubpixelAntialias));
        return font;
    }

    QTextLayout m_layout;
    double m_height = 0;
};

/// Emoji have colours of their own: what is painted in white shows more than that.
bool hasOwnColors(const QImage &paintedInWhite)
{
    for (int y = 0; y < paintedInWhite.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(paintedInWhite.constScanLine(y));
        const auto isColored = [](QRgb pixel) {
            const int alpha = qAlpha(pixel);
            return qRed(pixel) != alpha || qGreen(pixel) != alpha || qBlue(pixel) != alpha;
        };
        if (std::any_of(line, line + paintedInWhite.width(), isColored))
            return true;
    }
    return false;
}

void blurShape(QImage &image, const QColor &color, double deviation)
{
    SurfaceMask mask(image, alphaShift);
    mask.blur(deviation);
    const QRgb solid = color.rgba();
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const auto alpha =
                static_cast<int>(std::lround(mask.at(x, y) * static_cast<float>(qAlpha(solid))));
            line[x] = qPremultiply(qRgba(qRed(solid), qGreen(solid), qBlue(solid), alpha));
        }
    }
}

void blurColors(QImage &image, double deviation)
{
    QImage blurred(image.size(), image.format());
    blurred.fill(Qt::transparent);
    for (const int shift : channelShifts) {
        SurfaceMask mask(image, shift);
        mask.blur(deviation);
        for (int y = 0; y < image.height(); ++y) {
            auto *line = reinterpret_cast<QRgb *>(blurred.scanLine(y));
            for (int x = 0; x < image.width(); ++x)
                line[x] |= static_cast<QRgb>(std::lround(mask.at(x, y) * fullChannel)) << shift;
        }
    }
    image = blurred;
}

} // namespace

BlurredText BlurredText::ofQuery(const QString &query)
{
    const QUrlQuery items(query);
    const auto whole = [&items](const QString &name, int least, int most) {
        return static_cast<int>(number(items, name, least, most));
    };
    // The "#" of a colour reaches us as it is or escaped, depending on how the address was put together.
    const QColor color(items.queryItemValue(u"color"_s, QUrl::FullyDecoded));
    return {.text = items.queryItemValue(u"text"_s, QUrl::FullyDecoded),
            .width = whole(u"width"_s, 0, largestSide),
            .mostLines = whole(u"lines"_s, 1, mostLinesOfAll),
            .pixelSize = whole(u"size"_s, 0, largestPixelSize),
            .isBold = items.queryItemValue(u"bold"_s) == u"true"_s,
            .alignment = items.queryItemValue(u"align"_s) == u"center"_s ? Qt::AlignHCenter : Qt::AlignLeft,
            .radius = number(items, u"radius"_s, 0, largestRadius),
            .color = color.isValid() ? color : QColor(Qt::black),
            .ratio = number(items, u"ratio"_s, smallestRatio, largestRatio)};
}

QImage BlurredText::drawn() const
{
    if (text.isEmpty() || width <= 0 || pixelSize <= 0) {
        QImage nothing(1, 1, QImage::Format_ARGB32_Premultiplied);
        nothing.fill(Qt::transparent);
        return nothing;
    }
    const Column column(*this);
    const double deviation = radius * deviationOfRadius * ratio;
    const auto margin = static_cast<int>(std::ceil(deviation * reachOfDeviation)) + 1;
    const auto side = [this, margin](double length) {
        return static_cast<int>(std::ceil(std::min<double>(length * ratio, largestSide))) + 2 * margin;
    };
    const QSize size(side(width), side(column.height()));
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    column.paint(image, Qt::white, margin, ratio);
    if (hasOwnColors(image)) {
        column.paint(image, color, margin, ratio);
        blurColors(image, deviation);
    } else {
        blurShape(image, color, deviation);
    }
    return image;
}

} // namespace cadorel
