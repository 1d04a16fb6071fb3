// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/AppTheme.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class QQmlEngine;

namespace cadorel {

class RootTheme;
class ThemeManager;

/// The look that an item and what lies in it are drawn with: attached to items as "ThemeEnvironment.theme".
/// An item without a theme of its own has that of the nearest item around it, and at the root the current
/// theme of the engine's ThemeManager; without one, the plain look as the engine's desktop is, light or dark.
/// The theme is never null.
///
/// It follows items that move elsewhere. An item that is taken out of the scene keeps the look that it had
/// there, so that a tree on its way out is not drawn anew in a look that nobody will see it in. A popup, and
/// what lies in it, has the look of what the popup belongs to: the item that is its parent, or where that is
/// only the layer of all popups, the item that it was declared in. Of an object that is no item counts the
/// item, the popup or the window that it was declared in. A window has the theme of its engine's manager
/// unless it was declared in an item.
///
/// Setting a theme here is what "appTheme(theme)" is for a view: it counts for the item and all that lies in
/// it. Null, or the end of the theme that was set, is the same as a reset. Main thread.
class ThemeEnvironment : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("attached to items")
    QML_ATTACHED(cadorel::ThemeEnvironment)
    Q_PROPERTY(cadorel::AppTheme *theme READ theme WRITE setTheme RESET resetTheme NOTIFY themeChanged)
public:
    /// Made by qmlAttachedPropertiesObject() alone, once for each object.
    explicit ThemeEnvironment(QObject *object);
    ~ThemeEnvironment() override;
    Q_DISABLE_COPY_MOVE(ThemeEnvironment)

    static ThemeEnvironment *qmlAttachedProperties(QObject *object);

    AppTheme *theme() const;
    /// Its own from now on, whatever lies around it.
    void setTheme(AppTheme *theme);
    /// That of its surroundings again.
    void resetTheme();

Q_SIGNALS:
    void themeChanged();

private Q_SLOTS:
    /// Looks for its surroundings again.
    void follow();

private:
    using Changed = QList<QPointer<ThemeEnvironment>>;

    void enter(ThemeEnvironment *around);
    void leave();
    void followEngine(QQmlEngine *engine);
    void update();
    void take(AppTheme *theme, Changed &changed);
    AppTheme *inherited() const;

    /// That of the item around, in whose list this one is; null at the root and outside of a scene.
    ThemeEnvironment *m_around = nullptr;
    QList<ThemeEnvironment *> m_within;
    /// At the root alone, once an engine is known.
    QPointer<RootTheme> m_root;
    /// Taken out of a scene.
    bool m_isOutside = false;
    /// Null where it has none of its own.
    AppTheme *m_own = nullptr;
    /// As told last.
    QPointer<AppTheme> m_theme;
};

/// Gives all screens of @p engine the current theme of @p manager, from now on and at each change. The
/// manager itself they know as the singleton "ThemeManager"; see InterfaceParts. Main thread.
void withThemeManager(QQmlEngine &engine, ThemeManager &manager);

} // namespace cadorel
