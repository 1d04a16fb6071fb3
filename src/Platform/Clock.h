// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>

#include <chrono>
#include <functional>
#include <memory>

namespace cadorel {

/// A timer under way; destroying it stops it. Its owner may destroy it inside the callback.
class ClockTimer
{
public:
    virtual ~ClockTimer() = default;
};

/// Time and timers, so that tests own them. Main thread; callbacks arrive there.
class Clock
{
public:
    virtual ~Clock() = default;

    /// The time of day, UTC.
    virtual QDateTime now() const = 0;
    /// A clock that never jumps, from an arbitrary start.
    virtual std::chrono::nanoseconds monotonic() const = 0;
    /// Calls @p callback every @p interval, first after one interval.
    [[nodiscard]] virtual std::unique_ptr<ClockTimer> repeating(std::chrono::milliseconds interval,
                                                                std::function<void()> callback) = 0;
    /// Calls @p callback once after @p delay.
    [[nodiscard]] virtual std::unique_ptr<ClockTimer> singleShot(std::chrono::milliseconds delay,
                                                                 std::function<void()> callback) = 0;
};

} // namespace cadorel
