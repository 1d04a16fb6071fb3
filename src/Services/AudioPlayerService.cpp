// SPDX-License-Identifier: GPL-3.0-or-later
// Queue, play modes, snapshot and published state. The road of a song to the sound is in
// AudioPlayerPipeline.cpp.
#include "Services/AudioPlayerService.h"

#include "Platform/HttpTransfer.h"
#include "Platform/SharedServices.h"
#include "Services/APIConfigService.h"
#include "Services/AudioLevels.h"
#include "Services/AudioPlayerSupport.h"
#include "Services/Cloud/CloudSongCache.h"
#include "Services/EqualizerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/Seams/EqualizerEngine.h"
#include "Services/Seams/MediaCenter.h"
#include "Services/SystemMediaCenter.h"
#include "Services/WebDAVService.h"
#include "Services/WebDAVStreamingService.h"
#include "Utils/ProcessHash.h"
#include "Utils/StableHash.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QString playbackStateKey = u"lastPlaybackState"_s;

/// Shortest time between two snapshots that are written on changes of the player's state.
constexpr qint64 persistIntervalMs = 5000;

/// Past this position "previous" restarts the song instead of leaving it, in seconds.
constexpr double restartThreshold = 3.0;

} // namespace

AudioPlayerService::AudioPlayerService(Platform &platform, LocalMusicImportService &importService,
                                       AudioPlayerParts parts)
    : m_platform(platform)
    , m_importService(importService)
    , m_parts(std::move(parts))
    , m_cloudSongs(std::make_unique<CloudSongCache>(platform))
    , m_levels(
          std::make_unique<AudioLevels>(*platform.clock, *platform.random, [this] { return m_isPlaying; }))
{
    connect(m_levels.get(), &AudioLevels::audioLevelsChanged, this, &AudioPlayerService::audioLevelsChanged);
    if (m_parts.mediaCenter) {
        m_parts.mediaCenter->setupAudioSession(*this);
        m_parts.mediaCenter->setupRemoteCommandCenter(*this);
        m_parts.mediaCenter->setupNowPlayingInfo(*this);
        m_parts.mediaCenter->setupInterruptionObservers(*this);
    }
    setupEqualizerObserver();
    restoreLastPlaybackState();
}

AudioPlayerService::~AudioPlayerService()
{
    leaveAddress();
    // Who waits for its downloads is told while the player still stands.
    m_cloudSongs.reset();
    removeItemObserver();
    removeTimeObserver();
    removeEndObserver();
    disconnect(m_timeControlConnection);
    disconnect(m_rateConnection);
}

AudioPlayerService &AudioPlayerService::shared()
{
    return sharedService<AudioPlayerService>([] {
        LocalMusicImportService &importService = LocalMusicImportService::shared();
        return std::make_unique<AudioPlayerService>(
            processPlatform(), importService,
            AudioPlayerParts{.equalizer =
                                 processPlatform().makeAudioEngine ? &EqualizerService::shared() : nullptr,
                             .streaming = &WebDAVStreamingService::shared(),
                             .onlineAddresses = &APIConfigService::shared(),
                             .mediaCenter = &SystemMediaCenter::shared(),
                             // Asked for when it is needed: the player comes up before it.
                             .updateSongMetadata = [](const Song &song) {
                                 WebDAVService::shared().updateSongMetadata(song);
                             }});
    });
}

QString AudioPlayerService::audioQuality() const
{
    return m_platform.preferences->stringValue(u"audioQuality"_s).value_or(u"320k"_s);
}

// MARK: queue and modes

void AudioPlayerService::togglePlayMode()
{
    m_playMode = toggled(m_playMode);
    Q_EMIT playModeChanged();
}

void AudioPlayerService::setPlayMode(PlayMode mode)
{
    if (m_playMode == mode)
        return;
    m_playMode = mode;
    Q_EMIT playModeChanged();
}

int AudioPlayerService::queueCount() const
{
    return static_cast<int>(m_queue.isEmpty() ? m_onlineQueue.size() : m_queue.size());
}

int AudioPlayerService::getNextIndex()
{
    switch (m_playMode) {
    case PlayMode::sequential:
    case PlayMode::repeatAll:
        return (m_currentIndex + 1) % queueCount();
    case PlayMode::shuffle:
        return m_platform.random->index(queueCount());
    case PlayMode::repeatOne:
        return m_currentIndex;
    }
    Q_UNREACHABLE();
}

int AudioPlayerService::getPreviousIndex()
{
    switch (m_playMode) {
    case PlayMode::sequential:
    case PlayMode::repeatAll:
        return m_currentIndex > 0 ? m_currentIndex - 1 : queueCount() - 1;
    case PlayMode::shuffle:
        return m_platform.random->index(queueCount());
    case PlayMode::repeatOne:
        return m_currentIndex;
    }
    Q_UNREACHABLE();
}

