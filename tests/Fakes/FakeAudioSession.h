// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioSession.h"

#include <QString>

#include <stdexcept>

namespace cadorel {

/// A machine that rings, sleeps and loses its headphones when the test says so.
class FakeAudioSession : public AudioSession
{
public:
    using AudioSession::AudioSession;

    /// What activate() throws; empty lets it succeed.
    QString activationError;
    int activations = 0;

    void activate() override
    {
        ++activations;
        if (!activationError.isEmpty())
            throw std::runtime_error(activationError.toStdString());
    }

    void beginInterruption() { Q_EMIT interrupted(InterruptionType::began, false); }
    void endInterruption(bool shouldResume) { Q_EMIT interrupted(InterruptionType::ended, shouldResume); }
    void changeRoute(RouteChangeReason reason) { Q_EMIT routeChanged(reason); }
};

} // namespace cadorel
