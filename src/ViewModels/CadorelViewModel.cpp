// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/CadorelViewModel.h"

#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/Seams/MediaLibrarySource.h"
#include "Services/Seams/OnlineMusicSource.h"
#include "Services/Seams/PlaylistStore.h"
#include "Services/Seams/WebDAVSource.h"
#include "Utils/LowercaseSearch.h"
#include "Utils/ProcessHash.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QString unknownAlbum = u"未知专辑"_s;
const QString unknownArtist = u"未知艺术家"_s;

/// Songs in groups of one key, the groups in the order of their first songs.
class Groups
{
public:
    template <typename Key>
    Groups(const QList<Song> &songs, Key key)
    {
        for (const Song &song : songs) {
            const QString &name = key(song);
            auto position = m_positions.constFind(name);
            if (position == m_positions.cend()) {
                position = m_positions.insert(name, m_groups.size());
                m_groups.append({name, {}});
            }
            m_groups[*position].second.append(song);
        }
    }
    const QList<QPair<QString, QList<Song>>> &list() const { return m_groups; }

private:
    QList<QPair<QString, QList<Song>>> m_groups;
    QHash<QString, qsizetype> m_positions;
};

/// The cover of the first song that has one, decoded only when it is drawn.
ArtworkImage firstArtwork(const QList<Song> &songs)
{
    for (const Song &song : songs) {
        if (song.artworkData().isPresent())
            return ArtworkImage(song.artworkData());
    }
    return {};
}

template <typename Record>
QSet<QString> namesOf(const QList<Record> &records)
{
    QSet<QString> names;
    for (const Record &record : records)
        names.insert(record.name);
    return names;
}

template <typename Record>
void sortByName(QList<Record> &records)
{
    std::sort(records.begin(), records.end(),
              [](const Record &a, const Record &b) { return a.name < b.name; });
}

/// Joins lists in order; one that is alone is shared, not copied.
QList<Song> joined(std::initializer_list<QList<Song>> lists)
{
    QList<Song> result;
    for (const QList<Song> &list : lists) {
        if (result.isEmpty())
            result = list;
        else if (!list.isEmpty())
            result.append(list);
    }
    return result;
}

} // namespace

QString CadorelViewModel::rawValue(Tab tab)
{
    switch (tab) {
    case Tab::library:
        return u"资料库"_s;
    case Tab::online:
        return u"在线"_s;
    case Tab::playlists:
        return u"歌单"_s;
    case Tab::search:
        return u"搜索"_s;
    }
    Q_UNREACHABLE();
}

QString CadorelViewModel::rawValue(LibrarySection section)
{
    switch (section) {
    case LibrarySection::songs:
        return u"歌曲"_s;
    case LibrarySection::albums:
        return u"专辑"_s;
    case LibrarySection::artists:
        return u"艺术家"_s;
    }
    Q_UNREACHABLE();
}

CadorelViewModel::CadorelViewModel(AudioPlayerService &audioPlayer, LocalMusicImportService &importService,
                                   LibrarySources sources)
    : m_audioPlayer(audioPlayer)
    , m_importService(importService)
    , m_sources(sources)
{
    subscribe();
    if (m_sources.mediaLibrary)
        m_sources.mediaLibrary->loadLibrary();
}

CadorelViewModel::~CadorelViewModel() = default;

void CadorelViewModel::subscribe()
{
    using Player = AudioPlayerService;
    const auto republish = [this](auto *sender, auto signal) {
        connect(sender, signal, this, &CadorelViewModel::changed);
    };
    for (const auto signal : {&Player::currentSongChanged, &Player::currentOnlineSongChanged,
                              &Player::isPlayingChanged, &Player::durationChanged, &Player::queueChanged,
                              &Player::onlineQueueChanged, &Player::currentIndexChanged,
                              &Player::playModeChanged, &Player::volumeChanged, &Player::playErrorChanged})
        republish(&m_audioPlayer, signal);
    for (const auto signal : {&Player::currentSongChanged, &Player::currentOnlineSongChanged})
        connect(&m_audioPlayer, signal, this, &CadorelViewModel::currentChanged);

    republish(&m_importService, &LocalMusicImportService::changed);
    connect(&m_importService, &LocalMusicImportService::importedSongsChanged, this,
            &CadorelViewModel::songsChanged);
    if (m_sources.mediaLibrary) {
        republish(m_sources.mediaLibrary, &MediaLibrarySource::changed);
        connect(m_sources.mediaLibrary, &MediaLibrarySource::changed, this, &CadorelViewModel::songsChanged);
    }
    if (m_sources.onlineMusicService)
        republish(m_sources.onlineMusicService, &OnlineMusicSource::changed);
    if (m_sources.playlistService)
        republish(m_sources.playlistService, &PlaylistStore::changed);
    if (m_sources.webDAVService) {
        republish(m_sources.webDAVService, &WebDAVSource::changed);
        connect(m_sources.webDAVService, &WebDAVSource::changed, this, &CadorelViewModel::songsChanged);
    }
}

