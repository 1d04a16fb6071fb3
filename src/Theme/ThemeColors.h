// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/AppTheme.h"

namespace cadorel {

/// The colours of a look, and nothing else of it, for code that draws: `themed(theme).surfaceColor()`. QML
/// reads them from the theme itself.
struct ThemeColors
{
    /// Outlives the record.
    const AppTheme &theme;

    QColor backgroundColor() const { return theme.backgroundColor(); }
    QColor surfaceColor() const { return theme.surfaceColor(); }
    QColor primaryColor() const { return theme.primaryColor(); }
    QColor primaryTextColor() const { return theme.primaryTextColor(); }
    QColor secondaryTextColor() const { return theme.secondaryTextColor(); }
    QColor lightShadow() const { return theme.lightShadow(); }
    QColor darkShadow() const { return theme.darkShadow(); }
};

inline ThemeColors themed(const AppTheme &theme)
{
    return {theme};
}

} // namespace cadorel
