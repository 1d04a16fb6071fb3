// SPDX-License-Identifier: GPL-3.0-or-later
// The road of a song to the stream player: dispatch by source, observers, seeking, errors. Online songs are
// in AudioPlayerOnline.cpp, the equalizer engine in AudioPlayerEngine.cpp.
#include "Services/AudioPlayerService.h"

#include "Services/AudioPlayerSupport.h"
#include "Services/Seams/EqualizerEngine.h"
#include "Utils/Console.h"
#include "Utils/LogText.h"
#include "Utils/Tasks.h"

#include <QPointer>

#include <QCoroTask>

#include <algorithm>
#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Clock of a target whose asset has none.
constexpr int defaultTimescale = 44100;
/// How far a user's seek may land off, in seconds: streamed files would stall over an exact one.
constexpr double seekTolerance = 0.5;
/// A seek that lands this close to the end, in seconds, ends the song.
constexpr double endMargin = 0.25;
double rounded(double seconds, int timescale)
{
    return std::round(seconds * timescale) / timescale;
}

QString flag(bool value)
{
    return value ? u"true"_s : u"false"_s;
}

MediaAsset fileOrAddress(const QUrl &url)
{
    return {.url = url, .prefersPreciseDuration = url.isLocalFile()};
}

} // namespace

// MARK: requests

void AudioPlayerService::playSong(const Song &song, const QList<Song> &queue)
{
    setCurrent(song, std::nullopt);
    leaveAddress();
    setIsLoading(false);
    m_nowPlayingArtwork.reset();
    m_nowPlayingArtworkURL.reset();
    if (!queue.isEmpty()) {
        setQueue(queue);
        setCurrentIndex(indexOrFirst(m_queue, song));
    }
    const std::optional<QUrl> url = song.assetURL();
    if (!url) {
        print(u"No asset URL for song"_s);
        standUnloaded();
        return;
    }
    if (!url->userName().isEmpty() && !url->password().isEmpty()) {
        playWebDAVURL(*url);
        return;
    }
    playURL(*url);
}

// MARK: loading

void AudioPlayerService::playURL(const QUrl &url)
{
    stopEqualizerEngine();
    const bool isFile = url.isLocalFile();
    const bool equalizerEnabled = m_parts.equalizer && m_parts.equalizer->isEnabled();
    print(u"🔍 播放检查: isFileURL="_s + flag(isFile) + u", EQ启用="_s + flag(equalizerEnabled) +
          u", URL="_s + (url.scheme().isEmpty() ? u"nil"_s : url.scheme()));
    if (isFile && equalizerEnabled) {
        playWithEqualizerEngine(url);
        return;
    }
    m_usingEqualizerEngine = false;
    playAsset(fileOrAddress(url), url, DurationLog::loaded);
}

/// Plays an asset on the stream player in place of what it played before.
/// @param url where the song is, which decides what of its length is known beforehand
void AudioPlayerService::playAsset(const MediaAsset &asset, const QUrl &url, DurationLog log)
{
    removeItemObserver();
    removeTimeObserver();
    removeEndObserver();
    print(u"▶️ 播放: "_s + logText(url.adjusted(QUrl::StripTrailingSlash).fileName()));

    const std::shared_ptr<PlayerItem> item = prepareItem(asset);
    if (!url.isLocalFile() && m_currentSong && m_currentSong->duration() > 0)
        setDuration(m_currentSong->duration());
    installItem(item);
    observePlayerState();
    m_player->setVolume(m_volume);
    m_player->setAutomaticallyWaitsToMinimizeStalling(true);
    observeTimeAndEnd();
    detach(loadDuration(item, log));
    m_player->play();
    setIsPlaying(true);
    startAudioLevelSimulation();
    updateNowPlayingInfo();
}

void AudioPlayerService::playURLWithAVPlayer(const QUrl &url)
{
    const std::shared_ptr<PlayerItem> item = prepareItem(fileOrAddress(url));
    installItem(item);
    m_player->setVolume(m_volume);
    observeTimeAndEnd();
    detach(loadDuration(item, DurationLog::none));
    m_player->play();
    setIsPlaying(true);
    startAudioLevelSimulation();
    updateNowPlayingInfo();
}

