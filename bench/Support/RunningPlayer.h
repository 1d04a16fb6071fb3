// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Support/MadeHome.h"
#include "Support/ProcessUsage.h"
#include "Support/VirtualDisplay.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QProcess>

#include <chrono>
#include <functional>

namespace cadorel {

/// The real program of this build, running in a home on a display. What it does not do in time ends this
/// process with a message.
class RunningPlayer
{
public:
    /// Starts it and returns when its first frame is on the display.
    RunningPlayer(const MadeHome &home, const VirtualDisplay &display,
                  const std::function<void(QProcessEnvironment &)> &adjust = {});
    ~RunningPlayer();
    Q_DISABLE_COPY_MOVE(RunningPlayer)

    /// From the start of the process to its first frame.
    double firstFrameSeconds() const { return m_firstFrameSeconds; }
    /// Returns when the scan after the first frame has ended.
    void waitForScan();
    /// Returns when it has used no processor time for half a second.
    void waitUntilIdle() const;
    /// Gives its window the keyboard and types a key there.
    void typeKey(const QString &key) const;
    ProcessUsage usage() const { return ProcessUsage(static_cast<pid_t>(m_process.processId())); }
    /// The lines it has printed so far.
    const QByteArray &output();
    /// What it has told on standard error since the last call.
    QByteArray takeMessages();

private:
    const VirtualDisplay &m_display;
    QProcess m_process;
    QByteArray m_output;
    double m_firstFrameSeconds = 0;
};

/// Lets events come in until something is true. @return false after @p limit
bool waitFor(const std::function<bool()> &condition, std::chrono::milliseconds limit);
/// Lets a stretch of time pass that is to be measured.
void letPass(std::chrono::milliseconds length);

} // namespace cadorel
