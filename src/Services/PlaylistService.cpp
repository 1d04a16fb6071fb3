// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/PlaylistService.h"

#include "Models/DecodingError.h"
#include "Models/EncodingError.h"
#include "Services/LocalMusicImportService.h"
#include "Services/Playlists/PlaylistCover.h"
#include "Services/Seams/MediaLibrarySource.h"
#include "Services/SharedServices.h"
#include "Utils/Console.h"
#include "Utils/LogText.h"

#include <QPointer>
#include <QtConcurrent>

#include <QCoroFuture>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QString userDefaultsKey = u"playlists"_s;

/// The songs of @p ids in their order, each the first of @p sources with its id.
QList<Song> resolved(const QStringList &ids, std::initializer_list<QList<Song>> sources)
{
    QHash<QString, const Song *> found;
    found.reserve(ids.size());
    for (const QString &id : ids)
        found.insert(id, nullptr);
    qsizetype missing = found.size();
    for (const QList<Song> &songs : sources) {
        for (const Song &song : songs) {
            if (missing == 0)
                break;
            const auto wanted = found.find(song.id());
            if (wanted != found.end() && !*wanted) {
                *wanted = &song;
                --missing;
            }
        }
    }
    QList<Song> result;
    result.reserve(ids.size());
    for (const QString &id : ids) {
        if (const Song *song = found.value(id))
            result.append(*song);
    }
    return result;
}

} // namespace

const QString PlaylistService::favoritesPlaylistId = u"favorites_playlist"_s;
const QString PlaylistService::favoritesOnlinePlaylistId = u"favorites_online_playlist"_s;

PlaylistService::PlaylistService(Platform &platform, LocalMusicImportService &importService)
    : m_platform(platform)
    , m_importService(importService)
{
    load();
    ensureFavoritesPlaylistExists();
}

PlaylistService::~PlaylistService()
{
    if (m_isSaveRequested)
        save();
}

PlaylistService &PlaylistService::shared()
{
    return sharedService<PlaylistService>([] {
        LocalMusicImportService &importService = LocalMusicImportService::shared();
        return std::make_unique<PlaylistService>(processPlatform(), importService);
    });
}

// MARK: storage

void PlaylistService::load()
{
    const std::optional<QByteArray> text = m_platform.preferences->dataValue(userDefaultsKey);
    if (!text)
        return;
    try {
        m_playlists = PlaylistText::decode(*text);
    } catch (const DecodingError &error) {
        print(u"Failed to load playlists: "_s + QString::fromUtf8(error.what()));
    }
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
        requestSave();
    };
    ensure(favoritesPlaylistId, u"我喜欢的音乐"_s, u"收藏喜欢的歌曲"_s, PlaylistType::local);
    ensure(favoritesOnlinePlaylistId, u"我喜欢的音乐(在线)"_s, u"收藏喜欢的在线歌曲"_s, PlaylistType::online);
}

void PlaylistService::requestSave()
{
    // Later in this turn of the event loop, so that all changes of the turn share one write.
    if (!std::exchange(m_isSaveRequested, true))
        QMetaObject::invokeMethod(this, &PlaylistService::save, Qt::QueuedConnection);
}

void PlaylistService::save()
{
    m_isSaveRequested = false;
    try {
        m_platform.preferences->setData(userDefaultsKey, m_text.encode(m_playlists));
    } catch (const EncodingError &error) {
        print(u"Failed to save playlists: "_s + QString::fromUtf8(error.what()));
    }
}

void PlaylistService::publish()
{
    requestSave();
    Q_EMIT changed();
}

// MARK: reading

std::optional<Playlist> PlaylistService::playlist(const QString &id) const
{
    const auto found = std::find_if(m_playlists.cbegin(), m_playlists.cend(),
                                    [&id](const Playlist &playlist) { return playlist.id == id; });
    return found == m_playlists.cend() ? std::nullopt : std::optional(*found);
}

bool PlaylistService::isFavorite(const Song &song) const
{
    const std::optional<Playlist> favorites = favoritesPlaylist();
    return favorites && m_favorites.contains(favorites->songIds, song.id());
}

bool PlaylistService::isFavorite(const OnlineSong &song) const
{
    const std::optional<Playlist> favorites = favoritesOnlinePlaylist();
    return favorites && m_onlineFavorites.contains(favorites->onlineSongs, song);
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
    return resolved(playlist.songIds, {allSongs});
}

QList<Song> PlaylistService::getSongs(const Playlist &playlist, const MediaLibrarySource *mediaLibrary) const
{
    if (playlist.type == PlaylistType::online)
        return {};
    return resolved(playlist.songIds,
                    {mediaLibrary ? mediaLibrary->songs() : QList<Song>(), m_importService.importedSongs()});
}

// MARK: changes of playlists

Playlist *PlaylistService::listed(const QString &id)
{
    const auto found = std::find_if(m_playlists.cbegin(), m_playlists.cend(),
                                    [&id](const Playlist &playlist) { return playlist.id == id; });
    return found == m_playlists.cend() ? nullptr : &m_playlists[found - m_playlists.cbegin()];
}

template <typename Change>
void PlaylistService::change(const QString &id, Change change)
{
    Playlist *playlist = listed(id);
    if (!playlist)
        return;
    change(*playlist);
    playlist->updatedAt = m_platform.clock->now();
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
    m_coverWishes.remove(playlist.id);
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
    m_coverWishes.insert(playlist.id, wish);
    const std::optional<QByteArray> cover =
        co_await QtConcurrent::run([image = std::move(image)] { return playlistCover(image); });
    // Who chose another cover meanwhile, or none, shall have that.
    if (!self || m_coverWishes.value(playlist.id) != wish)
        co_return;
    m_coverWishes.remove(playlist.id);
    if (cover)
        change(playlist.id, [&cover](Playlist &stored) { stored.coverImageData = cover; });
}

void PlaylistService::removeCoverImage(const Playlist &playlist)
{
    m_coverWishes.remove(playlist.id);
    change(playlist.id, [](Playlist &stored) { stored.coverImageData.reset(); });
}

QImage PlaylistService::resizeImage(const QImage &image, const QSize &targetSize)
{
    return coveringImage(image, targetSize);
}

// MARK: changes of songs

void PlaylistService::addSong(const Song &song, const Playlist &playlist)
{
    const Playlist *stored = listed(playlist.id);
    if (!stored || stored->type != PlaylistType::local || stored->songIds.contains(song.id()))
        return;
    const QStringList lines{u"✅ 添加歌曲到歌单:"_s, u"  - 歌曲: "_s + logText(song.title()),
                            u"  - 歌曲ID: "_s + logText(song.id()), u"  - 歌单: "_s + logText(stored->name),
                            u"  - 当前歌单歌曲数: "_s + QString::number(stored->songCount() + 1)};
    change(playlist.id, [&song](Playlist &changed) { changed.songIds.append(song.id()); });
    print(lines);
}

void PlaylistService::addSongs(const QList<Song> &songs, const Playlist &playlist)
{
    const Playlist *stored = listed(playlist.id);
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
    const Playlist *stored = listed(playlist.id);
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
