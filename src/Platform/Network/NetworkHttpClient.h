// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpAnswer.h"
#include "Platform/HttpClient.h"

#include <QHash>
#include <QMetaObject>
#include <QObject>
#include <QThread>

#include <array>
#include <memory>

namespace cadorel {

class NetworkWorker;

/// The web, through Qt's network library, on a thread of its own: a download at full speed onto a slow disk
/// does not hold up the main thread, and answers arrive there.
///
/// Asks for bodies as they are ("Accept-Encoding: identity") unless the caller sets that header, and never
/// unpacks one: a Content-Length is the length of what arrives, and a shorter body is a failure. HTTP/1.1.
/// Two limits of Qt 6.4: a chunked body that breaks off often passes as a whole one unless
/// HttpRequest::mustBeWhole asks for a check, and of a long page that comes with 401 or 407 only the
/// beginning arrives. The check cannot tell where a server says "Connection: close" and no length with HEAD
/// either. An address is sent as it is encoded, but for segments
/// "." and "..", which are resolved before.
///
/// Requests that are under way when the client is destroyed end with Kind::cancelled before the destructor
/// returns, their connections broken and their files removed.
class NetworkHttpClient : public HttpClient
{
public:
    NetworkHttpClient();
    ~NetworkHttpClient() override;
    Q_DISABLE_COPY_MOVE(NetworkHttpClient)

    QCoro::Task<std::expected<HttpResponse, HttpError>> send(HttpRequest request) override;

private:
    /// A request that has not ended, seen from the main thread.
    struct Waiting
    {
        std::shared_ptr<HttpAnswer> answer;
        std::shared_ptr<HttpTransfer> transfer;
        QString outputFile;
        std::array<QMetaObject::Connection, 2> connections;
    };

    void start(HttpRequest request, std::shared_ptr<HttpAnswer> answer);
    void deliver(quint64 id, HttpAnswer::Result result);

    QThread m_thread;
    NetworkWorker *m_worker;
    /// Answers come to the main thread as its events, and no longer than it lives.
    std::unique_ptr<QObject> m_receiver;
    QHash<quint64, Waiting> m_waiting;
    quint64 m_lastId = 0;
    bool m_isClosing = false;
};

} // namespace cadorel
