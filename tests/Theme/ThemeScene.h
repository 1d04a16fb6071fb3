// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/FakePreferences.h"
#include "Theme/ThemeEnvironment.h"
#include "Theme/ThemeFactory.h"
#include "Theme/ThemeManager.h"
#include "Views/UserInterface.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <memory>

namespace cadorel {

/// A window of made QML over a real theme manager.
class ThemeScene
{
public:
    ThemeScene()
        : manager(std::make_unique<ThemeManager>(preferences, appearance))
        , engine(std::make_unique<QQmlEngine>())
    {
        installUserInterface(*engine, {.desktopAppearance = &appearance, .themeManager = manager.get()});
    }

    /// An object of that QML, whose imports are added; null, and a warning, for what is none.
    std::unique_ptr<QObject> make(const QByteArray &qml) const { return makeIn(*engine, qml); }
    static std::unique_ptr<QObject> makeIn(QQmlEngine &engine, const QByteArray &qml)
    {
        QQmlComponent component(&engine);
        component.setData(
            "import QtQuick\nimport QtQuick.Controls.Basic\nimport QtQuick.Templates as T\nimport Cadorel\n" +
                qml,
            QUrl());
        std::unique_ptr<QObject> object(component.create());
        if (!object)
            qWarning("%s", qPrintable(component.errorString()));
        return object;
    }
    /// Shows a window with that within.
    bool show(const QByteArray &qml)
    {
        root = make("ApplicationWindow { width: 200; height: 200; visible: true;\n" + qml + "\n}");
        window = qobject_cast<QQuickWindow *>(root.get());
        return window && QTest::qWaitForWindowExposed(window);
    }
    template <typename Object = QQuickItem>
    Object *named(const char *name) const
    {
        return root->findChild<Object *>(QLatin1StringView(name));
    }

    static ThemeEnvironment *environmentOf(QObject *object)
    {
        return static_cast<ThemeEnvironment *>(qmlAttachedPropertiesObject<ThemeEnvironment>(object));
    }
    static AppTheme *themeOf(QObject *object) { return environmentOf(object)->theme(); }

    /// Takes a look and waits until it is there.
    bool switchTo(ThemeType type) const
    {
        manager->switchTo(type);
        return QTest::qWaitFor([this, type] { return manager->currentThemeType() == type; });
    }

    FakePreferences preferences;
    FakeDesktopAppearance appearance;
    std::unique_ptr<ThemeManager> manager;
    std::unique_ptr<QQmlEngine> engine;
    std::unique_ptr<QObject> root;
    QQuickWindow *window = nullptr;
};

} // namespace cadorel
