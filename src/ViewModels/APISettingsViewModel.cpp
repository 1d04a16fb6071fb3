// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/APISettingsViewModel.h"

#include "Services/APIConfigService.h"
#include "Services/OnlineMusicService.h"
#include "Utils/Tasks.h"
#include "ViewModels/FormTextInput.h"

namespace cadorel {

using namespace Qt::StringLiterals;

APISettingsViewModel::APISettingsViewModel(APIConfigService &apiConfig, OnlineMusicService &service,
                                           QObject *parent)
    : QObject(parent)
    , m_apiConfig(apiConfig)
    , m_service(service)
    // What is wrong with the address is told when it is to be saved, not while it is typed.
    , m_tempURL(new FormTextInput([](const QString &) { return QString(); }, this))
{
    connect(&m_apiConfig, &APIConfigService::baseURLChanged, this, &APISettingsViewModel::usesDefaultChanged);
    connect(m_tempURL, &FormTextInput::textChanged, this, [this] { m_tempURL->setHint(QString()); });
}

APISettingsViewModel::~APISettingsViewModel() = default;

bool APISettingsViewModel::usesDefault() const
{
    return m_apiConfig.baseURL() == APIConfigService::defaultBaseURL;
}

void APISettingsViewModel::open()
{
    m_tempURL->reset(m_apiConfig.baseURL());
    setOpen(true);
}

void APISettingsViewModel::close()
{
    setOpen(false);
}

void APISettingsViewModel::setOpen(bool isOpen)
{
    if (m_isOpen == isOpen)
        return;
    m_isOpen = isOpen;
    Q_EMIT isOpenChanged();
}

void APISettingsViewModel::setShowInvalidURLAlert(bool shows)
{
    if (m_showInvalidURLAlert == shows)
        return;
    m_showInvalidURLAlert = shows;
    Q_EMIT showInvalidURLAlertChanged();
}

void APISettingsViewModel::setShowResetAlert(bool shows)
{
    if (m_showResetAlert == shows)
        return;
    m_showResetAlert = shows;
    Q_EMIT showResetAlertChanged();
}

void APISettingsViewModel::saveURL()
{
    const QString address = m_tempURL->text().trimmed();
    if (!APIConfigService::isValidURL(address)) {
        setShowInvalidURLAlert(true);
        return;
    }
    m_apiConfig.setBaseURL(address);
    m_service.clearTopListsCache();
    m_tempURL->setText(address);
    m_tempURL->setHint(u"已保存，立即生效"_s);
    Q_EMIT serverChanged();
}

void APISettingsViewModel::reset()
{
    m_apiConfig.resetToDefault();
    m_service.clearTopListsCache();
    m_tempURL->setText(m_apiConfig.baseURL());
    m_tempURL->setHint(u"已恢复默认地址"_s);
    Q_EMIT serverChanged();
}

void APISettingsViewModel::testConnection()
{
    detach(m_service.getTopLists(MusicPlatform::netease));
}

} // namespace cadorel
