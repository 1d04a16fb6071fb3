// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/ThemeEnvironment.h"
#include "Theme/ThemeFactory.h"
#include "Views/UserInterface.h"
#include "Views/WarningWatch.h"

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
    ThemedScene() { installUserInterface(m_engine); }
    ~ThemedScene() { delete m_root; }
    Q_DISABLE_COPY_MOVE(ThemedScene)

    /// Shows what @p qml (without its imports) describes, at the place (40, 40) of the window.
    bool show(const QByteArray &qml, ThemeType type = ThemeType::classic,
              ColorScheme scheme = ColorScheme::light)
    {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport QtQuick.Controls.Basic\nimport Cadorel\n" + qml, QUrl());
        delete m_root;
        m_root = qobject_cast<QQuickItem *>(component.create());
        if (!m_root) {
            qWarning().noquote() << component.errorString();
            return false;
        }
        m_root->setParentItem(m_window.contentItem());
        m_root->setPosition({40, 40});
        setTheme(type, scheme);
        m_window.resize(480, 480);
        m_window.show();
        return QTest::qWaitForWindowExposed(&m_window);
    }

    void setTheme(ThemeType type, ColorScheme scheme)
    {
        AppTheme &theme = ThemeFactory::create(type, scheme);
        m_window.setColor(theme.backgroundColor());
        auto *environment =
            qobject_cast<ThemeEnvironment *>(qmlAttachedPropertiesObject<ThemeEnvironment>(m_root, true));
        environment->setTheme(&theme);
    }

    QQuickItem *root() const { return m_root; }
    QQuickWindow *window() { return &m_window; }
    /// The item of that name within the component; null when there is none.
    QQuickItem *item(const QString &name) const { return find(m_root, name); }
    /// What is on the screen.
    QImage grab() { return m_window.grabWindow(); }

    static QPoint centre(const QQuickItem *item)
    {
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    }
    void click(const QQuickItem *item)
    {
        QTest::mouseClick(&m_window, Qt::LeftButton, Qt::NoModifier, centre(item));
    }

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

    QQmlEngine m_engine;
    QQuickWindow m_window;
    QQuickItem *m_root = nullptr;
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

Q_DECLARE_METATYPE(cadorel::ColorScheme)
