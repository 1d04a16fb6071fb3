// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/TopListPageViewModel.h"

#include "Services/AudioPlayerService.h"
#include "Services/OnlineMusicService.h"
#include "Utils/Tasks.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/OnlineSongListModel.h"

#include <QPointer>

namespace cadorel {

TopListPageViewModel::TopListPageViewModel(CadorelViewModel &viewModel, OnlineMusicService &service,
                                           OnlineSongListModel *songs, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_service(service)
    , m_songs(songs)
{
    m_songs->setParent(this);
    connect(&m_service, &OnlineMusicService::topListSongsChanged, this, &TopListPageViewModel::refreshSongs);
    connect(&m_service, &OnlineMusicService::isLoadingTopListSongsChanged, this,
            &TopListPageViewModel::refreshContent);
    connect(&m_viewModel, &CadorelViewModel::currentChanged, this, &TopListPageViewModel::markCurrentSong);
    refreshSongs();
    markCurrentSong();
}

TopListPageViewModel::~TopListPageViewModel() = default;

void TopListPageViewModel::open(const TopList &topList)
{
    m_topList = topList;
    m_isOpen = true;
    detach(load());
    Q_EMIT chartChanged();
}

void TopListPageViewModel::close()
{
    if (!m_isOpen)
        return;
    m_isOpen = false;
    Q_EMIT chartChanged();
}

void TopListPageViewModel::retry()
{
    if (m_isOpen)
        detach(load());
}

QCoro::Task<void> TopListPageViewModel::load()
{
    const QPointer<TopListPageViewModel> self(this);
    // Counted here too: the answer to an older request ends the service's loading, not this one.
    ++m_loads;
    refreshContent();
    co_await m_service.getTopListSongs(m_topList);
    if (!self)
        co_return;
    --m_loads;
    refreshContent();
}

void TopListPageViewModel::playSongAt(int row)
{
    const QList<OnlineSong> songs = m_songs->songs();
    if (row >= 0 && row < songs.size())
        m_viewModel.playOnlineSongs(songs, songs.at(row));
}

void TopListPageViewModel::playAll()
{
    playSongAt(0);
}

void TopListPageViewModel::refreshSongs()
{
    m_songs->setSongs(m_service.topListSongs());
    refreshContent();
}

void TopListPageViewModel::refreshContent()
{
    const bool isLoading = m_loads > 0 || m_service.isLoadingTopListSongs();
    const Content now = m_songs->count() > 0 ? Content::Songs : isLoading ? Content::Loading : Content::Empty;
    if (m_content == now)
        return;
    m_content = now;
    Q_EMIT contentChanged();
}

void TopListPageViewModel::markCurrentSong()
{
    m_songs->setCurrentSong(m_viewModel.audioPlayer()->currentOnlineSong());
}

} // namespace cadorel
