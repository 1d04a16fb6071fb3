// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/SecretServiceLink.h"

#include "Platform/Linux/PromptingService.h"

#include <utility>

namespace cadorel {

namespace {

constexpr auto serviceName = "org.freedesktop.secrets";

/// Errors of the bus that say that nobody is there and nobody can be started.
bool isNobody(const GError *error)
{
    return error && error->domain == G_DBUS_ERROR &&
           (error->code == G_DBUS_ERROR_SERVICE_UNKNOWN || error->code == G_DBUS_ERROR_NAME_HAS_NO_OWNER ||
            (error->code >= G_DBUS_ERROR_SPAWN_EXEC_FAILED && error->code <= G_DBUS_ERROR_SPAWN_NO_MEMORY));
}

} // namespace

SecretServiceLink::SecretServiceLink(QByteArray busAddress)
    : m_busAddress(std::move(busAddress))
    , m_context(g_main_context_new())
{
}

SecretServiceLink::~SecretServiceLink()
{
    drop();
}

SecretServiceLink::Outcome SecretServiceLink::open(GCancellable *cancellable, GlibError &error)
{
    takeEvents();
    std::string current = m_connection ? owner(cancellable, error) : std::string();
    // That a bus has gone may show no earlier than with a call.
    if (!m_connection || g_dbus_connection_is_closed(m_connection.get())) {
        drop();
        if (!connect(cancellable, error))
            return g_cancellable_is_cancelled(cancellable) ? Outcome::failed : Outcome::nobody;
        current = owner(cancellable, error);
    }
    if (error && !isNobody(error.get()))
        return Outcome::failed;
    if (m_service && !current.empty() && current == m_owner)
        return Outcome::connected;
    m_service.reset(static_cast<SecretService *>(
        g_initable_new(promptingServiceType(), cancellable, error.out(), "g-connection", m_connection.get(),
                       "flags", SECRET_SERVICE_NONE, nullptr)));
    if (!m_service)
        return isNobody(error.get()) ? Outcome::nobody : Outcome::failed;
    const GlibPtr<char> started(g_dbus_proxy_get_name_owner(G_DBUS_PROXY(m_service.get())));
    m_owner = started ? started.get() : "";
    return m_owner.empty() ? Outcome::nobody : Outcome::connected;
}

void SecretServiceLink::drop()
{
    m_service.reset();
    m_owner.clear();
    if (m_connection)
        g_dbus_connection_close(m_connection.get(), nullptr, nullptr, nullptr);
    m_connection.reset();
    takeEvents();
}

bool SecretServiceLink::connect(GCancellable *cancellable, GlibError &error)
{
    GlibPtr<char> address(m_busAddress.isEmpty()
                              ? g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, cancellable, error.out())
                              : g_strdup(m_busAddress.constData()));
    if (!address)
        return false;
    // Not the connection that the process shares: that one ends the process together with the bus.
    m_connection.reset(g_dbus_connection_new_for_address_sync(
        address.get(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, cancellable, error.out()));
    return m_connection != nullptr;
}

std::string SecretServiceLink::owner(GCancellable *cancellable, GlibError &error) const
{
    const GlibPtr<GVariant> reply(g_dbus_connection_call_sync(
        m_connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "GetNameOwner", g_variant_new("(s)", serviceName), G_VARIANT_TYPE("(s)"), G_DBUS_CALL_FLAGS_NONE, -1,
        cancellable, error.out()));
    if (!reply)
        return {};
    const char *name = nullptr;
    g_variant_get(reply.get(), "(&s)", &name);
    return name;
}

void SecretServiceLink::takeEvents() const
{
    while (g_main_context_iteration(m_context.get(), FALSE)) {
    }
}

} // namespace cadorel
