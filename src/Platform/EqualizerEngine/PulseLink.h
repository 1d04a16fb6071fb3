// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Pulse/PulseConnection.h"
#include "Platform/Pulse/PulseThread.h"

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace cadorel {

/// The way to the sound server that outputs share, so that only the first song waits for it. Main thread.
class PulseLink
{
public:
    PulseLink();
    ~PulseLink();
    Q_DISABLE_COPY_MOVE(PulseLink)

    /// A connection that stands; a new one when there is none, or the last has failed.
    /// @throws std::runtime_error, its text for a listener, when no server answers within @p limit
    std::shared_ptr<PulseConnection> connection(std::chrono::milliseconds limit);

    /// Ends a stream, which has no callbacks any more, once its fade has been heard; at once where nothing
    /// sounds. The lock is not held.
    void endSoon(std::shared_ptr<PulseConnection> connection, PulsePtr<pa_stream> stream);

private:
    /// A stream whose end is awaited by a timer.
    class FadingStream;

    std::optional<PulseThread> m_thread;
    std::shared_ptr<PulseConnection> m_connection;
    std::vector<std::unique_ptr<FadingStream>> m_fading;
};

} // namespace cadorel
