// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/PlaylistService.h"

#include "Platform/SharedServices.h"
#include "Services/LocalMusicImportService.h"
#include "Services/Playlists/PlaylistCover.h"
#include "Services/Playlists/PlaylistSongs.h"
#include "Services/Seams/MediaLibrarySource.h"
#include "Utils/Console.h"
#include "Utils/LogText.h"

#include <QPointer>
#include <QtConcurrent>

#include <QCoroFuture>

#include <algorithm>
#include <memory>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

const QString PlaylistService::favoritesPlaylistId = u"favorites_playlist"_s;
const QString PlaylistService::favoritesOnlinePlaylistId = u"favorites_online_playlist"_s;

PlaylistService::PlaylistService(Platform &platform, LocalMusicImportService &importService)
    : m_platform(platform)
    , m_importService(importService)
    , m_storage(*platform.preferences, [this] { return m_playlists; })
{
    m_playlists = m_storage.loadPlaylists();
    ensureFavoritesPlaylistExists();
}

PlaylistService::~PlaylistService() = default;

PlaylistService &PlaylistService::shared()
{
    return sharedService<PlaylistService>([] {
        LocalMusicImportService &importService = LocalMusicImportService::shared();
        return std::make_unique<PlaylistService>(processPlatform(), importService);
    });
}

void PlaylistService::ensureFavoritesPlaylistExists()
{
    const auto ensure = [this](const QString &id, const QString &name, const QString &description,
                               PlaylistType type) {
        if (playlist(id))
            return;
        Playlist favorites;
        favorites.id = id;
        favorites.name = name;
        favorites.description = description;
        favorites.type = type;
        favorites.createdAt = favorites.updatedAt = m_platform.clock->now();
        m_playlists.prepend(favorites);
        m_storage.request();
    };
    ensure(favoritesPlaylistId, u"我喜欢的音乐"_s, u"收藏喜欢的歌曲"_s, PlaylistType::local);
    ensure(favoritesOnlinePlaylistId, u"我喜欢的音乐(在线)"_s, u"收藏喜欢的在线歌曲"_s, PlaylistType::online);
}

void PlaylistService::publish()
{
    m_storage.request();
    Q_EMIT changed();
}

// MARK: reading

qsizetype PlaylistService::indexOf(const QString &id) const
{
    const auto found =
        std::ranges::find_if(m_playlists, [&id](const Playlist &playlist) { return playlist.id == id; });
    return found == m_playlists.cend() ? -1 : found - m_playlists.cbegin();
}

std::optional<Playlist> PlaylistService::playlist(const QString &id) const
{
    const qsizetype index = indexOf(id);
    return index < 0 ? std::nullopt : std::optional(m_playlists.at(index));
}

bool PlaylistService::isFavorite(const Song &song) const
{
    const qsizetype index = indexOf(favoritesPlaylistId);
    return index >= 0 && m_favorites.contains(m_playlists.at(index).songIds, song.id());
}

bool PlaylistService::isFavorite(const OnlineSong &song) const
{
    const qsizetype index = indexOf(favoritesOnlinePlaylistId);
    return index >= 0 && m_onlineFavorites.contains(m_playlists.at(index).onlineSongs, song);
}

bool PlaylistService::isSongInPlaylist(const Song &song, const Playlist &playlist)
{
    return playlist.songIds.contains(song.id());
}

bool PlaylistService::isOnlineSongInPlaylist(const OnlineSong &song, const Playlist &playlist)
{
    return playlist.onlineSongs.contains(song);
}

QList<Song> PlaylistService::getSongs(const Playlist &playlist, const QList<Song> &allSongs)
{
    if (playlist.type == PlaylistType::online)
        return {};
    return songsWithIds(playlist.songIds, {allSongs});
}

QList<Song> PlaylistService::getSongs(const Playlist &playlist, const MediaLibrarySource *mediaLibrary) const
{
    if (playlist.type == PlaylistType::online)
        return {};
    return songsWithIds(playlist.songIds, {mediaLibrary ? mediaLibrary->songs() : QList<Song>(),
                                           m_importService.importedSongs()});
}

// MARK: changes of playlists

template <typename Change>
void PlaylistService::change(const QString &id, Change change)
{
    const qsizetype index = indexOf(id);
    if (index < 0)
        return;
    Playlist &playlist = m_playlists[index];
    change(playlist);
    playlist.updatedAt = m_platform.clock->now();
    publish();
}

Playlist PlaylistService::createPlaylist(const QString &name, const QString &description, PlaylistType type)
{
    Playlist playlist;
    playlist.name = name;
    playlist.description = description;
    playlist.type = type;
    playlist.createdAt = playlist.updatedAt = m_platform.clock->now();
    m_playlists.append(playlist);
    publish();
    return playlist;
}

void PlaylistService::updatePlaylist(const Playlist &playlist)
{
    change(playlist.id, [&playlist](Playlist &stored) { stored = playlist; });
}

void PlaylistService::deletePlaylist(const Playlist &playlist)
{
    if (m_playlists.removeAll(playlist) > 0)
        publish();
}

