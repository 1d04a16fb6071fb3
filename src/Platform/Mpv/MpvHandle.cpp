// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpv/MpvHandle.h"

#include "Platform/Mpv/MpvLog.h"

#include <vector>

namespace cadorel {

namespace {

/// Reports what libmpv did not take; it takes everything unless its queue of replies is full.
void check(int result, const char *name)
{
    if (result < 0)
        qCWarning(mpvLog) << "libmpv refused" << name << ":" << mpv_error_string(result);
}

} // namespace

MpvHandle::MpvHandle(const QList<Option> &options)
    : m_core(mpv_create())
{
    if (!m_core) {
        qCWarning(mpvLog) << "libmpv gave no core";
        return;
    }
    for (const auto &[name, value] : options)
        check(mpv_set_option_string(m_core.get(), name.constData(), value.constData()), name.constData());
    if (const int result = mpv_initialize(m_core.get()); result < 0) {
        check(result, "to start");
        m_core.reset();
    }
}

void MpvHandle::setWakeupCallback(void (*callback)(void *), void *context)
{
    if (m_core)
        mpv_set_wakeup_callback(m_core.get(), callback, context);
}

const mpv_event *MpvHandle::nextEvent()
{
    if (!m_core)
        return nullptr;
    const mpv_event *event = mpv_wait_event(m_core.get(), 0);
    return event->event_id == MPV_EVENT_NONE ? nullptr : event;
}

void MpvHandle::addProtocol(const char *scheme, void *context, mpv_stream_cb_open_ro_fn open)
{
    if (m_core)
        check(mpv_stream_cb_add_ro(m_core.get(), scheme, context, open), scheme);
}

MpvHandle::Result MpvHandle::command(quint64 tag, const QList<QByteArray> &arguments)
{
    if (!m_core)
        return std::unexpected(static_cast<int>(MPV_ERROR_UNINITIALIZED));
    std::vector<const char *> pointers;
    pointers.reserve(static_cast<std::size_t>(arguments.size()) + 1);
    for (const QByteArray &argument : arguments)
        pointers.push_back(argument.constData());
    pointers.push_back(nullptr);
    const int result = mpv_command_async(m_core.get(), tag, pointers.data());
    check(result, pointers.front());
    if (result < 0)
        return std::unexpected(result);
    return {};
}

void MpvHandle::setProperty(const char *name, bool value)
{
    int flag = value ? 1 : 0;
    if (m_core)
        check(mpv_set_property_async(m_core.get(), 0, name, MPV_FORMAT_FLAG, &flag), name);
}

void MpvHandle::setProperty(const char *name, double value)
{
    if (m_core)
        check(mpv_set_property_async(m_core.get(), 0, name, MPV_FORMAT_DOUBLE, &value), name);
}

void MpvHandle::setProperty(const char *name, const QByteArray &value)
{
    const char *text = value.constData();
    if (m_core)
        check(mpv_set_property_async(m_core.get(), 0, name, MPV_FORMAT_STRING, static_cast<void *>(&text)),
              name);
}

void MpvHandle::requestProperty(quint64 tag, const char *name, mpv_format format)
{
    if (m_core)
        check(mpv_get_property_async(m_core.get(), tag, name, format), name);
}

void MpvHandle::observe(quint64 tag, const char *name, mpv_format format)
{
    if (m_core)
        check(mpv_observe_property(m_core.get(), tag, name, format), name);
}

} // namespace cadorel
