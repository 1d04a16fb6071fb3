// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/OnlineSong.h"
#include "Models/Playlist.h"
#include "Models/Song.h"

#include <QList>
#include <QObject>
#include <QString>

namespace cadorel {

class CadorelViewModel;
class PlaylistListModel;
class PlaylistService;

/// Which playlist songs shall go into: those of the songs' own kind, favourites among them. Main thread.
class PlaylistPickerViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/PlaylistListModel.h")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(QString kindText READ kindText NOTIFY kindTextChanged)
    Q_PROPERTY(cadorel::PlaylistListModel *playlists READ playlists CONSTANT)

public:
    /// @param viewModel and @param service outlive this object
    PlaylistPickerViewModel(CadorelViewModel &viewModel, PlaylistService &service, QObject *parent);
    ~PlaylistPickerViewModel() override;
    Q_DISABLE_COPY_MOVE(PlaylistPickerViewModel)

    bool isOpen() const { return m_isOpen; }
    PlaylistType type() const { return m_type; }
    /// "本地" or "在线".
    QString kindText() const { return displayName(m_type); }
    /// Those that hold all of the songs already are marked.
    PlaylistListModel *playlists() const { return m_playlists; }

    void open(const QList<Song> &songs);
    void openOnline(const QList<OnlineSong> &songs);
    /// Adds the songs to the playlist and closes.
    Q_INVOKABLE void choose(const QString &id);
    Q_INVOKABLE void close();

Q_SIGNALS:
    void isOpenChanged();
    void kindTextChanged();

private:
    void show(PlaylistType type);
    void refresh();
    bool holdsAll(const Playlist &playlist) const;

    CadorelViewModel &m_viewModel;
    PlaylistService &m_service;
    PlaylistListModel *m_playlists;
    PlaylistType m_type = PlaylistType::local;
    QList<Song> m_songs;
    QList<OnlineSong> m_onlineSongs;
    bool m_isOpen = false;
};

} // namespace cadorel
