// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeDesktopAppearance.h"
#include "Theme/ThemeEnvironment.h"
#include "Theme/ThemeFactory.h"
#include "Views/UserInterface.h"
#include "Views/WarningWatch.h"

#include <QAccessible>
#include <QPointingDevice>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <memory>

namespace cadorel {

/// One component in a window, drawn in a look. Any warning is kept in `warnings`.
class ThemedScene
{
public:
    /// @param parts outlive the scene; without a desktop of theirs it is `desktop`
    explicit ThemedScene(InterfaceParts parts = {})
    {
        installFonts();
        if (!parts.desktopAppearance)
            parts.desktopAppearance = &desktop;
        installUserInterface(m_engine, parts);
        m_window.resize(480, 480);
    }
    ~ThemedScene() { delete m_root; }
    Q_DISABLE_COPY_MOVE(ThemedScene)

    /// Shows what @p qml (without its imports) describes, at the place (40, 40) of the window.
    /// @param properties of the component, from its beginning on
    bool show(const QByteArray &qml, ThemeType type = ThemeType::classic,
              ColorScheme scheme = ColorScheme::light, const QVariantMap &properties = {})
    {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport QtQuick.Controls.Basic\nimport Cadorel\n" + qml, QUrl());
        delete m_root;
        m_root = qobject_cast<QQuickItem *>(component.createWithInitialProperties(properties));
        if (!m_root) {
            qWarning().noquote() << component.errorString();
            return false;
        }
        m_root->setParentItem(m_window.contentItem());
        m_root->setPosition({40, 40});
        setTheme(type, scheme);
        m_window.show();
        m_window.requestActivate();
        return QTest::qWaitForWindowActive(&m_window);
    }

    /// The component in another look, and the desktop in that scheme.
    void setTheme(ThemeType type, ColorScheme scheme)
    {
        m_theme = &ThemeFactory::create(type, scheme);
        desktop.setColorScheme(scheme);
        m_window.setColor(m_theme->backgroundColor());
        auto *environment =
            qobject_cast<ThemeEnvironment *>(qmlAttachedPropertiesObject<ThemeEnvironment>(m_root, true));
        environment->setTheme(m_theme);
    }
    AppTheme &theme() const { return *m_theme; }

    QQuickItem *root() const { return m_root; }
    QQuickWindow *window() { return &m_window; }
    /// The item of that name within the component; null when there is none.
    QQuickItem *item(const QString &name) const { return find(m_root, name); }
    /// All items of that name within the component.
    QList<QQuickItem *> items(const QString &name) const
    {
        QList<QQuickItem *> found;
        collect(m_root, name, found);
        return found;
    }
    /// What is on the screen.
    QImage grab() { return m_window.grabWindow(); }

    static QPoint centre(const QQuickItem *item)
    {
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    }
    void click(const QQuickItem *item, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(&m_window, button, Qt::NoModifier, centre(item));
    }
    void tap(const QQuickItem *item)
    {
        static QPointingDevice *const finger = QTest::createTouchDevice();
        QTest::touchEvent(&m_window, finger).press(0, centre(item));
        QTest::touchEvent(&m_window, finger).release(0, centre(item));
    }
    void key(Qt::Key key) { QTest::keyClick(&m_window, key); }
    /// Pressed, and repeated by the keyboard: each time it is told as let go and pressed.
    void holdKey(Qt::Key key)
    {
        QTest::keyPress(&m_window, key);
        for (int i = 0; i < 3; ++i) {
            for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
                QKeyEvent repeated(type, key, Qt::NoModifier, QString(), true);
                QCoreApplication::sendEvent(&m_window, &repeated);
            }
        }
        QTest::keyRelease(&m_window, key);
    }
    void type(const QByteArray &letters)
    {
        for (const char letter : letters)
            QTest::keyClick(&m_window, letter);
    }

    /// What a screen reader is told of the item; null when it is told nothing.
    static QAccessibleInterface *accessible(QQuickItem *item)
    {
        return QAccessible::queryAccessibleInterface(item);
    }
    static QString accessibleName(QQuickItem *item)
    {
        QAccessibleInterface *interface = accessible(item);
        return interface ? interface->text(QAccessible::Name) : QString();
    }

    FakeDesktopAppearance desktop;
    WarningWatch warnings;

private:
    static QQuickItem *find(QQuickItem *below, const QString &name)
    {
        if (below->objectName() == name)
            return below;
        const QList<QQuickItem *> children = below->childItems();
        for (QQuickItem *child : children) {
            if (QQuickItem *found = find(child, name))
                return found;
        }
        return nullptr;
    }
    static void collect(QQuickItem *below, const QString &name, QList<QQuickItem *> &found)
    {
        if (below->objectName() == name)
            found.append(below);
        const QList<QQuickItem *> children = below->childItems();
        for (QQuickItem *child : children)
            collect(child, name, found);
    }

    QQmlEngine m_engine;
    QQuickWindow m_window;
    QQuickItem *m_root = nullptr;
    AppTheme *m_theme = nullptr;
};

/// Rows of test data: each look in each scheme.
inline void addThemes()
{
    QTest::addColumn<ThemeType>("type");
    QTest::addColumn<ColorScheme>("scheme");
    for (const ThemeType type : allThemeTypes()) {
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark})
            QTest::addRow("%s %s", qPrintable(rawValue(type)), scheme == ColorScheme::dark ? "dark" : "light")
                << type << scheme;
    }
}

} // namespace cadorel
