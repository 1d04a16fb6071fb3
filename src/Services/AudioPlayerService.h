// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/OnlineSong.h"
#include "Models/PlayMode.h"
#include "Models/PlaybackSnapshot.h"
#include "Models/Song.h"
#include "Platform/Platform.h"
#include "Services/AudioPlayerParts.h"
#include "Services/Import/JobGate.h"

#include <QCoroTask>
#include <QDateTime>
#include <QImage>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <chrono>
#include <memory>
#include <optional>

namespace cadorel {

class AudioLevels;
class CloudSongCache;
class LocalMusicImportService;
struct CloudMetadata;

/// The single player: queue and play modes, the road of a song to an engine, and the snapshot that brings the
/// last song back. Main thread. `queue` and `onlineQueue` may both hold songs; navigation looks at `queue`
/// first.
class AudioPlayerService : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY isPlayingChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(double currentTime READ currentTime NOTIFY currentTimeChanged)
    Q_PROPERTY(double duration READ duration NOTIFY durationChanged)
    Q_PROPERTY(float volume READ volume WRITE setVolume NOTIFY volumeChanged)
    Q_PROPERTY(QList<qreal> audioLevels READ audioLevels NOTIFY audioLevelsChanged)
    Q_PROPERTY(QString playError READ playErrorText NOTIFY playErrorChanged)
    Q_PROPERTY(QString playModeSymbol READ playModeSymbol NOTIFY playModeChanged)
    Q_PROPERTY(QString playModeLabel READ playModeLabel NOTIFY playModeChanged)

public:
    /// Sets the desktop's controls up and restores the last song, paused at its position.
    /// @param platform, @param importService and the parts outlive the player
    AudioPlayerService(Platform &platform, LocalMusicImportService &importService,
                       AudioPlayerParts parts = {});
    ~AudioPlayerService() override;
    Q_DISABLE_COPY_MOVE(AudioPlayerService)

    static AudioPlayerService &shared();

    const QList<Song> &queue() const { return m_queue; }
    const QList<OnlineSong> &onlineQueue() const { return m_onlineQueue; }
    /// Index of the current song in whichever queue is in use.
    int currentIndex() const { return m_currentIndex; }
    const std::optional<Song> &currentSong() const { return m_currentSong; }
    const std::optional<OnlineSong> &currentOnlineSong() const { return m_currentOnlineSong; }
    PlayMode playMode() const { return m_playMode; }
    QString playModeSymbol() const { return symbol(m_playMode); }
    QString playModeLabel() const { return label(m_playMode); }
    bool isPlaying() const { return m_isPlaying; }
    /// An address is being fetched or a stream prepared.
    bool isLoading() const { return m_isLoading; }
    /// Seconds.
    double currentTime() const { return m_currentTime; }
    /// Seconds; 0 while unknown.
    double duration() const { return m_duration; }
    /// Amplitude factor, 0...1.
    float volume() const { return m_volume; }
    /// Seven bars that move like music while the player plays, 0.1...1; they change 12 times a second.
    const QList<qreal> &audioLevels() const;
    /// A timer moves the bars.
    bool isSimulatingLevels() const;
    /// What went wrong, for a listener to read.
    const std::optional<QString> &playError() const { return m_playError; }
    QString playErrorText() const { return m_playError.value_or(QString()); }
    void clearPlayError() { setPlayError(std::nullopt); }
    bool usingEqualizerEngine() const { return m_usingEqualizerEngine; }
    /// What is loaded is the current song. While the address of an online song is fetched, after a stop
    /// meanwhile, and for a song without an address, it is the song before.
    bool isCurrentLoaded() const { return !m_isLoading && !m_isUnloaded; }
    /// A seek leads somewhere in the current song.
    bool canSeek() const;
    /// Quality asked of the online platforms.
    QString audioQuality() const;

