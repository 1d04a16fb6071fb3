// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Support/Report.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <algorithm>
#include <ctime>

namespace cadorel {

/// Measures how long the main thread leaves its events waiting, and how much of that it has worked itself:
/// the rest it has waited, for other programs too.
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

    struct Stall
    {
        double longestMs = 0;
        /// The most processor time that it used without looking at its events.
        double workMs = 0;
    };
    /// The longest since the last call.
    Stall take()
    {
        tick();
        return std::exchange(m_longest, {});
    }

private:
    static constexpr int intervalMs = 1;

    static double processorMs()
    {
        constexpr double msPerSecond = 1e3;
        constexpr double nsPerMs = 1e6;
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * msPerSecond + static_cast<double>(time.tv_nsec) / nsPerMs;
    }
    void tick()
    {
        constexpr double nsPerMs = 1e6;
        const double used = processorMs();
        m_longest.longestMs =
            std::max(m_longest.longestMs, static_cast<double>(m_since.nsecsElapsed()) / nsPerMs - intervalMs);
        m_longest.workMs = std::max(m_longest.workMs, used - m_usedMs);
        m_usedMs = used;
        m_since.start();
    }

    QTimer m_timer;
    QElapsedTimer m_since;
    double m_usedMs = processorMs();
    Stall m_longest;
};

/// Tells both, the first against a bar.
inline void tellStall(Report &report, const QString &name, const StallWatch::Stall &stall)
{
    constexpr double barMs = 50;
    report.add({.what = name + QStringLiteral(": longest stall"),
                .value = stall.longestMs,
                .unit = QStringLiteral("ms"),
                .bar = barMs});
    report.add({.what = QStringLiteral("  work of the main thread at a stretch"),
                .value = stall.workMs,
                .unit = QStringLiteral("ms")});
}

} // namespace cadorel
