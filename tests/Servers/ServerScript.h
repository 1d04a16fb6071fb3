// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Servers/ServedRequest.h"
#include "Servers/ServerAnswer.h"

#include <QHash>
#include <QList>

#include <functional>
#include <mutex>
#include <optional>

namespace cadorel {

/// What a test wrote for MisbehavingServer to play, and what has happened so far: the part that both threads
/// share. Any thread.
class ServerScript
{
public:
    using Handler = std::function<ServerAnswer(const ServedRequest &request)>;

    /// One after the other for each request to @p path (percent-encoded, without query); the last one stays.
    void setAnswers(const QByteArray &path, const QList<ServerAnswer> &answers);
    /// Computes the answer for each request to @p path, on the server's thread.
    void setHandler(const QByteArray &path, Handler handler);
    /// Computes the answer for each request to a path without an answer of its own.
    void setDefault(Handler handler);
    /// Every request without Basic authentication of this user gets 401, whatever its path.
    void requireBasic(const QString &user, const QString &password);

    /// Notes the request and chooses its answer.
    ServerAnswer take(const ServedRequest &request);

    int addConnection();
    void removeConnection();
    void addBytesSent(qint64 count);

    QList<ServedRequest> requests() const;
    int connectionCount() const;
    int openConnections() const;
    int mostOpenConnections() const;
    qint64 bytesSent() const;

private:
    struct Credentials
    {
        QString user;
        QString password;
    };

    Handler handlerFor(const ServedRequest &request);

    mutable std::mutex m_mutex;
    QHash<QByteArray, QList<ServerAnswer>> m_answers;
    QHash<QByteArray, Handler> m_handlers;
    Handler m_default;
    std::optional<Credentials> m_credentials;
    QList<ServedRequest> m_requests;
    int m_connectionCount = 0;
    int m_openConnections = 0;
    int m_mostOpenConnections = 0;
    qint64 m_bytesSent = 0;
};

} // namespace cadorel
