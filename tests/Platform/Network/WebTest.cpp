// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/WebTest.h"

#include <QFile>
#include <QTest>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 30000;

QCoro::Task<> keepResult(HttpClient *client, HttpRequest request,
                         std::shared_ptr<std::optional<HttpResult>> result)
{
    auto answer = co_await client->send(std::move(request));
    *result = std::move(answer);
}

} // namespace

std::optional<HttpResult> SentRequest::wait() const
{
    (void)QTest::qWaitFor([this] { return hasEnded(); }, patience);
    return *result;
}

SentRequest sendRequest(HttpClient &client, HttpRequest request)
{
    if (!request.transfer)
        request.transfer = std::make_shared<HttpTransfer>();
    SentRequest sent{.transfer = request.transfer, .result = std::make_shared<std::optional<HttpResult>>()};
    keepResult(&client, std::move(request), sent.result);
    return sent;
}

HttpResult fetch(HttpClient &client, const HttpRequest &request)
{
    return sendRequest(client, request)
        .wait()
        .value_or(std::unexpected(HttpError{.kind = HttpError::Kind::timeout, .description = u"test"_s}));
}

HttpResult fetch(HttpClient &client, const QUrl &url)
{
    HttpRequest request;
    request.url = url;
    return fetch(client, request);
}

QString described(const HttpResult &result)
{
    if (result)
        return u"status %1, %2 bytes"_s.arg(result->status).arg(result->bodySize);
    return u"failure %1: %2"_s.arg(static_cast<int>(result.error().kind)).arg(result.error().description);
}

QByteArray fileContent(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray content = file.readAll();
    return content.isNull() ? QByteArray("") : content;
}

} // namespace cadorel
