// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Album.h"
#include "Models/Artist.h"
#include "Models/OnlineSong.h"
#include "Models/Playlist.h"
#include "Models/Song.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>

namespace cadorel {

class AudioPlayerService;
class LocalMusicImportService;
class MediaLibrarySource;
class OnlineMusicSource;
class OnlineSongAddresses;
class PlaylistStore;
class WebDAVSource;

/// The sources that the library is merged from. A null one is not there and gives nothing.
struct LibrarySources
{
    MediaLibrarySource *mediaLibrary = nullptr;
    PlaylistStore *playlistService = nullptr;
    OnlineMusicSource *onlineMusicService = nullptr;
    WebDAVSource *webDAVService = nullptr;
    /// Where the covers of online songs lie.
    const OnlineSongAddresses *onlineAddresses = nullptr;
};

/// The one object that every screen receives. It owns no music: it merges the services' lists, forwards
/// commands and tells every change of the services but the fast ones (`currentTime`), which screens watch at
/// the player. Main thread.
class CadorelViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("Services/AudioPlayerService.h")
    Q_MOC_INCLUDE("Services/LocalMusicImportService.h")
    Q_PROPERTY(cadorel::AudioPlayerService *audioPlayer READ audioPlayer CONSTANT)
    Q_PROPERTY(cadorel::LocalMusicImportService *importService READ importService CONSTANT)
    Q_PROPERTY(QString currentSongTitle READ currentSongTitle NOTIFY currentChanged)
    Q_PROPERTY(QString currentArtist READ currentArtist NOTIFY currentChanged)
    Q_PROPERTY(bool hasCurrentSong READ hasCurrentSong NOTIFY currentChanged)
    Q_PROPERTY(QString searchQuery READ searchQuery WRITE setSearchQuery NOTIFY searchQueryChanged)
    Q_PROPERTY(QString uiRefreshToken READ uiRefreshTokenText NOTIFY uiRefreshTokenChanged)
    Q_PROPERTY(bool showNowPlaying READ showNowPlaying WRITE setShowNowPlaying NOTIFY showNowPlayingChanged)

public:
    /// The view model's own tab; the tab bar keeps one of its own.
    enum class Tab { library, online, playlists, search };
    Q_ENUM(Tab)
    /// Section of the library screen.
    enum class LibrarySection { songs, albums, artists };
    Q_ENUM(LibrarySection)
    /// Text of a tab and of a section as a listener reads it.
    static QString rawValue(Tab tab);
    static QString rawValue(LibrarySection section);

    /// Starts loading the system's music library. The services outlive the view model.
    CadorelViewModel(AudioPlayerService &audioPlayer, LocalMusicImportService &importService,
                     LibrarySources sources = {});
    ~CadorelViewModel() override;
    Q_DISABLE_COPY_MOVE(CadorelViewModel)

    AudioPlayerService *audioPlayer() const { return &m_audioPlayer; }
    LocalMusicImportService *importService() const { return &m_importService; }
    /// Null where there are no playlists.
    PlaylistStore *playlistStore() const { return m_sources.playlistService; }

    Tab selectedTab() const { return m_selectedTab; }
    void setSelectedTab(Tab tab);
    bool showNowPlaying() const { return m_showNowPlaying; }
    void setShowNowPlaying(bool shows);
    QString searchQuery() const { return m_searchQuery; }
    void setSearchQuery(const QString &query);
    MusicPlatform selectedPlatform() const { return m_selectedPlatform; }
    void setSelectedPlatform(MusicPlatform platform);
    LibrarySection librarySection() const { return m_librarySection; }
    void setLibrarySection(LibrarySection section);
    /// Kept for forcing a redraw; nothing reads or toggles it.
    bool updateTrigger() const { return m_updateTrigger; }
    /// View identity of the tab view and of the mini player.
    QUuid uiRefreshToken() const { return m_uiRefreshToken; }
    /// The same as screens compare it.
    QString uiRefreshTokenText() const { return m_uiRefreshToken.toString(QUuid::WithoutBraces); }

    QString currentSongTitle() const;
    QString currentArtist() const;
    bool hasCurrentSong() const;
    /// 0...1; 0 while the duration is unknown.
    double progress() const;

    /// The lists are computed at each call: a caller that loops keeps the result.
    QList<Song> allSongs() const;
    QList<Song> localSongs() const;
    QList<Album> allAlbums() const;
    QList<Artist> allArtists() const;
    QList<Song> getSongsForAlbum(const Album &album) const;
    QList<Song> getSongsForArtist(const Artist &artist) const;
    QList<Album> getAlbumsForArtist(const Artist &artist) const;
    /// Songs whose title, artist or album contains the text, whatever its case; an empty @p query searches
    /// for `searchQuery`, an empty text gives all songs.
    QList<Song> searchLocal(const QString &query = {}) const;

    void playSong(const Song &song);
    void playSongFromAlbum(const Song &song, const Album &album);
    void playSongFromArtist(const Song &song, const Artist &artist);
    void playWebDAVSong(const Song &song);
    void playOnlineSong(const OnlineSong &song);
    void playOnlineSongs(const QList<OnlineSong> &songs, const OnlineSong &startWith);
    /// The same for songs of the library and of servers.
    void playSongs(const QList<Song> &songs, const Song &startWith);
    Q_INVOKABLE void togglePlayPause();
    Q_INVOKABLE void next();
    Q_INVOKABLE void previous();
    /// @param progress fraction of the song, 0...1
    Q_INVOKABLE void seek(double progress);
    QCoro::Task<void> searchOnline();
    QCoro::Task<void> scanAllWebDAV();
    void createPlaylist(const QString &name, PlaylistType type = PlaylistType::local);
    void addToPlaylist(const Song &song, const Playlist &playlist);
    void addOnlineToPlaylist(const OnlineSong &song, const Playlist &playlist);
    /// Puts a fresh token into `uiRefreshToken`.
    void refreshUI();
    /// Loads the system's library, rescans the player's own and walks the servers, one after the other.
    QCoro::Task<void> refreshAllData();

Q_SIGNALS:
    /// Something of this object or of a service has changed.
    void changed();
    /// What plays has changed.
    void currentChanged();
    /// A list of songs has changed.
    void songsChanged();
    void selectedTabChanged();
    void showNowPlayingChanged();
    void searchQueryChanged();
    void selectedPlatformChanged();
    void librarySectionChanged();
    void uiRefreshTokenChanged();

private:
    void subscribe();
    template <typename T>
    void publish(T &member, const T &value, void (CadorelViewModel::*signal)());

    AudioPlayerService &m_audioPlayer;
    LocalMusicImportService &m_importService;
    LibrarySources m_sources;

    Tab m_selectedTab = Tab::library;
    bool m_showNowPlaying = false;
    QString m_searchQuery;
    MusicPlatform m_selectedPlatform = MusicPlatform::netease;
    bool m_updateTrigger = false;
    QUuid m_uiRefreshToken = QUuid::createUuid();
    LibrarySection m_librarySection = LibrarySection::songs;
};

} // namespace cadorel
