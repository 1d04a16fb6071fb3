// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gio/gio.h>

#include <memory>

namespace cadorel {

/// Gives up the reference of an object, or frees what belongs to its owner alone.
struct GlibDeleter
{
    void operator()(GError *error) const { g_error_free(error); }
    void operator()(GHashTable *table) const { g_hash_table_unref(table); }
    void operator()(GMainContext *context) const { g_main_context_unref(context); }
    void operator()(GVariant *variant) const { g_variant_unref(variant); }
    void operator()(char *text) const { g_free(text); }
    template <typename Object>
    void operator()(Object *object) const
    {
        g_object_unref(object);
    }
};

/// One reference of ours.
template <typename T>
using GlibPtr = std::unique_ptr<T, GlibDeleter>;

/// Where a call leaves its error: `call(…, error.out())`.
class GlibError
{
public:
    GlibError() = default;
    ~GlibError() { g_clear_error(&m_error); }
    GlibError(const GlibError &) = delete;
    GlibError &operator=(const GlibError &) = delete;

    /// For the next call; forgets an earlier error.
    GError **out()
    {
        g_clear_error(&m_error);
        return &m_error;
    }
    const GError *get() const { return m_error; }
    explicit operator bool() const { return m_error; }

private:
    GError *m_error = nullptr;
};

/// While it lives, what this thread starts answers to @p context.
class ThreadContext
{
public:
    explicit ThreadContext(GMainContext *context)
        : m_context(context)
    {
        g_main_context_push_thread_default(m_context);
    }
    ~ThreadContext() { g_main_context_pop_thread_default(m_context); }
    ThreadContext(const ThreadContext &) = delete;
    ThreadContext &operator=(const ThreadContext &) = delete;

private:
    GMainContext *m_context;
};

} // namespace cadorel
