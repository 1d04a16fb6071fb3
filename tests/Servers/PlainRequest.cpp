// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/PlainRequest.h"

#include <QDeadlineTimer>
#include <QTcpSocket>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int limitMs = 10'000;

} // namespace

std::optional<PlainAnswer> plainRequest(const QUrl &server, const QByteArray &method,
                                        const QByteArray &target, const QList<QByteArray> &headers,
                                        const QByteArray &body)
{
    const QDeadlineTimer limit(limitMs);
    const auto remaining = [&limit] { return static_cast<int>(limit.remainingTime()); };
    QTcpSocket socket;
    socket.connectToHost(server.host(), static_cast<quint16>(server.port()));
    if (!socket.waitForConnected(remaining()))
        return {};
    QByteArray request = method + ' ' + target + " HTTP/1.0\r\nHost: " + server.host().toUtf8() + "\r\n";
    for (const QByteArray &header : headers)
        request += header + "\r\n";
    if (!body.isEmpty())
        request += "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    socket.write(request + "\r\n" + body);

    // This version of the protocol ends an answer by closing the connection.
    QByteArray received;
    while (socket.state() == QAbstractSocket::ConnectedState && socket.waitForReadyRead(remaining()))
        received += socket.readAll();
    received += socket.readAll();
    if (socket.error() != QAbstractSocket::RemoteHostClosedError)
        return {};

    const QByteArray headEnd = "\r\n\r\n"_ba;
    const qsizetype end = received.indexOf(headEnd);
    if (end < 0)
        return {};
    const QByteArray head = received.first(end);
    return PlainAnswer{.status = head.split(' ').value(1).toInt(),
                       .head = head,
                       .body = received.sliced(end + headEnd.size())};
}

QByteArray propfindBody()
{
    return R"(<?xml version="1.0" encoding="utf-8" ?>
<D:propfind xmlns:D="DAV:">
    <D:prop>
        <D:displayname/>
        <D:getcontentlength/>
        <D:getcontenttype/>
        <D:getlastmodified/>
        <D:resourcetype/>
    </D:prop>
</D:propfind>)"_ba;
}

std::optional<PlainAnswer> plainPropfind(const QUrl &server, const QByteArray &target, const QString &user,
                                         const QString &password)
{
    const QByteArray credentials = QString(user + u':' + password).toUtf8().toBase64();
    return plainRequest(
        server, "PROPFIND"_ba, target,
        {"Depth: 1"_ba, "Content-Type: application/xml"_ba, "Authorization: Basic " + credentials},
        propfindBody());
}

} // namespace cadorel
