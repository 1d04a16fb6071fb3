// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Platform.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/PacedRefresh.h"

#include <QObject>
#include <QString>

namespace cadorel {

class CadorelViewModel;
class PlaylistEditorViewModel;
class PlaylistListModel;
class PlaylistPageViewModel;
class PlaylistPickerViewModel;
class PlaylistService;
class SongListModel;

/// The listener's playlists: their list, the page of one of them, what is done to them, and what every list
/// of songs offers with them. Main thread.
class PlaylistsViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/PlaylistEditorViewModel.h")
    Q_MOC_INCLUDE("ViewModels/PlaylistListModel.h")
    Q_MOC_INCLUDE("ViewModels/PlaylistPageViewModel.h")
    Q_MOC_INCLUDE("ViewModels/PlaylistPickerViewModel.h")
    Q_MOC_INCLUDE("ViewModels/SongListModel.h")
    Q_PROPERTY(cadorel::PlaylistListModel *playlists READ playlists CONSTANT)
    Q_PROPERTY(cadorel::PlaylistEditorViewModel *editor READ editor CONSTANT)
    Q_PROPERTY(cadorel::PlaylistPageViewModel *page READ page CONSTANT)
    Q_PROPERTY(cadorel::PlaylistPickerViewModel *picker READ picker CONSTANT)

public:
    /// @param viewModel, @param service and @param platform outlive this object
    /// @param coverAddress where the covers of online songs lie
    PlaylistsViewModel(CadorelViewModel &viewModel, PlaylistService &service, Platform &platform,
                       const OnlineSongListModel::CoverAddress &coverAddress);
    ~PlaylistsViewModel() override;
    Q_DISABLE_COPY_MOVE(PlaylistsViewModel)

    PlaylistListModel *playlists() const { return m_playlists; }
    PlaylistEditorViewModel *editor() const { return m_editor; }
    PlaylistPageViewModel *page() const { return m_page; }
    PlaylistPickerViewModel *picker() const { return m_picker; }

    Q_INVOKABLE void openPlaylist(const QString &id);
    /// Makes a new playlist for the songs that the picker asks about.
    Q_INVOKABLE void createForPicker();

    /// Makes the song of a row a favourite, or none any more.
    /// @param songs SongListModel or OnlineSongListModel; @param key songId of the row
    Q_INVOKABLE void toggleFavorite(cadorel::RowModel *songs, const QString &key);
    /// Asks which playlist the song of a row shall go into.
    Q_INVOKABLE void addToPlaylist(cadorel::RowModel *songs, const QString &key);

private:
    void refresh();

    CadorelViewModel &m_viewModel;
    PlaylistService &m_service;
    PlaylistListModel *m_playlists;
    PlaylistEditorViewModel *m_editor;
    PlaylistPageViewModel *m_page;
    PlaylistPickerViewModel *m_picker;
    PacedRefresh m_refresh;
};

} // namespace cadorel
