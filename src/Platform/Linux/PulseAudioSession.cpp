// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/PulseAudioSession.h"

#include "Platform/Linux/LinuxLog.h"

#include <QPointer>

#include <exception>
#include <utility>

namespace cadorel {

PulseAudioSession::PulseAudioSession(const QDBusConnection &systemBus)
    : m_sleep(systemBus)
{
    connect(&m_server, &SoundServerWatch::sceneChanged, this, &PulseAudioSession::takeScene);
    connect(&m_server, &SoundServerWatch::lost, this, [this] {
        m_route.lose();
        take(m_cork.lose());
    });
    connect(&m_sleep, &SleepWatch::fallingAsleep, this, [this] { begin(Cause::sleep); });
    // Whoever opens a lid in a meeting does not want music.
    connect(&m_sleep, &SleepWatch::awake, this, [this] { end(Cause::sleep, false); });
}

PulseAudioSession::~PulseAudioSession() = default;

void PulseAudioSession::activate()
{
    const bool knowsOfSleep = m_sleep.start();
    try {
        m_server.start();
    } catch (const std::exception &error) {
        if (!knowsOfSleep)
            throw;
        qCWarning(linuxLog) << "sound devices are not watched:" << error.what();
    }
}

void PulseAudioSession::takeScene(const SoundScene &scene)
{
    const QPointer<PulseAudioSession> self(this);
    // The sound stops for a device that has gone before anything lets it go on.
    for (const RouteChangeReason reason : m_route.update(scene)) {
        Q_EMIT routeChanged(reason);
        if (!self)
            return;
    }
    take(m_cork.update(scene));
}

void PulseAudioSession::take(CorkWatch::Change change)
{
    if (change == CorkWatch::Change::began)
        begin(Cause::cork);
    else if (change != CorkWatch::Change::none)
        end(Cause::cork, change == CorkWatch::Change::endedToResume);
}

void PulseAudioSession::begin(Cause cause)
{
    const bool isFirst = !m_causes;
    m_causes |= cause;
    // A listener may have gone on in spite of a call; nobody goes on through a sleep.
    if (isFirst || cause == Cause::sleep)
        Q_EMIT interrupted(InterruptionType::began, false);
}

void PulseAudioSession::end(Cause cause, bool shouldResume)
{
    m_mayResume = m_mayResume && shouldResume;
    m_causes.setFlag(cause, false);
    if (!m_causes)
        Q_EMIT interrupted(InterruptionType::ended, std::exchange(m_mayResume, true));
}

} // namespace cadorel
