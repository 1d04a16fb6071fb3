// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/OnlineSong.h"
#include "ViewModels/RowModel.h"

#include <QUrl>

#include <functional>
#include <optional>

namespace cadorel {

/// The rows of a list of online songs, told apart by platform and id together. It has the roles of
/// SongListModel, so that one list shows both. Main thread.
class OnlineSongListModel : public cadorel::RowModel // QML's tools look up the name as it stands here
{
    Q_OBJECT
public:
    enum Role {
        SongIdRole = Qt::UserRole + 1, // songId: QString, key() of the song
        TitleRole,                     // title: QString, never empty
        SubtitleRole,                  // subtitle: QString, artist and album
        DurationTextRole,              // durationText: QString, empty: the platforms do not tell
        PlatformTextRole,              // platformText: QString, empty where all songs are of one platform
        CoverSourceRole,               // coverSource: QString, address for an Image
        IsCurrentRole,                 // isCurrent: bool, this song is the player's
        IsDeletableRole,               // isDeletable: bool, false: there is no file
        IsFavoriteRole                 // isFavorite: bool
    };

    /// Where the cover of a song lies, with the API endpoint of the moment.
    using CoverAddress = std::function<std::optional<QUrl>(const OnlineSong &song)>;

    OnlineSongListModel(CoverAddress coverAddress, QObject *parent);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The songs in the order of the rows.
    const QList<OnlineSong> &songs() const { return m_songs; }

    /// Shows other songs. A song may be listed twice.
    void setSongs(const QList<OnlineSong> &songs);

    /// Marks every row of this song as the player's; nothing marks none.
    void setCurrentSong(const std::optional<OnlineSong> &song);

    /// The covers of all rows lie elsewhere now.
    void moveCovers();

    /// Marks the songs that are favourites in @p playlists, now and whenever those change; null marks none.
    void setFavorites(const PlaylistStore *playlists);

    int rowOf(const QString &songKey) const override;

    /// Names a song among those of all platforms.
    static QString key(const OnlineSong &song);

private:
    void markRows(const QString &songKey);

    CoverAddress m_coverAddress;
    QList<OnlineSong> m_songs;
    QString m_currentKey;
    bool m_showsPlatforms = false;
};

} // namespace cadorel