void AudioPlayerService::preparePlayerForResume(const QUrl &url, double position)
{
    m_usingEqualizerEngine = false;
    const std::shared_ptr<PlayerItem> item = prepareItem(fileOrAddress(url));
    installItem(item);
    observePlayerState();
    m_player->setVolume(m_volume);
    observeTime();
    detach(loadDuration(item, DurationLog::loaded));
    if (position > 0) {
        m_player->seek(position, 0, 0, {});
        setCurrentTime(position);
    }
}

/// Makes the item of an asset and watches its status.
std::shared_ptr<PlayerItem> AudioPlayerService::makeCurrentItem(const MediaAsset &asset)
{
    if (!m_player)
        m_player = m_platform.makeStreamPlayer();
    cancelSeek();
    removeItemObserver();
    m_playerItem = m_player->makeItem(asset);
    observeItem();
    return m_playerItem;
}

/// The same for a song that begins: the times are set back.
std::shared_ptr<PlayerItem> AudioPlayerService::prepareItem(const MediaAsset &asset)
{
    makeCurrentItem(asset);
    setCurrentTime(0);
    setDuration(0);
    return m_playerItem;
}

void AudioPlayerService::installItem(const std::shared_ptr<PlayerItem> &item)
{
    m_player->replaceCurrentItem(item);
}

QCoro::Task<void> AudioPlayerService::loadDuration(std::shared_ptr<PlayerItem> item, DurationLog log)
{
    const QPointer<AudioPlayerService> self(this);
    const std::expected<double, QString> seconds = co_await item->loadDuration();
    if (!self || item != m_playerItem || !isCurrentLoaded())
        co_return;
    if (!seconds) {
        if (log == DurationLog::loaded)
            print(u"Failed to load duration: "_s + seconds.error());
        else if (log == DurationLog::streamed)
            print(u"Failed to load streaming duration: "_s + seconds.error());
    } else if (std::isfinite(*seconds) && *seconds > 0) {
        setDuration(*seconds);
        if (log == DurationLog::loaded)
            print(u"📏 Loaded duration: "_s + consoleNumber(*seconds) + u"s"_s);
        else if (log == DurationLog::streamed)
            print(u"📏 流式播放时长: "_s + consoleNumber(*seconds) + u"s"_s);
    }
}

// MARK: observers

void AudioPlayerService::observeItem()
{
    if (m_isObservingPlayerItem)
        return;
    m_isObservingPlayerItem = true;
    m_itemStatusConnection =
        connect(m_playerItem.get(), &PlayerItem::statusChanged, this, &AudioPlayerService::itemStatusChanged);
    itemStatusChanged();
}

void AudioPlayerService::removeItemObserver()
{
    if (!m_isObservingPlayerItem)
        return;
    disconnect(m_itemStatusConnection);
    m_isObservingPlayerItem = false;
}

void AudioPlayerService::itemStatusChanged()
{
    switch (m_playerItem->status()) {
    case PlayerItem::Status::readyToPlay:
        print(u"✅ PlayerItem 状态: readyToPlay"_s);
        break;
    case PlayerItem::Status::unknown:
        print(u"⏳ PlayerItem 状态: unknown (加载中...)"_s);
        break;
    case PlayerItem::Status::failed: {
        const QString description = m_playerItem->errorDescription();
        const QString shown = description.isEmpty() ? u"未知错误"_s : description;
        print(u"❌ PlayerItem 状态: failed - "_s + shown);
        // The listener left it for a song that has no address (yet): that one has not failed.
        if (isCurrentLoaded())
            setPlayError(shown);
        setIsPlaying(false);
        updateNowPlayingInfo();
        break;
    }
    }
}

void AudioPlayerService::observePlayerState()
{
    disconnect(m_timeControlConnection);
    disconnect(m_rateConnection);
    m_timeControlConnection = connect(m_player.get(), &StreamPlayer::timeControlStatusChanged, this,
                                      &AudioPlayerService::syncIsPlayingWithPlayer);
    m_rateConnection = connect(m_player.get(), &StreamPlayer::rateChanged, this,
                               &AudioPlayerService::syncIsPlayingWithPlayer);
}

