// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Playlist.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/PacedRefresh.h"

#include <QObject>
#include <QString>

#include <optional>

namespace cadorel {

class CadorelViewModel;
class PlaylistService;
class SongListModel;

/// One playlist and its songs, as they are at every moment. It is known by its id, so that a page whose
/// playlist is deleted elsewhere says so. Main thread.
class PlaylistPageViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/SongListModel.h")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(QString playlistId READ playlistId NOTIFY changed)
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(QString coverSource READ coverSource NOTIFY changed)
    Q_PROPERTY(bool hasCover READ hasCover NOTIFY changed)
    Q_PROPERTY(bool isOnline READ isOnline NOTIFY changed)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY changed)
    Q_PROPERTY(Content content READ content NOTIFY changed)
    Q_PROPERTY(cadorel::SongListModel *songs READ songs CONSTANT)
    Q_PROPERTY(cadorel::OnlineSongListModel *onlineSongs READ onlineSongs CONSTANT)

public:
    /// What the page shows beneath its header. Capitalised, because QML reads no other enumerators.
    enum class Content {
        Songs,
        Empty,  ///< none of its songs is there
        Missing ///< the playlist has been deleted
    };
    Q_ENUM(Content)

    /// @param viewModel and @param service outlive this object
    PlaylistPageViewModel(CadorelViewModel &viewModel, PlaylistService &service,
                          OnlineSongListModel::CoverAddress coverAddress, QObject *parent);
    ~PlaylistPageViewModel() override;
    Q_DISABLE_COPY_MOVE(PlaylistPageViewModel)

    bool isOpen() const { return m_isOpen; }
    QString playlistId() const { return m_id; }
    QString name() const;
    /// How many songs it shows and of which kind, and how many it names that are in no library.
    QString summary() const;
    /// Address of the cover; empty for the default symbol.
    QString coverSource() const;
    /// It has a cover of its own.
    bool hasCover() const { return m_playlist && m_playlist->coverImageData; }
    bool isOnline() const { return m_playlist && m_playlist->type == PlaylistType::online; }
    /// The library is being read, and songs that are missing may still come.
    bool isLoading() const;
    Content content() const;
    /// The songs of a local playlist; none for an online one.
    SongListModel *songs() const { return m_songs; }
    /// The songs of an online playlist; none for a local one.
    OnlineSongListModel *onlineSongs() const { return m_onlineSongs; }

    void open(const QString &id);
    Q_INVOKABLE void close();
    /// Plays the whole list from its first song.
    Q_INVOKABLE void playAll();
    /// Plays the song of a row, with the whole list as the queue.
    Q_INVOKABLE void playSongAt(int row);
    /// Takes a song out of the playlist. @param key songId of its row
    Q_INVOKABLE void removeSong(const QString &key);

Q_SIGNALS:
    void changed();

private:
    void refresh();
    void markCurrentSong();
    int shownCount() const;
    int missingCount() const;

    CadorelViewModel &m_viewModel;
    PlaylistService &m_service;
    SongListModel *m_songs;
    OnlineSongListModel *m_onlineSongs;
    PacedRefresh m_refresh;
    bool m_isOpen = false;
    QString m_id;
    /// As it is listed now; nothing when it is gone.
    std::optional<Playlist> m_playlist;
};

} // namespace cadorel
