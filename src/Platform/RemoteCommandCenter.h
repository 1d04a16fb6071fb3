// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/PlayMode.h"

#include <QObject>

namespace cadorel {

/// The desktop's media controls: keys, lock screen, panels. Each command is a signal, and succeeds for the
/// desktop also when nobody listens. Main thread.
class RemoteCommandCenter : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    void playCommand();
    void pauseCommand();
    void togglePlayPauseCommand();
    void stopCommand();
    void nextTrackCommand();
    void previousTrackCommand();
    /// @param positionTime seconds
    void changePlaybackPositionCommand(double positionTime);
    /// @param volume amplitude factor, 0...1
    void changeVolumeCommand(double volume);
    void changePlayModeCommand(cadorel::PlayMode mode);
    /// Shows the window.
    void raiseCommand();
    void quitCommand();
};

} // namespace cadorel
