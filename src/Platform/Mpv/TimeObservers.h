// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>

#include <chrono>
#include <functional>
#include <map>

namespace cadorel {

/// The periodic time callbacks of a player: one timer for all of them, at the shortest interval, which runs
/// only while the player plays and somebody listens. Main thread.
class TimeObservers
{
public:
    using Callback = std::function<void(double seconds)>;

    /// @param askPosition called at each tick; its answer comes through deliverTick()
    explicit TimeObservers(std::function<void()> askPosition);

    /// @return a key for remove(), never given twice
    int add(std::chrono::milliseconds interval, Callback callback);
    void remove(int observer);

    void setRunning(bool running);
    bool timerActive() const { return m_timer.isActive(); }

    /// Calls those whose interval has gone by.
    void deliverTick(double seconds) { deliver(seconds, false); }
    /// Calls all: the position jumped, or playing started or stopped. Their intervals start anew.
    void deliverAll(double seconds) { deliver(seconds, true); }

private:
    struct Observer
    {
        std::chrono::milliseconds interval;
        std::chrono::milliseconds waited{0};
        Callback callback;
    };

    void tick();
    void deliver(double seconds, bool all);
    void updateTimer();

    std::function<void()> m_askPosition;
    QTimer m_timer;
    bool m_running = false;
    std::map<int, Observer> m_observers;
    int m_nextKey = 1;
};

} // namespace cadorel
