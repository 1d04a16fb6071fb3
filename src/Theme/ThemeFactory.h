// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/AppTheme.h"

namespace cadorel {

/// Makes looks.
class ThemeFactory
{
public:
    ThemeFactory() = delete;

    /// The look of that type. Each exists once for the life of the process, so screens may keep it. Main
    /// thread.
    static AppTheme &create(ThemeType type, ColorScheme scheme = ColorScheme::light);
};

} // namespace cadorel
