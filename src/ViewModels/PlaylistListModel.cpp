// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/PlaylistListModel.h"

#include "Services/PlaylistService.h"
#include "Utils/OneLine.h"
#include "ViewModels/CoverRegistry.h"

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

bool borrowsACover(const Playlist &playlist)
{
    return playlist.type == PlaylistType::local && !playlist.coverImageData && !playlist.songIds.isEmpty();
}

/// The first songs with these ids, by id.
QHash<QString, Song> songsWithIds(const QSet<QString> &ids, const QList<Song> &songs)
{
    QHash<QString, Song> found;
    for (const Song &song : songs) {
        if (found.size() == ids.size())
            break;
        if (ids.contains(song.id()) && !found.contains(song.id()))
            found.insert(song.id(), song);
    }
    return found;
}

bool lendSameCover(const std::optional<Song> &a, const std::optional<Song> &b)
{
    if (!a || !b)
        return a.has_value() == b.has_value();
    return a->isSameRecord(*b) ||
           (a->id() == b->id() && a->artworkData() == b->artworkData() && a->artworkURL() == b->artworkURL());
}

QString onlineCover(const Playlist &playlist)
{
    return playlist.onlineSongs.isEmpty() ? QString() : playlist.onlineSongs.constFirst().picUrl;
}

} // namespace

struct PlaylistListModel::Rows
{
    static const QString &id(const Row &row) { return row.playlist.id; }
    static bool isSameRow(const Row &a, const Row &b) { return a.playlist == b.playlist; }
    static bool looksEqual(const Row &a, const Row &b)
    {
        return a.playlist.name == b.playlist.name && a.playlist.type == b.playlist.type &&
               a.playlist.songCount() == b.playlist.songCount() &&
               a.playlist.coverImageData == b.playlist.coverImageData &&
               onlineCover(a.playlist) == onlineCover(b.playlist) && lendSameCover(a.firstSong, b.firstSong);
    }
};

PlaylistListModel::PlaylistListModel(QObject *parent)
    : RowModel(parent)
{
}

int PlaylistListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant PlaylistListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case PlaylistIdRole:
        return row.playlist.id;
    case Qt::DisplayRole:
    case NameRole:
        return displayName(row.playlist);
    case CountTextRole:
        return countText(row.playlist);
    case KindTextRole:
        return cadorel::displayName(row.playlist.type);
    case CoverSourceRole:
        return CoverRegistry::shared().source(row.playlist, row.firstSong);
    case HasCoverRole:
        return row.playlist.coverImageData.has_value();
    case IsProtectedRole:
        return isProtected(row.playlist);
    case IsMarkedRole:
        return m_marked.contains(row.playlist.id);
    default:
        return {};
    }
}

QHash<int, QByteArray> PlaylistListModel::roleNames() const
{
    return {{PlaylistIdRole, "playlistId"},   {NameRole, "name"},
            {CountTextRole, "countText"},     {KindTextRole, "kindText"},
            {CoverSourceRole, "coverSource"}, {HasCoverRole, "hasCover"},
            {IsProtectedRole, "isProtected"}, {IsMarkedRole, "isMarked"}};
}

int PlaylistListModel::rowOf(const QString &playlistId) const
{
    const auto found = std::find_if(m_rows.cbegin(), m_rows.cend(),
                                    [&playlistId](const Row &row) { return row.playlist.id == playlistId; });
    return found == m_rows.cend() ? -1 : static_cast<int>(found - m_rows.cbegin());
}

QString PlaylistListModel::displayName(const Playlist &playlist)
{
    const QString name = oneLine(playlist.name);
    return name.isEmpty() ? u"未命名歌单"_s : name;
}

QString PlaylistListModel::countText(const Playlist &playlist)
{
    return QString::number(playlist.songCount()) + u" 首歌曲"_s;
}

bool PlaylistListModel::isProtected(const Playlist &playlist)
{
    return playlist.id == PlaylistService::favoritesPlaylistId ||
           playlist.id == PlaylistService::favoritesOnlinePlaylistId;
}

QHash<QString, Song> PlaylistListModel::firstSongsOf(const QList<Playlist> &playlists,
                                                     const QList<Song> &localSongs)
{
    QSet<QString> firstIds;
    for (const Playlist &playlist : playlists) {
        if (borrowsACover(playlist))
            firstIds.insert(playlist.songIds.constFirst());
    }
    QHash<QString, Song> found = songsWithIds(firstIds, localSongs);

    // Only playlists that begin with a song that is gone need a look at the rest of theirs.
    QSet<QString> laterIds;
    for (const Playlist &playlist : playlists) {
        if (borrowsACover(playlist) && !found.contains(playlist.songIds.constFirst())) {
            for (const QString &id : playlist.songIds)
                laterIds.insert(id);
        }
    }
    if (!laterIds.isEmpty())
        found.insert(songsWithIds(laterIds, localSongs));

    QHash<QString, Song> songs;
    for (const Playlist &playlist : playlists) {
        if (!borrowsACover(playlist))
            continue;
        const auto first = std::find_if(playlist.songIds.cbegin(), playlist.songIds.cend(),
                                        [&found](const QString &id) { return found.contains(id); });
        if (first != playlist.songIds.cend())
            songs.insert(playlist.id, found.value(*first));
    }
    return songs;
}

void PlaylistListModel::setPlaylists(const QList<Playlist> &playlists, const QHash<QString, Song> &firstSongs)
{
    QList<Row> rows;
    rows.reserve(playlists.size());
    for (const Playlist &playlist : playlists) {
        const auto song = firstSongs.constFind(playlist.id);
        rows.append({playlist, song == firstSongs.cend() ? std::nullopt : std::optional(*song)});
    }
    showRows<Rows>(m_rows, rows);
}

void PlaylistListModel::setMarked(const QSet<QString> &ids)
{
    const QSet<QString> before = std::exchange(m_marked, ids);
    for (int row = 0; row < count(); ++row) {
        const QString &id = m_rows.at(row).playlist.id;
        if (before.contains(id) != m_marked.contains(id))
            Q_EMIT dataChanged(index(row), index(row), {IsMarkedRole});
    }
}

} // namespace cadorel
