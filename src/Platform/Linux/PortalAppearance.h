// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/DesktopAppearance.h"
#include "Platform/PaletteAppearance.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QMap>
#include <QVariantMap>

#include <functional>
#include <optional>

namespace cadorel {

/// The desktop's wishes by org.freedesktop.portal.Settings. Nothing waits for the portal: until it answers,
/// and where there is none or it has no preference, the palette tells light from dark, things move and texts
/// have their usual size. What a portal has said holds when it goes away, which it does to be started anew.
/// Main thread.
class PortalAppearance : public DesktopAppearance
{
    Q_OBJECT
public:
    /// Texts grow and shrink within these; a size beyond would tear every screen apart. What is no size at
    /// all counts as the usual one.
    static constexpr double leastTextScale = 0.8;
    static constexpr double mostTextScale = 1.5;

    /// @p connect gives a connection to the bus of the session; a worker calls it once, since joining a bus
    /// takes time.
    explicit PortalAppearance(std::function<QDBusConnection()> connect = QDBusConnection::sessionBus);
    ~PortalAppearance() override;
    Q_DISABLE_COPY_MOVE(PortalAppearance)

    ColorScheme colorScheme() const override { return m_wishes.colorScheme; }
    bool reducesMotion() const override { return m_wishes.reducesMotion; }
    double textScale() const override { return m_wishes.textScale; }

private Q_SLOTS:
    void changeSetting(const QString &space, const QString &key, const QDBusVariant &value);

private:
    struct Wishes
    {
        ColorScheme colorScheme = ColorScheme::light;
        bool reducesMotion = false;
        double textScale = 1;
    };

    QCoro::Task<void> join(std::function<QDBusConnection()> connect);
    QCoro::Task<void> readSettings(QDBusPendingCall question);
    void takeAnswer(const QDBusMessage &answer);
    void update();
    Wishes wishes() const;
    QVariant setting(const QString &space, const QString &key) const;

    std::optional<QDBusServiceWatcher> m_portal;
    PaletteAppearance m_palette;
    /// As the portal told them, by namespace and key.
    QMap<QString, QVariantMap> m_settings;
    Wishes m_wishes;
};

} // namespace cadorel
