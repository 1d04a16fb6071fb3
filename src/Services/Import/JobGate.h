// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <atomic>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <type_traits>
#include <utility>

namespace cadorel {

/// Lets jobs on the thread pool use what belongs to their owner or lives as long as it. When the owner goes,
/// those under way are waited for and those that have not begun do nothing. The owner's last member.
class JobGate
{
public:
    JobGate() = default;
    ~JobGate()
    {
        m_state->isClosed = true;
        const std::scoped_lock untilAllLeft(m_state->mutex);
    }
    Q_DISABLE_COPY_MOVE(JobGate)

    /// The job as the thread pool gets it: an empty result when the owner has gone.
    template <typename Job>
    auto through(Job job) const
    {
        return [state = m_state, job = std::move(job)]() -> std::invoke_result_t<const Job &> {
            const std::shared_lock inside(state->mutex);
            if (state->isClosed)
                return {};
            return job();
        };
    }

private:
    struct State
    {
        std::shared_mutex mutex;
        std::atomic<bool> isClosed{false};
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace cadorel
