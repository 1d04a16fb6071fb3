// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ProcessUsage.h"

#include <QDir>
#include <QFile>

#include <ctime>
#include <unistd.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr double kibibyte = 1024;

/// The number behind a name in one of the kernel's files of names and numbers.
double field(const QString &path, const char *name)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.mid(line.indexOf(':') + 1).simplified().split(' ').constFirst().toDouble();
    }
    return 0;
}

} // namespace

ProcessUsage::ProcessUsage(pid_t pid)
    : m_pid(pid == 0 ? ::getpid() : pid)
{
}

double ProcessUsage::processorSeconds() const
{
    clockid_t clock{};
    timespec time{};
    if (::clock_getcpuclockid(m_pid, &clock) != 0 || ::clock_gettime(clock, &time) != 0)
        return 0;
    constexpr double nanosecond = 1e-9;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * nanosecond;
}

double ProcessUsage::residentMiB() const
{
    return field(u"/proc/%1/status"_s.arg(m_pid), "VmRSS") / kibibyte;
}

double ProcessUsage::peakMiB() const
{
    return field(u"/proc/%1/status"_s.arg(m_pid), "VmHWM") / kibibyte;
}

void ProcessUsage::resetPeak() const
{
    QFile file(u"/proc/%1/clear_refs"_s.arg(m_pid));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

QMap<QString, double> ProcessUsage::wakeUps() const
{
    const QString tasks = u"/proc/%1/task"_s.arg(m_pid);
    QMap<QString, double> threads;
    for (const QString &thread : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        threads[thread] = field(tasks + u'/' + thread + "/status"_L1, "voluntary_ctxt_switches");
    return threads;
}

double ProcessUsage::writtenMiB() const
{
    return field(u"/proc/%1/io"_s.arg(m_pid), "wchar") / (kibibyte * kibibyte);
}

} // namespace cadorel
