// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/OnlineSongListModel.h"

#include "Utils/OneLine.h"
#include "ViewModels/CoverRegistry.h"

#include <algorithm>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

struct OnlineSongRows
{
    static QString id(const OnlineSong &song) { return OnlineSongListModel::key(song); }
    static bool isSameRow(const OnlineSong &a, const OnlineSong &b) { return a == b; }
    static bool looksEqual(const OnlineSong &a, const OnlineSong &b)
    {
        return a.name == b.name && a.artist == b.artist && a.album == b.album && a.picUrl == b.picUrl;
    }
};

bool isMixed(const QList<OnlineSong> &songs)
{
    return std::any_of(songs.cbegin(), songs.cend(), [&songs](const OnlineSong &song) {
        return song.platform != songs.constFirst().platform;
    });
}

} // namespace

OnlineSongListModel::OnlineSongListModel(CoverAddress coverAddress, QObject *parent)
    : RowModel(parent)
    , m_coverAddress(std::move(coverAddress))
{
}

int OnlineSongListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_songs.size());
}

QVariant OnlineSongListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const OnlineSong &song = m_songs.at(index.row());
    switch (role) {
    case SongIdRole:
        return key(song);
    case Qt::DisplayRole:
    case TitleRole: {
        const QString title = oneLine(song.name);
        return title.isEmpty() ? u"未知歌曲"_s : title;
    }
    case SubtitleRole: {
        const QString artist = oneLine(song.artist);
        const QString album = oneLine(song.album);
        return artist.isEmpty() || album.isEmpty() ? artist + album : artist + u"·"_s + album;
    }
    case DurationTextRole:
        return QString();
    case PlatformTextRole:
        return m_showsPlatforms ? displayName(song.platform) : QString();
    case CoverSourceRole:
        return CoverRegistry::shared().source(song, m_coverAddress(song));
    case IsCurrentRole:
        return !m_currentKey.isEmpty() && key(song) == m_currentKey;
    case IsDeletableRole:
        return false;
    case IsFavoriteRole:
        return favorites() && favorites()->isFavorite(song);
    default:
        return {};
    }
}

QHash<int, QByteArray> OnlineSongListModel::roleNames() const
{
    return {{SongIdRole, "songId"},
            {TitleRole, "title"},
            {SubtitleRole, "subtitle"},
            {DurationTextRole, "durationText"},
            {PlatformTextRole, "platformText"},
            {CoverSourceRole, "coverSource"},
            {IsCurrentRole, "isCurrent"},
            {IsDeletableRole, "isDeletable"},
            {IsFavoriteRole, "isFavorite"}};
}

void OnlineSongListModel::setSongs(const QList<OnlineSong> &songs)
{
    const bool showedPlatforms = std::exchange(m_showsPlatforms, isMixed(songs));
    showRows<OnlineSongRows>(m_songs, songs);
    if (showedPlatforms != m_showsPlatforms && !m_songs.isEmpty())
        Q_EMIT dataChanged(index(0), index(count() - 1), {PlatformTextRole});
}

void OnlineSongListModel::setCurrentSong(const std::optional<OnlineSong> &song)
{
    const QString now = song ? key(*song) : QString();
    if (now == m_currentKey)
        return;
    const QString before = std::exchange(m_currentKey, now);
    markRows(before);
    markRows(now);
}

void OnlineSongListModel::markRows(const QString &songKey)
{
    if (songKey.isEmpty())
        return;
    for (int row = 0; row < count(); ++row) {
        if (key(m_songs.at(row)) == songKey)
            Q_EMIT dataChanged(index(row), index(row), {IsCurrentRole});
    }
}

void OnlineSongListModel::moveCovers()
{
    if (!m_songs.isEmpty())
        Q_EMIT dataChanged(index(0), index(count() - 1), {CoverSourceRole});
}

void OnlineSongListModel::setFavorites(const PlaylistStore *playlists)
{
    followFavorites(playlists, IsFavoriteRole);
}

int OnlineSongListModel::rowOf(const QString &songKey) const
{
    const auto found = std::find_if(m_songs.cbegin(), m_songs.cend(),
                                    [&songKey](const OnlineSong &song) { return key(song) == songKey; });
    return found == m_songs.cend() ? -1 : static_cast<int>(found - m_songs.cbegin());
}

QString OnlineSongListModel::key(const OnlineSong &song)
{
    return rawValue(song.platform) + u':' + song.id;
}

} // namespace cadorel
