// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the types of other libraries by, which themselves know nothing of QML.
#pragma once

#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "ViewModels/APISettingsViewModel.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/FilePickerModel.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/OnlineSearchViewModel.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/OnlineViewModel.h"
#include "ViewModels/PlaybackViewModel.h"
#include "ViewModels/PlaylistEditorViewModel.h"
#include "ViewModels/PlaylistListModel.h"
#include "ViewModels/PlaylistPageViewModel.h"
#include "ViewModels/PlaylistPickerViewModel.h"
#include "ViewModels/PlaylistsViewModel.h"
#include "ViewModels/RowModel.h"
#include "ViewModels/SongListModel.h"
#include "ViewModels/TopListListModel.h"
#include "ViewModels/TopListPageViewModel.h"
#include "ViewModels/TopListsViewModel.h"
#include "ViewModels/WebDAVPresetListModel.h"
#include "ViewModels/WebDAVServerFormViewModel.h"
#include "ViewModels/WebDAVServerListModel.h"
#include "ViewModels/WebDAVServerPageViewModel.h"
#include "ViewModels/WebDAVServersViewModel.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignAudioPlayerService
{
    Q_GADGET
    QML_FOREIGN(cadorel::AudioPlayerService)
    QML_NAMED_ELEMENT(AudioPlayerService)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignLocalMusicImportService
{
    Q_GADGET
    QML_FOREIGN(cadorel::LocalMusicImportService)
    QML_NAMED_ELEMENT(LocalMusicImportService)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignCadorelViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::CadorelViewModel)
    QML_NAMED_ELEMENT(CadorelViewModel)
    QML_UNCREATABLE("given to the window")
};

struct ForeignLibraryViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::LibraryViewModel)
    QML_NAMED_ELEMENT(LibraryViewModel)
    QML_UNCREATABLE("given to the window")
};

struct ForeignPlaybackViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::PlaybackViewModel)
    QML_NAMED_ELEMENT(PlaybackViewModel)
    QML_UNCREATABLE("given to the window")
};

struct ForeignAPISettingsViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::APISettingsViewModel)
    QML_NAMED_ELEMENT(APISettingsViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignOnlineSearchViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::OnlineSearchViewModel)
    QML_NAMED_ELEMENT(OnlineSearchViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignOnlineSongListModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::OnlineSongListModel)
    QML_NAMED_ELEMENT(OnlineSongListModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignOnlineViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::OnlineViewModel)
    QML_NAMED_ELEMENT(OnlineViewModel)
    QML_UNCREATABLE("given to the window")
};

struct ForeignPlaylistEditorViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::PlaylistEditorViewModel)
    QML_NAMED_ELEMENT(PlaylistEditorViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignPlaylistListModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::PlaylistListModel)
    QML_NAMED_ELEMENT(PlaylistListModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignPlaylistPageViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::PlaylistPageViewModel)
    QML_NAMED_ELEMENT(PlaylistPageViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignPlaylistPickerViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::PlaylistPickerViewModel)
    QML_NAMED_ELEMENT(PlaylistPickerViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignPlaylistsViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::PlaylistsViewModel)
    QML_NAMED_ELEMENT(PlaylistsViewModel)
    QML_UNCREATABLE("given to the window")
};

struct ForeignRowModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::RowModel)
    QML_NAMED_ELEMENT(RowModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignSongListModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::SongListModel)
    QML_NAMED_ELEMENT(SongListModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignFilePickerModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::FilePickerModel)
    QML_NAMED_ELEMENT(FilePickerModel)
};

struct ForeignFormTextInput
{
    Q_GADGET
    QML_FOREIGN(cadorel::FormTextInput)
    QML_NAMED_ELEMENT(FormTextInput)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignTopListListModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::TopListListModel)
    QML_NAMED_ELEMENT(TopListListModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignTopListPageViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::TopListPageViewModel)
    QML_NAMED_ELEMENT(TopListPageViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignTopListsViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::TopListsViewModel)
    QML_NAMED_ELEMENT(TopListsViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignWebDAVPresetListModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::WebDAVPresetListModel)
    QML_NAMED_ELEMENT(WebDAVPresetListModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignWebDAVServerFormViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::WebDAVServerFormViewModel)
    QML_NAMED_ELEMENT(WebDAVServerFormViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignWebDAVServerListModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::WebDAVServerListModel)
    QML_NAMED_ELEMENT(WebDAVServerListModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignWebDAVServerPageViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::WebDAVServerPageViewModel)
    QML_NAMED_ELEMENT(WebDAVServerPageViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignWebDAVServersViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::WebDAVServersViewModel)
    QML_NAMED_ELEMENT(WebDAVServersViewModel)
    QML_UNCREATABLE("given to the window")
};

} // namespace cadorel
