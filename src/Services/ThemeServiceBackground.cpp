// SPDX-License-Identifier: GPL-3.0-or-later
// What lies behind the Now Playing screen, for each look by itself.
#include "Services/Pictures/PictureForms.h"
#include "Services/StoredSettings.h"
#include "Services/ThemeService.h"
#include "Theme/SystemColorTable.h"
#include "Utils/Console.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;
using namespace appearanceKeys;

namespace {

constexpr int backgroundQuality = 70;
constexpr int componentCount = 3;
/// Beyond it QColor, whose components of colours outside sRGB are half floats, holds no number.
constexpr float largestComponent = 65504;

/// Whether its own space has less than three components. QColor knows no space of greys, but one of hue,
/// saturation and value or lightness where only the last is left.
bool isGrey(const QColor &color)
{
    return (color.spec() == QColor::Hsv || color.spec() == QColor::Hsl) && color.hue() < 0;
}

QStringList textsOf(const QColor &color)
{
    const QColor rgb = color.spec() == QColor::ExtendedRgb ? color : color.toRgb();
    return {consoleNumber(rgb.redF()), consoleNumber(rgb.greenF()), consoleNumber(rgb.blueF())};
}

/// The opaque colour of a stored list; nothing for what is none.
std::optional<QColor> colorIn(const std::optional<QStringList> &texts)
{
    if (!texts || texts->size() < componentCount)
        return std::nullopt;
    QList<float> components;
    for (const QString &text : *texts) {
        bool isRead = false;
        const float component = text.toFloat(&isRead);
        if (!isRead || !(std::abs(component) <= largestComponent))
            return std::nullopt;
        components.append(component);
    }
    return QColor::fromRgbF(components[0], components[1], components[2]);
}

} // namespace

NowPlayingBackgroundStyle ThemeService::defaultBackgroundStyle(ThemeType theme)
{
    switch (theme) {
    case ThemeType::classic:
        return NowPlayingBackgroundStyle::blur;
    case ThemeType::neumorphism:
        return NowPlayingBackgroundStyle::solid;
    case ThemeType::kawaiiPink:
        return NowPlayingBackgroundStyle::gradient;
    }
    return NowPlayingBackgroundStyle::blur;
}

/// A theme that is told while another one waits for its turn takes its place.
void ThemeService::onThemeChanged(ThemeType type)
{
    m_announcedThemeType = type;
    if (type == m_currentThemeType)
        return;
    const auto change = [this, type] {
        if (type != m_announcedThemeType || type == m_currentThemeType)
            return;
        m_currentThemeType = type;
        loadThemeSpecificSettings(type);
    };
    QMetaObject::invokeMethod(this, change, Qt::QueuedConnection);
}

QString ThemeService::themeKey(QLatin1StringView prefix) const
{
    return prefix + rawValue(m_currentThemeType);
}

/// Nothing of the look before remains. Each setting is read right before it is published: who answers to one
/// by an operation finds its effect. The picture, which keeps a key of its own, turns before any is told, or
/// an answer would write to the look before.
void ThemeService::loadThemeSpecificSettings(ThemeType theme)
{
    const AppearanceSettings unset;
    const bool isOtherPicture = m_backgroundPicture.open(themeKey(backgroundImagePrefix));
    publish(&AppearanceSettings::backgroundStyle,
            storedCase(m_preferences, themeKey(backgroundStylePrefix), nowPlayingBackgroundStyleOf,
                       defaultBackgroundStyle(theme)),
            &ThemeService::nowPlayingBackgroundStyleChanged);
    publish(&AppearanceSettings::backgroundOpacity,
            storedNumber(m_preferences, themeKey(backgroundOpacityPrefix)).value_or(unset.backgroundOpacity),
            &ThemeService::nowPlayingBackgroundOpacityChanged);
    if (isOtherPicture)
        Q_EMIT customBackgroundImageChanged();
    publishBackgroundColor(colorIn(m_preferences.stringsValue(themeKey(backgroundColorPrefix))));
    publish(&AppearanceSettings::backgroundBlur,
            storedFloat(m_preferences, themeKey(backgroundBlurPrefix)).value_or(unset.backgroundBlur),
            &ThemeService::customBackgroundBlurChanged);
}

void ThemeService::setNowPlayingBackgroundStyle(NowPlayingBackgroundStyle style)
{
    if (!allNowPlayingBackgroundStyles().contains(style))
        return;
    m_preferences.setString(themeKey(backgroundStylePrefix), rawValue(style));
    publish(&AppearanceSettings::backgroundStyle, style, &ThemeService::nowPlayingBackgroundStyleChanged);
}

void ThemeService::setNowPlayingBackgroundOpacity(double value)
{
    if (std::isnan(value))
        return;
    const double clamped = AppearanceOptions::backgroundOpacities.clamped(value);
    m_preferences.setDouble(themeKey(backgroundOpacityPrefix), clamped);
    publish(&AppearanceSettings::backgroundOpacity, clamped,
            &ThemeService::nowPlayingBackgroundOpacityChanged);
}

void ThemeService::setCustomBackgroundImage(const QImage &image)
{
    if (image.isNull())
        return;
    const QImage picture = fittedImage(image, StoredPicture::longestSide);
    if (m_backgroundPicture.set(picture, jpegData(picture, backgroundQuality)))
        Q_EMIT customBackgroundImageChanged();
}

void ThemeService::clearCustomBackgroundImage()
{
    if (m_backgroundPicture.clear())
        Q_EMIT customBackgroundImageChanged();
}

void ThemeService::setCustomBackgroundBlur(double value)
{
    if (std::isnan(value))
        return;
    const auto clamped = static_cast<float>(AppearanceOptions::backgroundBlurs.clamped(value));
    m_preferences.setDouble(themeKey(backgroundBlurPrefix), clamped);
    publish(&AppearanceSettings::backgroundBlur, clamped, &ThemeService::customBackgroundBlurChanged);
}

QColor ThemeService::customBackgroundColor() const
{
    return m_settings.backgroundColor.value_or(systemColors(m_scheme).purple);
}

void ThemeService::setCustomBackgroundColor(const QColor &color)
{
    if (!color.isValid())
        return;
    if (!isGrey(color))
        m_preferences.setStrings(themeKey(backgroundColorPrefix), textsOf(color));
    publishBackgroundColor(color);
}

void ThemeService::publishBackgroundColor(const std::optional<QColor> &color)
{
    const QColor before = customBackgroundColor();
    m_settings.backgroundColor = color;
    if (before != customBackgroundColor())
        Q_EMIT customBackgroundColorChanged();
}

} // namespace cadorel
