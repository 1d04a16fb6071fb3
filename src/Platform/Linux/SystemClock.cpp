// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/SystemClock.h"

#include <QTimer>

#include <algorithm>
#include <limits>
#include <utility>

namespace cadorel {

namespace {

constexpr std::chrono::milliseconds preciseBelow{100};

class SystemTimer : public ClockTimer
{
public:
    SystemTimer(std::chrono::milliseconds interval, bool isSingleShot, std::function<void()> callback)
    {
        m_timer.setSingleShot(isSingleShot);
        m_timer.setTimerType(interval < preciseBelow ? Qt::PreciseTimer : Qt::CoarseTimer);
        // The callback may destroy this object: while it runs the call holds it, not the connection.
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(callback));
        m_timer.start(std::clamp(interval, std::chrono::milliseconds{isSingleShot ? 0 : 1},
                                 std::chrono::milliseconds{std::numeric_limits<int>::max()}));
    }

private:
    QTimer m_timer;
};

} // namespace

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTimeUtc();
}

std::chrono::nanoseconds SystemClock::monotonic() const
{
    return std::chrono::steady_clock::now().time_since_epoch();
}

std::unique_ptr<ClockTimer> SystemClock::repeating(std::chrono::milliseconds interval,
                                                   std::function<void()> callback)
{
    return std::make_unique<SystemTimer>(interval, false, std::move(callback));
}

std::unique_ptr<ClockTimer> SystemClock::singleShot(std::chrono::milliseconds delay,
                                                    std::function<void()> callback)
{
    return std::make_unique<SystemTimer>(delay, true, std::move(callback));
}

} // namespace cadorel
