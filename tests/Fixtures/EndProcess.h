// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>

namespace cadorel {

/// Asks @p process to end, and ends it when it does not. Waits without an event loop.
inline void endProcess(QProcess &process)
{
    constexpr int limitMs = 5'000;
    process.terminate();
    if (process.waitForFinished(limitMs) || process.state() == QProcess::NotRunning)
        return;
    process.kill();
    process.waitForFinished(limitMs);
}

} // namespace cadorel
