// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/SongListModel.h"

#include "Utils/OneLine.h"
#include "ViewModels/CoverRegistry.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

struct SongRows
{
    static const QString &id(const Song &song) { return song.id(); }
    static bool isSameRow(const Song &a, const Song &b) { return a.isSameRecord(b) || a.id() == b.id(); }
    static bool looksEqual(const Song &a, const Song &b)
    {
        return a.isSameRecord(b) ||
               (a.title() == b.title() && a.artist() == b.artist() && a.album() == b.album() &&
                a.duration() == b.duration() && a.artworkData() == b.artworkData() &&
                a.artworkURL() == b.artworkURL() && a.assetPathUtf8() == b.assetPathUtf8());
    }
};

} // namespace

SongListModel::SongListModel(QObject *parent)
    : RowModel(parent)
{
}

int SongListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_songs.size());
}

QVariant SongListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Song &song = m_songs.at(index.row());
    switch (role) {
    case SongIdRole:
        return song.id();
    case Qt::DisplayRole:
    case TitleRole:
        return displayTitle(song);
    case SubtitleRole: {
        const QString artist = oneLine(song.artist());
        const QString album = oneLine(song.album());
        return artist.isEmpty() || album.isEmpty() ? artist + album : artist + u" · "_s + album;
    }
    case DurationTextRole:
        return std::isfinite(song.duration()) && song.duration() > 0 ? song.formattedDuration() : QString();
    case PlatformTextRole:
        return QString();
    case CoverSourceRole:
        return CoverRegistry::shared().source(song);
    case IsCurrentRole:
        return !m_currentSongId.isEmpty() && song.id() == m_currentSongId;
    case IsDeletableRole:
        return song.isImported();
    case IsFavoriteRole:
        return favorites() && favorites()->isFavorite(song);
    default:
        return {};
    }
}

QHash<int, QByteArray> SongListModel::roleNames() const
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

QString SongListModel::displayTitle(const Song &song)
{
    QString title = oneLine(song.title());
    if (!title.isEmpty())
        return title;
    // A stored file carries the hash of its first name in front of that name.
    static const QRegularExpression storedPrefix(u"^[0-9A-F]{16}_(?=.)"_s);
    const QString name = oneLine(QFileInfo(song.assetPath()).completeBaseName().remove(storedPrefix));
    return name.isEmpty() ? u"未知歌曲"_s : name;
}

void SongListModel::setCurrentSongId(const QString &id)
{
    if (id == m_currentSongId)
        return;
    const QString before = std::exchange(m_currentSongId, id);
    for (qsizetype row = 0; row < m_songs.size(); ++row) {
        const QString &rowId = m_songs.at(row).id();
        if (rowId == before || rowId == id) {
            const QModelIndex changed = index(static_cast<int>(row));
            Q_EMIT dataChanged(changed, changed, {IsCurrentRole});
        }
    }
}

void SongListModel::setFavorites(const PlaylistStore *playlists)
{
    followFavorites(playlists, IsFavoriteRole);
}

int SongListModel::rowOf(const QString &songId) const
{
    const auto isThis = [&songId](const Song &song) { return song.id() == songId; };
    const auto found = std::find_if(m_songs.cbegin(), m_songs.cend(), isThis);
    return found == m_songs.cend() ? -1 : static_cast<int>(found - m_songs.cbegin());
}

void SongListModel::setSongs(const QList<Song> &songs)
{
    showRows<SongRows>(m_songs, songs);
}

} // namespace cadorel
