// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/NetworkWorker.h"

#include "Platform/Network/NetworkExchange.h"

#include <utility>

namespace cadorel {

NetworkWorker::NetworkWorker(Done done)
    : m_done(std::move(done))
{
}

NetworkWorker::~NetworkWorker()
{
    // Before the connections that they use.
    qDeleteAll(m_exchanges);
}

void NetworkWorker::start(quint64 id, HttpRequest request, bool isPaused)
{
    const bool isOwn = request.ownConnection || request.mustBeWhole;
    QNetworkAccessManager *manager = isOwn ? nullptr : sharedManager();
    auto *exchange = new NetworkExchange(std::move(request), manager, [this, id](HttpAnswer::Result result) {
        finished(id, std::move(result));
    });
    m_exchanges.insert(id, exchange);
    exchange->start(isPaused);
}

void NetworkWorker::cancel(quint64 id)
{
    if (NetworkExchange *exchange = m_exchanges.value(id))
        exchange->cancel();
}

void NetworkWorker::setPaused(quint64 id, bool isPaused)
{
    if (NetworkExchange *exchange = m_exchanges.value(id))
        exchange->setPaused(isPaused);
}

QNetworkAccessManager *NetworkWorker::sharedManager()
{
    if (!m_sharedManager)
        m_sharedManager = NetworkExchange::makeManager(this);
    return m_sharedManager;
}

void NetworkWorker::finished(quint64 id, HttpAnswer::Result result)
{
    // The exchange is in the middle of a call.
    m_exchanges.take(id)->deleteLater();
    m_done(id, std::move(result));
}

} // namespace cadorel
