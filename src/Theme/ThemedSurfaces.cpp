// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemedSurfaces.h"

#include "Theme/Contrast.h"
#include "Theme/SystemColorTable.h"

#include <QHash>
#include <QMutex>

#include <algorithm>
#include <cmath>

namespace cadorel {

namespace {

constexpr double embossBlur = 1;
constexpr double coverBlur = 2;
constexpr double rowRadius = 12;
constexpr double searchRadius = 10;
constexpr double iconRadius = 7;
constexpr double trackRadius = 2;
constexpr double switchOff = 0.2;
constexpr double popupShade = 0.28;
constexpr double popupEdge = 0.12;
constexpr double pressedShade = 0.15;

/// @p color at @p opacity of its own, which may be more than all of it.
QColor faded(const QColor &color, double opacity)
{
    const double share = std::isfinite(opacity) ? opacity : 0;
    QColor result = color;
    result.setAlphaF(static_cast<float>(std::clamp(share * static_cast<double>(color.alphaF()), 0.0, 1.0)));
    return result;
}

/// From the upper left to the lower right.
LinearGradient diagonal(const QColor &from, const QColor &to)
{
    return {.stops = {{0, from}, {1, to}}};
}

/// Light from the upper left: a light shadow there, a dark one opposite.
QList<SurfaceShadow> lit(const QColor &light, const QColor &dark, double radius, double offset)
{
    return {{.color = light, .radius = radius, .x = -offset, .y = -offset},
            {.color = dark, .radius = radius, .x = offset, .y = offset}};
}

QList<SurfaceShadow> lit(const AppTheme &theme, double radius, double offset)
{
    return lit(theme.lightShadow(), theme.darkShadow(), radius, offset);
}

/// Shade of the upper left edge and light on the lower right one.
QList<SurfaceStroke> sunk(const QColor &dark, const QColor &light)
{
    return {{.color = dark, .gradient = {}, .width = 1, .blur = embossBlur, .x = 1, .y = 1},
            {.color = light, .gradient = {}, .width = 1, .blur = embossBlur, .x = -1, .y = -1}};
}

QList<SurfaceStroke> line(const QColor &color, double width = 1)
{
    return {{.color = color, .gradient = {}, .width = width}};
}

QList<SurfaceStroke> line(const LinearGradient &gradient, double width)
{
    return {{.color = {}, .gradient = gradient, .width = width}};
}

/// @p color, made darker or lighter until it can be read on each of the grounds, also where the mouse is.
/// Every text of a screen asks, and all of them for a few colours on a few grounds: what was found is kept.
QColor readableOn(const AppTheme &theme, QList<QColor> grounds, const QColor &color)
{
    constexpr qsizetype kept = 1024;
    static QMutex mutex;
    static QHash<QList<quint64>, QColor> found;

    const QColor hover = faded(theme.primaryTextColor(), ThemedSurfaces::hoverOpacity);
    for (const QColor &ground : QList(grounds))
        grounds << Contrast::over(hover, ground);
    QList<quint64> key{color.rgba64()};
    for (const QColor &ground : std::as_const(grounds)) {
        if (!key.contains(ground.rgba64()))
            key << ground.rgba64();
    }
    const QMutexLocker lock(&mutex);
    if (const auto known = found.constFind(key); known != found.cend())
        return *known;
    if (found.size() >= kept)
        found.clear();
    return *found.insert(key, Contrast::textOnAll(grounds, color));
}

} // namespace

Surface ThemedSurfaces::neumorphismRaised(AppTheme *theme, double cornerRadius, double intensity)
{
    if (!theme)
        return {};
    return {.fill = theme->surfaceColor(),
            .gradient = {},
            .cornerRadius = cornerRadius,
            .shadows =
                lit(faded(theme->lightShadow(), intensity), faded(theme->darkShadow(), intensity), 6, 2),
            .strokes = {}};
}

Surface ThemedSurfaces::neumorphismPressed(AppTheme *theme, double cornerRadius, double intensity)
{
    if (!theme)
        return {};
    const QColor light = theme->lightShadow();
    const QColor dark = theme->darkShadow();
    return {.fill = theme->surfaceColor(),
            .gradient = {},
            .cornerRadius = cornerRadius,
            .shadows = {{.color = faded(dark, 0.15 * intensity), .radius = 3, .x = 2, .y = 2},
                        {.color = faded(light, 0.15 * intensity), .radius = 3, .x = -2, .y = -2}},
            .strokes = sunk(faded(dark, 0.1 * intensity), faded(light, 0.3 * intensity))};
}

Surface ThemedSurfaces::kawaiiCard(AppTheme *theme, double cornerRadius)
{
    if (!theme)
        return {};
    return {.fill = theme->surfaceColor(),
            .gradient = {},
            .cornerRadius = cornerRadius,
            .shadows = {{.color = theme->lightShadow(), .radius = 8, .x = 0, .y = 4}},
            .strokes = line(faded(theme->primaryColor(), 0.3))};
}

Surface ThemedSurfaces::themedCard(AppTheme *theme, double cornerRadius)
{
    return theme && theme->useNeumorphism() ? neumorphismRaised(theme, cornerRadius)
                                            : kawaiiCard(theme, cornerRadius);
}

Surface ThemedSurfaces::themedButton(AppTheme *theme, bool isPressed, double cornerRadius)
{
    return isPressed && theme && theme->useNeumorphism() ? neumorphismPressed(theme, cornerRadius)
                                                         : themedCard(theme, cornerRadius);
}

Surface ThemedSurfaces::themedRow(AppTheme *theme)
{
    if (!theme)
        return {};
    if (theme->useNeumorphism()) {
        return {.fill = theme->surfaceColor(),
                .gradient = {},
                .cornerRadius = rowRadius,
                .shadows = lit(*theme, 4, 3),
                .strokes = {}};
    }
    const QColor primary = theme->primaryColor();
    return {.fill = faded(theme->surfaceColor(), 0.6),
            .gradient = {},
            .cornerRadius = rowRadius,
            .shadows = {{.color = faded(primary, 0.15), .radius = 4, .x = 0, .y = 2}},
            .strokes = line(faded(primary, 0.2))};
}

Surface ThemedSurfaces::themedRowArtwork(AppTheme *theme, double cornerRadius)
{
    if (!theme)
        return {};
    if (theme->useNeumorphism()) {
        return {.fill = {},
                .gradient = {},
                .cornerRadius = cornerRadius,
                .shadows = {{.color = theme->darkShadow(), .radius = 2}},
                .strokes = line(faded(theme->darkShadow(), 0.3))};
    }
    const QColor primary = theme->primaryColor();
    return {.fill = {},
            .gradient = {},
            .cornerRadius = cornerRadius,
            .shadows = {},
            .strokes = line(diagonal(faded(primary, 0.4), faded(primary, 0.2)), 2)};
}

Surface ThemedSurfaces::themedSegmentedPicker(AppTheme *theme, double cornerRadius)
{
    if (!theme)
        return {};
    if (theme->useNeumorphism()) {
        return {.fill = theme->surfaceColor(),
                .gradient = {},
                .cornerRadius = cornerRadius,
                .shadows = {{.color = faded(theme->darkShadow(), 0.2), .radius = 3, .x = 2, .y = 2},
                            {.color = faded(theme->lightShadow(), 0.7), .radius = 3, .x = -2, .y = -2}},
                .strokes = {}};
    }
    const QColor primary = theme->primaryColor();
    return {.fill = faded(primary, 0.1),
            .gradient = {},
            .cornerRadius = cornerRadius,
            .shadows = {},
            .strokes = line(faded(primary, 0.3))};
}

Surface ThemedSurfaces::albumCoverShadow(AppTheme *theme, double cornerRadius)
{
    if (!theme)
        return {};
    Surface surface;
    surface.cornerRadius = cornerRadius;
    surface.shadows = theme->useNeumorphism()
                          ? lit(*theme, 10, 5)
                          : QList<SurfaceShadow>{
                                {.color = faded(theme->primaryColor(), 0.3), .radius = 15, .x = 0, .y = 8}};
    return surface;
}

Surface ThemedSurfaces::albumCoverStroke(AppTheme *theme, double cornerRadius)
{
    if (!theme)
        return {};
    const QColor primary = theme->primaryColor();
    Surface surface;
    surface.cornerRadius = cornerRadius;
    surface.strokes = theme->useNeumorphism() ? QList<SurfaceStroke>{{.color = theme->lightShadow(),
                                                                      .gradient = {},
                                                                      .width = 2,
                                                                      .blur = coverBlur,
                                                                      .x = -2,
                                                                      .y = -2}}
                                              : line(diagonal(faded(primary, 0.5), faded(primary, 0.2)), 3);
    return surface;
}

Surface ThemedSurfaces::kawaiiButton(AppTheme *theme, bool isPressed, double cornerRadius)
{
    if (!theme)
        return {};
    const QColor primary = theme->primaryColor();
    return {.fill = faded(primary, isPressed ? 0.3 : 0.15),
            .gradient = {},
            .cornerRadius = cornerRadius,
            .shadows = {{.color = faded(primary, isPressed ? 0.1 : 0.2), .radius = 4, .x = 0, .y = 2}},
            .strokes = line(faded(primary, 0.4), 1.5)};
}

Surface ThemedSurfaces::themedButtonStyle(AppTheme *theme, bool isPressed, double cornerRadius)
{
    return theme && theme->useNeumorphism() ? themedButton(theme, isPressed, cornerRadius)
                                            : kawaiiButton(theme, isPressed, cornerRadius);
}

Surface ThemedSurfaces::searchBar(AppTheme *theme)
{
    if (!theme)
        return {};
    if (theme->useNeumorphism()) {
        return {.fill = theme->surfaceColor(),
                .gradient = {},
                .cornerRadius = searchRadius,
                .shadows = {{.color = faded(theme->darkShadow(), 0.3), .radius = 3, .x = 2, .y = 2},
                            {.color = faded(theme->lightShadow(), 0.7), .radius = 3, .x = -2, .y = -2}},
                .strokes = {}};
    }
    return {.fill = faded(theme->surfaceColor(), 0.6),
            .gradient = {},
            .cornerRadius = searchRadius,
            .shadows = {},
            .strokes = line(faded(theme->primaryColor(), 0.2))};
}

Surface ThemedSurfaces::playButton(AppTheme *theme, double size)
{
    if (!theme)
        return {};
    if (theme->useNeumorphism()) {
        return {.fill = theme->surfaceColor(),
                .gradient = {},
                .cornerRadius = size / 2,
                .shadows = lit(*theme, 8, 4),
                .strokes = {}};
    }
    const QColor primary = theme->primaryColor();
    return {.fill = {},
            .gradient = diagonal(faded(primary, 0.8), primary),
            .cornerRadius = size / 2,
            .shadows = {{.color = primary, .radius = 10, .x = 0, .y = 5}},
            .strokes = {}};
}

Surface ThemedSurfaces::controlButton(AppTheme *theme, double size)
{
    if (!theme)
        return {};
    const bool isEmbossed = theme->useNeumorphism();
    return {.fill = theme->surfaceColor(),
            .gradient = {},
            .cornerRadius = size / 2,
            .shadows = isEmbossed ? lit(*theme, 5, 2) : QList<SurfaceShadow>(),
            .strokes = isEmbossed ? QList<SurfaceStroke>() : line(faded(theme->primaryColor(), 0.3))};
}

Surface ThemedSurfaces::settingsIcon(AppTheme *theme, const QColor &color)
{
    if (!theme)
        return {};
    return {.fill = color,
            .gradient = {},
            .cornerRadius = iconRadius,
            .shadows = theme->useNeumorphism() ? lit(*theme, 3, 1) : QList<SurfaceShadow>(),
            .strokes = {}};
}

Surface ThemedSurfaces::switchTrack(AppTheme *theme, bool isOn, double cornerRadius)
{
    if (!theme)
        return {};
    const QColor primary = theme->primaryColor();
    const bool isEmbossed = theme->useNeumorphism();
    const QColor off = Contrast::over(faded(theme->primaryTextColor(), switchOff), theme->surfaceColor());
    return {.fill = isOn ? primary : off,
            .gradient = {},
            .cornerRadius = cornerRadius,
            .shadows = {},
            .strokes = isEmbossed ? sunk(theme->darkShadow(), theme->lightShadow()) : QList<SurfaceStroke>()};
}

Surface ThemedSurfaces::progressTrack(AppTheme *theme)
{
    if (!theme)
        return {};
    const bool isEmbossed = theme->useNeumorphism();
    return {.fill = isEmbossed ? theme->surfaceColor() : faded(theme->primaryColor(), 0.2),
            .gradient = {},
            .cornerRadius = trackRadius,
            .shadows = {},
            .strokes = isEmbossed ? sunk(theme->darkShadow(), theme->lightShadow()) : QList<SurfaceStroke>()};
}

Surface ThemedSurfaces::progressKnob(AppTheme *theme, double size)
{
    if (!theme)
        return {};
    const QColor primary = theme->primaryColor();
    return {.fill = primary,
            .gradient = {},
            .cornerRadius = size / 2,
            .shadows = {{.color = faded(primary, 0.4), .radius = 4, .x = 0, .y = 1}},
            .strokes = {}};
}

Surface ThemedSurfaces::progressTrackOf(const QColor &color)
{
    return {.fill = color, .gradient = {}, .cornerRadius = trackRadius, .shadows = {}, .strokes = {}};
}

Surface ThemedSurfaces::progressKnobOf(const QColor &color, double size)
{
    return {.fill = color,
            .gradient = {},
            .cornerRadius = size / 2,
            .shadows = {{.color = faded(Qt::black, 0.4), .radius = 4, .x = 0, .y = 1}},
            .strokes = {}};
}

Surface ThemedSurfaces::previewBlock(AppTheme *theme, double cornerRadius)
{
    if (!theme)
        return {};
    return {.fill = theme->surfaceColor(),
            .gradient = {},
            .cornerRadius = cornerRadius,
            .shadows = theme->useNeumorphism() ? lit(*theme, 3, 1) : QList<SurfaceShadow>(),
            .strokes = {}};
}

Surface ThemedSurfaces::previewScreen(AppTheme *theme, double cornerRadius)
{
    Surface screen = background(theme);
    screen.cornerRadius = cornerRadius;
    return screen;
}

QColor ThemedSurfaces::accentOn(AppTheme *theme, const Surface &surface)
{
    return theme ? textOn(theme, surface, theme->primaryColor()) : QColor();
}

QColor ThemedSurfaces::textOn(AppTheme *theme, const Surface &surface, const QColor &color)
{
    if (!theme)
        return {};
    return readableOn(*theme, laidOver(laidOver({Qt::white}, background(theme)), surface), color);
}

QList<QColor> ThemedSurfaces::laidOver(const QList<QColor> &grounds, const Surface &surface)
{
    const QColor fill = surface.fill.isValid() ? surface.fill : QColor(Qt::transparent);
    QList<QColor> colors;
    for (const QColor &ground : grounds) {
        const QColor filled = Contrast::over(fill, ground);
        if (surface.gradient.isEmpty())
            colors.append(filled);
        for (const QGradientStop &stop : surface.gradient.stops)
            colors.append(Contrast::over(stop.second, filled));
    }
    return colors;
}

QColor ThemedSurfaces::ink(AppTheme *theme, const QColor &color)
{
    if (!theme)
        return {};
    const QList<QColor> screen = laidOver({Qt::white}, background(theme));
    return readableOn(
        *theme, screen + laidOver(screen, themedCard(theme)) + laidOver(screen, themedRow(theme)), color);
}

Surface ThemedSurfaces::popup(AppTheme *theme, double cornerRadius)
{
    if (!theme)
        return {};
    const QColor surface = theme->surfaceColor();
    return {.fill = surface,
            .gradient = {},
            .cornerRadius = cornerRadius,
            .shadows = {{.color = faded(Qt::black, popupShade), .radius = 16, .x = 0, .y = 6}},
            .strokes = line(Contrast::over(faded(theme->primaryTextColor(), popupEdge), surface))};
}

Surface ThemedSurfaces::filledButton(AppTheme *theme, const QColor &color, bool isPressed,
                                     double cornerRadius)
{
    if (!theme)
        return {};
    const QColor fill = Contrast::groundFor(Qt::white, color);
    const QColor shown = isPressed ? Contrast::over(faded(Qt::black, pressedShade), fill) : fill;
    const QList<SurfaceShadow> soft = {
        {.color = faded(fill, isPressed ? 0.15 : 0.3), .radius = 6, .x = 0, .y = 3}};
    return {.fill = shown,
            .gradient = {},
            .cornerRadius = cornerRadius,
            .shadows = theme->useNeumorphism() ? lit(*theme, isPressed ? 3 : 6, isPressed ? 1 : 2) : soft,
            .strokes = {}};
}

Surface ThemedSurfaces::background(AppTheme *theme)
{
    if (!theme)
        return {};
    const LinearGradient gradient = theme->backgroundGradient();
    return {.fill =
                gradient.isEmpty() ? theme->backgroundColor() : systemColors(theme->colorScheme()).background,
            .gradient = gradient,
            .cornerRadius = 0,
            .shadows = {},
            .strokes = {}};
}

Surface ThemedSurfaces::nowPlayingGradient(AppTheme *theme)
{
    if (!theme)
        return {};
    Surface surface = background(theme);
    LinearGradient gradient = theme->backgroundGradient();
    if (gradient.isEmpty()) {
        const QColor primary = theme->primaryColor();
        gradient = {.stops = {{0, faded(primary, 0.1)},
                              {0.5, faded(primary, 0.2)},
                              {1, faded(theme->colors().indigo, 0.1)}}};
    }
    for (QGradientStop &stop : gradient.stops)
        stop.second = faded(stop.second, 1 / (1 - nowPlayingVeil));
    surface.gradient = gradient;
    return surface;
}

QSize ThemedSurfaces::backgroundSize(const QSize &pixels)
{
    if (pixels.isEmpty() || (pixels.width() <= longestBackground && pixels.height() <= longestBackground))
        return pixels;
    return pixels.scaled(longestBackground, longestBackground, Qt::KeepAspectRatio).expandedTo({1, 1});
}

} // namespace cadorel