void AudioPlayerService::observeTime()
{
    removeTimeObserver();
    m_timeObserver =
        m_player->addPeriodicTimeObserver(tickInterval, [this](double seconds) { timeTick(seconds); });
}

void AudioPlayerService::observeTimeAndEnd()
{
    observeTime();
    removeEndObserver();
    m_endConnection =
        connect(m_playerItem.get(), &PlayerItem::didPlayToEnd, this, &AudioPlayerService::songRanOut);
}

void AudioPlayerService::removeTimeObserver()
{
    if (m_timeObserver && m_player)
        m_player->removeTimeObserver(*m_timeObserver);
    m_timeObserver.reset();
}

void AudioPlayerService::removeEndObserver()
{
    disconnect(m_endConnection);
    m_endConnection = {};
}

void AudioPlayerService::timeTick(double seconds)
{
    if (m_isSeeking || m_isUnloaded || !isUsableTime(seconds))
        return;
    setCurrentTime(seconds);
    updateNowPlayingInfo();
    if (m_playerItem->asset().resourceLoader)
        persistPlaybackStateIfNeeded();
}

void AudioPlayerService::syncIsPlayingWithPlayer()
{
    if (m_usingEqualizerEngine && m_parts.equalizer) {
        setIsPlaying(m_parts.equalizer->isPlaying());
    } else {
        setIsPlaying(m_player && m_player->timeControlStatus() == StreamPlayer::TimeControlStatus::playing &&
                     m_player->rate() > 0);
    }
    if (!m_isPlaying)
        stopAudioLevelSimulation();
    updateNowPlayingInfo();
    persistPlaybackStateIfNeeded();
}

// MARK: transport

void AudioPlayerService::play()
{
    // It begins by itself when its address is there. The song before, which is loaded still, is not meant.
    if (m_addressTransfer)
        return;
    if (m_isUnloaded) {
        // What is loaded is the song before; this one may have an address by now.
        if (m_currentOnlineSong)
            playOnlineSong(OnlineSong(*m_currentOnlineSong), {});
        else if (m_currentSong)
            playSong(Song(*m_currentSong), {});
        return;
    }
    if (m_usingEqualizerEngine && m_parts.equalizer) {
        if (!resumeEqualizerEngine())
            return;
    } else if (m_player) {
        if (replaysFailedItem())
            return;
        resumeObservers();
        m_resumesAfterSeek = true;
        m_player->play();
    }
    syncIsPlayingWithPlayer();
    startAudioLevelSimulation();
    updateNowPlayingInfo();
}

/// A song that was restored, or that ended by a seek or in repeatOne, has lost its observers or its duration
/// on the way; played again, it must show its progress and be followed by the next one.
void AudioPlayerService::resumeObservers()
{
    if (!m_playerItem)
        return;
    if (!m_timeObserver || !m_endConnection)
        observeTimeAndEnd();
    if (m_duration <= 0)
        detach(loadDuration(m_playerItem, DurationLog::none));
}

/// The engine in use stands still, and a seek under way leaves it so.
void AudioPlayerService::pauseEngine()
{
    if (m_usingEqualizerEngine && m_parts.equalizer) {
        m_parts.equalizer->pause();
        m_eqTimeUpdateTimer.reset();
    } else if (m_player) {
        m_resumesAfterSeek = false;
        m_player->pause();
    }
}

void AudioPlayerService::pause()
{
    pauseEngine();
    setIsPlaying(false);
    stopAudioLevelSimulation();
    updateNowPlayingInfo();
    persistPlaybackState(true);
}

/// The current song has nothing that could be loaded: the one before does not go on under its name.
void AudioPlayerService::standUnloaded()
{
    m_isUnloaded = true;
    stop();
}

