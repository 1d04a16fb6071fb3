// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"
#include "ViewModels/RowModel.h"

namespace cadorel {

/// The rows of a list of songs, told apart by Song::id. Main thread.
class SongListModel : public cadorel::RowModel // QML's tools look up the name as it stands here
{
    Q_OBJECT
public:
    enum Role {
        SongIdRole = Qt::UserRole + 1, // songId: QString
        TitleRole,                     // title: QString, never empty
        SubtitleRole,                  // subtitle: QString, artist and album
        DurationTextRole,              // durationText: QString, empty when unknown
        PlatformTextRole,              // platformText: QString, empty: the song is of no online platform
        CoverSourceRole,               // coverSource: QString, address for an Image
        IsCurrentRole,                 // isCurrent: bool, this song is the player's
        IsDeletableRole,               // isDeletable: bool, its file lies in the music folder
        IsFavoriteRole                 // isFavorite: bool
    };

    explicit SongListModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The songs in the order of the rows.
    const QList<Song> &songs() const { return m_songs; }

    /// Shows other songs; ids may repeat.
    void setSongs(const QList<Song> &songs);

    /// Marks every row of this song as the player's; an empty id marks none.
    void setCurrentSongId(const QString &id);

    /// Marks the songs that are favourites in @p playlists, now and whenever those change; null marks none.
    void setFavorites(const PlaylistStore *playlists);

    int rowOf(const QString &songId) const override;

    /// What a row shows as title: the song's title, else the name of its file, else "未知歌曲".
    static QString displayTitle(const Song &song);

private:
    QList<Song> m_songs;
    QString m_currentSongId;
};

} // namespace cadorel
