// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Playlist.h"
#include "Models/Song.h"
#include "ViewModels/RowModel.h"

#include <QHash>
#include <QSet>

#include <optional>

namespace cadorel {

/// The rows of a list of playlists, told apart by Playlist::id. Main thread.
class PlaylistListModel : public RowModel
{
    Q_OBJECT
public:
    enum Role {
        PlaylistIdRole = Qt::UserRole + 1, // playlistId: QString
        NameRole,                          // name: QString, never empty
        CountTextRole,                     // countText: QString
        KindTextRole,                      // kindText: QString
        CoverSourceRole,                   // coverSource: QString, empty for the default symbol
        HasCoverRole,                      // hasCover: bool, a cover of its own
        IsProtectedRole,                   // isProtected: bool, one of the two favourites
        IsMarkedRole                       // isMarked: bool
    };

    explicit PlaylistListModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int rowOf(const QString &playlistId) const override;

    /// Shows other playlists.
    /// @param firstSongs songs that lend their covers, see firstSongsOf()
    void setPlaylists(const QList<Playlist> &playlists, const QHash<QString, Song> &firstSongs);
    /// Marks the playlists of these ids and no others.
    void setMarked(const QSet<QString> &ids);

    /// What a row and a page show as the name: a name of blanks leaves nothing to read or to click.
    static QString displayName(const Playlist &playlist);
    static QString countText(const Playlist &playlist);
    static bool isProtected(const Playlist &playlist);
    /// For each local playlist without a cover of its own, by id, the first song that is still among
    /// @p localSongs. Takes one walk over them as a rule, and never more than two.
    static QHash<QString, Song> firstSongsOf(const QList<Playlist> &playlists, const QList<Song> &localSongs);

private:
    struct Row
    {
        Playlist playlist;
        std::optional<Song> firstSong;
    };
    struct Rows;

    QList<Row> m_rows;
    QSet<QString> m_marked;
};

} // namespace cadorel
