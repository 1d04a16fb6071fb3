// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/SleepWatch.h"

#include "Platform/Linux/LinuxLog.h"
#include "Utils/Tasks.h"

#include <QCoroDBusPendingCall>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

// The interface of logind, org.freedesktop.login1(5).
constexpr QLatin1StringView service{"org.freedesktop.login1"};
constexpr QLatin1StringView path{"/org/freedesktop/login1"};
constexpr QLatin1StringView manager{"org.freedesktop.login1.Manager"};

QDBusMessage delayRequest()
{
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, manager, u"Inhibit"_s);
    // Who holds it and why is shown by the system's tools, whatever the player's language.
    call.setArguments({u"sleep"_s, u"Tarnova Music Player"_s, u"pauses and keeps its place"_s, u"delay"_s});
    return call;
}

} // namespace

SleepWatch::SleepWatch(const QDBusConnection &systemBus)
    : m_bus(systemBus)
{
}

SleepWatch::~SleepWatch() = default;

bool SleepWatch::start()
{
    if (m_isListening)
        return true;
    m_isListening = m_bus.isConnected() && m_bus.connect(service, path, manager, u"PrepareForSleep"_s, this,
                                                         SLOT(prepareForSleep(bool)));
    if (!m_isListening) {
        qCInfo(linuxLog) << "nobody tells when the machine goes to sleep: there is no system bus";
        return false;
    }
    m_logind.emplace(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange);
    connect(&*m_logind, &QDBusServiceWatcher::serviceRegistered, this, [this] { detach(takeDelay()); });
    connect(&*m_logind, &QDBusServiceWatcher::serviceUnregistered, this, [this] { m_delay.reset(); });
    detach(takeDelay());
    return true;
}

QCoro::Task<void> SleepWatch::takeDelay()
{
    const QPointer<SleepWatch> self(this);
    const QDBusPendingReply<QDBusUnixFileDescriptor> reply = co_await m_bus.asyncCall(delayRequest());
    if (!self)
        co_return;
    if (reply.isError())
        qCInfo(linuxLog) << "the machine may sleep before the player knows:" << reply.error().message();
    else if (!m_isAsleep)
        m_delay = reply.value();
}

void SleepWatch::prepareForSleep(bool isStarting)
{
    if (isStarting == m_isAsleep)
        return;
    m_isAsleep = isStarting;
    if (!isStarting) {
        detach(takeDelay());
        Q_EMIT awake();
        return;
    }
    const QPointer<SleepWatch> self(this);
    Q_EMIT fallingAsleep();
    // What was set off by that comes before this in the queue.
    const auto release = [this] {
        if (m_isAsleep)
            m_delay.reset();
    };
    if (self)
        QMetaObject::invokeMethod(this, release, Qt::QueuedConnection);
}

} // namespace cadorel
