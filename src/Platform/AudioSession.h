// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace cadorel {

/// What the machine does to the player's sound: somebody else needs the speaker, the machine sleeps, the
/// headphones are pulled. Main thread.
class AudioSession : public QObject
{
    Q_OBJECT
public:
    enum class InterruptionType { began, ended };
    Q_ENUM(InterruptionType)

    enum class RouteChangeReason {
        newDeviceAvailable,
        oldDeviceUnavailable, ///< the device in use has gone
        override,             ///< the listener chose another one
        unknown
    };
    Q_ENUM(RouteChangeReason)

    using QObject::QObject;

    /// Starts to watch. @throws std::runtime_error when nothing can be watched; playing goes on without
    virtual void activate() = 0;

Q_SIGNALS:
    /// @param shouldResume at its end: what was interrupted may go on by itself
    void interrupted(AudioSession::InterruptionType type, bool shouldResume);
    void routeChanged(AudioSession::RouteChangeReason reason);
};

} // namespace cadorel
