// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/DesktopAppearance.h"
#include "Platform/Preferences.h"
#include "Theme/AppTheme.h"

#include <QList>
#include <QObject>

#include <atomic>

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
    Q_PROPERTY(QColor backgroundColor READ backgroundColor NOTIFY currentThemeChanged)
    Q_PROPERTY(QColor surfaceColor READ surfaceColor NOTIFY currentThemeChanged)
    Q_PROPERTY(QColor primaryColor READ primaryColor NOTIFY currentThemeChanged)
    Q_PROPERTY(QColor primaryTextColor READ primaryTextColor NOTIFY currentThemeChanged)
    Q_PROPERTY(QColor secondaryTextColor READ secondaryTextColor NOTIFY currentThemeChanged)
    Q_PROPERTY(QColor lightShadow READ lightShadow NOTIFY currentThemeChanged)
    Q_PROPERTY(QColor darkShadow READ darkShadow NOTIFY currentThemeChanged)
    Q_PROPERTY(bool isNeumorphism READ isNeumorphism NOTIFY currentThemeChanged)
public:
    static constexpr auto themeStorageKey = "selectedTheme";

    /// Reads the stored choice; the plain look where there is none, or one that is unknown. Both outlive the
    /// manager.
    ThemeManager(Preferences &preferences, DesktopAppearance &appearance);

    /// The one instance of the process, on its platform.
    static ThemeManager &shared();

    /// Never null. A look of another scheme is another theme of the same type.
    AppTheme *currentTheme() const { return m_currentTheme; }
    ThemeType currentThemeType() const { return m_currentThemeType; }
    QList<QObject *> themes() const;

    /// Takes the look, and stores it, with the next turn of the main loop, never within the call. Asking for
    /// the present look, or for a number that is none of a look, does nothing; asking twice for another one
    /// is the same as asking once. Any thread.
    Q_INVOKABLE void switchTo(cadorel::ThemeTypes::Type type);
    /// The next look, after the last the first.
    Q_INVOKABLE void toggleTheme();
    int currentThemeIndex() const;
    /// An index that is none of a look is ignored; else as switchTo().
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
    /// When it is told, the choice is stored and currentTheme() is of that type already. It comes before
    /// currentThemeChanged(), so that a screen can be thrown away before it is drawn in the new look.
    void currentThemeTypeChanged(cadorel::ThemeTypes::Type type);
    /// Another type, or the same in the other scheme.
    void currentThemeChanged();

private:
    void setCurrentThemeType(ThemeType type);
    void followScheme();

    Preferences &m_preferences;
    DesktopAppearance &m_appearance;
    /// Written by the main thread alone.
    std::atomic<ThemeType> m_currentThemeType;
    AppTheme *m_currentTheme;
};

} // namespace cadorel
