// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpAnswer.h"
#include "Platform/HttpClient.h"

#include <QHash>
#include <QNetworkAccessManager>
#include <QObject>

#include <functional>

namespace cadorel {

class NetworkExchange;

/// The requests under way, on the network thread. Destroyed, it breaks off what has not ended.
class NetworkWorker : public QObject
{
    Q_OBJECT
public:
    using Done = std::function<void(quint64 id, HttpAnswer::Result result)>;

    /// @param done called on the network thread, once for each request
    explicit NetworkWorker(Done done);
    ~NetworkWorker() override;

    void start(quint64 id, HttpRequest request, bool isPaused);
    /// Of a request that has ended already nothing happens.
    void cancel(quint64 id);
    void setPaused(quint64 id, bool isPaused);

private:
    QNetworkAccessManager *sharedManager();
    void finished(quint64 id, HttpAnswer::Result result);

    Done m_done;
    QNetworkAccessManager *m_sharedManager = nullptr;
    QHash<quint64, NetworkExchange *> m_exchanges;
};

} // namespace cadorel
