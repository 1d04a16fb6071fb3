// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/ThemeService.h"

#include "Platform/DesktopAppearance.h"
#include "Platform/Platform.h"
#include "Platform/Preferences.h"
#include "Platform/SharedServices.h"
#include "Services/Pictures/PictureForms.h"
#include "Services/StoredSettings.h"
#include "Theme/ThemeManager.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;
using namespace appearanceKeys;

namespace {

constexpr QSize dancingPictureSize(50, 50);

const QString dancingPictureName = u"dancing"_s;
const QString backgroundPictureName = u"background"_s;

bool areNumbers(const CassetteConfig &config)
{
    return std::isfinite(config.scale) && std::isfinite(config.offsetX) && std::isfinite(config.offsetY);
}

} // namespace

ThemeService::ThemeService(Preferences &preferences, ThemeManager &themeManager,
                           DesktopAppearance &appearance)
    : m_preferences(preferences)
    , m_appearance(appearance)
    , m_scheme(appearance.colorScheme())
    , m_dancingPicture(preferences, m_pictures, dancingPictureName)
    , m_backgroundPicture(preferences, m_pictures, backgroundPictureName)
    , m_currentThemeType(themeManager.currentThemeType())
    , m_announcedThemeType(m_currentThemeType)
{
    loadSavedColor();
    connect(&themeManager, &ThemeManager::currentThemeTypeChanged, this, &ThemeService::onThemeChanged);
    connect(&appearance, &DesktopAppearance::colorSchemeChanged, this, &ThemeService::onColorSchemeChanged);
    loadThemeSpecificSettings(m_currentThemeType);
}

ThemeService &ThemeService::shared()
{
    return sharedService<ThemeService>([] {
        const Platform &platform = processPlatform();
        return std::make_unique<ThemeService>(*platform.preferences, ThemeManager::shared(),
                                              *platform.desktopAppearance);
    });
}

/// Takes every setting that all looks share, as it is stored.
void ThemeService::loadSavedColor()
{
    const QString name = m_preferences.stringValue(colorNameKey).value_or(m_settings.accentColorName);
    if (presetNamed(name))
        m_settings.accentColorName = name;
    m_settings.showSoundWaveRing = m_preferences.boolValue(soundWaveRingKey).value_or(true);
    if (const auto emoji = m_preferences.stringValue(dancingEmojiKey))
        m_settings.dancingEmoji = *emoji;
    m_settings.useCustomImage = m_preferences.boolValue(useCustomImageKey).value_or(false);
    m_dancingPicture.open(customImageKey);
    m_settings.lyricAnimationStyle =
        storedCase(m_preferences, lyricAnimationKey, lyricAnimationStyleOf, m_settings.lyricAnimationStyle);
    m_settings.albumCoverCornerRadius =
        storedFloat(m_preferences, albumCornerRadiusKey).value_or(m_settings.albumCoverCornerRadius);
    const std::optional<double> x = storedNumber(m_preferences, miniPlayerPositionXKey);
    const std::optional<double> y = storedNumber(m_preferences, miniPlayerPositionYKey);
    if (x && y)
        m_settings.miniPlayerPosition = QPointF(*x, *y);
    m_settings.cassetteStyle =
        storedCase(m_preferences, cassetteStyleKey, cassetteStyleOf, m_settings.cassetteStyle);
    if (const auto configs = m_preferences.dataValue(cassetteConfigsKey))
        m_settings.cassetteConfigs = decodedConfigs(*configs).value_or(CassetteConfigs());
    m_settings.lyricsFontSize =
        storedFloat(m_preferences, lyricsFontSizeKey).value_or(m_settings.lyricsFontSize);
    m_settings.lyricsAlignment =
        storedCase(m_preferences, lyricsAlignmentKey, lyricsAlignmentOf, m_settings.lyricsAlignment);
    m_settings.lyricsBlurEnabled =
        m_preferences.boolValue(lyricsBlurEnabledKey).value_or(m_settings.lyricsBlurEnabled);
}

// MARK: accent

const QList<PresetColor> &ThemeService::presetColors() const
{
    return AppearanceOptions::presetColors(m_scheme);
}

const PresetColor *ThemeService::presetNamed(const QString &name) const
{
    const auto found = std::ranges::find(presetColors(), name, &PresetColor::name);
    return found == presetColors().end() ? nullptr : &*found;
}

QColor ThemeService::accentColor() const
{
    if (m_settings.ownAccentColor)
        return *m_settings.ownAccentColor;
    const PresetColor *preset = presetNamed(m_settings.accentColorName);
    return preset ? preset->color : QColor();
}

