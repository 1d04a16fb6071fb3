// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

namespace cadorel {

/// A session bus of a test's own, with nobody on it and nothing that it could start of what this machine has
/// installed. It ends with its owner.
class PrivateBus
{
public:
    PrivateBus() = default;
    ~PrivateBus();
    Q_DISABLE_COPY_MOVE(PrivateBus)

    /// The bus starts @p command for whoever calls @p name; before start().
    void addService(const QString &name, const QString &command);
    /// Also for services that the bus starts; before start().
    void setEnvironment(const QProcessEnvironment &environment)
    {
        m_daemon.setProcessEnvironment(environment);
    }
    bool start();
    /// As if it had crashed.
    void stop();

    /// For DBUS_SESSION_BUS_ADDRESS; known before start().
    QString address() const;
    /// Another connection to the bus for every name. It is cut when the bus stops.
    QDBusConnection connection(const QString &name);
    bool hasService(const QString &name);

private:
    QTemporaryDir m_directory;
    QProcess m_daemon;
    QStringList m_connections;
};

} // namespace cadorel
