// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QProcessEnvironment>
#include <QStringList>

#include <memory>

namespace cadorel {

/// Notices that a sound server may have come: its socket lies in a directory that can be watched without
/// asking again and again. Main thread.
class ServerSocketWatch : public QObject
{
    Q_OBJECT
public:
    /// @param sockets paths at which a server would listen
    explicit ServerSocketWatch(QStringList sockets);
    ~ServerSocketWatch() override;

    /// Where this user's server listens; empty when it is on another machine.
    static QStringList socketsIn(const QProcessEnvironment &environment);

    void start();
    void stop();
    /// Whether one of the sockets is there, listened at or not.
    bool anyExists() const;
    /// False for a server that can come without a notice.
    bool canNotice() const { return !m_sockets.isEmpty(); }

Q_SIGNALS:
    void appeared();

private:
    void watchNearest();
    void look();

    const QStringList m_sockets;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
};

} // namespace cadorel
