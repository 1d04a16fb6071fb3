// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/TopListsViewModel.h"

#include "Services/OnlineMusicService.h"
#include "Utils/Tasks.h"
#include "ViewModels/PlatformNames.h"
#include "ViewModels/TopListListModel.h"
#include "ViewModels/TopListPageViewModel.h"

#include <QPointer>

namespace cadorel {

TopListsViewModel::TopListsViewModel(OnlineMusicService &service, TopListPageViewModel *page, QObject *parent)
    : QObject(parent)
    , m_service(service)
    , m_charts(new TopListListModel(this))
    , m_page(page)
{
    m_page->setParent(this);
    connect(&m_service, &OnlineMusicService::topListsChanged, this, &TopListsViewModel::refreshCharts);
    connect(&m_service, &OnlineMusicService::isLoadingTopListsChanged, this,
            &TopListsViewModel::refreshContent);
    refreshCharts();
}

TopListsViewModel::~TopListsViewModel() = default;

QStringList TopListsViewModel::platforms() const
{
    return platformNames();
}

int TopListsViewModel::platformIndex() const
{
    return static_cast<int>(allMusicPlatforms().indexOf(m_selectedPlatform));
}

void TopListsViewModel::open()
{
    detach(load(m_selectedPlatform));
    setOpen(true);
}

void TopListsViewModel::close()
{
    setOpen(false);
}

void TopListsViewModel::setOpen(bool isOpen)
{
    if (m_isOpen == isOpen)
        return;
    m_isOpen = isOpen;
    Q_EMIT isOpenChanged();
}

void TopListsViewModel::selectPlatform(int index)
{
    const QList<MusicPlatform> all = allMusicPlatforms();
    if (index == platformIndex() || index < 0 || index >= all.size())
        return;
    m_selectedPlatform = all.at(index);
    Q_EMIT platformIndexChanged();
    detach(load(m_selectedPlatform));
    refreshCharts();
}

void TopListsViewModel::retry()
{
    detach(load(m_selectedPlatform));
}

void TopListsViewModel::serverChanged()
{
    if (m_isOpen)
        detach(load(m_selectedPlatform));
}

void TopListsViewModel::openChart(int row)
{
    const QList<TopList> charts = m_charts->charts();
    if (row >= 0 && row < charts.size())
        m_page->open(charts.at(row));
}

QCoro::Task<void> TopListsViewModel::load(MusicPlatform platform)
{
    const QPointer<TopListsViewModel> self(this);
    // Counted here too: the answer for one platform ends the service's loading, not that of the others.
    ++m_loads[platform];
    refreshContent();
    co_await m_service.getTopLists(platform);
    if (!self)
        co_return;
    --m_loads[platform];
    refreshContent();
}

void TopListsViewModel::refreshCharts()
{
    m_charts->setCharts(m_service.topLists().value(m_selectedPlatform));
    refreshContent();
}

void TopListsViewModel::refreshContent()
{
    const bool isLoading = m_loads.value(m_selectedPlatform) > 0 || m_service.isLoadingTopLists();
    const Content now = m_charts->count() > 0 ? Content::Charts
                        : isLoading           ? Content::Loading
                                              : Content::Empty;
    if (m_content == now)
        return;
    m_content = now;
    Q_EMIT contentChanged();
}

} // namespace cadorel