void AudioPlayerService::stop()
{
    const bool wasCurrentLoaded = isCurrentLoaded();
    leaveAddress();
    m_isUnloaded = !wasCurrentLoaded;
    setIsLoading(false);
    cancelSeek();
    // It is as long as the song before, which is named no more.
    if (m_isUnloaded)
        setDuration(0);
    setCurrentTime(0);
    pause();
    // A stream of the song before may sound beside the equalizer engine.
    if (m_isUnloaded && m_usingEqualizerEngine && m_player)
        m_player->pause();
    if (m_usingEqualizerEngine || !m_player || !m_playerItem) {
        standAtStart();
        return;
    }
    // What the stream player still tells of its old position is late.
    m_isSeeking = true;
    m_player->seek(0, 0, 0, [self = QPointer<AudioPlayerService>(this), serial = m_seekSerial](bool) {
        if (self && serial == self->m_seekSerial)
            self->m_isSeeking = false;
    });
}

bool AudioPlayerService::canSeek() const
{
    if (m_duration <= 0 || !isCurrentLoaded())
        return false;
    if (m_usingEqualizerEngine)
        return true;
    return m_playerItem && m_playerItem->status() != PlayerItem::Status::failed;
}

void AudioPlayerService::togglePlayPause()
{
    if (m_isPlaying)
        pause();
    else
        play();
}

void AudioPlayerService::seek(double time)
{
    if (m_usingEqualizerEngine && m_parts.equalizer) {
        const double target = isUsableTime(time) ? time : 0;
        m_isSeeking = true;
        setCurrentTime(target);
        m_parts.equalizer->seek(target);
        m_isSeeking = false;
        updateNowPlayingInfo();
        return;
    }
    if (!m_player || !m_playerItem) {
        print(u"⚠️ Seek failed: player is nil"_s);
        return;
    }
    double limit = m_duration;
    if (const std::optional<SeekableRange> range = m_playerItem->seekableRange()) {
        limit = range->duration;
        print(u"📊 Seekable range: "_s + consoleNumber(range->start) + u"s - "_s +
              consoleNumber(range->end()) + u"s (duration: "_s + consoleNumber(range->duration) + u"s)"_s);
    }
    print(u"🎯 Seek requested to: "_s + consoleNumber(time) + u"s, duration: "_s + consoleNumber(m_duration) +
          u"s"_s);
    const double clamped = std::isfinite(time) ? std::clamp(time, 0.0, std::max(0.0, limit)) : 0.0;
    const int timescale = m_playerItem->timescale() > 0 ? m_playerItem->timescale() : defaultTimescale;
    const double target = rounded(clamped, timescale);
    print(u"🎯 Target CMTime: "_s + consoleNumber(target) + u"s, timescale: "_s + QString::number(timescale));

    // The pause below is part of the seek: a second seek before the first has landed resumes what played
    // before.
    m_resumesAfterSeek = m_isSeeking ? m_resumesAfterSeek : m_isPlaying;
    m_isSeeking = true;
    setCurrentTime(target);
    m_player->pause();
    const quint64 serial = ++m_seekSerial;
    m_player->seek(target, seekTolerance, seekTolerance,
                   [self = QPointer<AudioPlayerService>(this), serial](bool finished) {
                       if (self && serial == self->m_seekSerial)
                           self->seekFinished(finished);
                   });
}

/// Forgets a seek under way: its landing no longer moves anything.
void AudioPlayerService::cancelSeek()
{
    m_isSeeking = false;
    ++m_seekSerial;
}

void AudioPlayerService::seekFinished(bool finished)
{
    m_isSeeking = false;
    const double position = m_playerItem->currentTime();
    print(u"✅ Seek finished: "_s + flag(finished) + u", actual position: "_s + consoleNumber(position) +
          u"s"_s);
    if (isUsableTime(position))
        setCurrentTime(position);
    const double total = m_duration > 0 ? m_duration : m_playerItem->duration();
    if (std::isfinite(total) && total > 0 && total - m_currentTime <= endMargin) {
        setCurrentTime(0);
        setDuration(0);
        removeTimeObserver();
        removeEndObserver();
        songRanOut();
        return;
    }
    if (m_resumesAfterSeek)
        m_player->play();
    updateNowPlayingInfo();
}

} // namespace cadorel
