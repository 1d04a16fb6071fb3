// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/PulseConnection.h"

#include "Platform/Pulse/PulseLog.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace cadorel {

namespace {

constexpr auto applicationName = "Tarnova Music Player";
/// Also the name of the desktop entry and of its icon.
constexpr auto applicationId = "com.cadorel.Player";

PulsePtr<pa_context> newContext(PulseThread &thread)
{
    const PulsePtr<pa_proplist> properties(pa_proplist_new());
    pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_NAME, applicationName);
    pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_ID, applicationId);
    pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_ICON_NAME, applicationId);
    pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_VERSION, CADOREL_VERSION);
    return PulsePtr<pa_context>(
        pa_context_new_with_proplist(thread.api(), applicationName, properties.get()));
}

/// Wakes who waits on a thread when the time is over.
class Alarm
{
public:
    Alarm(PulseThread &thread, pa_context *context, std::chrono::milliseconds limit)
        : m_thread(thread)
        , m_event(pa_context_rttime_new(
              context, pa_rtclock_now() + pa_usec_t(std::chrono::microseconds(limit).count()),
              [](pa_mainloop_api *, pa_time_event *, const timeval *, void *alarm) {
                  static_cast<Alarm *>(alarm)->ring();
              },
              this))
    {
    }
    ~Alarm() { m_thread.api()->time_free(m_event); }
    Q_DISABLE_COPY_MOVE(Alarm)

    bool hasRung() const { return m_hasRung; }

private:
    void ring()
    {
        m_hasRung = true;
        m_thread.signal();
    }

    PulseThread &m_thread;
    bool m_hasRung = false;
    pa_time_event *m_event;
};

} // namespace

PulseConnection::PulseConnection(PulseThread &thread, StateChanged stateChanged)
    : m_thread(thread)
    , m_stateChanged(std::move(stateChanged))
{
    const std::scoped_lock guard(m_thread);
    m_context = newContext(m_thread);
    if (!m_context)
        throw std::runtime_error("no connection to a sound server can be made");
    pa_context_set_state_callback(
        m_context.get(), [](pa_context *, void *self) { static_cast<PulseConnection *>(self)->changed(); },
        this);
    // What goes wrong at once is a failed state, like what goes wrong later.
    if (pa_context_connect(m_context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        qCInfo(pulseLog) << "no sound server:" << errorText();
}

PulseConnection::~PulseConnection()
{
    const std::scoped_lock guard(m_thread);
    pa_context_set_state_callback(m_context.get(), nullptr, nullptr);
    pa_context_set_subscribe_callback(m_context.get(), nullptr, nullptr);
    pa_context_set_event_callback(m_context.get(), nullptr, nullptr);
    pa_context_disconnect(m_context.get());
    m_context.reset();
}

pa_context_state_t PulseConnection::state() const
{
    const std::scoped_lock guard(m_thread);
    return pa_context_get_state(m_context.get());
}

QString PulseConnection::errorText() const
{
    const std::scoped_lock guard(m_thread);
    return QString::fromUtf8(pa_strerror(pa_context_errno(m_context.get())));
}

void PulseConnection::changed()
{
    m_thread.signal();
    if (m_stateChanged)
        m_stateChanged(pa_context_get_state(m_context.get()));
}

bool PulseConnection::waitUntilReady(std::chrono::milliseconds limit)
{
    std::unique_lock lock(m_thread);
    waitFor(lock, limit, [this] { return isReady() || hasFailed(); });
    return isReady();
}

bool PulseConnection::waitFor(std::unique_lock<PulseThread> &lock, std::chrono::milliseconds limit,
                              const std::function<bool()> &isMet)
{
    Q_ASSERT(lock.owns_lock() && !m_thread.isCurrent());
    const Alarm alarm(m_thread, m_context.get(), limit);
    while (!isMet()) {
        if (alarm.hasRung())
            return false;
        m_thread.wait();
    }
    return true;
}

} // namespace cadorel
