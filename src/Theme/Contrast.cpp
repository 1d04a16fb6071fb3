// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/Contrast.h"

#include <algorithm>
#include <cmath>

namespace cadorel {

namespace {

constexpr int lightnessSteps = 200;

/// One channel of sRGB, from its coded value (0 to 1) to light; WCAG 2.1, "relative luminance".
double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double ratioOfOpaque(const QColor &one, const QColor &other)
{
    const double a = luminance(one);
    const double b = luminance(other);
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

/// As a screen shows it, in 8 bits a channel: what is just legible before it is rounded may not be
/// afterwards.
QColor withLightness(const QColor &color, float lightness)
{
    const QColor exact =
        QColor::fromHslF(qMax(color.hslHueF(), 0.0F), color.hslSaturationF(), lightness, color.alphaF());
    return QColor::fromRgba(exact.rgba());
}

/// The colour of @p color's hue that is nearest to it and contrasts with @p fixed; as translucent as it,
/// where that can be.
QColor contrasting(const QColor &color, const QColor &fixed)
{
    if (Contrast::ratio(color, fixed) >= Contrast::legible)
        return color;
    const float from = color.lightnessF();
    for (int step = 1; step <= lightnessSteps; ++step) {
        const float change = static_cast<float>(step) / lightnessSteps;
        for (const float lightness : {from - change, from + change}) {
            if (lightness < 0 || lightness > 1)
                continue;
            const QColor changed = withLightness(color, lightness);
            if (Contrast::ratio(changed, fixed) >= Contrast::legible)
                return changed;
        }
    }
    // What shines through may leave no lightness that is far enough away.
    return color.alphaF() < 1 ? contrasting(color.rgb(), fixed) : color;
}

} // namespace

double Contrast::ratio(const QColor &foreground, const QColor &ground)
{
    const QColor opaqueGround = over(ground, Qt::white);
    return ratioOfOpaque(over(foreground, opaqueGround), opaqueGround);
}

QColor Contrast::groundFor(const QColor &text, const QColor &color)
{
    return contrasting(color, text);
}

QColor Contrast::textOn(const QColor &ground, const QColor &color)
{
    return contrasting(color, ground);
}

QColor Contrast::textOnAll(const QList<QColor> &grounds, const QColor &color)
{
    // What can be read on the ground that is hardest can be read on the others.
    QColor best;
    double bestLeast = 0;
    for (const QColor &ground : grounds) {
        const QColor text = textOn(ground, color);
        const double least = leastRatio(text, grounds);
        if (least > bestLeast) {
            best = text;
            bestLeast = least;
        }
    }
    return best;
}

double Contrast::leastRatio(const QColor &color, const QList<QColor> &grounds)
{
    constexpr double highest = 21;
    double least = highest;
    for (const QColor &ground : grounds)
        least = std::min(least, ratio(color, ground));
    return least;
}

QColor Contrast::over(const QColor &upper, const QColor &lower)
{
    const float alpha = upper.alphaF();
    const auto mixed = [alpha](float above, float below) { return above * alpha + below * (1 - alpha); };
    return QColor::fromRgbF(mixed(upper.redF(), lower.redF()), mixed(upper.greenF(), lower.greenF()),
                            mixed(upper.blueF(), lower.blueF()));
}

} // namespace cadorel
