// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace cadorel {

/// Measures how long something stays without an answer, and calls once when that is too long. It stands still
/// while a person is asked, who may take any time, and begins anew after that.
class AnswerWatch
{
public:
    /// @p late is called on a thread of the watch, at most once.
    AnswerWatch(std::chrono::milliseconds limit, std::function<void()> late);
    /// Waits until a call of `late` that is under way has returned.
    ~AnswerWatch() = default;
    AnswerWatch(const AnswerWatch &) = delete;
    AnswerWatch &operator=(const AnswerWatch &) = delete;

    void pause();
    void resume();
    bool isLate() const;

private:
    void run(const std::stop_token &stop);

    const std::chrono::milliseconds m_limit;
    const std::function<void()> m_late;
    mutable std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::chrono::steady_clock::time_point m_deadline;
    bool m_isPaused = false;
    bool m_isLate = false;
    std::jthread m_thread; // ends before the rest goes
};

} // namespace cadorel
