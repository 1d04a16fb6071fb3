// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace cadorel {

struct PlainAnswer
{
    int status = 0;
    /// Status line and header lines.
    QByteArray head;
    QByteArray body;
};

/// One request over a connection of its own, in HTTP 1.0, with nothing of the player in it. Waits without an
/// event loop. @param target path as it stands in the request, @param headers lines without their end
/// @return nothing when no whole answer comes within ten seconds
std::optional<PlainAnswer> plainRequest(const QUrl &server, const QByteArray &method,
                                        const QByteArray &target, const QList<QByteArray> &headers,
                                        const QByteArray &body = {});

/// What the player asks for of a directory and its entries.
QByteArray propfindBody();

/// Asks for it.
std::optional<PlainAnswer> plainPropfind(const QUrl &server, const QByteArray &target, const QString &user,
                                         const QString &password);

} // namespace cadorel
