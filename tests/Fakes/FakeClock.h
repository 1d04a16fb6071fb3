// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Clock.h"

#include <list>

namespace cadorel {

/// Time that stands still until a test moves it. Timers fall due in order of time inside advance().
class FakeClock : public Clock
{
public:
    FakeClock();
    ~FakeClock() override;

    QDateTime now() const override;
    std::chrono::nanoseconds monotonic() const override;
    std::unique_ptr<ClockTimer> repeating(std::chrono::milliseconds interval,
                                          std::function<void()> callback) override;
    std::unique_ptr<ClockTimer> singleShot(std::chrono::milliseconds delay,
                                           std::function<void()> callback) override;

    /// Moves time forward, calling what falls due on the way at its own moment.
    void advance(std::chrono::milliseconds duration);
    /// Number of timers under way: 0 is what an idle player must show.
    int activeTimers() const;
    /// Sets the time of day without moving timers.
    void setNow(const QDateTime &now) { m_start = now.addMSecs(-m_elapsed.count()); }

private:
    struct Entry
    {
        std::chrono::milliseconds due;
        std::chrono::milliseconds interval; // 0 for a single shot
        std::function<void()> callback;
        bool cancelled = false;
    };
    class Timer;
    using Entries = std::list<std::shared_ptr<Entry>>;

    std::unique_ptr<ClockTimer> add(std::chrono::milliseconds delay, std::chrono::milliseconds interval,
                                    std::function<void()> callback);

    QDateTime m_start;
    std::chrono::milliseconds m_elapsed{0};
    std::shared_ptr<Entries> m_entries;
};

} // namespace cadorel
