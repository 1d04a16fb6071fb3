// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/OnlineSong.h"
#include "Models/Song.h"
#include "Platform/NowPlayingInfo.h"
#include "Platform/Platform.h"
#include "Services/Seams/MediaCenter.h"

#include <QCoroTask>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>

#include <expected>
#include <memory>
#include <optional>

namespace cadorel {

class HttpTransfer;
class OnlineSongAddresses;

/// The player's side of the desktop: its sound session, its media controls and what they show. Whatever of
/// these the machine does not have is left out. Main thread.
class SystemMediaCenter : public QObject, public MediaCenter
{
    Q_OBJECT
public:
    /// Longest side of a published cover in pixels; a larger one is scaled down.
    static constexpr int longestSide = 1024;

    /// @param platform and @param onlineAddresses outlive the object; null: online songs have no covers. A
    /// player that is set up with it goes before it.
    explicit SystemMediaCenter(Platform &platform, OnlineSongAddresses *onlineAddresses = nullptr);
    ~SystemMediaCenter() override;

    static SystemMediaCenter &shared();

    void setupAudioSession(AudioPlayerService &player) override;
    void setupRemoteCommandCenter(AudioPlayerService &player) override;
    void setupNowPlayingInfo(AudioPlayerService &player) override;
    void setupInterruptionObservers(AudioPlayerService &player) override;
    /// Takes microseconds: covers are read, fetched and decoded elsewhere, once, and added when they are
    /// there.
    void updateNowPlayingInfo(AudioPlayerService &player) override;
    void mergeNowPlayingArtwork(const QImage &artwork) override;

private:
    /// The cover of an imported song, from the first look at it on.
    struct ImportedCover;
    /// A failure is its description, without an address; empty when another cover is wanted by now.
    using Artwork = std::expected<QImage, QString>;

    void updatePlaybackControls(const AudioPlayerService &player);
    void describe(const AudioPlayerService &player, const Song &song, NowPlayingInfo &info);
    void describe(const AudioPlayerService &player, const OnlineSong &song, NowPlayingInfo &info);
    void loadMissingArtwork(AudioPlayerService &player);
    QString opaqueId(const QString &key);
    std::optional<QImage> getImportedArtwork(const Song &song);
    std::optional<QImage> getMediaLibraryArtwork(const Song &song) const;
    void leaveImportedCover();
    QCoro::Task<void> decodeImportedArtwork(std::shared_ptr<ImportedCover> cover);
    QCoro::Task<void> loadRemoteArtwork(QPointer<AudioPlayerService> player, QUrl url);
    QCoro::Task<void> loadOnlineArtwork(QPointer<AudioPlayerService> player, OnlineSong song);
    QCoro::Task<Artwork> fetchArtwork(QUrl url);
    void publishArtwork(AudioPlayerService &player, const QImage &artwork);

    Platform &m_platform;
    OnlineSongAddresses *m_onlineAddresses;
    std::optional<PlaybackControls> m_controls; ///< as the desktop knows them
    std::shared_ptr<ImportedCover> m_importedCover;
    std::shared_ptr<HttpTransfer> m_transfer; ///< of the cover that was fetched last
    /// Where the cover of the online song was asked for since that song began.
    std::optional<QUrl> m_onlineArtworkURL;
    QString m_idKey;
    QString m_id;
};

} // namespace cadorel
