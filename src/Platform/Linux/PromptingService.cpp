// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/PromptingService.h"

#include "Platform/Linux/AnswerWatch.h"
#include "Platform/Linux/GlibPointers.h"

namespace cadorel {

namespace {

constexpr auto promptInterface = "org.freedesktop.Secret.Prompt";
constexpr auto scopeKey = "cadorel-prompt-scope";

/// One prompt, from its opening to its end.
class PromptWait
{
public:
    PromptWait(SecretService *service, SecretPrompt *prompt, GMainContext *context)
        : m_connection(g_dbus_proxy_get_connection(G_DBUS_PROXY(service)))
        , m_owner(g_dbus_proxy_get_name_owner(G_DBUS_PROXY(service)))
        , m_path(g_dbus_proxy_get_object_path(G_DBUS_PROXY(prompt)))
        , m_context(context)
    {
        m_signal = g_dbus_connection_signal_subscribe(m_connection, m_owner.get(), promptInterface,
                                                      "Completed", m_path, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
                                                      &PromptWait::complete, this, nullptr);
        m_nameWatch = g_bus_watch_name_on_connection(m_connection, m_owner ? m_owner.get() : ":gone",
                                                     G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
                                                     &PromptWait::vanish, this, nullptr);
    }
    ~PromptWait()
    {
        g_dbus_connection_signal_unsubscribe(m_connection, m_signal);
        g_bus_unwatch_name(m_nameWatch);
    }
    PromptWait(const PromptWait &) = delete;
    PromptWait &operator=(const PromptWait &) = delete;

