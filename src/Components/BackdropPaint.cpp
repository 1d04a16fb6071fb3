// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/BackdropPaint.h"

#include "Components/BackdropColors.h"
#include "Components/BackdropImageProvider.h"
#include "Theme/Contrast.h"
#include "Theme/ThemedSurfaces.h"
#include "Theme/Translucent.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

using Style = NowPlayingBackgroundStyle;

/// One layer in place of two.
QColor laidTogether(const QColor &upper, const QColor &lower)
{
    const float below = lower.alphaF() * (1 - upper.alphaF());
    const float alpha = upper.alphaF() + below;
    if (!(alpha > 0))
        return Qt::transparent;
    const auto mixed = [&](float above, float beneath) {
        return std::clamp((above * upper.alphaF() + beneath * below) / alpha, 0.0F, 1.0F);
    };
    return QColor::fromRgbF(mixed(upper.redF(), lower.redF()), mixed(upper.greenF(), lower.greenF()),
                            mixed(upper.blueF(), lower.blueF()), std::min(alpha, 1.0F));
}

} // namespace

void BackdropPaint::setTheme(AppTheme *theme)
{
    if (std::exchange(m_theme, theme) != theme)
        update();
}

void BackdropPaint::setStyle(NowPlayingBackgroundStyle style)
{
    if (std::exchange(m_style, style) != style)
        update();
}

void BackdropPaint::setOpacity(double opacity)
{
    const double sensible = std::isfinite(opacity) ? std::clamp(opacity, 0.0, 1.0) : 0;
    if (std::exchange(m_opacity, sensible) != sensible)
        update();
}

void BackdropPaint::setCustomColor(const QColor &color)
{
    if (std::exchange(m_customColor, color) != color)
        update();
}

void BackdropPaint::setAccent(const QColor &accent)
{
    if (std::exchange(m_accent, accent) != accent)
        update();
}

void BackdropPaint::setPicture(const QString &address)
{
    if (std::exchange(m_picture, address) == address)
        return;
    constexpr auto prefix = "image://backdrop/"_L1;
    m_pictureColors = address.startsWith(prefix)
                          ? BackdropColors::shared().colors(address.sliced(prefix.size()))
                          : QList<QColor>();
    update();
}

bool BackdropPaint::isOfPictures(NowPlayingBackgroundStyles::Type style)
{
    return style == Style::blur || style == Style::customImage;
}

QString BackdropPaint::pictureAddress(const QString &source, double blur)
{
    return BackdropImageProvider::addressOf(source, blur);
}

/// The background without its veil.
QList<QColor> BackdropPaint::grounds() const
{
    if (isOfPictures(m_style) && hasPicture())
        return m_pictureColors;
    if (m_style == Style::customColor)
        return {Contrast::over(m_customColor, m_theme->backgroundColor())};
    if (m_style == Style::solid)
        return {m_theme->backgroundColor()};
    const bool isGradient = m_style == Style::gradient;
    return ThemedSurfaces::laidOver({Qt::white}, isGradient ? ThemedSurfaces::nowPlayingGradient(m_theme)
                                                            : ThemedSurfaces::background(m_theme));
}

/// As strong as the listener wants it. Pictures and colours of choice glow through the dark best; a look with
/// a character of its own stays as it is.
QColor BackdropPaint::listenersVeil() const
{
    const bool isPicture = isOfPictures(m_style);
    if (m_style == Style::clear || m_style == Style::solid || (isPicture && !hasPicture()))
        return Qt::transparent;
    QColor color = m_theme->isClassic() ? QColor(Qt::black) : m_theme->backgroundColor();
    if (m_style == Style::gradient)
        color = ThemedSurfaces::background(m_theme).fill;
    return translucent(color, static_cast<float>(m_opacity));
}

void BackdropPaint::update()
{
    if (m_theme) {
        const QColor veil = listenersVeil();
        QList<QColor> colors = grounds();
        for (QColor &color : colors)
            color = Contrast::over(veil, color);
        m_tones = BackdropTones::of(*m_theme, colors);
        m_veil = laidTogether(m_tones.shade, veil);
        for (QColor &color : colors)
            color = Contrast::over(m_tones.shade, color);
        m_accentColor = m_accent.isValid() ? Contrast::textOnAll(colors, m_accent) : m_tones.textColor;
    }
    Q_EMIT changed();
}

} // namespace cadorel