template <typename T>
void CadorelViewModel::publish(T &member, const T &value, void (CadorelViewModel::*signal)())
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*signal)();
    Q_EMIT changed();
}

void CadorelViewModel::setSelectedTab(Tab tab)
{
    publish(m_selectedTab, tab, &CadorelViewModel::selectedTabChanged);
}

void CadorelViewModel::setShowNowPlaying(bool shows)
{
    publish(m_showNowPlaying, shows, &CadorelViewModel::showNowPlayingChanged);
}

void CadorelViewModel::setSearchQuery(const QString &query)
{
    publish(m_searchQuery, query, &CadorelViewModel::searchQueryChanged);
}

void CadorelViewModel::setSelectedPlatform(MusicPlatform platform)
{
    publish(m_selectedPlatform, platform, &CadorelViewModel::selectedPlatformChanged);
}

void CadorelViewModel::setLibrarySection(LibrarySection section)
{
    publish(m_librarySection, section, &CadorelViewModel::librarySectionChanged);
}

void CadorelViewModel::refreshUI()
{
    publish(m_uiRefreshToken, QUuid::createUuid(), &CadorelViewModel::uiRefreshTokenChanged);
}

// MARK: what plays

QString CadorelViewModel::currentSongTitle() const
{
    if (const auto &song = m_audioPlayer.currentSong())
        return song->title();
    if (const auto &online = m_audioPlayer.currentOnlineSong())
        return online->name;
    return u"未在播放"_s;
}

QString CadorelViewModel::currentArtist() const
{
    if (const auto &song = m_audioPlayer.currentSong())
        return song->artist();
    if (const auto &online = m_audioPlayer.currentOnlineSong())
        return online->artist;
    return {};
}

bool CadorelViewModel::hasCurrentSong() const
{
    return m_audioPlayer.currentSong().has_value() || m_audioPlayer.currentOnlineSong().has_value();
}

double CadorelViewModel::progress() const
{
    const double duration = m_audioPlayer.duration();
    if (!std::isfinite(duration) || duration <= 0)
        return 0;
    const double fraction = m_audioPlayer.currentTime() / duration;
    return std::isfinite(fraction) ? std::clamp(fraction, 0.0, 1.0) : 0;
}

// MARK: library

QList<Song> CadorelViewModel::allSongs() const
{
    return joined({m_sources.mediaLibrary ? m_sources.mediaLibrary->songs() : QList<Song>(),
                   m_importService.importedSongs(),
                   m_sources.webDAVService ? m_sources.webDAVService->webDAVSongs() : QList<Song>()});
}

QList<Song> CadorelViewModel::localSongs() const
{
    return joined({m_sources.mediaLibrary ? m_sources.mediaLibrary->songs() : QList<Song>(),
                   m_importService.importedSongs()});
}

QList<Album> CadorelViewModel::allAlbums() const
{
    QList<Album> albums = m_sources.mediaLibrary ? m_sources.mediaLibrary->albums() : QList<Album>();
    QSet<QString> names = namesOf(albums);
    const Groups groups(m_importService.importedSongs(),
                        [](const Song &song) -> const QString & { return song.album(); });
    for (const auto &[key, songs] : groups.list()) {
        const QString name = key.isEmpty() ? unknownAlbum : key;
        if (names.contains(name))
            continue;
        names.insert(name);
        albums.append(Album{.id = "imported_"_L1 + processHash(name),
                            .name = name,
                            .artist = songs.constFirst().artist(),
                            .songCount = static_cast<int>(songs.size()),
                            .year = 0,
                            .artwork = {},
                            .artworkImage = firstArtwork(songs)});
    }
    sortByName(albums);
    return albums;
}

QList<Artist> CadorelViewModel::allArtists() const
{
    QList<Artist> artists = m_sources.mediaLibrary ? m_sources.mediaLibrary->artists() : QList<Artist>();
    QSet<QString> names = namesOf(artists);
    const Groups groups(m_importService.importedSongs(),
                        [](const Song &song) -> const QString & { return song.artist(); });
    for (const auto &[key, songs] : groups.list()) {
        const QString name = key.isEmpty() ? unknownArtist : key;
        if (names.contains(name))
            continue;
        names.insert(name);
        QSet<QString> albums;
        for (const Song &song : songs)
            albums.insert(song.album());
        artists.append(Artist{.id = "imported_"_L1 + processHash(name),
                              .name = name,
                              .songCount = static_cast<int>(songs.size()),
                              .albumCount = static_cast<int>(albums.size()),
                              .artwork = {},
                              .artworkImage = firstArtwork(songs)});
    }
    sortByName(artists);
    return artists;
}