/// Plays one entry of the queue in use; an index outside of it plays nothing.
void AudioPlayerService::playAt(int index)
{
    if (index < 0 || index >= queueCount())
        return;
    setCurrentIndex(index);
    if (!m_queue.isEmpty())
        playSong(Song(m_queue.at(index)), QList<Song>(m_queue));
    else
        playOnlineSong(OnlineSong(m_onlineQueue.at(index)), QList<OnlineSong>(m_onlineQueue));
}

void AudioPlayerService::next()
{
    leaveSong();
    if (queueCount() > 0)
        playAt(getNextIndex());
}

void AudioPlayerService::previous()
{
    // The time of a song that was left says nothing about the one that is named.
    if (m_currentTime > restartThreshold && isCurrentLoaded()) {
        seek(0);
        return;
    }
    leaveSong();
    if (queueCount() > 0)
        playAt(getPreviousIndex());
}

/// What next and previous do before they look at the queue.
void AudioPlayerService::leaveSong()
{
    // With nothing to go to the song stays, and a seek under way must still land to let it play on.
    if (queueCount() > 0)
        cancelSeek();
    else
        m_isSeeking = false;
    setCurrentTime(0);
}

void AudioPlayerService::playerDidFinishPlaying()
{
    cancelSeek();
    setCurrentTime(0);
    setDuration(0);
    switch (m_playMode) {
    case PlayMode::sequential:
        if (m_currentIndex >= queueCount() - 1) {
            stopAtEnd();
        } else {
            next();
        }
        break;
    case PlayMode::repeatOne:
        seek(0);
        play();
        break;
    case PlayMode::shuffle:
    case PlayMode::repeatAll:
        // An emptied queue has nothing to go on with: the song does not stand at its end as if it played.
        if (queueCount() > 0)
            next();
        else
            stopAtEnd();
        break;
    }
}

/// The sound of a song has ended, by itself or because the listener went to its end.
void AudioPlayerService::songRanOut()
{
    // The listener left it for an online song whose address is on its way: no other is to follow.
    if (m_addressTransfer)
        stopAtEnd();
    else
        playerDidFinishPlaying();
}

void AudioPlayerService::stopAtEnd()
{
    standAtStart();
    setIsPlaying(false);
    stopAudioLevelSimulation();
    updateNowPlayingInfo();
}

/// The engine in use follows the published position, so that the song starts anew when it is played again.
void AudioPlayerService::standAtStart()
{
    if (m_usingEqualizerEngine && m_parts.equalizer) {
        m_parts.equalizer->pause();
        m_parts.equalizer->seek(0);
        m_eqTimeUpdateTimer.reset();
    } else if (m_player && m_playerItem) {
        m_player->seek(0, 0, 0, {});
    }
}

void AudioPlayerService::endCurrentTrack()
{
    removeTimeObserver();
    cancelSeek();
    if (m_player)
        m_player->pause();
    songRanOut();
}

void AudioPlayerService::clearQueue()
{
    setQueue({});
    setOnlineQueue({});
}

// MARK: snapshot

void AudioPlayerService::persistPlaybackSnapshot()
{
    persistPlaybackState(true);
}

void AudioPlayerService::persistPlaybackState([[maybe_unused]] bool force)
{
    const std::optional<QUrl> url = m_currentSong ? m_currentSong->assetURL() : std::nullopt;
    if (!url || !url->isLocalFile() || url->toLocalFile().isEmpty() || m_duration <= 0)
        return;
    const PlaybackSnapshot snapshot{.songId = m_currentSong->id(),
                                    .title = m_currentSong->title(),
                                    .artist = m_currentSong->artist(),
                                    .album = m_currentSong->album(),
                                    .filePath = url->toLocalFile(),
                                    .position = m_currentTime,
                                    .duration = m_duration,
                                    .date = m_platform.clock->now()};
    const std::optional<QByteArray> json = snapshot.encoded();
    if (!json)
        return;
    m_platform.preferences->setData(playbackStateKey, *json);
    m_lastPersistDate = m_platform.clock->now();
}

void AudioPlayerService::persistPlaybackStateIfNeeded()
{
    const QDateTime now = m_platform.clock->now();
    if (m_lastPersistDate && m_lastPersistDate->msecsTo(now) < persistIntervalMs)
        return;
    persistPlaybackState(false);
    m_lastPersistDate = now;
}

