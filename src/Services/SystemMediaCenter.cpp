// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/SystemMediaCenter.h"

#include "Platform/HttpStatus.h"
#include "Platform/HttpTransfer.h"
#include "Platform/SharedServices.h"
#include "Services/APIConfigService.h"
#include "Services/AudioPlayerService.h"
#include "Services/Cloud/CoverImage.h"
#include "Services/Cloud/CoverRequest.h"
#include "Services/Seams/OnlineSongAddresses.h"
#include "Utils/Console.h"
#include "Utils/StableHash.h"
#include "Utils/Tasks.h"

#include <QtConcurrent>

#include <QCoroFuture>
#include <QCoroTask>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <exception>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

bool hasSong(const AudioPlayerService &player)
{
    return player.currentSong() || player.currentOnlineSong();
}

/// What the desktop is told of a length: nothing rather than nonsense.
double knownLength(double seconds)
{
    return std::isfinite(seconds) && seconds > 0 ? seconds : 0;
}

/// A desktop may ask for any number.
void seekTo(AudioPlayerService &player, double positionTime)
{
    if (!std::isfinite(positionTime))
        return;
    const double end = knownLength(player.duration());
    const double time = std::max(0.0, positionTime);
    player.seek(end > 0 ? std::min(time, end) : time);
}

} // namespace

struct SystemMediaCenter::ImportedCover
{
    explicit ImportedCover(const Song &song)
        : record(song)
    {
    }

    Song record;
    /// Nothing until it is decoded, and for good when it does not decode.
    std::optional<QImage> image;
    bool isAskedFor = false;
    /// Another song came: a worker that has not begun may leave it.
    std::atomic<bool> isLeft{false};
};

SystemMediaCenter::SystemMediaCenter(Platform &platform, OnlineSongAddresses *onlineAddresses)
    : m_platform(platform)
    , m_onlineAddresses(onlineAddresses)
{
}

SystemMediaCenter::~SystemMediaCenter()
{
    leaveImportedCover();
    if (m_transfer)
        m_transfer->cancel();
}

SystemMediaCenter &SystemMediaCenter::shared()
{
    return sharedService<SystemMediaCenter>(
        [] { return std::make_unique<SystemMediaCenter>(processPlatform(), &APIConfigService::shared()); });
}

// MARK: set-up

void SystemMediaCenter::setupAudioSession([[maybe_unused]] AudioPlayerService &player)
{
    if (!m_platform.audioSession)
        return;
    try {
        m_platform.audioSession->activate();
    } catch (const std::exception &error) {
        print(u"Failed to setup audio session: "_s + QString::fromUtf8(error.what()));
    }
}

void SystemMediaCenter::setupRemoteCommandCenter(AudioPlayerService &player)
{
    // The player is the receiver: a command that comes after its end reaches nobody.
    if (const RemoteCommandCenter *commands = m_platform.remoteCommandCenter.get()) {
        const auto play = [&player] {
            if (hasSong(player))
                player.play();
        };
        const auto toggle = [&player] {
            if (hasSong(player))
                player.togglePlayPause();
        };
        const auto seek = [&player](double positionTime) { seekTo(player, positionTime); };
        const auto setVolume = [&player](double volume) {
            if (std::isfinite(volume))
                player.setVolume(static_cast<float>(volume));
        };
        connect(commands, &RemoteCommandCenter::playCommand, &player, play);
        connect(commands, &RemoteCommandCenter::pauseCommand, &player, &AudioPlayerService::pause);
        connect(commands, &RemoteCommandCenter::nextTrackCommand, &player, &AudioPlayerService::next);
        connect(commands, &RemoteCommandCenter::previousTrackCommand, &player, &AudioPlayerService::previous);
        connect(commands, &RemoteCommandCenter::changePlaybackPositionCommand, &player, seek);
        connect(commands, &RemoteCommandCenter::togglePlayPauseCommand, &player, toggle);
        connect(commands, &RemoteCommandCenter::stopCommand, &player, &AudioPlayerService::stop);
        connect(commands, &RemoteCommandCenter::changeVolumeCommand, &player, setVolume);
        connect(commands, &RemoteCommandCenter::changePlayModeCommand, &player,
                &AudioPlayerService::setPlayMode);
    }

    const auto update = [this, &player] { updatePlaybackControls(player); };
    for (const auto changed :
         {&AudioPlayerService::playModeChanged, &AudioPlayerService::volumeChanged,
          &AudioPlayerService::queueChanged, &AudioPlayerService::onlineQueueChanged,
          &AudioPlayerService::currentSongChanged, &AudioPlayerService::currentOnlineSongChanged,
          &AudioPlayerService::durationChanged, &AudioPlayerService::isLoadingChanged})
        connect(&player, changed, this, update);
    // Played again, an online song asks for its cover again.
    connect(&player, &AudioPlayerService::currentOnlineSongChanged, this,
            [this] { m_onlineArtworkURL.reset(); });
    updatePlaybackControls(player);
}

