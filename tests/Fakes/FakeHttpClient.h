// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpClient.h"
#include "Platform/HttpTransfer.h"

#include <QFile>
#include <QPromise>

#include <QCoroFuture>

#include <algorithm>
#include <list>

namespace cadorel {

/// A web that answers when the test says so: each request waits in `pending` until it is answered or
/// cancelled.
class FakeHttpClient : public HttpClient
{
public:
    using Result = std::expected<HttpResponse, HttpError>;
    struct Pending
    {
        HttpRequest request;
        std::shared_ptr<QPromise<Result>> promise;
    };
    std::list<Pending> pending;
    /// Every request that was ever sent.
    QList<HttpRequest> sent;

    QCoro::Task<Result> send(HttpRequest request) override
    {
        auto promise = std::make_shared<QPromise<Result>>();
        promise->start();
        sent.append(request);
        if (request.transfer) {
            QObject::connect(request.transfer.get(), &HttpTransfer::cancelled, request.transfer.get(),
                             [this, promise] { cancel(promise); });
        }
        pending.push_back({std::move(request), promise});
        co_return co_await promise->future();
    }

    /// Answers the oldest request that waits.
    void answer(Result result) { answer(pending.begin(), std::move(result)); }
    /// Answers the oldest request that waits for an address which contains @p text. @return whether one does
    bool answer(const QString &text, Result result)
    {
        const auto found = std::find_if(pending.begin(), pending.end(), [&text](const Pending &waiting) {
            return waiting.request.url.toString().contains(text);
        });
        if (found == pending.end())
            return false;
        answer(found, std::move(result));
        return true;
    }

private:
    void answer(std::list<Pending>::iterator waiting, Result result)
    {
        const Pending taken = *waiting;
        pending.erase(waiting);
        if (result) {
            result->bodySize = result->body.size();
            const bool isSuccess = result->status >= 200 && result->status < 300;
            if (isSuccess && !taken.request.outputFile.isEmpty()) {
                QFile file(taken.request.outputFile);
                if (!file.open(QIODevice::WriteOnly) || file.write(result->body) != result->body.size())
                    result = std::unexpected(HttpError{HttpError::Kind::file, file.errorString()});
                else
                    result->body.clear();
            }
        }
        taken.promise->addResult(std::move(result));
        taken.promise->finish();
    }
    void cancel(const std::shared_ptr<QPromise<Result>> &promise)
    {
        const auto found = std::find_if(pending.begin(), pending.end(), [&promise](const Pending &waiting) {
            return waiting.promise == promise;
        });
        if (found == pending.end())
            return;
        pending.erase(found);
        promise->addResult(
            std::unexpected(HttpError{HttpError::Kind::cancelled, QStringLiteral("cancelled")}));
        promise->finish();
    }
};

} // namespace cadorel
