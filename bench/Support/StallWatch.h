// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <algorithm>

namespace cadorel {

/// Measures how long the main thread leaves its events waiting.
class StallWatch : public QObject
{
public:
    StallWatch()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(intervalMs);
        connect(&m_timer, &QTimer::timeout, this, &StallWatch::tick);
        m_timer.start();
        m_since.start();
    }

    /// The longest stall since the last call, in milliseconds.
    double take()
    {
        tick();
        return std::exchange(m_longestMs, 0);
    }

private:
    static constexpr int intervalMs = 1;

    void tick()
    {
        constexpr double nsPerMs = 1e6;
        m_longestMs =
            std::max(m_longestMs, static_cast<double>(m_since.nsecsElapsed()) / nsPerMs - intervalMs);
        m_since.start();
    }

    QTimer m_timer;
    QElapsedTimer m_since;
    double m_longestMs = 0;
};

} // namespace cadorel
