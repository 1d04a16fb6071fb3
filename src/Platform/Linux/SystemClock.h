// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Clock.h"

namespace cadorel {

/// The machine's clock. Timers below 100 ms are precise; longer ones may come up to 5 % early or late, so
/// that the system can wake up once for several. Main thread.
class SystemClock : public Clock
{
public:
    QDateTime now() const override;
    std::chrono::nanoseconds monotonic() const override;
    std::unique_ptr<ClockTimer> repeating(std::chrono::milliseconds interval,
                                          std::function<void()> callback) override;
    std::unique_ptr<ClockTimer> singleShot(std::chrono::milliseconds delay,
                                           std::function<void()> callback) override;
};

} // namespace cadorel