    bool open(GCancellable *cancellable, GError **error)
    {
        const GlibPtr<GVariant> reply(
            g_dbus_connection_call_sync(m_connection, m_owner.get(), m_path, promptInterface, "Prompt",
                                        g_variant_new("(s)", ""), // no parent window
                                        nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, cancellable, error));
        // It may be open all the same.
        if (!reply && g_cancellable_is_cancelled(cancellable))
            dismiss();
        return reply != nullptr;
    }
    /// False with @p error when there will be no answer.
    bool wait(GCancellable *cancellable, GError **error)
    {
        // Wakes the loop up; the flag is asked for below.
        GSource *source = g_cancellable_source_new(cancellable);
        g_source_set_callback(
            source, G_SOURCE_FUNC(+[](GCancellable *, gpointer) -> gboolean { return G_SOURCE_REMOVE; }),
            nullptr, nullptr);
        g_source_attach(source, m_context);
        while (!m_isCompleted && !m_isGone && !g_cancellable_is_cancelled(cancellable))
            g_main_context_iteration(m_context, TRUE);
        g_source_destroy(source);
        g_source_unref(source);
        if (m_isCompleted)
            return true;
        if (g_cancellable_set_error_if_cancelled(cancellable, error)) {
            dismiss();
            return false;
        }
        g_set_error_literal(error, G_IO_ERROR, G_IO_ERROR_CLOSED, "the service went away during a prompt");
        return false;
    }
    bool isDismissed() const { return m_isDismissed; }
    /// The answer, if it is of the type that is expected.
    GVariant *takeResult(const GVariantType *type)
    {
        const bool fits = m_result && (!type || g_variant_is_of_type(m_result.get(), type));
        return fits ? m_result.release() : nullptr;
    }

private:
    void dismiss()
    {
        g_dbus_connection_call(m_connection, m_owner.get(), m_path, promptInterface, "Dismiss", nullptr,
                               nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
        // Else it is lost when the connection is closed now. A few bytes never fill the bus's socket.
        g_dbus_connection_flush_sync(m_connection, nullptr, nullptr);
    }
    static void complete(GDBusConnection *, const char *, const char *, const char *, const char *,
                         GVariant *parameters, gpointer self)
    {
        auto *wait = static_cast<PromptWait *>(self);
        wait->m_isCompleted = true;
        wait->m_isDismissed = true;
        if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(bv)")))
            return;
        gboolean isDismissed = TRUE;
        GVariant *result = nullptr;
        g_variant_get(parameters, "(bv)", &isDismissed, &result);
        wait->m_isDismissed = isDismissed;
        wait->m_result.reset(result);
    }
    static void vanish(GDBusConnection *, const char *, gpointer self)
    {
        static_cast<PromptWait *>(self)->m_isGone = true;
    }

    GDBusConnection *m_connection;
    GlibPtr<char> m_owner;
    const char *m_path;
    GMainContext *m_context;
    GlibPtr<GVariant> m_result;
    guint m_signal = 0;
    guint m_nameWatch = 0;
    bool m_isCompleted = false;
    bool m_isDismissed = false;
    bool m_isGone = false;
};

GVariant *promptSync(SecretService *self, SecretPrompt *prompt, GCancellable *cancellable,
                     const GVariantType *resultType, GError **error)
{
    auto *scope = static_cast<PromptScope *>(g_object_get_data(G_OBJECT(self), scopeKey));
    // The connection tells of its end where it was made.
    const ThreadContext context(scope->context);
    PromptWait wait(self, prompt, scope->context);
    if (!wait.open(cancellable, error))
        return nullptr;
    scope->watch->pause();
    const bool isAnswered = wait.wait(cancellable, error);
    scope->watch->resume();
    if (!isAnswered)
        return nullptr;
    if (wait.isDismissed()) {
        scope->wasDismissed = true;
        // libsecret takes a result without an error for granted.
        g_set_error_literal(error, G_IO_ERROR, G_IO_ERROR_CANCELLED, "dismissed");
        return nullptr;
    }
    GVariant *result = wait.takeResult(resultType);
    if (!result)
        g_set_error_literal(error, SECRET_ERROR, SECRET_ERROR_PROTOCOL, "an answer of another type");
    return result;
}

/// libsecret's own synchronous calls come here too; they wait for the end.
void promptAsync(SecretService *self, SecretPrompt *prompt, const GVariantType *resultType,
                 GCancellable *cancellable, GAsyncReadyCallback callback, gpointer userData)
{
    const GlibPtr<GTask> task(g_task_new(self, nullptr, callback, userData));
    GError *error = nullptr;
    GVariant *result = promptSync(self, prompt, cancellable, resultType, &error);
    if (error)
        g_task_return_error(task.get(), error);
    else
        g_task_return_pointer(task.get(), result,
                              [](gpointer variant) { g_variant_unref(static_cast<GVariant *>(variant)); });
}

GVariant *promptFinish(SecretService *, GAsyncResult *result, GError **error)
{
    return static_cast<GVariant *>(g_task_propagate_pointer(G_TASK(result), error));
}

/// libsecret binds each service to the connection that the process shares; "g-connection" is to hold instead.
GObject *construct(GType type, guint count, GObjectConstructParam *properties)
{
    auto *parent = static_cast<GObjectClass *>(g_type_class_peek(SECRET_TYPE_SERVICE));
    GObject *object = parent->constructor(type, count, properties);
    g_object_set(object, "g-bus-type", G_BUS_TYPE_NONE, nullptr);
    return object;
}

void initializeClass(gpointer serviceClass, gpointer)
{
    G_OBJECT_CLASS(serviceClass)->constructor = construct;
    auto *functions = SECRET_SERVICE_CLASS(serviceClass);
    functions->prompt_sync = promptSync;
    functions->prompt_async = promptAsync;
    functions->prompt_finish = promptFinish;
}

} // namespace

GType promptingServiceType()
{
    static const GType type = g_type_register_static_simple(SECRET_TYPE_SERVICE, "CadorelPromptingService",
                                                            sizeof(SecretServiceClass), initializeClass,
                                                            sizeof(SecretService), nullptr, GTypeFlags(0));
    return type;
}

void setPromptScope(SecretService *service, PromptScope *scope)
{
    g_object_set_data(G_OBJECT(service), scopeKey, scope);
}

} // namespace cadorel
