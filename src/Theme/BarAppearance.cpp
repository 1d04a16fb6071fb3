// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/BarAppearance.h"

#include "Theme/AppTheme.h"
#include "Theme/Contrast.h"
#include "Theme/Translucent.h"

namespace cadorel {

namespace {

/// How much of the pink look's background lies over the plain bar.
constexpr float pinkShare = 0.9F;
/// Of the pink look's own colour, where a bar ends.
constexpr float pinkSeparator = 0.2F;

} // namespace

BarAppearance BarAppearances::setupAppearance(AppTheme *theme)
{
    if (!theme)
        return {.background = Qt::transparent, .title = Qt::transparent, .separator = Qt::transparent};
    const SystemColorTable &colors = theme->colors();
    switch (theme->themeType()) {
    case ThemeType::classic:
        return {
            .background = colors.secondaryBackground, .title = colors.label, .separator = colors.separator};
    case ThemeType::neumorphism:
        return {.background = theme->backgroundColor(),
                .title = theme->primaryTextColor(),
                .separator = theme->darkShadow()};
    case ThemeType::kawaiiPink:
        // Its own tab bar has its own ground: of these only the title of pages is drawn.
        return {.background = Contrast::over(translucent(theme->backgroundColor(), pinkShare),
                                             colors.secondaryBackground),
                .title = theme->primaryTextColor(),
                .separator = translucent(theme->primaryColor(), pinkSeparator)};
    }
    Q_UNREACHABLE();
}

} // namespace cadorel
