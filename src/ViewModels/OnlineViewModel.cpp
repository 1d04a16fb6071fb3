// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/OnlineViewModel.h"

#include "Services/APIConfigService.h"
#include "Services/OnlineMusicService.h"
#include "ViewModels/APISettingsViewModel.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/OnlineSearchViewModel.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/TopListPageViewModel.h"
#include "ViewModels/TopListsViewModel.h"

namespace cadorel {

OnlineViewModel::OnlineViewModel(CadorelViewModel &viewModel, OnlineMusicService &service,
                                 APIConfigService &apiConfig)
    : m_settings(new APISettingsViewModel(apiConfig, service, this))
{
    const auto makeSongs = [&viewModel, &service, &apiConfig] {
        auto *songs = new OnlineSongListModel(
            [&service](const OnlineSong &song) { return service.getCoverUrl(song); }, nullptr);
        songs->setFavorites(viewModel.playlistStore());
        connect(&apiConfig, &APIConfigService::baseURLChanged, songs, &OnlineSongListModel::moveCovers);
        return songs;
    };
    m_search = new OnlineSearchViewModel(viewModel, service, makeSongs(), this);
    auto *page = new TopListPageViewModel(viewModel, service, makeSongs(), nullptr);
    m_charts = new TopListsViewModel(service, page, this);
    connect(m_settings, &APISettingsViewModel::serverChanged, m_charts, &TopListsViewModel::serverChanged);
}

OnlineViewModel::~OnlineViewModel() = default;

} // namespace cadorel
