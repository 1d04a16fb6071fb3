// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/RootTheme.h"

#include "Platform/DesktopAppearance.h"
#include "Theme/ThemeFactory.h"
#include "Theme/ThemeManager.h"
#include "Views/InterfaceParts.h"

#include <QQmlEngine>

namespace cadorel {

RootTheme &RootTheme::of(QQmlEngine &engine)
{
    auto *found = engine.findChild<RootTheme *>(QString(), Qt::FindDirectChildrenOnly);
    return found ? *found : *new RootTheme(engine);
}

RootTheme::RootTheme(QQmlEngine &engine)
    : QObject(&engine)
    , m_appearance(interfaceParts(engine).desktopAppearance)
{
    if (!m_appearance)
        return;
    const auto follow = [this] {
        if (!m_manager)
            Q_EMIT themeChanged();
    };
    connect(m_appearance, &DesktopAppearance::colorSchemeChanged, this, follow);
}

AppTheme &RootTheme::theme() const
{
    if (m_manager)
        return *m_manager->currentTheme();
    return ThemeFactory::create(ThemeType::classic,
                                m_appearance ? m_appearance->colorScheme() : ColorScheme::light);
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
