// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/WebDAVServersViewModel.h"

#include "Services/WebDAVService.h"
#include "Utils/Tasks.h"
#include "ViewModels/WebDAVScans.h"
#include "ViewModels/WebDAVServerFormViewModel.h"
#include "ViewModels/WebDAVServerListModel.h"
#include "ViewModels/WebDAVServerPageViewModel.h"

#include <algorithm>
#include <optional>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr auto songIdPrefix = "webdav_"_L1;
/// Length of an id's text: 32 digits and 4 dashes.
constexpr qsizetype serverIdLength = 36;

std::optional<WebDAVConfig> configOf(const WebDAVService &service, const QUuid &id)
{
    const QList<WebDAVConfig> &configs = service.configs();
    const auto found = std::find_if(configs.cbegin(), configs.cend(),
                                    [&id](const WebDAVConfig &config) { return config.id == id; });
    return found == configs.cend() ? std::nullopt : std::optional(*found);
}

} // namespace

WebDAVServersViewModel::WebDAVServersViewModel(CadorelViewModel &viewModel, WebDAVService &service,
                                               Platform &platform)
    : m_service(service)
    , m_scans(new WebDAVScans(service, this))
    , m_servers(new WebDAVServerListModel(*m_scans, *platform.clock, this))
    , m_form(new WebDAVServerFormViewModel(service, this))
    , m_page(new WebDAVServerPageViewModel(viewModel, service, *m_scans, *platform.clock, this))
    , m_count([this] { countSongs(); })
{
    connect(&m_service, &WebDAVService::configsChanged, this, &WebDAVServersViewModel::refreshServers);
    connect(&m_service, &WebDAVSource::changed, this, [this] { m_count.request(); });
    connect(m_scans, &WebDAVScans::changed, m_servers, &WebDAVServerListModel::updateScan);
    connect(m_form, &WebDAVServerFormViewModel::saved, this, &WebDAVServersViewModel::serverSaved);
    refreshServers();
    m_count.run();
}

WebDAVServersViewModel::~WebDAVServersViewModel() = default;

void WebDAVServersViewModel::addServer()
{
    m_form->openNew();
}

void WebDAVServersViewModel::editServer(const QString &id)
{
    if (const auto config = configOf(m_service, QUuid(id)))
        m_form->openExisting(*config);
}

void WebDAVServersViewModel::openServer(const QString &id)
{
    if (configOf(m_service, QUuid(id)))
        m_page->open(QUuid(id));
}

void WebDAVServersViewModel::scanServer(const QString &id)
{
    m_scans->request(QUuid(id));
}

void WebDAVServersViewModel::scanAll()
{
    m_scans->requestAll();
}

void WebDAVServersViewModel::deleteServer(const QString &id)
{
    const auto config = configOf(m_service, QUuid(id));
    if (!config)
        return;
    m_scans->forget(config->id);
    detach(m_service.deleteConfig(*config));
}

void WebDAVServersViewModel::serverSaved(const QUuid &server, bool isMoved)
{
    const auto config = configOf(m_service, server);
    if (config && isMoved && !m_service.getSongs(*config).isEmpty())
        m_scans->markStale(server);
}

void WebDAVServersViewModel::refreshServers()
{
    m_servers->setServers(m_service.configs());
}

void WebDAVServersViewModel::countSongs()
{
    QHash<QUuid, int> counts;
    QStringView lastText;
    QUuid lastServer;
    const QList<Song> songs = m_service.webDAVSongs();
    for (const Song &song : songs) {
        const QString &id = song.id();
        if (!id.startsWith(songIdPrefix))
            continue;
        // The songs of a server stand together.
        const QStringView text = QStringView(id).mid(songIdPrefix.size(), serverIdLength);
        if (text != lastText) {
            lastText = text;
            lastServer = QUuid::fromString(text);
        }
        ++counts[lastServer];
    }
    m_servers->setSongCounts(counts);
}

} // namespace cadorel
