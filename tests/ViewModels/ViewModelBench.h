// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeMediaLibrarySource.h"
#include "Fakes/FakeOnlineMusicSource.h"
#include "Fakes/FakePlaylistStore.h"
#include "Fakes/FakeWebDAVSource.h"
#include "Fakes/PlayerBench.h"
#include "ViewModels/CadorelViewModel.h"

namespace cadorel {

/// The central view model over a player and sources of fakes. A test fills the sources and calls start().
class ViewModelBench : public PlayerBench
{
public:
    FakeMediaLibrarySource mediaLibrary;
    FakePlaylistStore playlists;
    FakeOnlineMusicSource online;
    FakeWebDAVSource webDAV;

    CadorelViewModel &startViewModel()
    {
        start();
        m_viewModel = std::make_unique<CadorelViewModel>(player(), importService(),
                                                         LibrarySources{.mediaLibrary = &mediaLibrary,
                                                                        .playlistService = &playlists,
                                                                        .onlineMusicService = &online,
                                                                        .webDAVService = &webDAV});
        return *m_viewModel;
    }
    CadorelViewModel &viewModel() { return *m_viewModel; }

private:
    std::unique_ptr<CadorelViewModel> m_viewModel;
};

} // namespace cadorel
