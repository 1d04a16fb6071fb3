// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Platform.h"
#include "Services/Playlists/ListMembers.h"
#include "Services/Playlists/PlaylistText.h"
#include "Services/Seams/PlaylistStore.h"

#include <QCoroTask>
#include <QHash>
#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace cadorel {

class LocalMusicImportService;
class MediaLibrarySource;

/// All playlists of the listener, the two favourites among them, kept under the key "playlists". Every change
/// is stored at once and told by changed(). A playlist is found by its id; one that is no longer listed makes
/// a change do nothing. Main thread.
class PlaylistService : public PlaylistStore
{
    Q_OBJECT
public:
    static const QString favoritesPlaylistId;
    static const QString favoritesOnlinePlaylistId;

    /// Loads the playlists and makes favourites that are missing.
    /// @param platform and @param importService outlive the service
    PlaylistService(Platform &platform, LocalMusicImportService &importService);
    ~PlaylistService() override;
    Q_DISABLE_COPY_MOVE(PlaylistService)

    static PlaylistService &shared();

    const QList<Playlist> &playlists() const { return m_playlists; }
    /// The listed playlist of that id.
    std::optional<Playlist> playlist(const QString &id) const;
    std::optional<Playlist> favoritesPlaylist() const { return playlist(favoritesPlaylistId); }
    std::optional<Playlist> favoritesOnlinePlaylist() const { return playlist(favoritesOnlinePlaylistId); }
    /// Cheap enough for every row that is drawn.
    bool isFavorite(const Song &song) const override;
    bool isFavorite(const OnlineSong &song) const override;
    static bool isSongInPlaylist(const Song &song, const Playlist &playlist);
    static bool isOnlineSongInPlaylist(const OnlineSong &song, const Playlist &playlist);
    /// The songs of a local playlist in its order, each the first of @p allSongs with that id; ids that name
    /// none are left out. Takes one walk over @p allSongs.
    static QList<Song> getSongs(const Playlist &playlist, const QList<Song> &allSongs);
    /// The same among the system library's songs, then the imported ones.
    /// @param mediaLibrary null where there is no such library
    QList<Song> getSongs(const Playlist &playlist, const MediaLibrarySource *mediaLibrary) const;

    Playlist createPlaylist(const QString &name, const QString &description, PlaylistType type) override;
    /// Replaces the listed playlist with the one given.
    void updatePlaylist(const Playlist &playlist);
    void deletePlaylist(const Playlist &playlist);
    void renamePlaylist(const Playlist &playlist, const QString &name);
    /// Keeps the picture, made small. Scaling and encoding run elsewhere; ends when the cover is stored.
    QCoro::Task<void> setCoverImage(QImage image, Playlist playlist);
    void removeCoverImage(const Playlist &playlist);

    void addSong(const Song &song, const Playlist &playlist) override;
    void addSongs(const QList<Song> &songs, const Playlist &playlist);
    void removeSong(const Song &song, const Playlist &playlist);
    void removeSongById(const QString &songId, const Playlist &playlist);
    void removeSongsByIds(const QStringList &songIds, const Playlist &playlist);
    void addOnlineSong(const OnlineSong &song, const Playlist &playlist) override;
    void addOnlineSongs(const QList<OnlineSong> &songs, const Playlist &playlist);
    void removeOnlineSong(const OnlineSong &song, const Playlist &playlist);
    /// Removes by id alone, whatever the platform.
    void removeOnlineSongs(const QList<OnlineSong> &songs, const Playlist &playlist);
    void toggleFavorite(const Song &song);
    void toggleFavorite(const OnlineSong &song);

    /// The picture scaled so that it covers @p targetSize, not cut.
    static QImage resizeImage(const QImage &image, const QSize &targetSize);

private:
    void load();
    void ensureFavoritesPlaylistExists();
    Playlist *listed(const QString &id);
    template <typename Change>
    void change(const QString &id, Change change);
    void publish();
    void requestSave();
    void save();

    Platform &m_platform;
    LocalMusicImportService &m_importService;
    QList<Playlist> m_playlists;
    mutable ListMembers<QString> m_favorites;
    mutable ListMembers<OnlineSong> m_onlineFavorites;
    PlaylistText m_text;
    bool m_isSaveRequested = false;
    /// Number of the last wish about the cover of each playlist, for those that are being made.
    QHash<QString, quint64> m_coverWishes;
    quint64 m_lastCoverWish = 0;
};

} // namespace cadorel
