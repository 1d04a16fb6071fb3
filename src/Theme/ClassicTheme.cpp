// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ClassicTheme.h"

#include "Theme/Translucent.h"

namespace cadorel {

ClassicTheme::ClassicTheme(ColorScheme scheme)
    : AppTheme(scheme)
{
}

QColor ClassicTheme::backgroundColor() const
{
    return colors().background;
}

QColor ClassicTheme::surfaceColor() const
{
    return colors().secondaryBackground;
}

QColor ClassicTheme::primaryColor() const
{
    return colors().accent;
}

QColor ClassicTheme::primaryTextColor() const
{
    return colors().label;
}

QColor ClassicTheme::secondaryTextColor() const
{
    return colors().secondaryLabel;
}

QColor ClassicTheme::lightShadow() const
{
    return Qt::transparent;
}

QColor ClassicTheme::darkShadow() const
{
    return translucent(Qt::black, 0.1F);
}

NowPlayingConfig ClassicTheme::nowPlayingConfig() const
{
    return {.backgroundStyle = NowPlayingConfig::NowPlayingBackgroundStyle::blur,
            .backgroundOpacity = 0.7,
            .coverCornerRadius = 12,
            .showCoverShadow = true,
            .lyricsFontSize = 18,
            .controlButtonSize = 32,
            .showDecorations = false};
}

} // namespace cadorel
