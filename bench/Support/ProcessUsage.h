// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMap>
#include <QString>

#include <algorithm>
#include <sys/types.h>

namespace cadorel {

/// What a process has used so far; 0 where it cannot be told. Any thread.
class ProcessUsage
{
public:
    /// @param pid 0 is this process
    explicit ProcessUsage(pid_t pid = 0);

    /// Processor time of all threads, user and system, in seconds.
    double processorSeconds() const;
    /// Memory in use now, in MiB.
    double residentMiB() const;
    /// The most memory that was in use, in MiB.
    double peakMiB() const;
    /// Lets the peak begin anew at what is in use now.
    void resetPeak() const;
    /// How often each thread gave the processor up of its own accord: each time is a wake-up to come.
    QMap<QString, double> wakeUps() const;
    /// Bytes handed to write calls, in MiB.
    double writtenMiB() const;

private:
    pid_t m_pid;
};

/// The value in the middle.
template <typename List>
double median(List values)
{
    std::ranges::sort(values);
    return values.empty() ? 0 : values[values.size() / 2];
}

} // namespace cadorel
