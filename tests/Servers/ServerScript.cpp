// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/ServerScript.h"

#include <algorithm>
#include <utility>

namespace cadorel {

void ServerScript::setAnswers(const QByteArray &path, const QList<ServerAnswer> &answers)
{
    Q_ASSERT(!answers.isEmpty());
    const std::scoped_lock lock(m_mutex);
    m_handlers.remove(path);
    m_answers.insert(path, answers);
}

void ServerScript::setHandler(const QByteArray &path, Handler handler)
{
    const std::scoped_lock lock(m_mutex);
    m_answers.remove(path);
    m_handlers.insert(path, std::move(handler));
}

void ServerScript::setDefault(Handler handler)
{
    const std::scoped_lock lock(m_mutex);
    m_default = std::move(handler);
}

void ServerScript::requireBasic(const QString &user, const QString &password)
{
    const std::scoped_lock lock(m_mutex);
    m_credentials = Credentials{.user = user, .password = password};
}

ServerAnswer ServerScript::take(const ServedRequest &request)
{
    // A handler runs without the lock: it may ask the server what came before.
    const Handler handler = handlerFor(request);
    return handler(request);
}

ServerScript::Handler ServerScript::handlerFor(const ServedRequest &request)
{
    const std::scoped_lock lock(m_mutex);
    m_requests.append(request);
    const auto fixed = [](const ServerAnswer &answer) -> Handler {
        return [answer](const ServedRequest &) { return answer; };
    };
    if (m_credentials && !request.hasBasicCredentials(m_credentials->user, m_credentials->password))
        return fixed(ServerAnswer::unauthorized());
    const QByteArray path = request.path();
    if (const auto handler = m_handlers.constFind(path); handler != m_handlers.cend())
        return *handler;
    if (const auto answers = m_answers.find(path); answers != m_answers.end())
        return fixed(answers->size() > 1 ? answers->takeFirst() : answers->constFirst());
    return m_default ? m_default : fixed(ServerAnswer::status(404));
}

int ServerScript::addConnection()
{
    const std::scoped_lock lock(m_mutex);
    ++m_openConnections;
    m_mostOpenConnections = std::max(m_mostOpenConnections, m_openConnections);
    return ++m_connectionCount;
}

void ServerScript::removeConnection()
{
    const std::scoped_lock lock(m_mutex);
    --m_openConnections;
}

void ServerScript::addBytesSent(qint64 count)
{
    const std::scoped_lock lock(m_mutex);
    m_bytesSent += count;
}

QList<ServedRequest> ServerScript::requests() const
{
    const std::scoped_lock lock(m_mutex);
    return m_requests;
}

int ServerScript::connectionCount() const
{
    const std::scoped_lock lock(m_mutex);
    return m_connectionCount;
}

int ServerScript::mostOpenConnections() const
{
    const std::scoped_lock lock(m_mutex);
    return m_mostOpenConnections;
}

int ServerScript::openConnections() const
{
    const std::scoped_lock lock(m_mutex);
    return m_openConnections;
}

qint64 ServerScript::bytesSent() const
{
    const std::scoped_lock lock(m_mutex);
    return m_bytesSent;
}

} // namespace cadorel
