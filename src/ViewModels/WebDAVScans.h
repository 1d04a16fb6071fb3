// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>

namespace cadorel {

class WebDAVService;

/// The scans that a listener asks for: one server after the other, so that it is known which one is under way
/// and which one failed. Main thread.
class WebDAVScans : public QObject
{
    Q_OBJECT
public:
    enum class State { none, waiting, running };

    /// @param service outlives this object
    explicit WebDAVScans(WebDAVService &service, QObject *parent);

    /// A server that waits already or is being scanned is not taken twice.
    void request(const QUuid &server);
    /// Every server that is switched on, in their order.
    void requestAll();
    /// A server that has gone waits no longer, and nothing is known of it.
    void forget(const QUuid &server);

    State state(const QUuid &server) const;
    /// Of the scan under way, 0...1.
    double progress() const;
    /// Why the last scan of a server failed, for the listener to read; empty when it did not.
    QString failure(const QUuid &server) const { return m_failures.value(server); }
    void dismissFailure(const QUuid &server);

    /// The server has changed since its songs were found: they still lead to where it was.
    void markStale(const QUuid &server);
    bool isStale(const QUuid &server) const { return m_stale.contains(server); }

Q_SIGNALS:
    /// Something about this server has changed.
    void changed(const QUuid &server);

private:
    QCoro::Task<void> run();
    void finish(const QUuid &server, quint64 edition);

    WebDAVService &m_service;
    QList<QUuid> m_waiting;
    QUuid m_running;
    bool m_runs = false;
    QHash<QUuid, QString> m_failures;
    /// Server → number of the change that made it stale.
    QHash<QUuid, quint64> m_stale;
    quint64 m_editions = 0;
};

} // namespace cadorel
