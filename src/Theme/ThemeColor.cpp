// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemeColor.h"

#include "Theme/Contrast.h"
#include "Theme/SystemColorTable.h"
#include "Views/InterfaceParts.h"

namespace cadorel {

namespace {

/// What symbols and large texts need; WCAG 2.1, success criterion 1.4.11. An accent that gives white as much
/// needs little change to be a ground for all texts.
constexpr double leastContrast = 3;

} // namespace

ThemeColor::ThemeColor(ThemeService *service, DesktopAppearance &appearance)
    : m_service(service)
    , m_appearance(appearance)
    , m_colors(colors())
{
    if (service)
        connect(service, &ThemeService::accentColorChanged, this, &ThemeColor::update);
    connect(&appearance, &DesktopAppearance::colorSchemeChanged, this, &ThemeColor::update);
}

ThemeColor *ThemeColor::create(QQmlEngine *engine, QJSEngine *)
{
    const InterfaceParts &parts = interfaceParts(*engine);
    return new ThemeColor(parts.themeService, *parts.desktopAppearance);
}

ThemeColor::Colors ThemeColor::colors() const
{
    const ColorScheme scheme = m_appearance.colorScheme();
    const SystemColorTable &table = systemColors(scheme);
    Colors colors;
    colors.accent =
        m_service ? m_service->accentColor() : AppearanceOptions::presetColors(scheme).constFirst().color;
    colors.tint = colors.accent;
    colors.tint.setAlphaF(table.accentTint.alphaF());
    colors.ink = Contrast::ratio(Qt::white, colors.accent) >= leastContrast ? Qt::white : Qt::black;
    colors.fill = Contrast::groundFor(colors.ink, colors.accent);
    // A selected row under the pointer: the ground that leaves a text the least contrast.
    const QColor selected = Contrast::over(colors.tint, table.secondaryBackground);
    colors.text = Contrast::textOn(Contrast::over(table.pressed, selected), colors.accent);
    return colors;
}

void ThemeColor::update()
{
    const Colors now = colors();
    if (now == m_colors)
        return;
    m_colors = now;
    Q_EMIT accentChanged();
}

} // namespace cadorel
