// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/RemoteCovers.h"

#include "Platform/Clock.h"
#include "Platform/HttpClient.h"
#include "Platform/HttpStatus.h"
#include "Platform/HttpTransfer.h"
#include "Services/Cloud/CoverRequest.h"
#include "Utils/Tasks.h"

#include <QPointer>

#include <QCoroTask>

#include <algorithm>
#include <utility>

namespace cadorel {

namespace {

/// Covers whose failure is remembered: more than anybody scrolls past in the time that it counts.
constexpr int mostRefused = 4096;

/// How long a failure counts: what a server said holds longer than that it could not be reached.
std::chrono::nanoseconds memoryOf(HttpError::Kind kind)
{
    switch (kind) {
    case HttpError::Kind::connection:
    case HttpError::Kind::timeout:
        return RemoteCovers::outageMemory;
    case HttpError::Kind::untrusted:
    case HttpError::Kind::tooLarge:
    case HttpError::Kind::redirect:
    case HttpError::Kind::notHttp:
    case HttpError::Kind::file:
        return RemoteCovers::refusalMemory;
    case HttpError::Kind::cancelled:
        break;
    }
    return std::chrono::nanoseconds{0};
}

} // namespace

RemoteCovers::RemoteCovers(HttpClient &client, Clock &clock)
    : m_client(client)
    , m_clock(clock)
    , m_bodies(cacheBytes)
    , m_refused(mostRefused)
{
}

RemoteCovers::~RemoteCovers()
{
    m_waiting.clear();
    for (const std::shared_ptr<Order> &order : std::exchange(m_orders, {})) {
        order->wishes.clear();
        if (order->transfer)
            order->transfer->cancel();
    }
}

quint64 RemoteCovers::wish(const QString &key, const QUrl &url, Done done)
{
    const quint64 id = ++m_lastId;
    const auto asked = [this, id, key, url, done = std::move(done)] { take(id, key, url, done); };
    QMetaObject::invokeMethod(this, asked, Qt::QueuedConnection);
    return id;
}

void RemoteCovers::withdraw(quint64 id)
{
    const auto withdrawn = [this, id] { drop(id); };
    QMetaObject::invokeMethod(this, withdrawn, Qt::QueuedConnection);
}

void RemoteCovers::discard(const QString &key)
{
    const auto discarded = [this, key] {
        m_bodies.remove(key);
        refuse(key, refusalMemory);
    };
    QMetaObject::invokeMethod(this, discarded, Qt::QueuedConnection);
}

void RemoteCovers::take(quint64 id, const QString &key, const QUrl &url, const Done &done)
{
    if (const QByteArray *bytes = m_bodies.object(key)) {
        done(QByteArray(*bytes));
        return;
    }
    if (isRefused(key)) {
        done({});
        return;
    }
    std::shared_ptr<Order> &order = m_orders[key];
    if (!order)
        order = std::make_shared<Order>();
    order->url = url;
    order->wishes.insert(id, done);
    m_keys.insert(id, key);
    if (!order->transfer) {
        m_waiting.removeOne(key);
        m_waiting.append(key);
        startNext();
    }
}

void RemoteCovers::drop(quint64 id)
{
    const QString key = m_keys.take(id);
    const std::shared_ptr<Order> order = m_orders.value(key);
    if (!order)
        return;
    order->wishes.remove(id);
    if (!order->wishes.isEmpty())
        return;
    if (!order->transfer) {
        m_waiting.removeOne(key);
        m_orders.remove(key);
    } else {
        // What is half there goes on into the cache, unless its place is needed.
        makeRoom();
    }
}

void RemoteCovers::refuse(const QString &key, std::chrono::nanoseconds duration)
{
    if (duration.count() > 0)
        m_refused.insert(key, new std::chrono::nanoseconds(m_clock.monotonic() + duration));
}

bool RemoteCovers::isRefused(const QString &key)
{
    const std::chrono::nanoseconds *until = m_refused.object(key);
    return until && m_clock.monotonic() < *until;
}

void RemoteCovers::startNext()
{
    while (!m_waiting.isEmpty() && m_running < mostRequests) {
        const QString key = m_waiting.takeLast();
        detach(fetch(key, m_orders.value(key)));
    }
    makeRoom();
}

void RemoteCovers::makeRoom()
{
    if (m_waiting.isEmpty())
        return;
    const auto isUnwanted = [](const std::shared_ptr<Order> &order) {
        return order->transfer && !order->transfer->isCancelled() && order->wishes.isEmpty();
    };
    const auto unwanted = std::find_if(m_orders.cbegin(), m_orders.cend(), isUnwanted);
    if (unwanted != m_orders.cend())
        std::shared_ptr<HttpTransfer>((*unwanted)->transfer)->cancel();
}

QCoro::Task<void> RemoteCovers::fetch(QString key, std::shared_ptr<Order> order)
{
    const QPointer<RemoteCovers> self(this);
    ++m_running;
    const auto transfer = std::make_shared<HttpTransfer>();
    order->transfer = transfer;
    HttpRequest request = coverRequest(order->url);
    request.transfer = transfer;
    const std::expected<HttpResponse, HttpError> response = co_await m_client.send(request);
    if (!self)
        co_return;
    --m_running;
    order->transfer.reset();
    if (transfer->isCancelled() && !order->wishes.isEmpty()) {
        // Somebody came back to it meanwhile.
        m_waiting.append(key);
    } else {
        const bool isThere = response && isSuccess(response->status) && !response->body.isEmpty();
        if (!isThere)
            refuse(key, response ? std::chrono::nanoseconds(refusalMemory) : memoryOf(response.error().kind));
        finish(key, isThere ? response->body : QByteArray());
    }
    if (self)
        startNext();
}

/// Keeps what arrived and hands it to everybody who waits for it.
void RemoteCovers::finish(const QString &key, const QByteArray &bytes)
{
    if (!bytes.isEmpty())
        m_bodies.insert(key, new QByteArray(bytes), bytes.size());
    const std::shared_ptr<Order> order = m_orders.take(key);
    if (!order)
        return;
    const QHash<quint64, Done> wishes = std::exchange(order->wishes, {});
    for (const auto &[id, done] : wishes.asKeyValueRange()) {
        m_keys.remove(id);
        done(bytes);
    }
}

} // namespace cadorel
