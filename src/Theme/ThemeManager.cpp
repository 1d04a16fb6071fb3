// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemeManager.h"

#include "Platform/SharedServices.h"
#include "Theme/ThemeFactory.h"

namespace cadorel {

ThemeManager::ThemeManager(Preferences &preferences, DesktopAppearance &appearance)
    : m_preferences(preferences)
    , m_appearance(appearance)
{
    const QString stored =
        preferences.stringValue(QLatin1StringView(themeStorageKey)).value_or(rawValue(ThemeType::classic));
    m_currentThemeType = themeTypeOf(stored).value_or(ThemeType::classic);
    updateCurrentTheme();
    connect(&m_appearance, &DesktopAppearance::colorSchemeChanged, this, &ThemeManager::updateCurrentTheme);
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
    if (type == m_currentThemeType)
        return;
    QMetaObject::invokeMethod(this, [this, type] { setCurrentThemeType(type); }, Qt::QueuedConnection);
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
    m_currentThemeType = type;
    m_preferences.setString(QLatin1StringView(themeStorageKey), rawValue(type));
    updateCurrentTheme();
    Q_EMIT currentThemeTypeChanged(type);
}

void ThemeManager::updateCurrentTheme()
{
    AppTheme *theme = &ThemeFactory::create(m_currentThemeType, m_appearance.colorScheme());
    if (theme == m_currentTheme)
        return;
    m_currentTheme = theme;
    Q_EMIT currentThemeChanged();
}

} // namespace cadorel
