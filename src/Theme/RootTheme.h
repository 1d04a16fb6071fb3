// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/AppTheme.h"

#include <QObject>
#include <QPointer>

class QQmlEngine;

namespace cadorel {

class DesktopAppearance;
class ThemeManager;

/// The look that an engine's screens begin with: that of its ThemeManager, without one the plain look in the
/// scheme of the engine's desktop. Main thread.
class RootTheme : public QObject
{
    Q_OBJECT
public:
    /// The one of that engine, which owns it.
    static RootTheme &of(QQmlEngine &engine);

    AppTheme &theme() const;
    /// Null is allowed.
    void setManager(ThemeManager *manager);

Q_SIGNALS:
    void themeChanged();

private:
    explicit RootTheme(QQmlEngine &engine);

    const QPointer<DesktopAppearance> m_appearance;
    QPointer<ThemeManager> m_manager;
};

} // namespace cadorel
