// SPDX-License-Identifier: GPL-3.0-or-later
// What the machine does to the sound while it plays: interruptions and devices that go.
#include "Services/AudioPlayerService.h"

#include "Services/Seams/EqualizerEngine.h"

namespace cadorel {

void AudioPlayerService::handleInterruption(AudioSession::InterruptionType type, bool shouldResume)
{
    if (type == AudioSession::InterruptionType::began) {
        m_interruptionWasPlaying = m_isPlaying;
        // The desktop asks for silence and leaves it to the player.
        if (m_usingEqualizerEngine && m_parts.equalizer)
            m_parts.equalizer->pause();
        else if (m_player)
            m_player->pause();
        setIsPlaying(false);
        stopAudioLevelSimulation();
        updateNowPlayingInfo();
        persistPlaybackState(true);
        return;
    }
    if (m_interruptionWasPlaying && shouldResume)
        play();
    syncIsPlayingWithPlayer();
    m_interruptionWasPlaying = false;
}

void AudioPlayerService::handleRouteChange(AudioSession::RouteChangeReason reason)
{
    if (reason != AudioSession::RouteChangeReason::oldDeviceUnavailable)
        return;
    pause();
    syncIsPlayingWithPlayer();
}

} // namespace cadorel
