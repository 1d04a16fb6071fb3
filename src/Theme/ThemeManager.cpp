// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemeManager.h"

#include "Platform/Platform.h"
#include "Platform/SharedServices.h"
#include "Theme/ThemeFactory.h"

namespace cadorel {

namespace {

ThemeType storedType(const Preferences &preferences)
{
    const auto stored = preferences.stringValue(QLatin1StringView(ThemeManager::themeStorageKey));
    return themeTypeOf(stored.value_or(rawValue(ThemeType::classic))).value_or(ThemeType::classic);
}

} // namespace

ThemeManager::ThemeManager(Preferences &preferences, DesktopAppearance &appearance)
    : m_preferences(preferences)
    , m_appearance(appearance)
    , m_currentThemeType(storedType(preferences))
    , m_currentTheme(&ThemeFactory::create(m_currentThemeType, appearance.colorScheme()))
{
    connect(&m_appearance, &DesktopAppearance::colorSchemeChanged, this, &ThemeManager::followScheme);
}

ThemeManager &ThemeManager::shared()
{
    return sharedService<ThemeManager>([] {
        const Platform &platform = processPlatform();
        return std::make_unique<ThemeManager>(*platform.preferences, *platform.desktopAppearance);
    });
}

QList<QObject *> ThemeManager::themes() const
{
    QList<QObject *> all;
    for (const ThemeType type : allThemeTypes())
        all.append(&ThemeFactory::create(type, m_appearance.colorScheme()));
    return all;
}

void ThemeManager::switchTo(ThemeType type)
{
    if (type == m_currentThemeType || !allThemeTypes().contains(type))
        return;
    const auto later = [this, type] { setCurrentThemeType(type); };
    QMetaObject::invokeMethod(this, later, Qt::QueuedConnection);
}

void ThemeManager::toggleTheme()
{
    switchTo(allThemeTypes().at((currentThemeIndex() + 1) % allThemeTypes().size()));
}

int ThemeManager::currentThemeIndex() const
{
    return static_cast<int>(qMax(allThemeTypes().indexOf(m_currentThemeType), 0));
}

void ThemeManager::setCurrentThemeIndex(int index)
{
    if (index >= 0 && index < allThemeTypes().size())
        switchTo(allThemeTypes().at(index));
}

void ThemeManager::setCurrentThemeType(ThemeType type)
{
    if (type == m_currentThemeType)
        return;
    m_currentThemeType = type;
    m_preferences.setString(QLatin1StringView(themeStorageKey), rawValue(type));
    m_currentTheme = &ThemeFactory::create(type, m_appearance.colorScheme());
    Q_EMIT currentThemeTypeChanged(type);
    Q_EMIT currentThemeChanged();
}

void ThemeManager::followScheme()
{
    AppTheme *const theme = &ThemeFactory::create(m_currentThemeType, m_appearance.colorScheme());
    if (theme == m_currentTheme)
        return;
    m_currentTheme = theme;
    Q_EMIT currentThemeChanged();
}

} // namespace cadorel
