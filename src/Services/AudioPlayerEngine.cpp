// SPDX-License-Identifier: GPL-3.0-or-later
// Local songs on the equalizer engine, and their way there and back in mid-song.
#include "Services/AudioPlayerService.h"

#include "Services/AudioPlayerSupport.h"
#include "Services/Seams/EqualizerEngine.h"
#include "Utils/Console.h"
#include "Utils/LogText.h"
#include "Utils/Tasks.h"

#include <QPointer>
#include <QSignalBlocker>

#include <QCoroTask>

#include <algorithm>
#include <cmath>
#include <exception>

namespace cadorel {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// The equalizer engine's song counts as over this much before its end, in seconds.
constexpr double engineEndMargin = 0.5;
/// Positions that are handed over to the stream player are multiples of one over this, in seconds.
constexpr double handoverTimescale = 600;
/// The equalizer engine's last sound fades out on its way to the ear; by then it is over.
constexpr auto fadingTime = 50ms;

} // namespace

// MARK: switching

void AudioPlayerService::setupEqualizerObserver()
{
    // Queued: whoever moves the switch has done so by then, settings and all.
    if (m_parts.equalizer)
        connect(m_parts.equalizer, &EqualizerEngine::isEnabledChanged, this,
                &AudioPlayerService::onEqualizerStateChanged, Qt::QueuedConnection);
}

void AudioPlayerService::onEqualizerStateChanged(bool isEnabled)
{
    const std::optional<QUrl> url = m_currentSong ? m_currentSong->assetURL() : std::nullopt;
    if (!url || !url->isLocalFile()) {
        print(u"🎛️ 均衡器状态变化: 非本地文件，无需切换引擎"_s);
        return;
    }
    // A seek under way has paused the stream player for its own sake.
    const bool shouldPlay = m_isSeeking ? m_resumesAfterSeek : m_isPlaying;
    setCurrentTime(heardPosition());
    const double position = m_currentTime;
    print(u"🎛️ 均衡器状态变化: "_s + (isEnabled ? u"启用"_s : u"关闭"_s) + u"，当前位置: "_s +
          consoleNumber(position) + u"s"_s);
    if (isEnabled && !m_usingEqualizerEngine)
        switchToEqualizerEngine(*url, position, shouldPlay);
    else if (!isEnabled && m_usingEqualizerEngine)
        switchToAVPlayer(*url, position, shouldPlay);
}

/// Where the listener is in the song at this moment, in seconds: while it plays, the published time can be a
/// quarter of a second old.
double AudioPlayerService::heardPosition() const
{
    double seconds = m_currentTime;
    if (m_usingEqualizerEngine)
        seconds = m_parts.equalizer->currentTime();
    else if (m_isPlaying && !m_isSeeking && m_playerItem &&
             m_playerItem->status() == PlayerItem::Status::readyToPlay)
        seconds = m_playerItem->currentTime();
    if (!isUsableTime(seconds))
        return m_currentTime;
    return m_duration > 0 ? std::min(seconds, m_duration) : seconds;
}

void AudioPlayerService::switchToEqualizerEngine(const QUrl &url, double position, bool shouldPlay)
{
    print(u"🎛️ 切换到均衡器引擎，位置: "_s + consoleNumber(position));
    cancelSeek();
    if (m_player) {
        // That it falls silent is no news: the song goes on.
        const QSignalBlocker unnoticed(m_player.get());
        m_player->pause();
    }
    EqualizerEngine &engine = *m_parts.equalizer;
    try {
        engine.prepareToPlay(url);
        if (position > 0)
            engine.seek(position);
        engine.setVolume(m_volume);
        if (shouldPlay)
            engine.play();
    } catch (const std::exception &error) {
        const QString text = QString::fromUtf8(error.what());
        print(u"❌ 切换到均衡器引擎失败: "_s + text);
        engine.stop();
        // Music that stops without a word would leave its listener helpless.
        if (shouldPlay)
            setPlayError(text);
        syncIsPlayingWithPlayer();
        return;
    }
    leaveStreamPlayer();
    m_usingEqualizerEngine = true;
    setDuration(engine.duration());
    if (shouldPlay) {
        startEqualizerTimeUpdates();
        goOnPlaying();
    }
    updateNowPlayingInfo();
    print(u"✅ 已切换到均衡器引擎"_s);
}

