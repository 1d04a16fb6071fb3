// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/FileServer.h"

#include <algorithm>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Where a request wants to begin; 0 without a range.
qint64 rangeStart(const QByteArray &request)
{
    const QByteArray field = "\r\nrange: bytes="_ba;
    const qsizetype at = request.toLower().indexOf(field);
    if (at < 0)
        return 0;
    const qsizetype from = at + field.size();
    return request.mid(from, request.indexOf('-', from) - from).toLongLong();
}

} // namespace

FileServer::FileServer(const QByteArray &content)
    : m_content(content)
{
    m_server.listen(QHostAddress::LocalHost);
    connect(&m_server, &QTcpServer::newConnection, this, &FileServer::accept);
}

QUrl FileServer::url(const QString &path) const
{
    return QUrl(u"http://127.0.0.1:%1/%2"_s.arg(m_server.serverPort()).arg(path));
}

void FileServer::holdAt(std::optional<qint64> offset)
{
    m_limit = offset;
    give();
}

void FileServer::breakConnections()
{
    for (const Answer &answer : std::exchange(m_answers, {}))
        if (answer.socket)
            answer.socket->abort();
}

void FileServer::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::bytesWritten, this, &FileServer::give);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            const QByteArray request = socket->peek(socket->bytesAvailable());
            if (!request.contains("\r\n\r\n"))
                return;
            socket->readAll();
            answer(socket, request);
        });
    }
}

void FileServer::answer(QTcpSocket *socket, const QByteArray &request)
{
    ++m_requests;
    if (m_silent)
        return;
    if (m_status) {
        socket->write("HTTP/1.1 " + QByteArray::number(*m_status) +
                      " No\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
        socket->disconnectFromHost();
        return;
    }
    const qint64 size = m_content.size();
    const qint64 start = m_seekable ? std::min(rangeStart(request), size) : 0;
    QByteArray head = start > 0 ? "HTTP/1.1 206 Partial Content\r\n"_ba : "HTTP/1.1 200 OK\r\n"_ba;
    if (m_seekable)
        head += "Accept-Ranges: bytes\r\nContent-Length: " + QByteArray::number(size - start) + "\r\n";
    if (start > 0)
        head += "Content-Range: bytes " + QByteArray::number(start) + "-" + QByteArray::number(size - 1) +
                "/" + QByteArray::number(size) + "\r\n";
    socket->write(head + "Connection: close\r\n\r\n");
    m_answers.append({.socket = socket, .next = start});
    give();
}

void FileServer::give()
{
    constexpr qint64 piece = qint64{16} * 1024;
    const qint64 end = std::min<qint64>(m_content.size(), m_limit.value_or(m_content.size()));
    m_answers.removeIf([](const Answer &answer) {
        return !answer.socket || answer.socket->state() != QAbstractSocket::ConnectedState;
    });
    for (Answer &answer : m_answers) {
        while (answer.socket->state() == QAbstractSocket::ConnectedState && answer.next < end &&
               answer.socket->bytesToWrite() < 4 * piece) {
            const qint64 length = std::min(piece, end - answer.next);
            answer.socket->write(m_content.constData() + answer.next, length);
            answer.next += length;
            m_given += length;
        }
        if (answer.next >= m_content.size())
            answer.socket->disconnectFromHost();
    }
}

} // namespace cadorel
