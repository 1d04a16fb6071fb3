// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>

#include <mpv/client.h>
#include <mpv/stream_cb.h>

#include <expected>
#include <memory>
#include <utility>

namespace cadorel {

/// Owns one libmpv core. Every request is asynchronous: its reply is an event with the request's tag. A
/// handle without a core takes requests and fails them. One thread at a time.
class MpvHandle
{
public:
    using Option = std::pair<QByteArray, QByteArray>;
    /// Why a request was not taken: libmpv's error code, below 0.
    using Result = std::expected<void, int>;

    /// Without a core.
    MpvHandle() = default;
    /// Starts a core, in a few milliseconds. Without one afterwards when libmpv refuses, which it does while
    /// LC_NUMERIC is not "C". An option that this libmpv does not know is left out, with a log line.
    explicit MpvHandle(const QList<Option> &options);

    explicit operator bool() const { return m_core != nullptr; }

    /// Calls @p callback with @p context, on a thread of libmpv, whenever nextEvent() has something to give.
    /// It may not call into the handle. Null ends it; no call is under way afterwards.
    void setWakeupCallback(void (*callback)(void *context), void *context);
    /// The oldest waiting event, valid until the next call; null when none waits.
    const mpv_event *nextEvent();

    /// Lets @p open, called on a thread of libmpv with @p context, open the addresses of a scheme. Both stay
    /// in use until the core has ended.
    void addProtocol(const char *scheme, void *context, mpv_stream_cb_open_ro_fn open);
    /// Runs a command. Arguments must not hold a null byte.
    Result command(quint64 tag, const QList<QByteArray> &arguments);
    /// Sets a property without an answer.
    void setProperty(const char *name, bool value);
    void setProperty(const char *name, double value);
    void setProperty(const char *name, const QByteArray &value);
    /// Asks for a property's value; the reply is an error while it has none.
    void requestProperty(quint64 tag, const char *name, mpv_format format);
    /// Asks for an event whenever a property changes: with its value, or without for MPV_FORMAT_NONE.
    void observe(quint64 tag, const char *name, mpv_format format);

private:
    /// Ends the core and waits for its threads, a few milliseconds.
    struct Terminate
    {
        void operator()(mpv_handle *core) const { mpv_terminate_destroy(core); }
    };
    std::unique_ptr<mpv_handle, Terminate> m_core;
};

} // namespace cadorel
