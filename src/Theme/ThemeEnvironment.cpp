// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemeEnvironment.h"

#include "Theme/ThemeFactory.h"

namespace cadorel {

ThemeEnvironment::ThemeEnvironment(QObject *parent)
    : QObject(parent)
    , m_theme(&ThemeFactory::create(ThemeType::classic))
{
}

ThemeEnvironment *ThemeEnvironment::qmlAttachedProperties(QObject *object)
{
    return new ThemeEnvironment(object);
}

void ThemeEnvironment::setTheme(AppTheme *theme)
{
    if (theme == m_theme)
        return;
    m_theme = theme;
    Q_EMIT themeChanged();
}

void ThemeEnvironment::resetTheme()
{
    setTheme(&ThemeFactory::create(ThemeType::classic));
}

} // namespace cadorel
