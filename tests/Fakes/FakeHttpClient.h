// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpAnswer.h"
#include "Platform/HttpClient.h"
#include "Platform/HttpTransfer.h"

#include <QFile>
#include <QObject>

#include <algorithm>
#include <list>
#include <memory>
#include <utility>

namespace cadorel {

/// A web that answers when the test says so: each request waits in `pending` until it is answered or
/// cancelled. What answer() gives arrives with the next turn of the event loop.
class FakeHttpClient : public HttpClient
{
public:
    using Result = HttpAnswer::Result;
    struct Pending
    {
        HttpRequest request;
        std::shared_ptr<HttpAnswer> waiting;
    };
    std::list<Pending> pending;
    /// Every request that was ever sent.
    QList<HttpRequest> sent;

    ~FakeHttpClient() override
    {
        m_isClosing = true;
        for (const Pending &left : std::exchange(pending, {}))
            left.waiting->deliver(cancelled());
        for (const auto &left : std::exchange(m_onTheirWay, {}))
            left->deliver(cancelled());
    }

    QCoro::Task<Result> send(HttpRequest request) override
    {
        sent.append(request);
        if (!isWebAddress(request.url))
            co_return failure(HttpError::Kind::notHttp, QStringLiteral("not http"));
        if (m_isClosing || isCancelled(request))
            co_return cancelled();
        const auto waiting = std::make_shared<HttpAnswer>();
        if (request.transfer) {
            QObject::connect(request.transfer.get(), &HttpTransfer::cancelled, &m_receiver,
                             [this, waiting] { cancel(waiting); });
        }
        pending.push_back({std::move(request), waiting});
        co_return co_await *waiting;
    }

    /// Answers the oldest request that waits.
    void answer(Result result)
    {
        if (pending.empty())
            qFatal("there is no request to answer");
        answer(pending.begin(), std::move(result));
    }
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
    static Result failure(HttpError::Kind kind, const QString &description)
    {
        return std::unexpected(HttpError{kind, description});
    }
    static bool isWebAddress(const QUrl &url)
    {
        const bool isHttp = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
        return isHttp && !url.host().isEmpty();
    }
    static bool isSuccess(int status) { return status >= 200 && status < 300; }
    static bool isCancelled(const HttpRequest &request)
    {
        return request.transfer && request.transfer->isCancelled();
    }
    static Result cancelled() { return failure(HttpError::Kind::cancelled, QStringLiteral("cancelled")); }

    void answer(std::list<Pending>::iterator waiting, Result result)
    {
        const Pending taken = *waiting;
        pending.erase(waiting);
        if (result)
            result = received(taken.request, std::move(*result));
        deliverLater(taken, result);
    }

    /// What the real client makes of an answer.
    static Result received(const HttpRequest &request, HttpResponse response)
    {
        if (request.sizeLimit > 0 && request.cutsAtLimit)
            response.body.truncate(request.sizeLimit);
        if (request.sizeLimit > 0 && response.body.size() > request.sizeLimit)
            return failure(HttpError::Kind::tooLarge, QStringLiteral("too large"));
        if (response.url.isEmpty())
            response.url = request.url.adjusted(QUrl::RemoveUserInfo);
        response.bodySize = response.body.size();
        if (!isSuccess(response.status) || request.outputFile.isEmpty())
            return response;
        QFile file(request.outputFile);
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly) ||
            file.write(response.body) != response.body.size())
            return failure(HttpError::Kind::file, file.errorString());
        response.body.clear();
        return response;
    }

    void cancel(const std::shared_ptr<HttpAnswer> &answer)
    {
        const auto found = std::find_if(pending.begin(), pending.end(), [&answer](const Pending &waiting) {
            return waiting.waiting == answer;
        });
        if (found == pending.end())
            return;
        const Pending taken = *found;
        pending.erase(found);
        deliverLater(taken, cancelled());
    }

    void deliverLater(const Pending &taken, const Result &result)
    {
        m_onTheirWay.push_back(taken.waiting);
        QMetaObject::invokeMethod(
            &m_receiver,
            [this, taken, result] {
                m_onTheirWay.remove(taken.waiting);
                taken.waiting->deliver(isCancelled(taken.request) ? cancelledAfter(taken.request, result)
                                                                  : result);
            },
            Qt::QueuedConnection);
    }
    /// The answer and the wish to cancel have met on their way.
    static Result cancelledAfter(const HttpRequest &request, const Result &result)
    {
        if (result && isSuccess(result->status) && !request.outputFile.isEmpty())
            QFile::remove(request.outputFile);
        return cancelled();
    }

    QObject m_receiver;
    std::list<std::shared_ptr<HttpAnswer>> m_onTheirWay;
    bool m_isClosing = false;
};

} // namespace cadorel