int ThemeService::currentColorIndex() const
{
    const PresetColor *preset = presetNamed(m_settings.accentColorName);
    return preset ? static_cast<int>(preset - presetColors().constData()) : 0;
}

void ThemeService::setAccentColor(const QColor &color, const QString &name)
{
    if (!color.isValid())
        return;
    const QColor before = accentColor();
    const PresetColor *preset = presetNamed(name);
    m_settings.ownAccentColor = preset && preset->color == color ? std::nullopt : std::optional(color);
    const bool isRenamed = m_settings.accentColorName != name;
    m_settings.accentColorName = name;
    m_preferences.setString(colorNameKey, name);
    if (before != color)
        Q_EMIT accentColorChanged();
    if (isRenamed)
        Q_EMIT accentColorNameChanged();
}

void ThemeService::setPresetColor(int index)
{
    if (index < 0 || index >= presetColors().size())
        return;
    const PresetColor preset = presetColors().at(index);
    setAccentColor(preset.color, preset.name);
}

void ThemeService::onColorSchemeChanged()
{
    if (m_scheme == m_appearance.colorScheme())
        return;
    const QColor accent = accentColor();
    const QColor background = customBackgroundColor();
    m_scheme = m_appearance.colorScheme();
    Q_EMIT presetColorsChanged();
    if (accent != accentColor())
        Q_EMIT accentColorChanged();
    if (background != customBackgroundColor())
        Q_EMIT customBackgroundColorChanged();
}

// MARK: what dances

void ThemeService::toggleSoundWaveRing()
{
    setSoundWaveRing(!m_settings.showSoundWaveRing);
}

void ThemeService::setSoundWaveRing(bool on)
{
    m_preferences.setBool(soundWaveRingKey, on);
    publish(&AppearanceSettings::showSoundWaveRing, on, &ThemeService::showSoundWaveRingChanged);
}

void ThemeService::setDancingEmoji(const QString &emoji)
{
    m_preferences.setString(dancingEmojiKey, emoji);
    m_preferences.setBool(useCustomImageKey, false);
    const bool isOther = std::exchange(m_settings.dancingEmoji, emoji) != emoji;
    const bool wasPicture = std::exchange(m_settings.useCustomImage, false);
    if (isOther)
        Q_EMIT dancingEmojiChanged();
    if (wasPicture)
        Q_EMIT useCustomImageChanged();
}

void ThemeService::setCustomDancingImage(const QImage &image)
{
    if (image.isNull())
        return;
    const QImage picture = resizeImage(image, dancingPictureSize);
    const std::optional<QByteArray> data = pngData(picture);
    const bool isOther = m_dancingPicture.set(picture, data);
    if (data)
        m_preferences.setBool(useCustomImageKey, true);
    const bool begins = data && !std::exchange(m_settings.useCustomImage, true);
    if (isOther)
        Q_EMIT customDancingImageChanged();
    if (begins)
        Q_EMIT useCustomImageChanged();
}

void ThemeService::clearCustomDancingImage()
{
    const bool wasThere = m_dancingPicture.clear();
    m_preferences.setBool(useCustomImageKey, false);
    const bool wasUsed = std::exchange(m_settings.useCustomImage, false);
    if (wasThere)
        Q_EMIT customDancingImageChanged();
    if (wasUsed)
        Q_EMIT useCustomImageChanged();
}

// MARK: cover and cassette

void ThemeService::setAlbumCoverCornerRadius(double radius)
{
    if (std::isnan(radius))
        return;
    const auto clamped = static_cast<float>(AppearanceOptions::albumCoverCornerRadii.clamped(radius));
    m_preferences.setDouble(albumCornerRadiusKey, clamped);
    publish(&AppearanceSettings::albumCoverCornerRadius, clamped,
            &ThemeService::albumCoverCornerRadiusChanged);
}

void ThemeService::setCircleAlbumCover()
{
    setAlbumCoverCornerRadius(AppearanceOptions::albumCoverCornerRadii.to);
}

void ThemeService::setSquareAlbumCover()
{
    setAlbumCoverCornerRadius(AppearanceOptions::albumCoverCornerRadii.from);
}

CassetteConfig ThemeService::getCurrentCassetteConfig() const
{
    return m_settings.cassetteConfigs.value(rawValue(m_settings.cassetteStyle),
                                            defaultConfig(m_settings.cassetteStyle));
}

