// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/SurfacePainter.h"

#include "Theme/SurfaceLimits.h"
#include "Theme/SurfaceMask.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <optional>

namespace cadorel {

namespace {

using surfaceLimits::bounded;
using surfaceLimits::isSeen;
using surfaceLimits::largestRadius;
using surfaceLimits::largestReach;

constexpr double smallestRatio = 0.5;
constexpr double largestRatio = 4;
constexpr double half = 0.5;
constexpr qint64 mostPixels = 16'000'000;
constexpr int stretchedPart = 4;

/// Premultiplied, 0 to 1.
struct Ink
{
    float red = 0;
    float green = 0;
    float blue = 0;
    float alpha = 0;

    void cover(const Ink &ink, float coverage)
    {
        const float rest = 1 - ink.alpha * coverage;
        red = red * rest + ink.red * coverage;
        green = green * rest + ink.green * coverage;
        blue = blue * rest + ink.blue * coverage;
        alpha = alpha * rest + ink.alpha * coverage;
    }
};

Ink inkOf(const QColor &color)
{
    if (!color.isValid())
        return {};
    const QColor rgb = color.toRgb();
    const float alpha = rgb.alphaF();
    return {.red = rgb.redF() * alpha,
            .green = rgb.greenF() * alpha,
            .blue = rgb.blueF() * alpha,
            .alpha = alpha};
}

/// Where the picture's parts lie, in its own pixels.
struct Plan
{
    Plan(const Surface &surface, QSize shapeSize, double pixelRatio)
        : ratio(pixelRatio)
        , margin(scaledLength(surface.margin(), ratio))
        , shape(shapeSize)
        , cornerRadius(bounded(surface.cornerRadius, 0, largestRadius) * ratio)
    {
        // Beyond the borders every column is like its neighbour, and every row.
        const int largest = 2 * (scaledLength(surface.border(), ratio) - margin) + 1;
        smallShape = shape.boundedTo({largest, largest});
    }

    QSize size() const { return shape.grownBy({margin, margin, margin, margin}); }
    QSize smallSize() const { return smallShape.grownBy({margin, margin, margin, margin}); }

    /// Column (or row) of the small picture that stands for @p place in the whole one.
    static int small(int place, int length, int smallLength)
    {
        const int before = smallLength / 2;
        if (place <= before)
            return place;
        return std::max(before, place - (length - smallLength));
    }

    /// The shape in the small picture, less @p inset at each side.
    SurfaceMask mask(QPointF offset = {}, double inset = 0) const
    {
        const QPointF centre(margin + smallShape.width() * half, margin + smallShape.height() * half);
        const QSizeF inner(smallShape.width() - 2 * inset, smallShape.height() - 2 * inset);
        const double radius = std::min({cornerRadius, smallShape.width() * half, smallShape.height() * half});
        return {smallSize(), centre + offset, inner, radius - inset};
    }

    double length(double value) const { return bounded(value, 0, largestReach) * ratio; }
    QPointF offset(double x, double y) const
    {
        return QPointF(bounded(x, -largestReach, largestReach), bounded(y, -largestReach, largestReach)) *
               ratio;
    }

    double ratio;
    int margin;
    QSize shape;
    QSize smallShape;
    double cornerRadius;
};

/// Colours along a line across the shape.
class GradientInk
{
public:
    GradientInk(const LinearGradient &gradient, const Plan &plan)
        : m_start(plan.margin + gradient.start.x() * plan.shape.width(),
                  plan.margin + gradient.start.y() * plan.shape.height())
    {
        const QPointF way((gradient.end.x() - gradient.start.x()) * plan.shape.width(),
                          (gradient.end.y() - gradient.start.y()) * plan.shape.height());
        const double square = QPointF::dotProduct(way, way);
        m_way = square > 0 ? way / square : QPointF();
        for (std::size_t i = 0; i < m_inks.size(); ++i)
            m_inks[i] =
                inkAt(gradient.stops, static_cast<double>(i) / static_cast<double>(m_inks.size() - 1));
    }

