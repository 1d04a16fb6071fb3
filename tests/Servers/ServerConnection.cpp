// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/ServerConnection.h"

#include "Servers/ServerScript.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// What waits in the socket at most: enough to fill the line, little enough to see a client that stops
/// reading.
constexpr qint64 socketBuffer = 256 * 1024;
constexpr qint64 chunkSize = 64 * 1024;

} // namespace

ServerConnection::ServerConnection(QTcpSocket *socket, std::shared_ptr<ServerScript> script, QObject *parent)
    : QObject(parent)
    , m_socket(socket)
    , m_script(std::move(script))
{
    m_socket->setParent(this);
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_request.connection = m_script->addConnection();
    connect(m_socket, &QTcpSocket::disconnected, this, &QObject::deleteLater);
    connect(m_socket, &QTcpSocket::readyRead, this, &ServerConnection::read);
    connect(m_socket, &QTcpSocket::bytesWritten, this, &ServerConnection::send);
    connect(&m_trickle, &QTimer::timeout, this, &ServerConnection::send);
}

ServerConnection::~ServerConnection()
{
    m_socket->disconnect(this);
    m_script->removeConnection();
}

void ServerConnection::release()
{
    m_isReleased = true;
    send();
}

void ServerConnection::read()
{
    m_received += m_socket->readAll();
    // One answer at a time: what is sent ahead waits.
    while (!m_answer && takeRequest())
        answer();
}

bool ServerConnection::takeRequest()
{
    if (!m_received.isEmpty() && (m_received.front() < 'A' || m_received.front() > 'Z')) {
        // No request, perhaps the beginning of an encrypted connection.
        m_received.clear();
        m_answer = ServerAnswer::raw("HTTP/1.1 400 Bad Request\r\nConnection: close\r\n\r\n"_ba);
        send();
        return false;
    }
    const qsizetype headEnd = m_received.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return false;
    QList<QByteArray> lines = m_received.first(headEnd).replace("\r\n", "\n").split('\n');
    const QList<QByteArray> words = lines.takeFirst().split(' ');
    ServedRequest request{.method = words.value(0),
                          .target = words.value(1),
                          .headers = {},
                          .body = {},
                          .connection = m_request.connection};
    for (const QByteArray &line : std::as_const(lines)) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0)
            request.headers.append({line.first(colon), line.mid(colon + 1).trimmed()});
    }
    const qint64 length = request.header("Content-Length"_ba).toLongLong();
    const qint64 bodyStart = headEnd + 4;
    if (m_received.size() < bodyStart + length)
        return false;
    request.body = m_received.mid(bodyStart, length);
    m_received.remove(0, bodyStart + length);
    m_request = std::move(request);
    return true;
}

void ServerConnection::answer()
{
    m_answer = m_script->take(m_request);
    m_isHeadSent = false;
    m_isReleased = false;
    m_sent = 0;
    if (m_answer->pieceSize() > 0)
        m_trickle.start(m_answer->pieceInterval());
    if (m_answer->delay().count() > 0)
        QTimer::singleShot(m_answer->delay(), this, &ServerConnection::release);
    send();
}

qint64 ServerConnection::limit() const
{
    qint64 limit = m_request.method == "HEAD" ? 0 : m_answer->bodySize();
    if (const auto hold = m_answer->holdAt(); hold && !m_isReleased)
        limit = std::min(limit, *hold);
    if (const auto end = m_answer->endAfter())
        limit = std::min(limit, *end);
    return limit;
}

void ServerConnection::send()
{
    if (!m_answer || (m_trickle.isActive() && m_isHeadSent && sender() != &m_trickle))
        return;
    if (!m_isHeadSent) {
        if (limit() < 0)
            return;
        m_isHeadSent = true;
        // Head and body leave in one segment where both are small.
        const bool isSmall = !m_trickle.isActive() && m_answer->framing() != ServerAnswer::Framing::chunked;
        const qint64 first = isSmall ? std::min(limit(), chunkSize) : 0;
        m_sent = first;
        write(m_answer->head() + m_answer->body(0, first));
    }
    const qint64 piece = m_trickle.isActive() ? m_answer->pieceSize() : chunkSize;
    while (m_answer && m_sent < limit() && m_socket->bytesToWrite() < socketBuffer) {
        const QByteArray bytes = m_answer->body(m_sent, std::min(piece, limit() - m_sent));
        m_sent += bytes.size();
        if (m_answer->framing() == ServerAnswer::Framing::chunked)
            write(QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n");
        else
            write(bytes);
        if (m_trickle.isActive())
            break;
    }
    const auto hold = m_answer->holdAt();
    const bool isHeld = hold && !m_isReleased && m_sent >= *hold;
    if (m_sent >= limit() && !isHeld)
        finishAnswer();
}

void ServerConnection::write(const QByteArray &bytes)
{
    m_script->addBytesSent(bytes.size());
    m_socket->write(bytes);
}

void ServerConnection::finishAnswer()
{
    const ServerAnswer answer = *std::exchange(m_answer, std::nullopt);
    m_trickle.stop();
    const bool isComplete = !answer.endAfter();
    if (isComplete && answer.framing() == ServerAnswer::Framing::chunked && m_request.method != "HEAD")
        write("0\r\n\r\n"_ba);
    if (answer.endsConnection())
        m_socket->disconnectFromHost();
    else if (!m_received.isEmpty())
        QMetaObject::invokeMethod(this, &ServerConnection::read, Qt::QueuedConnection);
}

} // namespace cadorel
