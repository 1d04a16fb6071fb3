// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/DesktopAppearance.h"
#include "Platform/Preferences.h"
#include "Theme/AppTheme.h"

#include <QList>
#include <QObject>

namespace cadorel {

/// The look of the player, and the memory of its choice. Main thread; switchTo() from any.
class ThemeManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(cadorel::AppTheme *currentTheme READ currentTheme NOTIFY currentThemeChanged)
    Q_PROPERTY(
        cadorel::ThemeTypes::Type currentThemeType READ currentThemeType NOTIFY currentThemeTypeChanged)
    Q_PROPERTY(int currentThemeIndex READ currentThemeIndex WRITE setCurrentThemeIndex NOTIFY
                   currentThemeTypeChanged)
    /// All looks in the order of allThemeTypes(), in the present scheme.
    Q_PROPERTY(QList<QObject *> themes READ themes NOTIFY currentThemeChanged)
public:
    static constexpr auto themeStorageKey = "selectedTheme";

    /// Reads the stored choice. Both outlive the manager.
    ThemeManager(Preferences &preferences, DesktopAppearance &appearance);

    static ThemeManager &shared();

    AppTheme *currentTheme() const { return m_currentTheme; }
    ThemeType currentThemeType() const { return m_currentThemeType; }
    QList<QObject *> themes() const;

    /// Takes the look with the next turn of the main loop; the present one changes nothing.
    Q_INVOKABLE void switchTo(cadorel::ThemeTypes::Type type);
    /// The next look, after the last the first.
    Q_INVOKABLE void toggleTheme();
    int currentThemeIndex() const;
    /// An index that is none of a look is ignored.
    void setCurrentThemeIndex(int index);

    QColor backgroundColor() const { return m_currentTheme->backgroundColor(); }
    QColor surfaceColor() const { return m_currentTheme->surfaceColor(); }
    QColor primaryColor() const { return m_currentTheme->primaryColor(); }
    QColor primaryTextColor() const { return m_currentTheme->primaryTextColor(); }
    QColor secondaryTextColor() const { return m_currentTheme->secondaryTextColor(); }
    QColor lightShadow() const { return m_currentTheme->lightShadow(); }
    QColor darkShadow() const { return m_currentTheme->darkShadow(); }
    bool isNeumorphism() const { return m_currentTheme->useNeumorphism(); }

Q_SIGNALS:
    void currentThemeChanged();
    void currentThemeTypeChanged(cadorel::ThemeTypes::Type type);

private:
    void setCurrentThemeType(ThemeType type);
    void updateCurrentTheme();

    Preferences &m_preferences;
    DesktopAppearance &m_appearance;
    AppTheme *m_currentTheme = nullptr; // never null after construction
    ThemeType m_currentThemeType = ThemeType::classic;
};

} // namespace cadorel