    const Ink &at(int x, int y) const
    {
        const QPointF place(x + half - m_start.x(), y + half - m_start.y());
        const double position = std::clamp(QPointF::dotProduct(place, m_way), 0.0, 1.0);
        return m_inks[static_cast<std::size_t>(position * static_cast<double>(m_inks.size() - 1) + half)];
    }

private:
    static Ink inkAt(const QGradientStops &stops, double position)
    {
        const auto after = std::ranges::find_if(
            stops, [position](const QGradientStop &stop) { return stop.first >= position; });
        if (after == stops.begin())
            return inkOf(stops.first().second);
        if (after == stops.end())
            return inkOf(stops.last().second);
        const auto before = std::prev(after);
        const double way = after->first - before->first;
        const auto share = static_cast<float>(way > 0 ? (position - before->first) / way : 1);
        const Ink from = inkOf(before->second);
        const Ink to = inkOf(after->second);
        return {.red = std::lerp(from.red, to.red, share),
                .green = std::lerp(from.green, to.green, share),
                .blue = std::lerp(from.blue, to.blue, share),
                .alpha = std::lerp(from.alpha, to.alpha, share)};
    }

    QPointF m_start;
    QPointF m_way;
    std::vector<Ink> m_inks = std::vector<Ink>(4096);
};

/// Rounds up or down by turns, so that a slow gradient shows no bands: interleaved gradient noise, after
/// J. Jimenez.
class Dither
{
public:
    Dither()
    {
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                const double noise = 52.9829189 * std::fmod(0.06711056 * x + 0.00583715 * y, 1.0);
                m_noise[index(x, y)] = static_cast<float>(std::fmod(noise, 1.0));
            }
        }
    }

    float at(int x, int y) const { return m_noise[index(x, y)]; }

private:
    static constexpr int side = 128;

    static std::size_t index(int x, int y) { return static_cast<std::size_t>(y % side * side + x % side); }

    std::array<float, static_cast<std::size_t>(side) * side> m_noise;
};

/// One thing that is drawn: a colour or a gradient where a mask covers.
struct Layer
{
    SurfaceMask mask;
    Ink ink;
    std::optional<GradientInk> gradient;
};

/// How much of what lies beneath a fill is hidden by it, on average.
float opacityOf(const Surface &surface)
{
    float opacity = surface.fill.isValid() ? surface.fill.alphaF() : 0;
    if (!surface.gradient.isEmpty()) {
        float sum = 0;
        for (const QGradientStop &stop : surface.gradient.stops)
            sum += stop.second.alphaF();
        opacity += (1 - opacity) * sum / static_cast<float>(surface.gradient.stops.size());
    }
    return opacity;
}

class Drawing
{
public:
    Drawing(const Surface &surface, const Plan &plan)
        : m_plan(plan)
        , m_shape(plan.mask())
    {
        addShadows(surface);
        if (isSeen(surface.fill))
            m_layers.push_back({m_shape, inkOf(surface.fill), std::nullopt});
        if (!surface.gradient.isEmpty())
            m_layers.push_back({m_shape, {}, GradientInk(surface.gradient, plan)});
        for (const SurfaceStroke &stroke : surface.strokes)
            addStroke(stroke);
        m_isEven = surface.isStretched();
    }

