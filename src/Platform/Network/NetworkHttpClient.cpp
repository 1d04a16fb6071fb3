// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/NetworkHttpClient.h"

#include "Platform/HttpStatus.h"
#include "Platform/HttpTransfer.h"
#include "Platform/Network/HttpFailure.h"
#include "Platform/Network/NetworkWorker.h"
#include "Platform/Network/ResponseBody.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

NetworkHttpClient::NetworkHttpClient()
    : m_receiver(std::make_unique<QObject>())
{
    m_worker = new NetworkWorker([this](quint64 id, HttpAnswer::Result result) {
        QMetaObject::invokeMethod(
            m_receiver.get(),
            [this, id, result = std::move(result)]() mutable { deliver(id, std::move(result)); },
            Qt::QueuedConnection);
    });
    m_worker->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    m_thread.setObjectName(u"HttpClient"_s);
    m_thread.start();
}

NetworkHttpClient::~NetworkHttpClient()
{
    m_isClosing = true;
    m_thread.quit();
    m_thread.wait();
    // What arrived before that is still good.
    QCoreApplication::sendPostedEvents(m_receiver.get(), QEvent::MetaCall);
    for (const quint64 id : m_waiting.keys())
        deliver(id, std::unexpected(httpFailure(HttpError::Kind::cancelled)));
}

QCoro::Task<HttpAnswer::Result> NetworkHttpClient::send(HttpRequest request)
{
    if (m_isClosing || (request.transfer && request.transfer->isCancelled()))
        co_return std::unexpected(httpFailure(HttpError::Kind::cancelled));
    const auto answer = std::make_shared<HttpAnswer>();
    start(std::move(request), answer);
    co_return co_await *answer;
}

void NetworkHttpClient::start(HttpRequest request, std::shared_ptr<HttpAnswer> answer)
{
    const quint64 id = ++m_lastId;
    Waiting waiting{.answer = std::move(answer),
                    // Not handed to the other thread, where the last to let go of it would destroy it.
                    .transfer = std::exchange(request.transfer, nullptr),
                    .outputFile = request.outputFile,
                    .connections = {}};
    const bool isPaused = waiting.transfer && waiting.transfer->isPaused();
    if (HttpTransfer *transfer = waiting.transfer.get()) {
        waiting.connections = {
            QObject::connect(transfer, &HttpTransfer::cancelled, m_worker,
                             [worker = m_worker, id] { worker->cancel(id); }),
            QObject::connect(transfer, &HttpTransfer::pausedChanged, m_worker,
                             [worker = m_worker, id](bool paused) { worker->setPaused(id, paused); }),
        };
    }
    m_waiting.insert(id, waiting);
    QMetaObject::invokeMethod(
        m_worker,
        [worker = m_worker, id, request = std::move(request), isPaused]() mutable {
            worker->start(id, std::move(request), isPaused);
        },
        Qt::QueuedConnection);
}

void NetworkHttpClient::deliver(quint64 id, HttpAnswer::Result result)
{
    const Waiting waiting = m_waiting.take(id);
    for (const QMetaObject::Connection &connection : waiting.connections)
        QObject::disconnect(connection);
    // The answer and the wish to cancel may have met on their way.
    if (result && waiting.transfer && waiting.transfer->isCancelled()) {
        if (isSuccess(result->status) && !waiting.outputFile.isEmpty())
            QFile::remove(waiting.outputFile);
        result = std::unexpected(httpFailure(HttpError::Kind::cancelled));
    }
    waiting.answer->deliver(std::move(result));
}

} // namespace cadorel
