// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/Contrast.h"
#include "Theme/ThemedSurfaces.h"

#include <QList>

#include <algorithm>

namespace cadorel {

/// What a screen's own ground looks like, at the ends and in the middle of a gradient.
inline QList<QColor> backgroundsOf(AppTheme &theme)
{
    const Surface surface = ThemedSurfaces::background(&theme);
    if (surface.gradient.isEmpty())
        return {surface.fill};
    QList<QColor> colors;
    for (const QGradientStop &stop : surface.gradient.stops)
        colors.append(Contrast::over(stop.second, surface.fill));
    return colors;
}

/// How well a text can be read where it is hardest on a ground of that fill, which lies on a screen, with the
/// mouse on it or not.
inline double leastRatio(AppTheme &theme, const QColor &fill, const QColor &text)
{
    double least = 21;
    QColor hover = theme.primaryTextColor();
    hover.setAlphaF(hover.alphaF() * static_cast<float>(ThemedSurfaces::hoverOpacity));
    const QList<QColor> backgrounds = backgroundsOf(theme);
    for (const QColor &beneath : backgrounds) {
        const QColor ground = Contrast::over(fill, beneath);
        least = std::min(
            {least, Contrast::ratio(text, ground), Contrast::ratio(text, Contrast::over(hover, ground))});
    }
    return least;
}

} // namespace cadorel