    QImage image() const
    {
        QImage image(m_plan.size(), QImage::Format_ARGB32_Premultiplied);
        if (image.isNull() || m_layers.empty())
            return {};
        const int small = m_plan.smallSize().height();
        int before = -1;
        for (int y = 0; y < image.height(); ++y) {
            const int row = Plan::small(y, image.height(), small);
            uchar *line = image.scanLine(y);
            if (m_isEven && row == before)
                std::memcpy(line, image.constScanLine(y - 1), static_cast<std::size_t>(image.bytesPerLine()));
            else
                paintRow(reinterpret_cast<QRgb *>(line), image.width(), y, row);
            before = row;
        }
        return image;
    }

private:
    void addShadows(const Surface &surface)
    {
        const float opacity = opacityOf(surface);
        const bool isFrame = opacity <= 0;
        // The first lies on top.
        for (qsizetype i = surface.shadows.size(); i-- > 0;) {
            const SurfaceShadow &shadow = surface.shadows.at(i);
            QColor color = shadow.color;
            if (!isSeen(color))
                continue;
            SurfaceMask mask = m_plan.mask(m_plan.offset(shadow.x, shadow.y));
            mask.blur(m_plan.length(shadow.radius) * half);
            // Of what lies beneath a fill so much is left as that lets through, or a gradient from
            // translucent to opaque would vanish in its own shadow.
            mask.cutOut(m_shape, isFrame ? 1 : opacity);
            if (!isFrame)
                color.setAlphaF(color.alphaF() * opacity);
            m_layers.push_back({std::move(mask), inkOf(color), std::nullopt});
        }
    }

    void addStroke(const SurfaceStroke &stroke)
    {
        if (stroke.gradient.isEmpty() && !isSeen(stroke.color))
            return;
        // A moved one lies upon the edge to begin with, half outside of the shape.
        const QPointF offset = m_plan.offset(stroke.x, stroke.y);
        const double width = m_plan.length(stroke.width);
        const double outside = stroke.blur > 0 || !offset.isNull() ? width * half : 0;
        SurfaceMask mask = m_plan.mask(offset, -outside);
        mask.cutOut(m_plan.mask(offset, width - outside), 1);
        mask.blur(m_plan.length(stroke.blur) * half);
        mask.cutTo(m_shape);
        std::optional<GradientInk> gradient;
        if (!stroke.gradient.isEmpty())
            gradient.emplace(stroke.gradient, m_plan);
        m_layers.push_back({std::move(mask), inkOf(stroke.color), std::move(gradient)});
    }

    void paintRow(QRgb *line, int width, int y, int row) const
    {
        static const Dither dither;
        const int small = m_plan.smallSize().width();
        for (int x = 0; x < width; ++x) {
            const int column = Plan::small(x, width, small);
            Ink ink;
            for (const Layer &layer : m_layers) {
                const float coverage = layer.mask.at(column, row);
                if (coverage > 0)
                    ink.cover(layer.gradient ? layer.gradient->at(x, y) : layer.ink, coverage);
            }
            line[x] = pixel(ink, m_isEven ? 0.5F : dither.at(x, y));
        }
    }

    static QRgb pixel(const Ink &ink, float rounding)
    {
        const auto byte = [rounding](float value, int most) {
            return std::min(static_cast<int>(value * 255 + rounding), most);
        };
        const int alpha = byte(ink.alpha, 255);
        return qRgba(byte(ink.red, alpha), byte(ink.green, alpha), byte(ink.blue, alpha), alpha);
    }

    const Plan &m_plan;
    SurfaceMask m_shape;
    std::vector<Layer> m_layers;
    /// No gradient: rows that stand for one row of the small picture are equal.
    bool m_isEven;
};

} // namespace

int scaledLength(int length, double ratio)
{
    return static_cast<int>(std::lround(length * ratio));
}

QImage paintSurface(const Surface &surface, QSize shape, double ratio)
{
    if (shape.isEmpty())
        return {};
    const double scale = std::isfinite(ratio) ? std::clamp(ratio, smallestRatio, largestRatio) : 1;
    const int margins = 2 * scaledLength(surface.margin(), scale);
    if ((static_cast<qint64>(shape.width()) + margins) * (static_cast<qint64>(shape.height()) + margins) >
        mostPixels)
        return {};
    const Plan plan(surface, shape, scale);
    return Drawing(surface, plan).image();
}

QImage paintStretchableSurface(const Surface &surface, double ratio)
{
    const double scale = std::isfinite(ratio) ? std::clamp(ratio, smallestRatio, largestRatio) : 1;
    const int side =
        2 * (scaledLength(surface.border(), scale) - scaledLength(surface.margin(), scale)) + stretchedPart;
    return paintSurface(surface, {side, side}, scale);
}

} // namespace cadorel
