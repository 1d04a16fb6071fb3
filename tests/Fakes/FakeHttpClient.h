// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpClient.h"

#include <QCoroFuture>
#include <QPromise>

#include <list>

namespace cadorel {

/// A web that answers when the test says so: each request waits in `pending` until it is answered.
class FakeHttpClient : public HttpClient
{
public:
    using Result = std::expected<HttpResponse, QString>;
    struct Pending
    {
        HttpRequest request;
        std::shared_ptr<QPromise<Result>> promise;
    };
    std::list<Pending> pending;

    QCoro::Task<Result> send(HttpRequest request) override
    {
        auto promise = std::make_shared<QPromise<Result>>();
        promise->start();
        pending.push_back({std::move(request), promise});
        co_return co_await promise->future();
    }

    /// Answers the oldest request that waits.
    void answer(Result result)
    {
        const Pending first = pending.front();
        pending.pop_front();
        first.promise->addResult(std::move(result));
        first.promise->finish();
    }
};

} // namespace cadorel
