// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/AnswerWatch.h"

#include <utility>

namespace cadorel {

AnswerWatch::AnswerWatch(std::chrono::milliseconds limit, std::function<void()> late)
    : m_limit(limit)
    , m_late(std::move(late))
    , m_deadline(std::chrono::steady_clock::now() + limit)
    , m_thread([this](const std::stop_token &stop) { run(stop); })
{
}

void AnswerWatch::pause()
{
    const std::scoped_lock lock(m_mutex);
    m_isPaused = true;
    m_changed.notify_all();
}

void AnswerWatch::resume()
{
    const std::scoped_lock lock(m_mutex);
    m_isPaused = false;
    m_deadline = std::chrono::steady_clock::now() + m_limit;
    m_changed.notify_all();
}

bool AnswerWatch::isLate() const
{
    const std::scoped_lock lock(m_mutex);
    return m_isLate;
}

void AnswerWatch::run(const std::stop_token &stop)
{
    std::unique_lock lock(m_mutex);
    while (!stop.stop_requested() && (m_isPaused || std::chrono::steady_clock::now() < m_deadline)) {
        const auto deadline = m_deadline;
        if (m_isPaused)
            m_changed.wait(lock, stop, [this] { return !m_isPaused; });
        else
            m_changed.wait_until(lock, stop, deadline, [this] { return m_isPaused; });
    }
    if (stop.stop_requested())
        return;
    m_isLate = true;
    lock.unlock();
    m_late();
}

} // namespace cadorel