void ThemeService::setCassetteStyle(CassetteStyle style)
{
    if (!allCassetteStyles().contains(style))
        return;
    m_preferences.setString(cassetteStyleKey, rawValue(style));
    const CassetteConfig before = getCurrentCassetteConfig();
    publish(&AppearanceSettings::cassetteStyle, style, &ThemeService::selectedCassetteStyleChanged);
    if (before != getCurrentCassetteConfig())
        Q_EMIT currentCassetteConfigChanged();
}

void ThemeService::setCassetteConfig(const CassetteConfig &config)
{
    if (!areNumbers(config))
        return;
    CassetteConfigs configs = m_settings.cassetteConfigs;
    configs.insert(rawValue(m_settings.cassetteStyle), config);
    saveCassetteConfigs(configs);
}

void ThemeService::setCassetteScale(double value)
{
    CassetteConfig config = getCurrentCassetteConfig();
    config.scale = static_cast<float>(AppearanceOptions::cassetteScales.clamped(value));
    setCassetteConfig(config);
}

void ThemeService::setCassetteOffsetX(double value)
{
    CassetteConfig config = getCurrentCassetteConfig();
    config.offsetX = static_cast<float>(AppearanceOptions::cassetteOffsets.clamped(value));
    setCassetteConfig(config);
}

void ThemeService::setCassetteOffsetY(double value)
{
    CassetteConfig config = getCurrentCassetteConfig();
    config.offsetY = static_cast<float>(AppearanceOptions::cassetteOffsets.clamped(value));
    setCassetteConfig(config);
}

void ThemeService::resetCurrentCassetteConfig()
{
    CassetteConfigs configs = m_settings.cassetteConfigs;
    configs.remove(rawValue(m_settings.cassetteStyle));
    saveCassetteConfigs(configs);
}

void ThemeService::saveCassetteConfigs(const CassetteConfigs &configs)
{
    m_preferences.setData(cassetteConfigsKey, encodedConfigs(configs));
    const CassetteConfig before = getCurrentCassetteConfig();
    publish(&AppearanceSettings::cassetteConfigs, configs, &ThemeService::cassetteConfigsChanged);
    if (before != getCurrentCassetteConfig())
        Q_EMIT currentCassetteConfigChanged();
}

// MARK: lyrics and the small player

void ThemeService::setLyricAnimationStyle(LyricAnimationStyle style)
{
    if (!allLyricAnimationStyles().contains(style))
        return;
    m_preferences.setString(lyricAnimationKey, rawValue(style));
    publish(&AppearanceSettings::lyricAnimationStyle, style, &ThemeService::lyricAnimationStyleChanged);
}

void ThemeService::setLyricsFontSize(double size)
{
    if (std::isnan(size))
        return;
    const auto clamped = static_cast<float>(AppearanceOptions::lyricsFontSizes.clamped(size));
    m_preferences.setDouble(lyricsFontSizeKey, clamped);
    publish(&AppearanceSettings::lyricsFontSize, clamped, &ThemeService::lyricsFontSizeChanged);
}

void ThemeService::setLyricsAlignment(LyricsAlignment alignment)
{
    if (!allLyricsAlignments().contains(alignment))
        return;
    m_preferences.setString(lyricsAlignmentKey, rawValue(alignment));
    publish(&AppearanceSettings::lyricsAlignment, alignment, &ThemeService::lyricsAlignmentChanged);
}

void ThemeService::setLyricsBlurEnabled(bool on)
{
    m_preferences.setBool(lyricsBlurEnabledKey, on);
    publish(&AppearanceSettings::lyricsBlurEnabled, on, &ThemeService::lyricsBlurEnabledChanged);
}

QVariant ThemeService::miniPlayerPoint() const
{
    return m_settings.miniPlayerPosition ? QVariant(*m_settings.miniPlayerPosition) : QVariant();
}

void ThemeService::setMiniPlayerPosition(const QPointF &point)
{
    if (!std::isfinite(point.x()) || !std::isfinite(point.y()))
        return;
    m_preferences.setDouble(miniPlayerPositionXKey, point.x());
    m_preferences.setDouble(miniPlayerPositionYKey, point.y());
    publish(&AppearanceSettings::miniPlayerPosition, point, &ThemeService::miniPlayerPositionChanged);
}

void ThemeService::clearMiniPlayerPosition()
{
    m_preferences.remove(miniPlayerPositionXKey);
    m_preferences.remove(miniPlayerPositionYKey);
    publish(&AppearanceSettings::miniPlayerPosition, std::nullopt, &ThemeService::miniPlayerPositionChanged);
}

} // namespace cadorel
