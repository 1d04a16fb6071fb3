// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/Keyring/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>

namespace cadorel {

/// A Secret Service with one item at most, on a private bus, that does what a test says. It answers on the
/// thread that made it.
class FakeSecretService : public QDBusVirtualObject
{
    Q_OBJECT

public:
    explicit FakeSecretService(PrivateBus &bus);
    ~FakeSecretService() override;
    Q_DISABLE_COPY_MOVE(FakeSecretService)

    /// Puts the service on the bus, and takes it off.
    bool appear();
    void vanish();
    /// Ends the prompt that is open: as the listener does who gives the password, or dismisses it.
    void acceptPrompt() { endPrompt(false); }
    void dismissPrompt() { endPrompt(true); }

    /// Methods that get no answer; "*" for all.
    QStringList unanswered;
    /// Methods that are answered with an error.
    QStringList failing;
    bool hasItem = false;
    bool isLocked = false;
    QByteArray secret;
    QByteArray contentType = "text/plain";

    /// The methods that were called, in their order.
    QStringList called;
    bool isPromptOpen = false;

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QDBusMessage answer(const QDBusMessage &message);
    void endPrompt(bool isDismissed);

    QDBusConnection m_connection;
    QString m_connectionName;
};

} // namespace cadorel
