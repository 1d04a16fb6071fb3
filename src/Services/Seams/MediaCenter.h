// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QImage;

namespace cadorel {

class AudioPlayerService;

/// Ties the player to the desktop: audio session, remote commands, now-playing information. Main thread.
/// The player calls the four set-up steps once, in this order, while it is built.
class MediaCenter
{
public:
    virtual ~MediaCenter() = default;

    virtual void setupAudioSession(AudioPlayerService &player) = 0;
    virtual void setupRemoteCommandCenter(AudioPlayerService &player) = 0;
    virtual void setupNowPlayingInfo(AudioPlayerService &player) = 0;
    virtual void setupInterruptionObservers(AudioPlayerService &player) = 0;
    /// Publishes song, position and state anew, and asks for a cover that the player has not yet; called at
    /// every tick and change of state.
    virtual void updateNowPlayingInfo(AudioPlayerService &player) = 0;
    /// Adds a cover to what is published, until it is published anew.
    virtual void mergeNowPlayingArtwork(const QImage &artwork) = 0;
};

} // namespace cadorel
