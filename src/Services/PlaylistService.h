// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Platform.h"
#include "Services/Playlists/ListMembers.h"
#include "Services/Playlists/PlaylistStorage.h"
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
    /// Of the listener's favourites among the local songs.
    static const QString favoritesPlaylistId;
    /// Of those among the online songs.
    static const QString favoritesOnlinePlaylistId;

    /// Loads the playlists and makes favourites that are missing.
    /// @param platform and @param importService outlive the service
    PlaylistService(Platform &platform, LocalMusicImportService &importService);
    ~PlaylistService() override;
    Q_DISABLE_COPY_MOVE(PlaylistService)

    /// The one of the process, built at the first call. Main thread.
    static PlaylistService &shared();

    /// All playlists in the order of their making; favourites that were missing at a start come first.
    const QList<Playlist> &playlists() const { return m_playlists; }
    /// The listed playlist of that id, the first if there are several.
    std::optional<Playlist> playlist(const QString &id) const;
    /// Nothing after they have been deleted, until the next start.
    std::optional<Playlist> favoritesPlaylist() const { return playlist(favoritesPlaylistId); }
    std::optional<Playlist> favoritesOnlinePlaylist() const { return playlist(favoritesOnlinePlaylistId); }
    /// Cheap enough for every row that is drawn.
    bool isFavorite(const Song &song) const override;
    bool isFavorite(const OnlineSong &song) const override;
    /// Looks into the playlist given, whether it is listed or not.
    static bool isSongInPlaylist(const Song &song, const Playlist &playlist);
    static bool isOnlineSongInPlaylist(const OnlineSong &song, const Playlist &playlist);
    /// The songs of a local playlist in its order, each the first of @p allSongs with that id; ids that name
    /// none are left out. Takes one walk over @p allSongs.
    static QList<Song> getSongs(const Playlist &playlist, const QList<Song> &allSongs);
    /// The same among the system library's songs, then the imported ones.
    /// @param mediaLibrary null where there is no such library
    QList<Song> getSongs(const Playlist &playlist, const MediaLibrarySource *mediaLibrary) const;

    /// Appends a playlist of any name, also of one that another has. @return the playlist
    Playlist createPlaylist(const QString &name, const QString &description, PlaylistType type) override;
    /// Replaces the listed playlist with the one given, but for its time of change.
    void updatePlaylist(const Playlist &playlist);
    /// Favourites too: screens do not offer that, and the next start brings them back, empty.
    void deletePlaylist(const Playlist &playlist);
    /// Takes any name, also an empty one.
    void renamePlaylist(const Playlist &playlist, const QString &name);
    /// Keeps the picture, made small. Scaling and encoding run elsewhere; ends when the playlist has it, or
    /// when it turns out to be no picture and the old cover stays. Of several wishes about the cover of a
    /// playlist, removing it among them, the last holds.
    QCoro::Task<void> setCoverImage(QImage image, Playlist playlist);
    /// Leaves the address of a cover, where there is one.
    void removeCoverImage(const Playlist &playlist);

    /// Does nothing, and changes no time, where the song is there already or the playlist is an online one.
    /// Logs what it adds.
    void addSong(const Song &song, const Playlist &playlist) override;
    /// Adds those that are not there yet. Counts as a change even when all are.
    void addSongs(const QList<Song> &songs, const Playlist &playlist);
    /// Each of the three removes every occurrence, and counts as a change even when there is none.
    void removeSong(const Song &song, const Playlist &playlist);
    void removeSongById(const QString &songId, const Playlist &playlist);
    void removeSongsByIds(const QStringList &songIds, const Playlist &playlist);
    /// Does nothing where the song is there already or the playlist is a local one.
    void addOnlineSong(const OnlineSong &song, const Playlist &playlist) override;
    /// The same for several at once.
    void addOnlineSongs(const QList<OnlineSong> &songs, const Playlist &playlist);
    /// Removes the song of that id and platform.
    void removeOnlineSong(const OnlineSong &song, const Playlist &playlist);
    /// Removes by id alone, whatever the platform.
    void removeOnlineSongs(const QList<OnlineSong> &songs, const Playlist &playlist);
    /// Adds the song to the favourites of its kind or removes it; does nothing while those are deleted.
    void toggleFavorite(const Song &song);
    void toggleFavorite(const OnlineSong &song);

    /// The picture scaled, up too, so that it covers @p targetSize; it keeps its shape and is not cut. One so
    /// long that it could not be drawn is made as long as can be. A null image gives a null one.
    static QImage resizeImage(const QImage &image, const QSize &targetSize);

private:
    void ensureFavoritesPlaylistExists();
    qsizetype indexOf(const QString &id) const;
    template <typename Change>
    void change(const QString &id, Change change);
    void publish();

    Platform &m_platform;
    LocalMusicImportService &m_importService;
    QList<Playlist> m_playlists;
    mutable ListMembers<QString> m_favorites;
    mutable ListMembers<OnlineSong> m_onlineFavorites;
    /// Number of the wish by which a playlist came to its cover, or to none: an older one comes too late.
    QHash<QString, quint64> m_coverWishes;
    quint64 m_lastCoverWish = 0;
    /// Reads the list when it goes: the last member.
    PlaylistStorage m_storage;
};

} // namespace cadorel