void SystemMediaCenter::setupNowPlayingInfo([[maybe_unused]] AudioPlayerService &player)
{
    // Nothing is shown before there is a song.
}

void SystemMediaCenter::setupInterruptionObservers(AudioPlayerService &player)
{
    const AudioSession *session = m_platform.audioSession.get();
    if (!session)
        return;
    connect(session, &AudioSession::interrupted, &player, &AudioPlayerService::handleInterruption);
    connect(session, &AudioSession::routeChanged, &player, &AudioPlayerService::handleRouteChange);
}

// MARK: what is shown

void SystemMediaCenter::updateNowPlayingInfo(AudioPlayerService &player)
{
    if (!m_platform.nowPlayingCenter)
        return;
    NowPlayingInfo info;
    if (const auto &song = player.currentSong())
        describe(player, *song, info);
    else if (const auto &online = player.currentOnlineSong())
        describe(player, *online, info);
    info.elapsedPlaybackTime = player.currentTime();
    info.playbackRate = player.isPlaying() ? 1.0 : 0.0;
    m_platform.nowPlayingCenter->setNowPlayingInfo(info);
    updatePlaybackControls(player);
    // A cover that is there at once is added to what has been published, which must be of its song by then.
    if (!info.artwork)
        loadMissingArtwork(player);
}

void SystemMediaCenter::describe(const AudioPlayerService &player, const Song &song, NowPlayingInfo &info)
{
    info.songId = opaqueId(u"song "_s + song.id());
    info.title = song.title();
    info.artist = song.artist();
    info.albumTitle = song.album();
    info.playbackDuration = knownLength(player.duration() > 0 ? player.duration() : song.duration());
    if (song.isImported()) {
        info.artwork = getImportedArtwork(song);
        return;
    }
    leaveImportedCover();
    const std::optional<QUrl> url = song.artworkURL();
    if (!url)
        info.artwork = getMediaLibraryArtwork(song);
    else if (player.nowPlayingArtworkURL() == url)
        info.artwork = player.nowPlayingArtwork();
}

void SystemMediaCenter::describe(const AudioPlayerService &player, const OnlineSong &song,
                                 NowPlayingInfo &info)
{
    leaveImportedCover();
    info.songId = opaqueId(rawValue(song.platform) + u' ' + song.id);
    info.title = song.name;
    info.artist = song.artist;
    info.albumTitle = song.album;
    info.playbackDuration = knownLength(player.duration());
    info.artwork = player.nowPlayingArtwork();
}

/// Asks for the cover of the song that has been published without one, unless it was asked for already.
void SystemMediaCenter::loadMissingArtwork(AudioPlayerService &player)
{
    if (m_importedCover) {
        const bool wasAskedFor = std::exchange(m_importedCover->isAskedFor, true);
        if (!wasAskedFor && m_importedCover->record.artworkData().isPresent())
            detach(decodeImportedArtwork(m_importedCover));
    } else if (const auto &song = player.currentSong()) {
        const std::optional<QUrl> url = song->artworkURL();
        if (url && player.nowPlayingArtworkURL() != url)
            detach(loadRemoteArtwork(&player, *url));
    } else if (const auto &online = player.currentOnlineSong()) {
        detach(loadOnlineArtwork(&player, *online));
    }
}

/// Ids of songs on servers hold paths, which are nobody's business on the bus.
QString SystemMediaCenter::opaqueId(const QString &key)
{
    if (m_idKey != key) {
        m_idKey = key;
        m_id = stableHash(key);
    }
    return m_id;
}

void SystemMediaCenter::updatePlaybackControls(const AudioPlayerService &player)
{
    if (!m_platform.nowPlayingCenter)
        return;
    const bool hasQueue = !player.queue().isEmpty() || !player.onlineQueue().isEmpty();
    const PlaybackControls controls{.playMode = player.playMode(),
                                    .volume = player.volume(),
                                    .canPlay = hasSong(player),
                                    .canGoNext = hasQueue,
                                    .canGoPrevious = hasQueue,
                                    .canSeek = player.canSeek()};
    if (m_controls == controls)
        return;
    m_controls = controls;
    m_platform.nowPlayingCenter->setPlaybackControls(controls);
}

// MARK: covers of imported songs

