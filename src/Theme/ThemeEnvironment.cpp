// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemeEnvironment.h"

#include "Theme/RootTheme.h"
#include "Theme/ThemeFactory.h"
#include "Theme/ThemeManager.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQml/qqml.h>

#include <utility>

namespace cadorel {

namespace {

// The headers of these classes are not public.
bool isPopup(const QObject *object)
{
    return object->inherits("QQuickPopup");
}

bool isPopupItem(const QObject *object)
{
    return object->inherits("QQuickPopupItem");
}

bool isPopupLayer(const QObject *object)
{
    return object->inherits("QQuickOverlay");
}

/// What @p object was declared in, of those things that have a place in a scene.
QObject *declaredIn(const QObject *object)
{
    QObject *around = object->parent();
    while (around && !qobject_cast<QQuickItem *>(around) && !isPopup(around) &&
           !qobject_cast<QQuickWindow *>(around))
        around = around->parent();
    return around;
}

QObject *aroundPopup(const QObject *popup)
{
    auto *parent = popup->property("parent").value<QQuickItem *>();
    if (parent && !isPopupLayer(parent))
        return parent;
    QObject *const declared = declaredIn(popup);
    return declared ? declared : parent;
}

QObject *aroundItem(const QQuickItem *item)
{
    // Hangs in the layer of popups, and only while it is open.
    if (isPopupItem(item) && item->parent() && isPopup(item->parent()))
        return item->parent();
    if (QQuickItem *const parent = item->parentItem())
        return parent;
    QQuickWindow *const window = item->window();
    return window && window->contentItem() == item ? window : nullptr;
}

/// What @p object has its look of; null where there is nothing.
QObject *aroundOf(const QObject *object)
{
    if (const auto *item = qobject_cast<const QQuickItem *>(object))
        return aroundItem(item);
    return isPopup(object) ? aroundPopup(object) : declaredIn(object);
}

ThemeEnvironment *environmentOf(const QObject *object)
{
    return static_cast<ThemeEnvironment *>(qmlAttachedPropertiesObject<ThemeEnvironment>(object));
}

} // namespace

ThemeEnvironment::ThemeEnvironment(QObject *object)
    : QObject(object)
{
    if (const auto *item = qobject_cast<QQuickItem *>(object))
        connect(item, &QQuickItem::parentChanged, this, &ThemeEnvironment::follow);
    else if (isPopup(object))
        connect(object, SIGNAL(parentChanged()), this, SLOT(follow()));
    if (QObject *const around = aroundOf(object))
        enter(environmentOf(around));
    else
        followEngine(qmlEngine(object));
    m_theme = inherited();
}

ThemeEnvironment::~ThemeEnvironment()
{
    leave();
    for (ThemeEnvironment *within : std::as_const(m_within)) {
        within->m_around = nullptr;
        within->m_isOutside = true;
    }
}

ThemeEnvironment *ThemeEnvironment::qmlAttachedProperties(QObject *object)
{
    return new ThemeEnvironment(object);
}

AppTheme *ThemeEnvironment::theme() const
{
    return m_theme ? m_theme.data() : &ThemeFactory::create(ThemeType::classic);
}

void ThemeEnvironment::setTheme(AppTheme *theme)
{
    if (theme == m_own)
        return;
    if (m_own)
        disconnect(m_own, nullptr, this, nullptr);
    m_own = theme;
    if (theme)
        connect(theme, &QObject::destroyed, this, &ThemeEnvironment::resetTheme);
    update();
}

void ThemeEnvironment::resetTheme()
{
    setTheme(nullptr);
}

void ThemeEnvironment::follow()
{
    QObject *const around = aroundOf(parent());
    // What is being destroyed has none any more, and tells its popups to go elsewhere.
    if (ThemeEnvironment *const environment = around ? environmentOf(around) : nullptr) {
        if (environment == m_around)
            return;
        leave();
        enter(environment);
        update();
    } else if (m_around) {
        leave();
        m_isOutside = true;
    }
}

void ThemeEnvironment::enter(ThemeEnvironment *around)
{
    m_isOutside = false;
    if (m_root)
        disconnect(m_root, nullptr, this, nullptr);
    m_root = nullptr;
    m_around = around;
    around->m_within.append(this);
    ThemeEnvironment *root = around;
    while (root->m_around)
        root = root->m_around;
    // A window made by the program knows no engine; the first screen in it does.
    if (!root->m_root && !root->m_isOutside)
        root->followEngine(qmlEngine(parent()));
}

void ThemeEnvironment::leave()
{
    if (m_around)
        m_around->m_within.removeOne(this);
    m_around = nullptr;
}

void ThemeEnvironment::followEngine(QQmlEngine *engine)
{
    if (!engine)
        return;
    m_root = &RootTheme::of(*engine);
    connect(m_root, &RootTheme::themeChanged, this, &ThemeEnvironment::update);
    update();
}

AppTheme *ThemeEnvironment::inherited() const
{
    // Not as the item around was told: a screen that is built while a change is told begins with the new
    // look.
    if (m_around)
        return m_around->m_own ? m_around->m_own : m_around->inherited();
    return m_root ? &m_root->theme() : theme();
}

void ThemeEnvironment::update()
{
    Changed changed;
    take(m_own ? m_own : inherited(), changed);
    // All of them know the new look before the first screen asks.
    for (const QPointer<ThemeEnvironment> &environment : std::as_const(changed)) {
        if (environment)
            Q_EMIT environment->themeChanged();
    }
}

void ThemeEnvironment::take(AppTheme *theme, Changed &changed)
{
    if (theme == m_theme)
        return;
    m_theme = theme;
    changed.append(this);
    for (ThemeEnvironment *within : std::as_const(m_within)) {
        if (!within->m_own)
            within->take(theme, changed);
    }
}

void withThemeManager(QQmlEngine &engine, ThemeManager &manager)
{
    RootTheme::of(engine).setManager(&manager);
}

} // namespace cadorel