    /// Cover fetched for the current song, and the address it was fetched from; each song starts without.
    const std::optional<QImage> &nowPlayingArtwork() const { return m_nowPlayingArtwork; }
    const std::optional<QUrl> &nowPlayingArtworkURL() const { return m_nowPlayingArtworkURL; }
    void setNowPlayingArtwork(const std::optional<QImage> &artwork) { m_nowPlayingArtwork = artwork; }
    void setNowPlayingArtworkURL(const std::optional<QUrl> &url) { m_nowPlayingArtworkURL = url; }

    /// Plays a song of any source but the online platforms. An empty @p queue leaves the queue as it is.
    void playSong(const Song &song, const QList<Song> &queue);
    /// Plays an online song, whose address is fetched first.
    void playOnlineSong(const OnlineSong &song, const QList<OnlineSong> &queue);
    Q_INVOKABLE void play();
    Q_INVOKABLE void pause();
    Q_INVOKABLE void togglePlayPause();
    /// Ends the sound and stands at the beginning: played again, the song starts anew.
    void stop();
    /// @param time seconds
    Q_INVOKABLE void seek(double time);
    Q_INVOKABLE void setVolume(float v);
    /// One step along sequential, repeatAll, shuffle, repeatOne.
    Q_INVOKABLE void togglePlayMode();
    void setPlayMode(PlayMode mode);
    Q_INVOKABLE void next();
    Q_INVOKABLE void previous();
    /// Ends the current song as if it had run out.
    Q_INVOKABLE void endCurrentTrack();
    /// Empties both queues; the song plays on.
    void clearQueue();
    /// Writes the snapshot now.
    void persistPlaybackSnapshot();
    /// Brings `isPlaying` in line with the engine in use.
    void syncIsPlayingWithPlayer();

    /// Somebody else needs the speaker, or the machine sleeps: the sound stops. At the end it goes on if it
    /// did play and may go on.
    void handleInterruption(AudioSession::InterruptionType type, bool shouldResume);
    /// The sound has got another way out; it stops when the old one has gone.
    void handleRouteChange(AudioSession::RouteChangeReason reason);

Q_SIGNALS:
    void queueChanged();
    void onlineQueueChanged();
    void currentIndexChanged();
    void currentSongChanged();
    void currentOnlineSongChanged();
    void playModeChanged();
    void isPlayingChanged();
    void isLoadingChanged();
    void currentTimeChanged();
    void durationChanged();
    void volumeChanged();
    void audioLevelsChanged();
    void playErrorChanged();

private:
    friend class AudioPlayerCloudAccess; ///< of tests: operations that nothing calls yet
    /// What is logged of the length of an item.
    enum class DurationLog { none, loaded, streamed };

    int queueCount() const;
    int getNextIndex();
    int getPreviousIndex();
    void playAt(int index);
    void leaveSong();
    void songRanOut();
    void playerDidFinishPlaying();
    void stopAtEnd();
    void standAtStart();
    void persistPlaybackState(bool force);
    void persistPlaybackStateIfNeeded();
    void restoreLastPlaybackState();
    void preparePlayerForResume(const QUrl &url, double position);

