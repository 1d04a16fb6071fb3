// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/ContentViewModel.h"

#include "Platform/Preferences.h"

namespace cadorel {

ContentViewModel::ContentViewModel(Preferences &preferences)
    : m_preferences(preferences)
    , m_showWebDAVTab(preferences.boolValue(QLatin1StringView(showWebDAVTabKey)).value_or(true))
    , m_visibleTabs(allContentTabs())
{
    m_visibleTabs.setShown(ContentTab::webdav, m_showWebDAVTab);
}

void ContentViewModel::setShowWebDAVTab(bool shows)
{
    if (shows == m_showWebDAVTab)
        return;
    m_showWebDAVTab = shows;
    m_preferences.setBool(QLatin1StringView(showWebDAVTabKey), shows);
    m_visibleTabs.setShown(ContentTab::webdav, shows);
    Q_EMIT showWebDAVTabChanged();
}

} // namespace cadorel
