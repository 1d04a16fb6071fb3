// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/AppTheme.h"

namespace cadorel {

/// Soft embossed shapes on light grey, by day and by night: the drawing needs a light surface.
class NeumorphismTheme : public AppTheme
{
    Q_OBJECT
public:
    explicit NeumorphismTheme(ColorScheme scheme);

    QColor backgroundColor() const override;
    QColor surfaceColor() const override;
    QColor primaryColor() const override;
    QColor primaryTextColor() const override;
    QColor secondaryTextColor() const override;
    QColor lightShadow() const override;
    QColor darkShadow() const override;
    ThemeType themeType() const override { return ThemeType::neumorphism; }
    NowPlayingConfig nowPlayingConfig() const override;
};

} // namespace cadorel
