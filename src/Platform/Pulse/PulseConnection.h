// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Pulse/PulsePointers.h"
#include "Platform/Pulse/PulseThread.h"

#include <QString>

#include <chrono>
#include <functional>
#include <mutex>

namespace cadorel {

/// One connection to the sound server, from the attempt until it is closed or lost; for another attempt make
/// another object. It never starts a server.
class PulseConnection
{
public:
    /// Called with the lock held for each state but the one that the destructor brings: on the thread, or
    /// from within the constructor. It may not destroy the connection.
    using StateChanged = std::function<void(pa_context_state_t state)>;

    /// Begins to connect, to the server that the environment and the user's settings name. That none answers
    /// is told by the state.
    /// @param thread outlives the connection
    /// @throws std::runtime_error when there is nothing to connect with
    explicit PulseConnection(PulseThread &thread, StateChanged stateChanged = {});
    /// Closes. No callback of the context runs afterwards; streams of it are let go before.
    ~PulseConnection();
    Q_DISABLE_COPY_MOVE(PulseConnection)

    PulseThread &thread() const { return m_thread; }
    /// Never null. The lock is held while it is used.
    pa_context *context() const { return m_context.get(); }

    /// Any thread.
    pa_context_state_t state() const;
    bool isReady() const { return state() == PA_CONTEXT_READY; }
    /// The server did not answer, or has gone.
    bool hasFailed() const { return !PA_CONTEXT_IS_GOOD(state()); }
    /// What libpulse says of the last failure; any thread.
    QString errorText() const;

    /// Waits for the server's answer. Not on the thread, nor with the lock held.
    /// @return whether the connection stands
    bool waitUntilReady(std::chrono::milliseconds limit);
    /// Waits until @p isMet, looking again after each PulseThread::signal() and change of state. Not on the
    /// thread, and @p lock is its only one.
    /// @return false when the time was over before
    bool waitFor(std::unique_lock<PulseThread> &lock, std::chrono::milliseconds limit,
                 const std::function<bool()> &isMet);

private:
    void changed();

    PulseThread &m_thread;
    StateChanged m_stateChanged;
    PulsePtr<pa_context> m_context;
};

} // namespace cadorel
