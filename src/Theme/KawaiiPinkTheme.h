// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/AppTheme.h"

namespace cadorel {

/// Pink, round and decorated.
class KawaiiPinkTheme : public AppTheme
{
    Q_OBJECT
public:
    explicit KawaiiPinkTheme(ColorScheme scheme);

    QColor backgroundColor() const override;
    QColor surfaceColor() const override;
    QColor primaryColor() const override;
    QColor primaryTextColor() const override;
    QColor secondaryTextColor() const override;
    QColor lightShadow() const override;
    QColor darkShadow() const override;
    ThemeType themeType() const override { return ThemeType::kawaiiPink; }
    LinearGradient backgroundGradient() const override;
    NowPlayingConfig nowPlayingConfig() const override;
};

} // namespace cadorel
