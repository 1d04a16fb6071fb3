// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFuture>
#include <QThread>
#include <QtConcurrent>

#include <QCoroFuture>
#include <QCoroTask>

#include <deque>
#include <functional>
#include <optional>

namespace cadorel {

/// Runs many jobs ahead on the thread pool and hands their results out in the order in which they were added:
/// the work uses all processors, what is seen of it stays one after the other. Main thread.
template <typename Result>
class OrderedJobs
{
public:
    /// A job that is started when there is room for it; called on the thread pool.
    using Job = std::function<Result()>;

    /// True while another job should be added to keep the processors busy.
    bool hasRoom() const
    {
        return m_running.size() < 2 * static_cast<size_t>(std::max(1, QThread::idealThreadCount()));
    }
    bool isEmpty() const { return m_running.empty(); }

    void add(Job job) { m_running.push_back(QtConcurrent::run(std::move(job))); }

    /// Waits for the oldest job. There must be one.
    QCoro::Task<Result> next()
    {
        QFuture<Result> oldest = std::move(m_running.front());
        m_running.pop_front();
        co_return co_await oldest;
    }

private:
    std::deque<QFuture<Result>> m_running;
};

} // namespace cadorel
