// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace cadorel {

class APIConfigService;
class APISettingsViewModel;
class CadorelViewModel;
class OnlineMusicService;
class OnlineSearchViewModel;
class TopListsViewModel;

/// What the place of the online platforms consists of: the search, the charts, and the address of the server
/// behind both. Main thread.
class OnlineViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/APISettingsViewModel.h")
    Q_MOC_INCLUDE("ViewModels/OnlineSearchViewModel.h")
    Q_MOC_INCLUDE("ViewModels/TopListsViewModel.h")
    Q_PROPERTY(cadorel::OnlineSearchViewModel *search READ search CONSTANT)
    Q_PROPERTY(cadorel::TopListsViewModel *charts READ charts CONSTANT)
    Q_PROPERTY(cadorel::APISettingsViewModel *settings READ settings CONSTANT)

public:
    /// @param viewModel, @param service and @param apiConfig outlive this object
    OnlineViewModel(CadorelViewModel &viewModel, OnlineMusicService &service, APIConfigService &apiConfig);
    ~OnlineViewModel() override;
    Q_DISABLE_COPY_MOVE(OnlineViewModel)

    OnlineSearchViewModel *search() const { return m_search; }
    TopListsViewModel *charts() const { return m_charts; }
    APISettingsViewModel *settings() const { return m_settings; }

private:
    OnlineSearchViewModel *m_search;
    TopListsViewModel *m_charts;
    APISettingsViewModel *m_settings;
};

} // namespace cadorel
