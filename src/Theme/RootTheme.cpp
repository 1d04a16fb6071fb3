// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/RootTheme.h"

#include "Theme/ThemeFactory.h"
#include "Theme/ThemeManager.h"

#include <QQmlEngine>

namespace cadorel {

RootTheme &RootTheme::of(QQmlEngine &engine)
{
    auto *found = engine.findChild<RootTheme *>(QString(), Qt::FindDirectChildrenOnly);
    return found ? *found : *new RootTheme(engine);
}

RootTheme::RootTheme(QQmlEngine &engine)
    : QObject(&engine)
{
}

AppTheme &RootTheme::theme() const
{
    return m_manager ? *m_manager->currentTheme() : ThemeFactory::create(ThemeType::classic);
}

void RootTheme::setManager(ThemeManager *manager)
{
    if (manager == m_manager)
        return;
    if (m_manager)
        disconnect(m_manager, nullptr, this, nullptr);
    m_manager = manager;
    if (manager) {
        connect(manager, &ThemeManager::currentThemeChanged, this, &RootTheme::themeChanged);
        connect(manager, &QObject::destroyed, this, &RootTheme::themeChanged);
    }
    Q_EMIT themeChanged();
}

} // namespace cadorel
