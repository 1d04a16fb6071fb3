// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/FakePreferences.h"
#include "Services/ThemeService.h"
#include "Theme/SystemColorTable.h"
#include "Theme/ThemeManager.h"

#include <QMetaProperty>
#include <QSignalSpy>
#include <QTest>

#include <limits>
#include <memory>

namespace cadorel {

inline constexpr double infinity = std::numeric_limits<double>::infinity();
inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The named colours by day, and by night.
inline const SystemColorTable &light()
{
    return systemColors(ColorScheme::light);
}
inline const SystemColorTable &dark()
{
    return systemColors(ColorScheme::dark);
}

/// Preferences that note what is read, in its order.
class WatchedPreferences : public FakePreferences
{
public:
    std::optional<bool> boolValue(const QString &key) const override
    {
        return note(key), FakePreferences::boolValue(key);
    }
    std::optional<double> doubleValue(const QString &key) const override
    {
        return note(key), FakePreferences::doubleValue(key);
    }
    std::optional<QString> stringValue(const QString &key) const override
    {
        return note(key), FakePreferences::stringValue(key);
    }
    std::optional<QStringList> stringsValue(const QString &key) const override
    {
        return note(key), FakePreferences::stringsValue(key);
    }
    std::optional<QByteArray> dataValue(const QString &key) const override
    {
        return note(key), FakePreferences::dataValue(key);
    }

    mutable QStringList reads;

private:
    void note(const QString &key) const { reads.append(key); }
};

/// A theme service on a desktop and in preferences that the test sets.
struct AppearanceBench
{
    WatchedPreferences preferences;
    FakeDesktopAppearance appearance;
    std::unique_ptr<ThemeManager> manager;
    std::unique_ptr<ThemeService> service;

    /// As the program starts, with what is stored.
    ThemeService &start()
    {
        service.reset();
        manager = std::make_unique<ThemeManager>(preferences, appearance);
        service = std::make_unique<ThemeService>(preferences, *manager, appearance);
        return *service;
    }

    /// Takes another look; true once its settings are loaded.
    bool turnTo(ThemeType type)
    {
        manager->switchTo(type);
        return QTest::qWaitFor([this, type] { return service->currentThemeType() == type; });
    }

    QVariant property(const QString &name) const { return service->property(name.toLatin1().constData()); }
};

/// What tells of changes of a property, and of no others.
inline std::unique_ptr<QSignalSpy> changesOf(const QObject &object, const QString &name)
{
    const QMetaObject *type = object.metaObject();
    const QMetaProperty property = type->property(type->indexOfProperty(name.toLatin1().constData()));
    return std::make_unique<QSignalSpy>(&object, property.notifySignal());
}

} // namespace cadorel
