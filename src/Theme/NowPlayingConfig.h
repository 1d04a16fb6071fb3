// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QObject>
#include <QString>

namespace cadorel {

/// Names of the backgrounds that a look gives the Now Playing screen, in a space of their own so that screens
/// know them as "NowPlayingConfig.NowPlayingBackgroundStyle.blur".
namespace NowPlayingConfigNames {
Q_NAMESPACE

enum class NowPlayingBackgroundStyle { blur, solid, gradient, clear };
Q_ENUM_NS(NowPlayingBackgroundStyle)
} // namespace NowPlayingConfigNames

/// What a look gives the Now Playing screen where the listener has chosen nothing.
struct NowPlayingConfig
{
    Q_GADGET
    Q_PROPERTY(cadorel::NowPlayingConfigNames::NowPlayingBackgroundStyle backgroundStyle MEMBER
                   backgroundStyle CONSTANT)
    Q_PROPERTY(double backgroundOpacity MEMBER backgroundOpacity CONSTANT)
    Q_PROPERTY(float coverCornerRadius MEMBER coverCornerRadius CONSTANT)
    Q_PROPERTY(bool showCoverShadow MEMBER showCoverShadow CONSTANT)
    Q_PROPERTY(float lyricsFontSize MEMBER lyricsFontSize CONSTANT)
    Q_PROPERTY(float controlButtonSize MEMBER controlButtonSize CONSTANT)
    Q_PROPERTY(bool showDecorations MEMBER showDecorations CONSTANT)
public:
    using NowPlayingBackgroundStyle = NowPlayingConfigNames::NowPlayingBackgroundStyle;

    NowPlayingBackgroundStyle backgroundStyle = NowPlayingBackgroundStyle::blur;
    /// 0 to 1.
    double backgroundOpacity = 0;
    /// Pixels, as are the sizes below.
    float coverCornerRadius = 0;
    bool showCoverShadow = false;
    float lyricsFontSize = 0;
    float controlButtonSize = 0;
    bool showDecorations = false;

    bool operator==(const NowPlayingConfig &) const = default;
};

/// The text that stands for the style.
QString rawValue(NowPlayingConfig::NowPlayingBackgroundStyle style);
/// Name as a listener reads it.
QString displayName(NowPlayingConfig::NowPlayingBackgroundStyle style);

} // namespace cadorel
