// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/PlaylistsViewModel.h"

#include "Services/PlaylistService.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/PlaylistEditorViewModel.h"
#include "ViewModels/PlaylistListModel.h"
#include "ViewModels/PlaylistPageViewModel.h"
#include "ViewModels/PlaylistPickerViewModel.h"
#include "ViewModels/SongListModel.h"

namespace cadorel {

namespace {

/// Calls @p use with the record of the row, which is a Song or an OnlineSong; does nothing when it is gone.
template <typename Use>
void withSong(const RowModel *songs, const QString &key, const Use &use)
{
    if (const auto *model = qobject_cast<const SongListModel *>(songs)) {
        if (const int row = model->rowOf(key); row >= 0)
            use(Song(model->songs().at(row)));
    } else if (const auto *onlineModel = qobject_cast<const OnlineSongListModel *>(songs)) {
        if (const int row = onlineModel->rowOf(key); row >= 0)
            use(OnlineSong(onlineModel->songs().at(row)));
    }
}

} // namespace

PlaylistsViewModel::PlaylistsViewModel(CadorelViewModel &viewModel, PlaylistService &service,
                                       Platform &platform,
                                       const OnlineSongListModel::CoverAddress &coverAddress)
    : m_viewModel(viewModel)
    , m_service(service)
    , m_playlists(new PlaylistListModel(this))
    , m_editor(new PlaylistEditorViewModel(service, platform, this))
    , m_page(new PlaylistPageViewModel(viewModel, service, coverAddress, this))
    , m_picker(new PlaylistPickerViewModel(viewModel, service, this))
    , m_refresh([this] { refresh(); })
{
    connect(&m_service, &PlaylistStore::changed, this, [this] { m_refresh.request(); });
    connect(&m_viewModel, &CadorelViewModel::songsChanged, this, [this] { m_refresh.request(); });
    connect(m_editor, &PlaylistEditorViewModel::created, this, [this](const Playlist &playlist) {
        if (m_picker->isOpen() && m_picker->type() == playlist.type)
            m_picker->choose(playlist.id);
    });
    m_refresh.run();
}

PlaylistsViewModel::~PlaylistsViewModel() = default;

void PlaylistsViewModel::refresh()
{
    const QList<Playlist> &playlists = m_service.playlists();
    m_playlists->setPlaylists(playlists,
                              PlaylistListModel::firstSongsOf(playlists, m_viewModel.localSongs()));
}

void PlaylistsViewModel::openPlaylist(const QString &id)
{
    m_page->open(id);
}

void PlaylistsViewModel::createForPicker()
{
    m_editor->beginCreateOf(m_picker->type());
}

void PlaylistsViewModel::toggleFavorite(RowModel *songs, const QString &key)
{
    withSong(songs, key, [this](const auto &song) { m_service.toggleFavorite(song); });
}

void PlaylistsViewModel::addToPlaylist(RowModel *songs, const QString &key)
{
    struct Opener
    {
        PlaylistPickerViewModel *picker;
        void operator()(const Song &song) const { picker->open({song}); }
        void operator()(const OnlineSong &song) const { picker->openOnline({song}); }
    };
    withSong(songs, key, Opener{m_picker});
}

} // namespace cadorel
