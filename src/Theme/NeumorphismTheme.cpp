// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/NeumorphismTheme.h"

#include "Theme/Translucent.h"

namespace cadorel {

NeumorphismTheme::NeumorphismTheme(ColorScheme scheme)
    : AppTheme(scheme)
{
}

QColor NeumorphismTheme::backgroundColor() const
{
    return {224, 229, 236};
}

QColor NeumorphismTheme::surfaceColor() const
{
    return backgroundColor();
}

QColor NeumorphismTheme::primaryColor() const
{
    return systemColors(ColorScheme::light).blue;
}

QColor NeumorphismTheme::primaryTextColor() const
{
    return translucent(Qt::black, 0.8F);
}

QColor NeumorphismTheme::secondaryTextColor() const
{
    return systemColors(ColorScheme::light).gray;
}

QColor NeumorphismTheme::lightShadow() const
{
    return translucent(Qt::white, 0.6F);
}

QColor NeumorphismTheme::darkShadow() const
{
    return translucent(Qt::black, 0.2F);
}

NowPlayingConfig NeumorphismTheme::nowPlayingConfig() const
{
    return {.backgroundStyle = NowPlayingConfig::NowPlayingBackgroundStyle::solid,
            .backgroundOpacity = 0.5,
            .coverCornerRadius = 20,
            .showCoverShadow = true,
            .lyricsFontSize = 18,
            .controlButtonSize = 32,
            .showDecorations = false};
}

} // namespace cadorel
