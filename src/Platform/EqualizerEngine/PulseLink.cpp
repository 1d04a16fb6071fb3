// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/PulseLink.h"

#include "Platform/EqualizerEngine/NoDevice.h"

#include <mutex>
#include <utility>

namespace cadorel {

namespace {

/// By then a fade has been heard.
constexpr pa_usec_t fadeTime = 60'000;

} // namespace

class PulseLink::FadingStream
{
public:
    FadingStream(std::shared_ptr<PulseConnection> connection, PulsePtr<pa_stream> stream)
        : m_connection(std::move(connection))
        , m_stream(std::move(stream))
    {
        const std::scoped_lock guard(m_connection->thread());
        const bool mayStillSound = pa_stream_get_state(m_stream.get()) == PA_STREAM_READY &&
                                   pa_stream_is_corked(m_stream.get()) == 0;
        if (!mayStillSound) {
            end();
            return;
        }
        m_timer = pa_context_rttime_new(
            m_connection->context(), pa_rtclock_now() + fadeTime,
            [](pa_mainloop_api *, pa_time_event *, const timeval *, void *self) {
                static_cast<FadingStream *>(self)->end();
            },
            this);
    }
    ~FadingStream()
    {
        const std::scoped_lock guard(m_connection->thread());
        end();
    }
    Q_DISABLE_COPY_MOVE(FadingStream)

    bool hasEnded() const
    {
        const std::scoped_lock guard(m_connection->thread());
        return !m_stream;
    }

private:
    void end()
    {
        if (pa_time_event *timer = std::exchange(m_timer, nullptr))
            m_connection->thread().api()->time_free(timer);
        if (!m_stream)
            return;
        pa_stream_disconnect(m_stream.get());
        m_stream.reset();
    }

    std::shared_ptr<PulseConnection> m_connection;
    PulsePtr<pa_stream> m_stream;
    pa_time_event *m_timer = nullptr;
};

PulseLink::PulseLink() = default;
PulseLink::~PulseLink() = default;

std::shared_ptr<PulseConnection> PulseLink::connection(std::chrono::milliseconds limit)
{
    if (m_connection && m_connection->isReady())
        return m_connection;
    m_connection.reset();
    if (!m_thread)
        m_thread.emplace("sound-output");
    auto connection = std::make_shared<PulseConnection>(*m_thread);
    if (!connection->waitUntilReady(limit))
        throwNoDevice();
    m_connection = std::move(connection);
    return m_connection;
}

void PulseLink::endSoon(std::shared_ptr<PulseConnection> connection, PulsePtr<pa_stream> stream)
{
    std::erase_if(m_fading, [](const auto &fading) { return fading->hasEnded(); });
    m_fading.push_back(std::make_unique<FadingStream>(std::move(connection), std::move(stream)));
}

} // namespace cadorel
