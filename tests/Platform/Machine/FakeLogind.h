// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/Keyring/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QStringList>

namespace cadorel {

/// A bus of its own with a logind on it whose machine sleeps when a test says so.
class FakeLogind : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    /// Starts the bus; logind is not on it yet.
    FakeLogind();
    ~FakeLogind() override;
    Q_DISABLE_COPY_MOVE(FakeLogind)

    bool isBusRunning() const { return m_isBusRunning; }
    /// Another connection to the bus.
    QDBusConnection client(const QString &name = QStringLiteral("client")) { return m_bus.connection(name); }
    /// Puts logind on the bus, and takes it off.
    bool appear();
    void vanish();

    /// Refuses to wait for anybody.
    bool isRefusing = false;
    /// What each caller of Inhibit() gave: what, who, why, mode.
    QList<QStringList> requests;

    /// Whether the last caller still holds sleep up.
    bool isHeldUp();
    /// Sleep begins or is over.
    void prepareForSleep(bool isStarting);

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString &what, const QString &who, const QString &why,
                                    const QString &mode);

Q_SIGNALS:
    void PrepareForSleep(bool start);

private:
    void forgetHolder();

    PrivateBus m_bus;
    bool m_isBusRunning = false;
    /// The end of a pipe whose other end the caller has; -1 without a caller.
    int m_holder = -1;
};

} // namespace cadorel
