// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/GlibPointers.h"

#include <QByteArray>

#include <libsecret/secret.h>

#include <string>

namespace cadorel {

/// A connection of its own to the session bus and the Secret Service at its other end. It is kept from call
/// to call, because some services ask the listener once for every connection; a bus or a service that has
/// been started anew is connected to anew. One thread at a time.
class SecretServiceLink
{
public:
    /// @p busAddress is that of the session bus when it is empty.
    explicit SecretServiceLink(QByteArray busAddress);
    ~SecretServiceLink();
    SecretServiceLink(const SecretServiceLink &) = delete;
    SecretServiceLink &operator=(const SecretServiceLink &) = delete;

    /// Where the events of the connection arrive. Whoever calls anything here has a ThreadContext of it.
    GMainContext *context() const { return m_context.get(); }

    enum class Outcome {
        connected,
        /// There is no bus, or nobody on it who keeps secrets or could be started for it.
        nobody,
        failed,
    };
    /// Connects where that is needed, and starts the service if need be; @p error is set when it fails.
    Outcome open(GCancellable *cancellable, GlibError &error);
    /// Only after open(); borrowed.
    SecretService *service() const { return m_service.get(); }
    /// Begins from the start with the next open(): what the other end still does is of no use.
    void drop();

private:
    bool connect(GCancellable *cancellable, GlibError &error);
    std::string owner(GCancellable *cancellable, GlibError &error) const;
    void takeEvents() const;

    const QByteArray m_busAddress;
    const GlibPtr<GMainContext> m_context;
    GlibPtr<GDBusConnection> m_connection;
    GlibPtr<SecretService> m_service;
    /// Who owned the service's name when m_service was made: sessions end with their owner.
    std::string m_owner;
};

} // namespace cadorel
