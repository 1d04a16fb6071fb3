// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/AppTheme.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace cadorel {

class ThemeManager;

/// The look that an item and what lies in it are drawn with: attached to items as "ThemeEnvironment.theme".
/// An item without a theme of its own has that of the nearest item around it, and at the root the current
/// theme of the engine's ThemeManager; without one, the plain look. Main thread.
class ThemeEnvironment : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("attached to items")
    QML_ATTACHED(ThemeEnvironment)
    Q_PROPERTY(cadorel::AppTheme *theme READ theme WRITE setTheme RESET resetTheme NOTIFY themeChanged)
public:
    explicit ThemeEnvironment(QObject *parent);

    static ThemeEnvironment *qmlAttachedProperties(QObject *object);

    AppTheme *theme() const { return m_theme; }
    void setTheme(AppTheme *theme);
    void resetTheme();

Q_SIGNALS:
    void themeChanged();

private:
    AppTheme *m_theme = nullptr;
};

} // namespace cadorel
