// SPDX-License-Identifier: GPL-3.0-or-later
// What the machine does to the sound while it plays: interruptions and devices that go.
#include "Services/AudioPlayerService.h"

#include "Platform/HttpTransfer.h"

namespace cadorel {

/// Whether there is sound, or will be without anybody's doing: when a seek lands, when an address or the
/// first bytes of a stream arrive.
bool AudioPlayerService::isAboutToSound() const
{
    if (m_isPlaying || m_addressTransfer)
        return true;
    const bool isOfStreamPlayer = m_player && !m_usingEqualizerEngine;
    return isOfStreamPlayer && (m_player->rate() > 0 || (m_isSeeking && m_resumesAfterSeek));
}

/// A song whose address is on its way does not begin by itself when that arrives.
void AudioPlayerService::withholdAddress()
{
    if (!m_addressTransfer)
        return;
    leaveAddress();
    m_wasStoppedWhileFetching = true;
    setIsLoading(false);
}

void AudioPlayerService::handleInterruption(AudioSession::InterruptionType type, bool shouldResume)
{
    if (type == AudioSession::InterruptionType::began) {
        m_interruptionWasPlaying = isAboutToSound();
        // The desktop asks for silence and leaves it to the player.
        withholdAddress();
        pauseEngine();
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
    withholdAddress();
    pause();
    syncIsPlayingWithPlayer();
}

} // namespace cadorel
