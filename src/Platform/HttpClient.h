// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QPair>
#include <QString>
#include <QUrl>

#include <chrono>
#include <expected>

namespace cadorel {

struct HttpRequest
{
    QUrl url;
    QByteArray method = "GET";
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
    /// Longest silence of the server before the request fails.
    std::chrono::milliseconds idleTimeout{60000};
    /// Longest time for the whole answer; 0 is none.
    std::chrono::milliseconds totalTimeout{0};
    /// A longer body fails the request; 0 is none.
    qint64 sizeLimit = 0;
};

struct HttpResponse
{
    /// The address that answered, after redirects.
    QUrl url;
    int status = 0;
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
};

/// Asks web servers. Redirects are followed to http and https only; an Authorization header never goes to
/// another host, port or from https to http. Main thread.
class HttpClient
{
public:
    virtual ~HttpClient() = default;

    /// Any answer of the server is a response, whatever its status; a failure on the way is its description,
    /// without a credential.
    virtual QCoro::Task<std::expected<HttpResponse, QString>> send(HttpRequest request) = 0;
};

} // namespace cadorel
