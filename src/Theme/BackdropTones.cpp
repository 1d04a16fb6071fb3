// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/BackdropTones.h"

#include "Theme/AppTheme.h"
#include "Theme/Contrast.h"
#include "Theme/Translucent.h"

namespace cadorel {

namespace {

constexpr int steps = 50;
/// Paler than the text itself, as secondary labels are.
constexpr float secondaryOpacity = 0.7F;
constexpr float half = 0.5F;

bool isLegible(const QColor &text, const QList<QColor> &grounds)
{
    return Contrast::leastRatio(text, grounds) >= Contrast::legible;
}

/// Black or white, whichever is the better one on the worst part.
QColor inkOn(const QList<QColor> &grounds)
{
    const bool isWhite = Contrast::leastRatio(Qt::white, grounds) >= Contrast::leastRatio(Qt::black, grounds);
    return isWhite ? Qt::white : Qt::black;
}

QColor textOn(const AppTheme &theme, const QList<QColor> &grounds)
{
    const QColor own = theme.primaryTextColor();
    if (isLegible(own, grounds))
        return own;
    // A grey that is just legible is no choice where white is as near.
    const bool hasHue = own.hslHueF() >= 0 && own.hslSaturationF() > 0;
    const QColor adapted = hasHue ? Contrast::textOnAll(grounds, own) : QColor();
    return adapted.isValid() && isLegible(adapted, grounds) ? adapted : inkOn(grounds);
}

QList<QColor> laidOver(const QColor &upper, const QList<QColor> &grounds)
{
    QList<QColor> colors;
    for (const QColor &ground : grounds)
        colors.append(Contrast::over(upper, ground));
    return colors;
}

/// The least of the text's opposite that makes it legible.
QColor shadeFor(const QColor &text, const QList<QColor> &grounds)
{
    if (isLegible(text, grounds))
        return Qt::transparent;
    const QColor opposite = text.lightnessF() > half ? Qt::black : Qt::white;
    for (int step = 1; step <= steps; ++step) {
        const QColor shade = translucent(opposite, static_cast<float>(step) / steps);
        if (isLegible(text, laidOver(shade, grounds)))
            return shade;
    }
    return opposite;
}

QColor secondaryOn(const AppTheme &theme, const QColor &text, const QList<QColor> &grounds)
{
    if (text == theme.primaryTextColor() && isLegible(theme.secondaryTextColor(), grounds))
        return theme.secondaryTextColor();
    for (int step = static_cast<int>(secondaryOpacity * steps); step < steps; ++step) {
        const QColor paler = translucent(text, static_cast<float>(step) / steps);
        if (isLegible(paler, grounds))
            return paler;
    }
    return text;
}

} // namespace

BackdropTones BackdropTones::of(const AppTheme &theme, const QList<QColor> &grounds)
{
    BackdropTones tones;
    tones.textColor = textOn(theme, grounds);
    tones.shade = shadeFor(tones.textColor, grounds);
    tones.secondaryTextColor = secondaryOn(theme, tones.textColor, laidOver(tones.shade, grounds));
    tones.isDark = tones.textColor.lightnessF() > half;
    return tones;
}

} // namespace cadorel
