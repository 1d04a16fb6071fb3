// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/KawaiiPinkTheme.h"

#include "Theme/Translucent.h"

namespace cadorel {

KawaiiPinkTheme::KawaiiPinkTheme(ColorScheme scheme)
    : AppTheme(scheme)
{
}

QColor KawaiiPinkTheme::backgroundColor() const
{
    return isDark() ? colors().background : QColor::fromRgbF(1.0F, 0.95F, 0.97F);
}

QColor KawaiiPinkTheme::surfaceColor() const
{
    return isDark() ? colors().secondaryBackground : QColor::fromRgbF(1.0F, 0.92F, 0.95F);
}

QColor KawaiiPinkTheme::primaryColor() const
{
    return colors().pink;
}

QColor KawaiiPinkTheme::primaryTextColor() const
{
    return isDark() ? colors().label : colors().pink;
}

QColor KawaiiPinkTheme::secondaryTextColor() const
{
    return colors().secondaryLabel;
}

QColor KawaiiPinkTheme::lightShadow() const
{
    return translucent(colors().pink, 0.4F);
}

QColor KawaiiPinkTheme::darkShadow() const
{
    return Qt::transparent;
}

LinearGradient KawaiiPinkTheme::backgroundGradient() const
{
    return {.stops = {{0, translucent(colors().pink, 0.1F)},
                      {0.5, translucent(colors().pink, 0.2F)},
                      {1, translucent(colors().purple, 0.1F)}}};
}

NowPlayingConfig KawaiiPinkTheme::nowPlayingConfig() const
{
    return {.backgroundStyle = NowPlayingConfig::NowPlayingBackgroundStyle::gradient,
            .backgroundOpacity = 0.8,
            .coverCornerRadius = 28,
            .showCoverShadow = false,
            .lyricsFontSize = 20,
            .controlButtonSize = 36,
            .showDecorations = true};
}

} // namespace cadorel
