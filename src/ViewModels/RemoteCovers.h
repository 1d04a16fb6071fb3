// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QCache>
#include <QCoroTask>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>

namespace cadorel {

class Clock;
class HttpClient;
class HttpTransfer;

/// Fetches covers from servers for whoever draws them. Whoever asks last is served first, since a list that
/// is being scrolled wants what is in sight now; wishes for one cover share one request; a wish that is
/// withdrawn before its turn costs nothing. What arrived stays in memory, encoded, up to `cacheBytes`. A
/// cover that could not be had is not asked for again for a while, so that scrolling to and fro leaves the
/// server alone. Lives on the main thread; what is marked so may be called on any.
class RemoteCovers : public QObject
{
    Q_OBJECT
public:
    /// Takes the encoded bytes of a cover, empty when there is none, on the main thread.
    using Done = std::function<void(const QByteArray &bytes)>;

    /// Requests under way at one time: fewer than a server's connections, so that a search does not wait.
    static constexpr int mostRequests = 4;
    /// What is kept of covers that arrived, in bytes.
    static constexpr qsizetype cacheBytes = qsizetype{32} * 1024 * 1024;
    /// How long a server's refusal, or an answer that is no picture, counts.
    static constexpr std::chrono::minutes refusalMemory{5};
    /// The same for a server that could not be reached: the network may be back sooner.
    static constexpr std::chrono::seconds outageMemory{30};

    /// @param client and @param clock outlive the object, and it outlives whoever asks it
    RemoteCovers(HttpClient &client, Clock &clock);
    ~RemoteCovers() override;

    /// Asks for the cover of @p key, which lies at @p url: a credential, which goes to its server alone.
    /// Any thread.
    /// @param done called once, unless the wish is withdrawn or this object goes before
    /// @return a number to withdraw the wish with
    quint64 wish(const QString &key, const QUrl &url, Done done);
    /// Nobody waits for that wish any more; one that was granted already may be withdrawn too. Any thread.
    void withdraw(quint64 id);
    /// What arrived for @p key cannot be shown: it is forgotten, and counts as refused. Any thread.
    void discard(const QString &key);

    // For tests, on the main thread.
    qsizetype cachedBytes() const { return m_bodies.totalCost(); }
    int runningRequests() const { return m_running; }
    int waitingCovers() const { return static_cast<int>(m_waiting.size()); }

private:
    /// A cover that somebody waits for, or did when its request began.
    struct Order
    {
        QUrl url;
        QHash<quint64, Done> wishes;
        /// Of the request under way; null while the order waits.
        std::shared_ptr<HttpTransfer> transfer;
    };
    using Orders = QHash<QString, std::shared_ptr<Order>>;

    void take(quint64 id, const QString &key, const QUrl &url, const Done &done);
    void drop(quint64 id);
    void refuse(const QString &key, std::chrono::nanoseconds duration);
    bool isRefused(const QString &key);
    void startNext();
    /// Ends one request that nobody waits for.
    void makeRoom();
    QCoro::Task<void> fetch(QString key, std::shared_ptr<Order> order);
    void finish(const QString &key, const QByteArray &bytes);

    HttpClient &m_client;
    Clock &m_clock;
    std::atomic<quint64> m_lastId{0};
    Orders m_orders;
    /// Which cover a wish is for.
    QHash<quint64, QString> m_keys;
    /// Covers whose turn has not come, the newest last.
    QList<QString> m_waiting;
    int m_running = 0;
    QCache<QString, QByteArray> m_bodies;
    /// Until when a cover is not asked for, by the clock that never jumps.
    QCache<QString, std::chrono::nanoseconds> m_refused;
};

} // namespace cadorel
