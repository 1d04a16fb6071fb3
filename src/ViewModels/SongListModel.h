// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"

#include <QAbstractListModel>

namespace cadorel {

struct RowStep;

/// The rows of a list of songs. A new list is compared with the rows by Song::id, and only the difference is
/// announced, so that a view keeps its place while songs come and go. Main thread.
class SongListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    enum Role {
        SongIdRole = Qt::UserRole + 1, // songId: QString
        TitleRole,                     // title: QString, never empty
        SubtitleRole,                  // subtitle: QString, artist and album
        DurationTextRole,              // durationText: QString, empty when unknown
        CoverSourceRole,               // coverSource: QString, address for an Image
        IsCurrentRole,                 // isCurrent: bool, this song is the player's
        IsDeletableRole                // isDeletable: bool, its file lies in the music folder
    };

    explicit SongListModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return static_cast<int>(m_songs.size()); }

    /// The songs in the order of the rows.
    const QList<Song> &songs() const { return m_songs; }

    /// Shows other songs. Rows are removed, moved and inserted in contiguous groups; only a list that shares
    /// next to nothing with the rows resets the model. Ids may repeat.
    void setSongs(const QList<Song> &songs);

    /// Marks every row of this song as the player's; an empty id marks none.
    void setCurrentSongId(const QString &id);

    /// First row of the song; -1 when it is not in the list.
    Q_INVOKABLE int rowOf(const QString &songId) const;

    /// What a row shows as title: the song's title, else the name of its file, else "未知歌曲".
    static QString displayTitle(const Song &song);

Q_SIGNALS:
    void countChanged();

private:
    void apply(const RowStep &step, qsizetype offset, const QList<Song> &songs);
    void showContents(const QList<Song> &songs);

    QList<Song> m_songs;
    QString m_currentSongId;
};

} // namespace cadorel
