// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/CassetteStyle.h"
#include "Models/LyricAnimationStyle.h"
#include "Models/LyricsAlignment.h"
#include "Models/NowPlayingBackgroundStyle.h"

#include <QColor>
#include <QPointF>
#include <QString>

#include <optional>

namespace cadorel {

/// What a listener chooses of the player's appearance, pictures excepted, as it is before anything is chosen.
struct AppearanceSettings
{
    /// A colour that presetColors() does not give for the name.
    std::optional<QColor> ownAccentColor;
    QString accentColorName = QStringLiteral("粉红");
    bool showSoundWaveRing = true;
    QString dancingEmoji = QStringLiteral("🕺");
    bool useCustomImage = false;
    LyricAnimationStyle lyricAnimationStyle = LyricAnimationStyle::bounce;
    NowPlayingBackgroundStyle backgroundStyle = NowPlayingBackgroundStyle::blur;
    double backgroundOpacity = 0.7;
    /// Without one it is purple.
    std::optional<QColor> backgroundColor;
    float backgroundBlur = 30;
    float albumCoverCornerRadius = 12;
    std::optional<QPointF> miniPlayerPosition;
    CassetteStyle cassetteStyle = CassetteStyle::defaultStyle;
    CassetteConfigs cassetteConfigs;
    float lyricsFontSize = 18;
    LyricsAlignment lyricsAlignment = LyricsAlignment::center;
    bool lyricsBlurEnabled = true;
};

/// Where the preferences keep them.
namespace appearanceKeys {

/// Not in use: an accent is stored by its name.
constexpr QLatin1StringView colorKey{"appAccentColor"};
constexpr QLatin1StringView colorNameKey{"appAccentColorName"};
constexpr QLatin1StringView soundWaveRingKey{"showSoundWaveRing"};
constexpr QLatin1StringView dancingEmojiKey{"dancingEmoji"};
constexpr QLatin1StringView customImageKey{"customDancingImage"};
constexpr QLatin1StringView useCustomImageKey{"useCustomDancingImage"};
constexpr QLatin1StringView lyricAnimationKey{"lyricAnimationStyle"};
constexpr QLatin1StringView albumCornerRadiusKey{"albumCoverCornerRadius"};
constexpr QLatin1StringView miniPlayerPositionXKey{"miniPlayerPositionX"};
constexpr QLatin1StringView miniPlayerPositionYKey{"miniPlayerPositionY"};
constexpr QLatin1StringView cassetteStyleKey{"selectedCassetteStyle"};
constexpr QLatin1StringView cassetteConfigsKey{"cassetteConfigs"};
constexpr QLatin1StringView lyricsFontSizeKey{"lyricsFontSize"};
constexpr QLatin1StringView lyricsAlignmentKey{"lyricsAlignment"};
constexpr QLatin1StringView lyricsBlurEnabledKey{"lyricsBlurEnabled"};

// The raw value of the look follows.
constexpr QLatin1StringView backgroundStylePrefix{"nowPlayingBackgroundStyle_"};
constexpr QLatin1StringView backgroundOpacityPrefix{"nowPlayingBackgroundOpacity_"};
constexpr QLatin1StringView backgroundImagePrefix{"customBackgroundImage_"};
/// Red, green and blue as a list of texts, each the shortest that reads back as the same number, as the
/// gains of the equalizer are stored: the preferences know no list of numbers.
constexpr QLatin1StringView backgroundColorPrefix{"customBackgroundColor_"};
constexpr QLatin1StringView backgroundBlurPrefix{"customBackgroundBlur_"};

} // namespace appearanceKeys

} // namespace cadorel
