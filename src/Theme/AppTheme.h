// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/ColorScheme.h"
#include "Theme/LinearGradient.h"
#include "Theme/NowPlayingConfig.h"
#include "Theme/SystemColorTable.h"
#include "Theme/ThemeType.h"

#include <QColor>
#include <QObject>

namespace cadorel {

/// A look in one colour scheme: the answers to what components ask when they draw themselves. It never
/// changes; a change of look or of scheme is another object. ThemeFactory makes them. Main thread.
class AppTheme : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QColor backgroundColor READ backgroundColor CONSTANT)
    Q_PROPERTY(QColor surfaceColor READ surfaceColor CONSTANT)
    Q_PROPERTY(QColor primaryColor READ primaryColor CONSTANT)
    Q_PROPERTY(QColor primaryTextColor READ primaryTextColor CONSTANT)
    Q_PROPERTY(QColor secondaryTextColor READ secondaryTextColor CONSTANT)
    Q_PROPERTY(QColor lightShadow READ lightShadow CONSTANT)
    Q_PROPERTY(QColor darkShadow READ darkShadow CONSTANT)
    Q_PROPERTY(cadorel::ThemeTypes::Type themeType READ themeType CONSTANT)
    Q_PROPERTY(QString displayName READ displayName CONSTANT)
    Q_PROPERTY(QString icon READ icon CONSTANT)
    Q_PROPERTY(bool useNeumorphism READ useNeumorphism CONSTANT)
    Q_PROPERTY(cadorel::NowPlayingConfig nowPlayingConfig READ nowPlayingConfig CONSTANT)
    Q_PROPERTY(bool isClassic READ isClassic CONSTANT)
    Q_PROPERTY(bool isKawaiiPink READ isKawaiiPink CONSTANT)
    Q_PROPERTY(bool isDark READ isDark CONSTANT)
public:
    /// Behind a whole screen.
    virtual QColor backgroundColor() const = 0;
    /// Of cards and rows.
    virtual QColor surfaceColor() const = 0;
    /// The look's own accent.
    virtual QColor primaryColor() const = 0;
    virtual QColor primaryTextColor() const = 0;
    virtual QColor secondaryTextColor() const = 0;
    /// Of embossed drawing: at its upper left, and at its lower right.
    virtual QColor lightShadow() const = 0;
    virtual QColor darkShadow() const = 0;
    virtual ThemeType themeType() const = 0;
    /// Name as a listener reads it, and name of its symbol.
    QString displayName() const { return cadorel::displayName(themeType()); }
    QString icon() const { return cadorel::icon(themeType()); }
    /// Whether components are drawn embossed.
    virtual bool useNeumorphism() const { return themeType() == ThemeType::neumorphism; }
    /// Empty for a look that has none.
    virtual LinearGradient backgroundGradient() const { return {}; }
    virtual NowPlayingConfig nowPlayingConfig() const = 0;

    bool isClassic() const { return themeType() == ThemeType::classic; }
    bool isKawaiiPink() const { return themeType() == ThemeType::kawaiiPink; }
    /// What the desktop asked for. A look that is the same in both schemes is told of it all the same: ask
    /// the colours for what is drawn on them.
    bool isDark() const { return m_scheme == ColorScheme::dark; }
    ColorScheme colorScheme() const { return m_scheme; }
    /// The named colours of its scheme.
    const SystemColorTable &colors() const { return systemColors(m_scheme); }

protected:
    explicit AppTheme(ColorScheme scheme)
        : m_scheme(scheme)
    {
    }

private:
    const ColorScheme m_scheme;
};

} // namespace cadorel
