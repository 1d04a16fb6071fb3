// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/Keyring/PrivateBus.h"
#include "Platform/Linux/MprisBus.h"

#include <QDBusMessage>
#include <QObject>
#include <QVariantList>
#include <QVariantMap>

namespace cadorel {

/// A desktop panel: asks a media player on a bus and hears what it announces. Its calls let the event loop
/// run, for the player may live in the same thread.
class MprisClient : public QObject
{
    Q_OBJECT
public:
    /// @param service the player's name on the bus
    explicit MprisClient(PrivateBus &bus, const QString &service = MprisBus::busName);
    ~MprisClient() override;
    Q_DISABLE_COPY_MOVE(MprisClient)

    static const QString playerInterface;
    static const QString rootInterface;

    /// Waits until the player is on the bus.
    bool findsPlayer();
    QDBusMessage call(const QString &interface, const QString &method, const QVariantList &arguments = {});
    /// Calls a method of the player interface. @return the name of the error; empty: it went well
    QString play(const QString &method, const QVariantList &arguments = {});
    QVariant get(const QString &interface, const QString &property);
    /// A property of the player interface.
    QVariant get(const QString &property) { return get(playerInterface, property); }
    QVariantMap getAll(const QString &interface);
    QVariantMap metadata();
    /// Sets a property. @return the name of the error; empty: it went well
    QString set(const QString &interface, const QString &property, const QVariant &value);
    QString set(const QString &property, const QVariant &value)
    {
        return set(playerInterface, property, value);
    }

    /// Waits until everything has arrived that the player has announced or is about to announce.
    bool settle();
    /// The player interface's PropertiesChanged signals since the last call, after settle().
    QList<QVariantMap> takeChanges();
    /// The Seeked signals since the last call, after settle().
    QList<qlonglong> takeJumps();

    /// The D-Bus type of a value that came over the bus, or that one would get there.
    static QString signature(const QVariant &value);

private Q_SLOTS:
    void receive(const QDBusMessage &message);

private:
    PrivateBus &m_bus;
    const QString m_service;
    const QString m_connectionName;
    QDBusConnection m_connection;
    QList<QVariantMap> m_changes;
    QList<qlonglong> m_jumps;
};

} // namespace cadorel
