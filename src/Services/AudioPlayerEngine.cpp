// SPDX-License-Identifier: GPL-3.0-or-later
// Local songs on the equalizer engine.
#include "Services/AudioPlayerService.h"

#include "Services/AudioPlayerSupport.h"
#include "Services/Seams/EqualizerEngine.h"
#include "Utils/Console.h"

#include <exception>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// The equalizer engine's song counts as over this much before its end, in seconds.
constexpr double engineEndMargin = 0.5;

} // namespace

void AudioPlayerService::playWithEqualizerEngine(const QUrl &url)
{
    print(u"🎛️ 使用均衡器引擎播放: "_s + url.fileName());
    // What the stream player still has under way, a seek or the length of its item, belongs to the song
    // before. The times go first: the pause below may store the new song, and must not at the old position.
    cancelSeek();
    setCurrentTime(0);
    setDuration(0);
    if (m_player)
        m_player->pause();
    removeItemObserver();
    removeTimeObserver();
    removeEndObserver();
    m_playerItem.reset();
    m_usingEqualizerEngine = true;
    EqualizerEngine &engine = *m_parts.equalizer;
    try {
        engine.prepareToPlay(url);
        setDuration(engine.duration());
        engine.setVolume(m_volume);
        engine.play();
    } catch (const std::exception &error) {
        print(u"❌ 均衡器引擎播放失败: "_s + QString::fromUtf8(error.what()));
        m_usingEqualizerEngine = false;
        playURLWithAVPlayer(url);
        return;
    }
    setIsPlaying(true);
    startAudioLevelSimulation();
    startEqualizerTimeUpdates();
    updateNowPlayingInfo();
    print(u"🎛️ 均衡器引擎播放开始，时长: "_s + consoleNumber(m_duration) + u"s"_s);
}

void AudioPlayerService::startEqualizerTimeUpdates()
{
    m_eqTimeUpdateTimer = m_platform.clock->repeating(tickInterval, [this] {
        if (!m_usingEqualizerEngine || m_isSeeking)
            return;
        const double seconds = m_parts.equalizer->currentTime();
        if (!isUsableTime(seconds))
            return;
        setCurrentTime(seconds);
        updateNowPlayingInfo();
        if (m_duration > 0 && m_currentTime >= m_duration - engineEndMargin)
            songRanOut();
    });
}

void AudioPlayerService::stopEqualizerEngine()
{
    if (!m_usingEqualizerEngine || !m_parts.equalizer)
        return;
    m_parts.equalizer->stop();
    m_eqTimeUpdateTimer.reset();
}

} // namespace cadorel
