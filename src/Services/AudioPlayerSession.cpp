// SPDX-License-Identifier: GPL-3.0-or-later
// What the machine does to the sound while it plays: interruptions and devices that go.
#include "Services/AudioPlayerService.h"

#include "Platform/HttpTransfer.h"
#include "Services/Seams/EqualizerEngine.h"

#include <QPointer>

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
    if (m_addressTransfer)
        standUnloaded();
}

/// An item that failed plays nothing any more, though what it wanted, a sound device or the network, may be
/// back: whoever says play means the song, from where it stood.
/// @return whether it began anew, on the engine of its choice, with nothing left to do
bool AudioPlayerService::replaysFailedItem()
{
    if (!m_playerItem || m_playerItem->status() != PlayerItem::Status::failed)
        return false;
    const MediaAsset asset = m_playerItem->asset();
    const double position = m_currentTime;
    if (position <= 0 && asset.url.isLocalFile() && m_parts.equalizer && m_parts.equalizer->isEnabled()) {
        playURL(asset.url);
        return true;
    }
    removeTimeObserver();
    removeEndObserver();
    installItem(makeCurrentItem(asset));
    if (position <= 0)
        return false;
    m_isSeeking = true;
    m_player->seek(position, 0, 0, [self = QPointer<AudioPlayerService>(this), serial = m_seekSerial](bool) {
        if (self && serial == self->m_seekSerial)
            self->m_isSeeking = false;
    });
    return false;
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
