// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpClient.h"
#include "Platform/HttpTransfer.h"

#include <QList>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace cadorel {

using HttpResult = std::expected<HttpResponse, HttpError>;

/// A request that a test sent, and its answer when it has come.
struct SentRequest
{
    std::shared_ptr<HttpTransfer> transfer;
    std::shared_ptr<std::optional<HttpResult>> result;

    bool hasEnded() const { return result->has_value(); }
    /// Waits for the end. @return nothing when it does not come
    std::optional<HttpResult> wait() const;
};

/// Sends without waiting; the request gets a transfer if it has none.
SentRequest sendRequest(HttpClient &client, HttpRequest request);

/// Sends and waits; a failure of Kind::timeout with the description "test" when no end comes.
HttpResult fetch(HttpClient &client, const HttpRequest &request);
HttpResult fetch(HttpClient &client, const QUrl &url);

/// What a failed comparison shows: status, or kind and description.
QString described(const HttpResult &result);

/// Content of a file; null when there is none.
QByteArray fileContent(const QString &path);

} // namespace cadorel

/// Fails the test unless @p result is a response of that status.
#define COMPARE_STATUS(result, expected)                                                                     \
    do {                                                                                                     \
        const cadorel::HttpResult &compared = (result);                                                      \
        QVERIFY2(compared.has_value(), qPrintable(cadorel::described(compared)));                            \
        QCOMPARE(compared->status, expected);                                                                \
    } while (false)

/// Fails the test unless @p result is a failure of that kind with a description.
#define COMPARE_FAILURE(result, expectedKind)                                                                \
    do {                                                                                                     \
        const cadorel::HttpResult &compared = (result);                                                      \
        QVERIFY2(!compared.has_value(), qPrintable(cadorel::described(compared)));                           \
        QVERIFY2(compared.error().kind == cadorel::HttpError::Kind::expectedKind,                            \
                 qPrintable(cadorel::described(compared)));                                                  \
        QVERIFY(!compared.error().description.isEmpty());                                                    \
    } while (false)
