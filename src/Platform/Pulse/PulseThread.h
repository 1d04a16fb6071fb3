// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Pulse/PulsePointers.h"

#include <QtGlobal>

namespace cadorel {

/// A thread that serves connections to the sound server; it ends with the object, which outlives them.
/// Whoever touches a context or stream of it holds the lock: `const std::scoped_lock guard(thread)`.
/// Callbacks run on the thread and hold it already.
class PulseThread
{
public:
    /// @param name of the thread, at most 15 characters. @throws std::runtime_error when there are no threads
    explicit PulseThread(const char *name);
    /// Waits for a callback under way. Not from one of its callbacks, nor with the lock held.
    ~PulseThread();
    Q_DISABLE_COPY_MOVE(PulseThread)

    /// Nothing to do in a callback, where the lock is held.
    void lock();
    void unlock();
    /// Wakes who waits in PulseConnection::waitFor(); the lock is held.
    void signal();
    /// Lets the thread go on until somebody signals, then holds the lock again. Never in a callback, and not
    /// with the lock held twice.
    void wait();

    /// Whether this is the thread itself.
    bool isCurrent() const;
    pa_mainloop_api *api() const;

private:
    PulsePtr<pa_threaded_mainloop> m_loop;
};

} // namespace cadorel
