// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemeFactory.h"

#include "Theme/ClassicTheme.h"
#include "Theme/KawaiiPinkTheme.h"
#include "Theme/NeumorphismTheme.h"

namespace cadorel {

namespace {

template <typename Theme>
AppTheme &themeOf(ColorScheme scheme)
{
    static Theme light(ColorScheme::light);
    static Theme dark(ColorScheme::dark);
    return scheme == ColorScheme::dark ? dark : light;
}

} // namespace

AppTheme &ThemeFactory::create(ThemeType type, ColorScheme scheme)
{
    switch (type) {
    case ThemeType::classic:
        return themeOf<ClassicTheme>(scheme);
    case ThemeType::neumorphism:
        return themeOf<NeumorphismTheme>(scheme);
    case ThemeType::kawaiiPink:
        return themeOf<KawaiiPinkTheme>(scheme);
    }
    return themeOf<ClassicTheme>(scheme);
}

} // namespace cadorel