void PlaylistService::renamePlaylist(const Playlist &playlist, const QString &name)
{
    change(playlist.id, [&name](Playlist &stored) { stored.name = name; });
}

QCoro::Task<void> PlaylistService::setCoverImage(QImage image, Playlist playlist)
{
    const QPointer<PlaylistService> self(this);
    const quint64 wish = ++m_lastCoverWish;
    const std::optional<QByteArray> cover =
        co_await QtConcurrent::run([image = std::move(image)] { return playlistCover(image); });
    // Who chose another cover meanwhile, or none, shall have that.
    if (!self || !cover || m_coverWishes.value(playlist.id) > wish)
        co_return;
    m_coverWishes.insert(playlist.id, wish);
    change(playlist.id, [&cover](Playlist &stored) { stored.coverImageData = cover; });
}

void PlaylistService::removeCoverImage(const Playlist &playlist)
{
    m_coverWishes.insert(playlist.id, ++m_lastCoverWish);
    change(playlist.id, [](Playlist &stored) { stored.coverImageData.reset(); });
}

QImage PlaylistService::resizeImage(const QImage &image, const QSize &targetSize)
{
    return coveringImage(image, targetSize);
}

// MARK: changes of songs

void PlaylistService::addSong(const Song &song, const Playlist &playlist)
{
    const std::optional<Playlist> stored = this->playlist(playlist.id);
    if (!stored || stored->type != PlaylistType::local || isSongInPlaylist(song, *stored))
        return;
    const QStringList lines{u"✅ 添加歌曲到歌单:"_s, u"  - 歌曲: "_s + logText(song.title()),
                            u"  - 歌曲ID: "_s + logText(song.id()), u"  - 歌单: "_s + logText(stored->name),
                            u"  - 当前歌单歌曲数: "_s + QString::number(stored->songCount() + 1)};
    change(playlist.id, [&song](Playlist &changed) { changed.songIds.append(song.id()); });
    print(lines);
}

void PlaylistService::addSongs(const QList<Song> &songs, const Playlist &playlist)
{
    const std::optional<Playlist> stored = this->playlist(playlist.id);
    if (!stored || stored->type != PlaylistType::local)
        return;
    change(playlist.id, [&songs](Playlist &changed) {
        QSet<QString> present(changed.songIds.cbegin(), changed.songIds.cend());
        for (const Song &song : songs) {
            if (!present.contains(song.id())) {
                present.insert(song.id());
                changed.songIds.append(song.id());
            }
        }
    });
}

void PlaylistService::removeSong(const Song &song, const Playlist &playlist)
{
    removeSongsByIds({song.id()}, playlist);
}

void PlaylistService::removeSongById(const QString &songId, const Playlist &playlist)
{
    removeSongsByIds({songId}, playlist);
}

void PlaylistService::removeSongsByIds(const QStringList &songIds, const Playlist &playlist)
{
    change(playlist.id, [&songIds](Playlist &stored) {
        const QSet<QString> unwanted(songIds.cbegin(), songIds.cend());
        stored.songIds.removeIf([&unwanted](const QString &id) { return unwanted.contains(id); });
    });
}

void PlaylistService::addOnlineSong(const OnlineSong &song, const Playlist &playlist)
{
    addOnlineSongs({song}, playlist);
}

void PlaylistService::addOnlineSongs(const QList<OnlineSong> &songs, const Playlist &playlist)
{
    const std::optional<Playlist> stored = this->playlist(playlist.id);
    if (!stored || stored->type != PlaylistType::online)
        return;
    QSet<OnlineSong> present(stored->onlineSongs.cbegin(), stored->onlineSongs.cend());
    QList<OnlineSong> added;
    for (const OnlineSong &song : songs) {
        if (!present.contains(song)) {
            present.insert(song);
            added.append(song);
        }
    }
    if (!added.isEmpty())
        change(playlist.id, [&added](Playlist &changed) { changed.onlineSongs.append(added); });
}

void PlaylistService::removeOnlineSong(const OnlineSong &song, const Playlist &playlist)
{
    change(playlist.id, [&song](Playlist &stored) { stored.onlineSongs.removeAll(song); });
}

void PlaylistService::removeOnlineSongs(const QList<OnlineSong> &songs, const Playlist &playlist)
{
    change(playlist.id, [&songs](Playlist &stored) {
        QSet<QString> unwanted;
        for (const OnlineSong &song : songs)
            unwanted.insert(song.id);
        stored.onlineSongs.removeIf(
            [&unwanted](const OnlineSong &song) { return unwanted.contains(song.id); });
    });
}

void PlaylistService::toggleFavorite(const Song &song)
{
    const std::optional<Playlist> favorites = favoritesPlaylist();
    if (!favorites)
        return;
    if (isFavorite(song))
        removeSong(song, *favorites);
    else
        addSong(song, *favorites);
}

void PlaylistService::toggleFavorite(const OnlineSong &song)
{
    const std::optional<Playlist> favorites = favoritesOnlinePlaylist();
    if (!favorites)
        return;
    if (isFavorite(song))
        removeOnlineSong(song, *favorites);
    else
        addOnlineSong(song, *favorites);
}

} // namespace cadorel
