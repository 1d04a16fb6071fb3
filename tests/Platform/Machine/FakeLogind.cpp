// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeLogind.h"

#include <array>
#include <poll.h>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

FakeLogind::FakeLogind()
    : m_isBusRunning(m_bus.start())
{
}

FakeLogind::~FakeLogind()
{
    vanish();
    m_bus.stop();
}

bool FakeLogind::appear()
{
    QDBusConnection bus = m_bus.connection(u"logind"_s);
    return bus.registerObject(u"/org/freedesktop/login1"_s, this,
                              QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals) &&
           bus.registerService(u"org.freedesktop.login1"_s);
}

void FakeLogind::vanish()
{
    QDBusConnection bus = m_bus.connection(u"logind"_s);
    bus.unregisterService(u"org.freedesktop.login1"_s);
    bus.unregisterObject(u"/org/freedesktop/login1"_s);
    forgetHolder();
}

void FakeLogind::forgetHolder()
{
    if (m_holder >= 0)
        ::close(std::exchange(m_holder, -1));
}

bool FakeLogind::isHeldUp()
{
    if (m_holder < 0)
        return false;
    pollfd end{.fd = m_holder, .events = POLLIN, .revents = 0};
    return ::poll(&end, 1, 0) == 0;
}

void FakeLogind::prepareForSleep(bool isStarting)
{
    Q_EMIT PrepareForSleep(isStarting);
}

QDBusUnixFileDescriptor FakeLogind::Inhibit(const QString &what, const QString &who, const QString &why,
                                            const QString &mode)
{
    requests.append({what, who, why, mode});
    std::array<int, 2> ends{};
    if (isRefusing || ::pipe(ends.data()) != 0) {
        sendErrorReply(QDBusError::AccessDenied, u"no"_s);
        return {};
    }
    forgetHolder();
    m_holder = ends[0];
    QDBusUnixFileDescriptor given;
    given.giveFileDescriptor(ends[1]);
    return given;
}

} // namespace cadorel
