// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemeColor.h"

#include "Theme/Contrast.h"
#include "Theme/Translucent.h"
#include "Views/InterfaceParts.h"

namespace cadorel {

namespace {

/// What symbols and large texts need; WCAG 2.1, success criterion 1.4.11.
constexpr double leastContrast = 3;
constexpr float lightTint = 0.12F;
constexpr float darkTint = 0.22F;

} // namespace

ThemeColor::ThemeColor(ThemeService *service, DesktopAppearance &appearance)
    : m_service(service)
    , m_appearance(&appearance)
{
    if (service)
        connect(service, &ThemeService::accentColorChanged, this, &ThemeColor::accentChanged);
    connect(&appearance, &DesktopAppearance::colorSchemeChanged, this, &ThemeColor::accentChanged);
}

ThemeColor *ThemeColor::create(QQmlEngine *engine, QJSEngine *)
{
    const InterfaceParts &parts = interfaceParts(*engine);
    return new ThemeColor(parts.themeService, *parts.desktopAppearance);
}

QColor ThemeColor::accent() const
{
    if (m_service)
        return m_service->accentColor();
    const ColorScheme scheme = m_appearance ? m_appearance->colorScheme() : ColorScheme::light;
    return AppearanceOptions::presetColors(scheme).constFirst().color;
}

QColor ThemeColor::accentInk() const
{
    return Contrast::ratio(Qt::white, accent()) >= leastContrast ? Qt::white : Qt::black;
}

QColor ThemeColor::accentTint() const
{
    return translucent(accent(), m_appearance && m_appearance->isDark() ? darkTint : lightTint);
}

} // namespace cadorel