    void playURL(const QUrl &url);
    void playURLWithAVPlayer(const QUrl &url);
    void playWithEqualizerEngine(const QUrl &url);
    void stopEqualizerEngine();
    bool resumeEqualizerEngine();
    void startEqualizerTimeUpdates();
    void equalizerTick();
    void engineFellSilent(const QString &reason);
    void setupEqualizerObserver();
    void onEqualizerStateChanged(bool isEnabled);
    void switchToEqualizerEngine(const QUrl &url, double position, bool shouldPlay);
    void switchToAVPlayer(const QUrl &url, double position, bool shouldPlay);
    void streamPlayerArrived(std::chrono::nanoseconds silentAt);
    void streamPlayerTookOver();
    void leaveStreamPlayer();
    void goOnPlaying();
    double heardPosition() const;
    void playWebDAVURL(const QUrl &url);
    void playStreamingAsset(const MediaAsset &asset, const QUrl &originalURL);
    QCoro::Task<void> downloadForCache(QUrl url);
    QCoro::Task<void> downloadAndPlay(QUrl url);
    QCoro::Task<void> parseAudioMetadata(QUrl url);
    void apply(const CloudMetadata &found);
    void leaveAddress();
    QCoro::Task<void> resolveAndPlay(OnlineSong song);
    QCoro::Task<std::optional<QUrl>> fetchRealPlayUrl(OnlineSong song,
                                                      std::shared_ptr<HttpTransfer> transfer);
    void playAsset(const MediaAsset &asset, const QUrl &url, DurationLog log);
    std::shared_ptr<PlayerItem> makeCurrentItem(const MediaAsset &asset);
    std::shared_ptr<PlayerItem> prepareItem(const MediaAsset &asset);
    void installItem(const std::shared_ptr<PlayerItem> &item);
    void observeItem();
    void observePlayerState();
    void observeTime();
    void observeTimeAndEnd();
    void resumeObservers();
    void removeItemObserver();
    void removeTimeObserver();
    void removeEndObserver();
    void itemStatusChanged();
    void timeTick(double seconds);
    void cancelSeek();
    void seekFinished(bool finished);
    QCoro::Task<void> loadDuration(std::shared_ptr<PlayerItem> item, DurationLog log);
    bool isAboutToSound() const;
    void pauseEngine();
    void standUnloaded();
    void withholdAddress();
    bool replaysFailedItem();
    void updateNowPlayingInfo();
    void startAudioLevelSimulation();
    void stopAudioLevelSimulation();

    void setQueue(const QList<Song> &value);
    void setOnlineQueue(const QList<OnlineSong> &value);
    void setCurrentIndex(int value);
    void setCurrent(const std::optional<Song> &song, const std::optional<OnlineSong> &online);
    void setIsPlaying(bool value);
    void setIsLoading(bool value);
    void setCurrentTime(double value);
    void setDuration(double value);
    void setPlayError(const std::optional<QString> &value);

    Platform &m_platform;
    LocalMusicImportService &m_importService;
    AudioPlayerParts m_parts;
    std::unique_ptr<CloudSongCache> m_cloudSongs;
    std::unique_ptr<AudioLevels> m_levels;

    QList<Song> m_queue;
    QList<OnlineSong> m_onlineQueue;
    int m_currentIndex = 0;
    std::optional<Song> m_currentSong;
    std::optional<OnlineSong> m_currentOnlineSong;
    PlayMode m_playMode = PlayMode::sequential;
    bool m_isPlaying = false;
    bool m_isLoading = false;
    double m_currentTime = 0;
    double m_duration = 0;
    float m_volume = 1.0F;
    std::optional<QString> m_playError;
    std::optional<QImage> m_nowPlayingArtwork;
    std::optional<QUrl> m_nowPlayingArtworkURL;
    std::optional<QDateTime> m_lastPersistDate;

    std::unique_ptr<StreamPlayer> m_player; ///< made by the first need of it, then kept
    std::shared_ptr<PlayerItem> m_playerItem;
    std::optional<int> m_timeObserver;
    bool m_isSeeking = false;
    bool m_resumesAfterSeek = false;
    quint64 m_seekSerial = 0;                        ///< which seek is the latest
    quint64 m_onlineRequest = 0;                     ///< which fetch of an address is the latest
    std::shared_ptr<HttpTransfer> m_addressTransfer; ///< of the fetch under way
    bool m_isUnloaded = false; ///< what is loaded is not the current song, which has no address (yet)
    bool m_isObservingPlayerItem = false;
    bool m_usingEqualizerEngine = false;
    bool m_interruptionWasPlaying = false;
    std::unique_ptr<ClockTimer> m_eqTimeUpdateTimer;
    std::unique_ptr<ClockTimer> m_handoverTimer; ///< until the engine that was left is silent
    QMetaObject::Connection m_itemStatusConnection;
    QMetaObject::Connection m_endConnection;
    QMetaObject::Connection m_timeControlConnection;
    QMetaObject::Connection m_rateConnection;
    JobGate m_gate;
};

} // namespace cadorel
