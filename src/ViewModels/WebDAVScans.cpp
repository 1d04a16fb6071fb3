// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/WebDAVScans.h"

#include "Services/WebDAVService.h"
#include "Utils/Tasks.h"

#include <QPointer>

#include <algorithm>

namespace cadorel {

WebDAVScans::WebDAVScans(WebDAVService &service, QObject *parent)
    : QObject(parent)
    , m_service(service)
{
    connect(&m_service, &WebDAVService::scanProgressChanged, this, [this] {
        if (!m_running.isNull())
            Q_EMIT changed(m_running);
    });
}

void WebDAVScans::request(const QUuid &server)
{
    if (state(server) != State::none)
        return;
    m_waiting.append(server);
    Q_EMIT changed(server);
    if (!m_runs)
        detach(run());
}

void WebDAVScans::requestAll()
{
    const QList<WebDAVConfig> configs = m_service.configs();
    for (const WebDAVConfig &config : configs) {
        if (config.isEnabled)
            request(config.id);
    }
}

void WebDAVScans::forget(const QUuid &server)
{
    m_waiting.removeOne(server);
    m_failures.remove(server);
    m_stale.remove(server);
    Q_EMIT changed(server);
}

WebDAVScans::State WebDAVScans::state(const QUuid &server) const
{
    if (m_running == server)
        return State::running;
    return m_waiting.contains(server) ? State::waiting : State::none;
}

double WebDAVScans::progress() const
{
    return m_service.scanProgress();
}

void WebDAVScans::dismissFailure(const QUuid &server)
{
    if (m_failures.remove(server))
        Q_EMIT changed(server);
}

void WebDAVScans::markStale(const QUuid &server)
{
    m_stale.insert(server, ++m_editions);
    Q_EMIT changed(server);
}

QCoro::Task<void> WebDAVScans::run()
{
    const QPointer<WebDAVScans> self(this);
    m_runs = true;
    while (!m_waiting.isEmpty()) {
        const QUuid server = m_waiting.takeFirst();
        const QList<WebDAVConfig> configs = m_service.configs();
        const auto config =
            std::find_if(configs.cbegin(), configs.cend(),
                         [&server](const WebDAVConfig &candidate) { return candidate.id == server; });
        if (config == configs.cend())
            continue;
        const quint64 edition = m_editions;
        m_running = server;
        m_failures.remove(server);
        Q_EMIT changed(server);
        co_await m_service.scanMusic(*config);
        if (!self)
            co_return;
        finish(server, edition);
    }
    m_runs = false;
}

void WebDAVScans::finish(const QUuid &server, quint64 edition)
{
    m_running = QUuid();
    const QList<WebDAVConfig> configs = m_service.configs();
    const bool isThere = std::any_of(configs.cbegin(), configs.cend(),
                                     [&server](const WebDAVConfig &config) { return config.id == server; });
    if (const std::optional<QString> failure = m_service.error(); isThere && failure)
        m_failures.insert(server, *failure);
    // A change during the scan came too late for its songs.
    else if (m_stale.value(server) <= edition)
        m_stale.remove(server);
    Q_EMIT changed(server);
}

} // namespace cadorel
