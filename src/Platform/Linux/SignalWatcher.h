// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>

#include <csignal>
#include <utility>

class QSocketNotifier;

namespace cadorel {

/// Turns SIGTERM, SIGINT and SIGHUP into a signal on the main thread. A process that was started with one of
/// them ignored, as nohup does, goes on ignoring it. The destructor restores what was. At most one exists.
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SignalWatcher(QObject *parent = nullptr);
    ~SignalWatcher() override;
    Q_DISABLE_COPY_MOVE(SignalWatcher)

Q_SIGNALS:
    /// Somebody asks the process to end; @p number is the number of the system's signal.
    void terminationRequested(int number);

private:
    void readPipe();

    int m_readEnd = -1;
    QSocketNotifier *m_notifier = nullptr;
    QList<std::pair<int, struct sigaction>> m_previous;
};

} // namespace cadorel