void AudioPlayerService::switchToAVPlayer(const QUrl &url, double position, bool shouldPlay)
{
    print(u"🎛️ 切换回 AVPlayer，位置: "_s + consoleNumber(position));
    stopEqualizerEngine();
    const auto silentAt = m_platform.clock->monotonic() + fadingTime;
    m_usingEqualizerEngine = false;
    leaveStreamPlayer();
    const std::shared_ptr<PlayerItem> item = makeCurrentItem({.url = url, .prefersPreciseDuration = true});
    installItem(item);
    observePlayerState();
    m_player->setVolume(m_volume);
    // Whoever plays, pauses or seeks before the song is there again meets a seek under way.
    m_isSeeking = true;
    m_resumesAfterSeek = shouldPlay;
    const double target = std::round(position * handoverTimescale) / handoverTimescale;
    m_player->seek(target, 0, 0,
                   [self = QPointer<AudioPlayerService>(this), serial = m_seekSerial, silentAt](bool) {
                       if (self && serial == self->m_seekSerial)
                           self->streamPlayerArrived(silentAt);
                   });
    observeTimeAndEnd();
    if (m_duration <= 0)
        detach(loadDuration(item, DurationLog::none));
    print(u"✅ 已切换回 AVPlayer"_s);
}

void AudioPlayerService::streamPlayerArrived(std::chrono::nanoseconds silentAt)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(silentAt - m_platform.clock->monotonic());
    if (left <= 0ms || !m_resumesAfterSeek) {
        streamPlayerTookOver();
        return;
    }
    m_handoverTimer = m_platform.clock->singleShot(left, [this, serial = m_seekSerial] {
        if (serial == m_seekSerial)
            streamPlayerTookOver();
    });
}

void AudioPlayerService::streamPlayerTookOver()
{
    m_isSeeking = false;
    if (!m_resumesAfterSeek || m_playerItem->status() == PlayerItem::Status::failed)
        return;
    goOnPlaying();
    m_player->play();
    updateNowPlayingInfo();
}

/// What the stream player still has under way belongs to what it played before.
void AudioPlayerService::leaveStreamPlayer()
{
    cancelSeek();
    removeItemObserver();
    removeTimeObserver();
    removeEndObserver();
    m_playerItem.reset();
}

/// The other engine plays on: a state that a seek or an interruption had taken away comes back.
void AudioPlayerService::goOnPlaying()
{
    setIsPlaying(true);
    if (!isSimulatingLevels())
        startAudioLevelSimulation();
}

// MARK: playing

void AudioPlayerService::playWithEqualizerEngine(const QUrl &url)
{
    print(u"🎛️ 使用均衡器引擎播放: "_s + logText(url.fileName()));
    // The times go first: the pause below may store the new song, and must not at the old position.
    cancelSeek();
    setCurrentTime(0);
    setDuration(0);
    if (m_player)
        m_player->pause();
    leaveStreamPlayer();
    m_usingEqualizerEngine = true;
    EqualizerEngine &engine = *m_parts.equalizer;
    try {
        engine.prepareToPlay(url);
        setDuration(engine.duration());
        engine.setVolume(m_volume);
        engine.play();
    } catch (const std::exception &error) {
        print(u"❌ 均衡器引擎播放失败: "_s + QString::fromUtf8(error.what()));
        engine.stop();
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

/// Plays on after a pause. @return whether it does
bool AudioPlayerService::resumeEqualizerEngine()
{
    EqualizerEngine &engine = *m_parts.equalizer;
    // The end of a song takes its duration away, and without one the next end would not be seen.
    if (m_duration <= 0)
        setDuration(engine.duration());
    try {
        engine.play();
    } catch (const std::exception &error) {
        engineFellSilent(QString::fromUtf8(error.what()));
        return false;
    }
    startEqualizerTimeUpdates();
    return true;
}

void AudioPlayerService::startEqualizerTimeUpdates()
{
    m_eqTimeUpdateTimer = m_platform.clock->repeating(tickInterval, [this] { equalizerTick(); });
}

void AudioPlayerService::equalizerTick()
{
    if (!m_usingEqualizerEngine || m_isSeeking)
        return;
    const double seconds = m_parts.equalizer->currentTime();
    if (!isUsableTime(seconds))
        return;
    setCurrentTime(seconds);
    updateNowPlayingInfo();
    if (m_duration > 0 && m_currentTime >= m_duration - engineEndMargin)
        songRanOut();
    else if (m_isPlaying && !m_parts.equalizer->isPlaying())
        engineFellSilent(u"音频设备已断开"_s);
}

/// The sound device has gone or is not there: the song stands where it is, until somebody plays it again.
void AudioPlayerService::engineFellSilent(const QString &reason)
{
    m_eqTimeUpdateTimer.reset();
    // A song that was left for one whose address is on its way says nothing about that one.
    if (isCurrentLoaded())
        setPlayError(reason);
    m_parts.equalizer->pause();
    syncIsPlayingWithPlayer();
    persistPlaybackState(true);
}

void AudioPlayerService::stopEqualizerEngine()
{
    if (!m_usingEqualizerEngine || !m_parts.equalizer)
        return;
    m_parts.equalizer->stop();
    m_eqTimeUpdateTimer.reset();
}

} // namespace cadorel
