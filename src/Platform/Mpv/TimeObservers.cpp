// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpv/TimeObservers.h"

#include <algorithm>
#include <vector>

namespace cadorel {

TimeObservers::TimeObservers(std::function<void()> askPosition)
    : m_askPosition(std::move(askPosition))
{
    // A coarse timer lets the kernel share the wake-up with others.
    m_timer.setTimerType(Qt::CoarseTimer);
    m_timer.callOnTimeout(&m_timer, [this] { tick(); });
}

int TimeObservers::add(std::chrono::milliseconds interval, Callback callback)
{
    m_observers.emplace(m_nextKey, Observer{.interval = std::max(interval, std::chrono::milliseconds{1}),
                                            .callback = std::move(callback)});
    updateTimer();
    return m_nextKey++;
}

void TimeObservers::remove(int observer)
{
    if (m_observers.erase(observer) > 0)
        updateTimer();
}

void TimeObservers::setRunning(bool running)
{
    if (m_running == running)
        return;
    m_running = running;
    updateTimer();
}

void TimeObservers::updateTimer()
{
    if (!m_running || m_observers.empty()) {
        m_timer.stop();
        return;
    }
    const auto interval = [](const auto &entry) { return entry.second.interval; };
    const auto shortest = std::ranges::min_element(m_observers, {}, interval)->second.interval;
    if (!m_timer.isActive() || m_timer.intervalAsDuration() != shortest)
        m_timer.start(shortest);
}

void TimeObservers::tick()
{
    for (auto &[key, observer] : m_observers)
        observer.waited += m_timer.intervalAsDuration();
    m_askPosition();
}

void TimeObservers::deliver(double seconds, bool all)
{
    const auto half = m_timer.intervalAsDuration() / 2;
    std::vector<int> due;
    for (auto &[key, observer] : m_observers) {
        if (!all && observer.waited + half < observer.interval)
            continue;
        observer.waited = std::chrono::milliseconds{0};
        due.push_back(key);
    }
    for (const int key : due) {
        // A callback may remove any observer, itself included.
        const auto found = m_observers.find(key);
        if (found == m_observers.end())
            continue;
        const Callback callback = found->second.callback;
        callback(seconds);
    }
}

} // namespace cadorel
