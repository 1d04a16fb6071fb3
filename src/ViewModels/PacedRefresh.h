// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <algorithm>
#include <functional>

namespace cadorel {

/// Calls an operation that is dear for large lists once for many changes: the first one shows at once, those
/// that follow on its heels together. Main thread.
class PacedRefresh
{
public:
    explicit PacedRefresh(std::function<void()> refresh)
        : m_refresh(std::move(refresh))
    {
        m_timer.setSingleShot(true);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { run(); });
    }

    /// From the event loop, soon.
    void request()
    {
        if (m_timer.isActive())
            return;
        const qint64 since = m_sinceLast.isValid() ? m_sinceLast.elapsed() : intervalMs;
        m_timer.start(static_cast<int>(std::max<qint64>(0, intervalMs - since)));
    }
    /// Now, in place of what was requested.
    void run()
    {
        m_timer.stop();
        m_sinceLast.restart();
        m_refresh();
    }

private:
    static constexpr qint64 intervalMs = 100;

    std::function<void()> m_refresh;
    QTimer m_timer;
    QElapsedTimer m_sinceLast;
};

} // namespace cadorel
