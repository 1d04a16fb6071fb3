// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/NavidromeServersViewModel.h"

#include "Services/NavidromeService.h"
#include "Utils/Tasks.h"
#include "ViewModels/NavidromeServerFormViewModel.h"
#include "ViewModels/NavidromeServerListModel.h"
#include "ViewModels/NavidromeServerPageViewModel.h"

#include <algorithm>
#include <optional>

namespace cadorel {

namespace {

std::optional<NavidromeConfig> configOf(const NavidromeService &service, const QString &id)
{
    const QList<NavidromeConfig> &configs = service.configs();
    const auto found = std::ranges::find(configs, QUuid(id), &NavidromeConfig::id);
    return found == configs.cend() ? std::nullopt : std::optional(*found);
}

} // namespace

NavidromeServersViewModel::NavidromeServersViewModel(CadorelViewModel &viewModel, NavidromeService &service)
    : m_service(service)
    , m_servers(new NavidromeServerListModel(this))
    , m_form(new NavidromeServerFormViewModel(service, this))
    , m_page(new NavidromeServerPageViewModel(viewModel, service, this))
{
    connect(&m_service, &NavidromeService::configsChanged, this, &NavidromeServersViewModel::refreshServers);
    connect(&m_service, &NavidromeService::currentConfigChanged, this,
            &NavidromeServersViewModel::showConnection);
    connect(&m_service, &NavidromeService::currentConfigChanged, this,
            &NavidromeServersViewModel::connectedServerChanged);
    connect(m_page, &NavidromeServerPageViewModel::changed, this, &NavidromeServersViewModel::showConnection);
    connect(m_form, &NavidromeServerFormViewModel::saved, this, [this](const QUuid &server, bool isMoved) {
        if (isMoved)
            reconnect(server);
    });
    refreshServers();
}

NavidromeServersViewModel::~NavidromeServersViewModel() = default;

QString NavidromeServersViewModel::connectedServerId() const
{
    const std::optional<NavidromeConfig> &current = m_service.currentConfig();
    return current ? current->uuidText() : QString();
}

void NavidromeServersViewModel::addServer()
{
    m_form->openNew();
}

void NavidromeServersViewModel::editServer(const QString &id)
{
    if (const auto config = configOf(m_service, id))
        m_form->openExisting(*config);
}

void NavidromeServersViewModel::openServer(const QString &id)
{
    m_page->open(QUuid(id));
}

void NavidromeServersViewModel::refresh()
{
    if (m_service.isConnected())
        detach(m_service.loadDefaultSongs());
}

void NavidromeServersViewModel::deleteServer(const QString &id)
{
    if (const auto config = configOf(m_service, id))
        detach(m_service.deleteConfig(*config));
}

void NavidromeServersViewModel::reconnect(const QUuid &server)
{
    // The connection leads to where the server was, with the password of now.
    const std::optional<NavidromeConfig> &current = m_service.currentConfig();
    if (current && current->id == server)
        m_service.disconnectFromServer();
    m_page->reopen(server);
}

void NavidromeServersViewModel::refreshServers()
{
    m_servers->setServers(m_service.configs());
    showConnection();
}

void NavidromeServersViewModel::showConnection()
{
    const std::optional<NavidromeConfig> &current = m_service.currentConfig();
    m_servers->setConnection(current ? current->id : QUuid(), m_page->connectingServer());
}

} // namespace cadorel
