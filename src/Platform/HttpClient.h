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
#include <memory>

namespace cadorel {

class HttpTransfer;

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
    /// Only the beginning of a body in memory is wanted: a longer one is cut at the limit instead.
    bool cutsAtLimit = false;
    /// The body of an answer of 200 to 299 is written into this file, a new one, instead of into memory. When
    /// the request fails, the file is gone again.
    QString outputFile;
    /// The request has connections of its own: it never waits for others to the same server.
    bool ownConnection = false;
    /// An answer to a GET whose end Qt alone cannot vouch for, a chunked one, is checked with a HEAD before
    /// it counts as whole; the request then has connections of its own.
    bool mustBeWhole = false;
    /// Steers the request while it is under way; null when nobody does.
    std::shared_ptr<HttpTransfer> transfer;
};

struct HttpResponse
{
    /// The address that answered, after redirects.
    QUrl url;
    int status = 0;
    QList<QPair<QByteArray, QByteArray>> headers;
    /// Empty when the body went into a file.
    QByteArray body;
    /// Length of the body in bytes, wherever it went.
    qint64 bodySize = 0;

    /// Value of the first header of that name, whatever its case; empty when there is none.
    QByteArray header(const QByteArray &name) const;
    /// Media type of the body without parameters, lower-cased; empty when the server tells none.
    QString mimeType() const;
};

/// Why no answer came, or not the whole of it.
struct HttpError
{
    enum class Kind {
        connection, ///< no connection, or a broken one; the body ended early
        timeout,
        untrusted, ///< the server's certificate does not hold
        tooLarge,  ///< the body is longer than the limit
        redirect,  ///< too many redirects, or one to something else than http and https
        notHttp,   ///< the address is none of http or https
        file,      ///< the output file could not be written
        cancelled,
    };
    Kind kind = Kind::connection;
    /// For a listener to read, in Chinese, without a credential.
    QString description;
};

/// Asks web servers. Redirects are followed to http and https only, 20 at most; an Authorization header never
/// goes to another host, port or from https to http. Certificates are verified. No cookies, no cache, no
/// credentials of its own. Main thread; answers arrive there.
class HttpClient
{
public:
    virtual ~HttpClient() = default;

    /// Any complete answer of the server is a response, whatever its status. After HttpTransfer::cancel() the
    /// answer is always Kind::cancelled. Destroying the client ends what is under way with Kind::cancelled,
    /// before the destructor returns: look whether your own object is still there.
    virtual QCoro::Task<std::expected<HttpResponse, HttpError>> send(HttpRequest request) = 0;
};

} // namespace cadorel