std::optional<QImage> SystemMediaCenter::getImportedArtwork(const Song &song)
{
    if (m_importedCover && m_importedCover->record.isSameRecord(song))
        return m_importedCover->image;
    if (m_importedCover && m_importedCover->record == song &&
        m_importedCover->record.artworkData() == song.artworkData()) {
        // Something else of the song has changed.
        m_importedCover->record = song;
        return m_importedCover->image;
    }
    leaveImportedCover();
    m_importedCover = std::make_shared<ImportedCover>(song);
    return std::nullopt;
}

void SystemMediaCenter::leaveImportedCover()
{
    if (const auto left = std::exchange(m_importedCover, nullptr))
        left->isLeft = true;
}

QCoro::Task<void> SystemMediaCenter::decodeImportedArtwork(std::shared_ptr<ImportedCover> cover)
{
    const QPointer<SystemMediaCenter> self(this);
    const auto decode = [cover, artwork = cover->record.artworkData()] {
        return cover->isLeft ? QImage() : decodedCover(artwork, longestSide);
    };
    const QImage image = co_await QtConcurrent::run(decode);
    if (!self || cover != m_importedCover || image.isNull())
        co_return;
    cover->image = image;
    mergeNowPlayingArtwork(image);
}

/// The machine has no music library of its own, so its songs are not known there.
std::optional<QImage> SystemMediaCenter::getMediaLibraryArtwork([[maybe_unused]] const Song &song) const
{
    return std::nullopt;
}

// MARK: covers from the network

QCoro::Task<void> SystemMediaCenter::loadRemoteArtwork(QPointer<AudioPlayerService> player, QUrl url)
{
    const QPointer<SystemMediaCenter> self(this);
    player->setNowPlayingArtworkURL(url);
    const Artwork artwork = co_await fetchArtwork(url);
    // Without a cover the song is shown without one, and nobody is told why.
    if (!self || !player || !artwork)
        co_return;
    // The address of a song before may stand there still when an online song has begun.
    const std::optional<Song> &song = player->currentSong();
    if (player->nowPlayingArtworkURL() == url && song && song->artworkURL() == url)
        publishArtwork(*player, *artwork);
}

QCoro::Task<void> SystemMediaCenter::loadOnlineArtwork(QPointer<AudioPlayerService> player, OnlineSong song)
{
    const QPointer<SystemMediaCenter> self(this);
    const std::optional<QUrl> url = m_onlineAddresses ? m_onlineAddresses->getCoverUrl(song) : std::nullopt;
    if (!url || m_onlineArtworkURL == url)
        co_return;
    m_onlineArtworkURL = url;
    player->setNowPlayingArtworkURL(url);
    const Artwork artwork = co_await fetchArtwork(*url);
    if (!artwork) {
        if (!artwork.error().isEmpty())
            print(u"Failed to load online artwork: "_s + artwork.error());
        co_return;
    }
    if (self && player && player->currentOnlineSong() == song)
        publishArtwork(*player, *artwork);
}

/// Fetches the only cover that is wanted from now on: the song before needs its own no more.
QCoro::Task<SystemMediaCenter::Artwork> SystemMediaCenter::fetchArtwork(QUrl url)
{
    const QPointer<SystemMediaCenter> self(this);
    const Artwork givenUp = std::unexpected(QString());
    const auto transfer = std::make_shared<HttpTransfer>();
    if (const auto before = std::exchange(m_transfer, transfer))
        before->cancel();
    if (!m_platform.httpClient)
        co_return givenUp;
    HttpRequest request = coverRequest(url);
    request.transfer = transfer;
    const std::expected<HttpResponse, HttpError> response = co_await m_platform.httpClient->send(request);
    if (!self || transfer->isCancelled())
        co_return givenUp;
    if (!response)
        co_return std::unexpected(response.error().description);
    if (!isSuccess(response->status))
        co_return std::unexpected(u"HTTP %1"_s.arg(response->status));
    const auto decode = [body = response->body] { return decodedCover(body, longestSide); };
    const QImage image = co_await QtConcurrent::run(decode);
    if (!self || transfer->isCancelled())
        co_return givenUp;
    if (image.isNull())
        co_return std::unexpected(u"不是图片"_s);
    co_return image;
}

void SystemMediaCenter::publishArtwork(AudioPlayerService &player, const QImage &artwork)
{
    player.setNowPlayingArtwork(artwork);
    mergeNowPlayingArtwork(artwork);
}

void SystemMediaCenter::mergeNowPlayingArtwork(const QImage &artwork)
{
    if (!m_platform.nowPlayingCenter)
        return;
    NowPlayingInfo info = m_platform.nowPlayingCenter->nowPlayingInfo();
    if (info.songId.isEmpty())
        return;
    info.artwork = artwork;
    m_platform.nowPlayingCenter->setNowPlayingInfo(info);
}

} // namespace cadorel
