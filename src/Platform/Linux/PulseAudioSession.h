// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioSession.h"
#include "Platform/Linux/SleepWatch.h"
#include "Platform/Pulse/CorkWatch.h"
#include "Platform/Pulse/RouteWatch.h"
#include "Platform/Pulse/SoundServerWatch.h"

#include <QDBusConnection>
#include <QFlags>

namespace cadorel {

/// What the sound server and logind do to the player's sound. The streams themselves belong to others; this
/// is a connection of its own that looks at them, so it serves every engine.
class PulseAudioSession : public AudioSession
{
    Q_OBJECT
public:
    explicit PulseAudioSession(const QDBusConnection &systemBus = QDBusConnection::systemBus());
    ~PulseAudioSession() override;

    /// Needs no server yet: one that comes later is watched as well. To be called again when the player
    /// begins to play is worth while for a server on another machine, which comes without a notice.
    void activate() override;

private:
    enum class Cause { cork = 1, sleep = 2 };

    void takeScene(const SoundScene &scene);
    void take(CorkWatch::Change change);
    void begin(Cause cause);
    void end(Cause cause, bool shouldResume);

    SoundServerWatch m_server;
    SleepWatch m_sleep;
    CorkWatch m_cork;
    RouteWatch m_route;
    QFlags<Cause> m_causes;
    bool m_mayResume = true; ///< as far as the causes that have ended tell
};

} // namespace cadorel