QList<Song> CadorelViewModel::getSongsForAlbum(const Album &album) const
{
    QList<Song> songs = allSongs();
    songs.removeIf(
        [&](const Song &song) { return song.album() != album.name && song.albumId() != album.id; });
    // Songs of one track number keep their order.
    QList<QPair<int, qsizetype>> order;
    for (qsizetype i = 0; i < songs.size(); ++i)
        order.append({songs[i].trackNumber(), i});
    std::sort(order.begin(), order.end());
    QList<Song> sorted;
    sorted.reserve(songs.size());
    for (const auto &[track, position] : std::as_const(order))
        sorted.append(songs[position]);
    return sorted;
}

QList<Song> CadorelViewModel::getSongsForArtist(const Artist &artist) const
{
    QList<Song> songs = allSongs();
    songs.removeIf([&](const Song &song) { return song.artist() != artist.name; });
    return songs;
}

QList<Album> CadorelViewModel::getAlbumsForArtist(const Artist &artist) const
{
    QList<Album> albums = allAlbums();
    albums.removeIf([&](const Album &album) { return album.artist != artist.name; });
    return albums;
}

QList<Song> CadorelViewModel::searchLocal(const QString &query) const
{
    const QString text = query.isEmpty() ? m_searchQuery : query;
    QList<Song> songs = allSongs();
    if (text.isEmpty())
        return songs;
    const LowercaseSearch search(text);
    QList<Song> found;
    for (const Song &song : std::as_const(songs)) {
        if (search.isIn(song.title()) || search.isIn(song.artist()) || search.isIn(song.album()))
            found.append(song);
    }
    return found;
}

// MARK: commands

void CadorelViewModel::playSong(const Song &song)
{
    m_audioPlayer.playSong(song, allSongs());
}

void CadorelViewModel::playSongFromAlbum(const Song &song, const Album &album)
{
    m_audioPlayer.playSong(song, getSongsForAlbum(album));
}

void CadorelViewModel::playSongFromArtist(const Song &song, const Artist &artist)
{
    m_audioPlayer.playSong(song, getSongsForArtist(artist));
}

void CadorelViewModel::playWebDAVSong(const Song &song)
{
    m_audioPlayer.playSong(song,
                           m_sources.webDAVService ? m_sources.webDAVService->webDAVSongs() : QList<Song>());
}

void CadorelViewModel::playOnlineSong(const OnlineSong &song)
{
    m_audioPlayer.playOnlineSong(song, m_sources.onlineMusicService
                                           ? m_sources.onlineMusicService->searchResults()
                                           : QList<OnlineSong>());
}

void CadorelViewModel::playOnlineSongs(const QList<OnlineSong> &songs, const OnlineSong &startWith)
{
    m_audioPlayer.playOnlineSong(startWith, songs);
}

void CadorelViewModel::playSongs(const QList<Song> &songs, const Song &startWith)
{
    m_audioPlayer.playSong(startWith, songs);
}

void CadorelViewModel::togglePlayPause()
{
    m_audioPlayer.togglePlayPause();
}

void CadorelViewModel::next()
{
    m_audioPlayer.next();
}

void CadorelViewModel::previous()
{
    m_audioPlayer.previous();
}

void CadorelViewModel::seek(double progress)
{
    m_audioPlayer.seek(progress * m_audioPlayer.duration());
}

QCoro::Task<void> CadorelViewModel::searchOnline()
{
    if (m_sources.onlineMusicService)
        co_await m_sources.onlineMusicService->search(m_searchQuery, m_selectedPlatform);
}

QCoro::Task<void> CadorelViewModel::scanAllWebDAV()
{
    if (m_sources.webDAVService)
        co_await m_sources.webDAVService->scanAllConfigs();
}

void CadorelViewModel::createPlaylist(const QString &name, PlaylistType type)
{
    if (m_sources.playlistService)
        m_sources.playlistService->createPlaylist(name, {}, type);
}

void CadorelViewModel::addToPlaylist(const Song &song, const Playlist &playlist)
{
    if (m_sources.playlistService)
        m_sources.playlistService->addSong(song, playlist);
}

void CadorelViewModel::addOnlineToPlaylist(const OnlineSong &song, const Playlist &playlist)
{
    if (m_sources.playlistService)
        m_sources.playlistService->addOnlineSong(song, playlist);
}

QCoro::Task<void> CadorelViewModel::refreshAllData()
{
    const QPointer<CadorelViewModel> self(this);
    if (m_sources.mediaLibrary)
        co_await m_sources.mediaLibrary->loadLibrary();
    if (!self)
        co_return;
    m_importService.rescan();
    if (m_sources.webDAVService)
        co_await m_sources.webDAVService->scanAllConfigs();
}

} // namespace cadorel