void AudioPlayerService::restoreLastPlaybackState()
{
    const std::optional<QByteArray> json = m_platform.preferences->dataValue(playbackStateKey);
    const std::optional<PlaybackSnapshot> snapshot = json ? PlaybackSnapshot::decoded(*json) : std::nullopt;
    if (!snapshot || !QFile::exists(snapshot->filePath))
        return;
    const QUrl url = QUrl::fromLocalFile(snapshot->filePath);
    if (const auto song = m_importService.findImportedSong(url, snapshot->songId)) {
        setCurrent(song, std::nullopt);
        setQueue(m_importService.importedSongs());
        setCurrentIndex(indexOrFirst(m_queue, *song));
    } else {
        SongFields fields;
        fields.id = snapshot->songId;
        fields.title = snapshot->title;
        fields.artist = snapshot->artist;
        fields.album = snapshot->album;
        fields.albumId = "album_"_L1 + processHash(snapshot->album);
        fields.duration = snapshot->duration;
        fields.dateAdded = m_platform.clock->now();
        fields.assetURL = url;
        // A cover is kept under the id that a stored file's name gives.
        if (const auto artwork = m_importService.artworkFileURL(stableHash(url.fileName()))) {
            const QFileInfo file(artwork->toLocalFile());
            if (file.isFile() && file.isReadable())
                fields.artworkData = ArtworkData::inFile(file.filePath().toUtf8(), file.size());
        }
        const Song restored(fields);
        setCurrent(restored, std::nullopt);
        setQueue({restored});
        setOnlineQueue({});
        setCurrentIndex(0);
    }
    preparePlayerForResume(url, snapshot->position);
    setIsPlaying(false);
    updateNowPlayingInfo();
}

// MARK: published state

void AudioPlayerService::setQueue(const QList<Song> &value)
{
    // Songs are equal by id: a list with newer records counts as another one.
    if (m_queue.constData() == value.constData() && m_queue.size() == value.size())
        return;
    m_queue = value;
    Q_EMIT queueChanged();
}

void AudioPlayerService::setOnlineQueue(const QList<OnlineSong> &value)
{
    if (m_onlineQueue.constData() == value.constData() && m_onlineQueue.size() == value.size())
        return;
    m_onlineQueue = value;
    Q_EMIT onlineQueueChanged();
}

void AudioPlayerService::setCurrentIndex(int value)
{
    if (m_currentIndex == value)
        return;
    m_currentIndex = value;
    Q_EMIT currentIndexChanged();
}

void AudioPlayerService::setCurrent(const std::optional<Song> &song, const std::optional<OnlineSong> &online)
{
    const bool sameSong = m_currentSong ? song && m_currentSong->isSameRecord(*song) : !song.has_value();
    const bool sameOnline = !m_currentOnlineSong && !online;
    // Both stand before anybody is told: a listener never meets two current songs.
    m_currentSong = song;
    m_currentOnlineSong = online;
    if (!sameSong)
        Q_EMIT currentSongChanged();
    if (!sameOnline)
        Q_EMIT currentOnlineSongChanged();
}

void AudioPlayerService::setIsPlaying(bool value)
{
    if (m_isPlaying == value)
        return;
    m_isPlaying = value;
    Q_EMIT isPlayingChanged();
}

void AudioPlayerService::setIsLoading(bool value)
{
    if (m_isLoading == value)
        return;
    m_isLoading = value;
    Q_EMIT isLoadingChanged();
}

void AudioPlayerService::setCurrentTime(double value)
{
    if (m_currentTime == value)
        return;
    m_currentTime = value;
    Q_EMIT currentTimeChanged();
}

void AudioPlayerService::setDuration(double value)
{
    if (m_duration == value)
        return;
    m_duration = value;
    Q_EMIT durationChanged();
}

void AudioPlayerService::setPlayError(const std::optional<QString> &value)
{
    if (m_playError == value)
        return;
    m_playError = value;
    Q_EMIT playErrorChanged();
}

void AudioPlayerService::setVolume(float v)
{
    const float clamped = std::clamp(v, 0.0F, 1.0F);
    if (m_player)
        m_player->setVolume(clamped);
    if (m_usingEqualizerEngine && m_parts.equalizer)
        m_parts.equalizer->setVolume(clamped);
    if (m_volume == clamped)
        return;
    m_volume = clamped;
    Q_EMIT volumeChanged();
}

void AudioPlayerService::updateNowPlayingInfo()
{
    if (m_parts.mediaCenter)
        m_parts.mediaCenter->updateNowPlayingInfo(*this);
}

void AudioPlayerService::startAudioLevelSimulation()
{
    m_levels->startAudioLevelSimulation();
}

void AudioPlayerService::stopAudioLevelSimulation()
{
    m_levels->stopAudioLevelSimulation();
}

const QList<qreal> &AudioPlayerService::audioLevels() const
{
    return m_levels->audioLevels();
}

bool AudioPlayerService::isSimulatingLevels() const
{
    return m_levels->isRunning();
}

} // namespace cadorel
