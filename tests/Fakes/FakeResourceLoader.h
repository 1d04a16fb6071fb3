// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/ResourceLoadingRequest.h"

#include <QList>

#include <functional>

namespace cadorel {

/// A loader that answers when the test says so, or at once through `onRequest`.
class FakeResourceLoader : public ResourceLoader
{
public:
    using Request = std::shared_ptr<ResourceLoadingRequest>;

    /// Every request that ever came, and those that were taken back.
    QList<Request> requests;
    QList<Request> cancelled;
    /// Decides on a request in place of taking it.
    std::function<bool(const Request &)> onRequest;

    bool shouldWaitForLoadingOfRequestedResource(Request request) override
    {
        requests.append(request);
        return onRequest ? onRequest(request) : true;
    }
    void didCancel(Request request) override { cancelled.append(request); }

    /// Gives all of a resource, from where the request begins.
    static void answer(ResourceLoadingRequest &request, const QByteArray &bytes)
    {
        tellLength(request, bytes.size());
        if (auto *data = request.dataRequest())
            data->respond(bytes.mid(data->currentOffset()));
        request.finishLoading();
    }
    static void tellLength(ResourceLoadingRequest &request, qint64 length)
    {
        if (auto *information = request.contentInformationRequest())
            *information = {.isByteRangeAccessSupported = true,
                            .contentLength = length,
                            .contentType = QStringLiteral("public.audio")};
    }
    /// Answers every request at once.
    void answerAll(const QByteArray &bytes)
    {
        onRequest = [bytes](const Request &request) {
            answer(*request, bytes);
            return true;
        };
    }
};

} // namespace cadorel
