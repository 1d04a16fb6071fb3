// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/AppTheme.h"

namespace cadorel {

/// A look of one colour that a test may end.
class FakeTheme : public AppTheme
{
public:
    explicit FakeTheme(const QColor &color)
        : AppTheme(ColorScheme::light)
        , m_color(color)
    {
    }

    QColor backgroundColor() const override { return m_color; }
    QColor surfaceColor() const override { return m_color; }
    QColor primaryColor() const override { return m_color; }
    QColor primaryTextColor() const override { return m_color; }
    QColor secondaryTextColor() const override { return m_color; }
    QColor lightShadow() const override { return m_color; }
    QColor darkShadow() const override { return m_color; }
    ThemeType themeType() const override { return ThemeType::classic; }
    NowPlayingConfig nowPlayingConfig() const override { return {}; }

private:
    const QColor m_color;
};

} // namespace cadorel
