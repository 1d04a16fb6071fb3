// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/SignalWatcher.h"

#include "Platform/Linux/LinuxLog.h"

#include <QSocketNotifier>

#include <array>
#include <atomic>
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace cadorel {

namespace {

constexpr std::array watchedSignals{SIGTERM, SIGINT, SIGHUP};

// The end of the pipe that the handler writes to: all that a handler may do is write(2).
std::atomic<int> writeEnd = -1;
static_assert(std::atomic<int>::is_always_lock_free);

void handleSignal(int number)
{
    const int savedError = errno;
    const auto byte = static_cast<unsigned char>(number);
    // A full pipe holds enough of them already.
    [[maybe_unused]] const ssize_t written = ::write(writeEnd.load(), &byte, sizeof byte);
    errno = savedError;
}

} // namespace

SignalWatcher::SignalWatcher(QObject *parent)
    : QObject(parent)
{
    Q_ASSERT(writeEnd.load() == -1);
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qCWarning(linuxLog) << "no pipe for signals:" << qt_error_string();
        return;
    }
    m_readEnd = ends[0];
    writeEnd = ends[1];
    m_notifier = new QSocketNotifier(m_readEnd, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &SignalWatcher::readPipe);

    struct sigaction action = {};
    action.sa_handler = handleSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : watchedSignals) {
        struct sigaction previous = {};
        if (::sigaction(number, nullptr, &previous) != 0 || previous.sa_handler == SIG_IGN)
            continue;
        if (::sigaction(number, &action, nullptr) == 0)
            m_previous.append({number, previous});
    }
}

SignalWatcher::~SignalWatcher()
{
    for (const auto &[number, previous] : std::as_const(m_previous))
        ::sigaction(number, &previous, nullptr);
    if (m_readEnd == -1)
        return;
    delete m_notifier;
    ::close(writeEnd.exchange(-1));
    ::close(m_readEnd);
}

void SignalWatcher::readPipe()
{
    unsigned char byte = 0;
    while (::read(m_readEnd, &byte, sizeof byte) == sizeof byte)
        Q_EMIT terminationRequested(byte);
}

} // namespace cadorel
