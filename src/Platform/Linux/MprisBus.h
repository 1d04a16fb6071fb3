// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <optional>

namespace cadorel {

class Clock;

/// A place on the session bus under a media player's name. Without a bus it does nothing. Main thread; it
/// never waits for the bus there.
class MprisBus : public QObject
{
    Q_OBJECT
public:
    /// The name on the bus; a second player takes `<name>.instance<process id>`.
    static constexpr QLatin1StringView busName{"org.mpris.MediaPlayer2.cadorel"};
    /// How often a bus that was lost is looked for at most.
    static constexpr std::chrono::seconds lookInterval{5};

    /// Connects to a bus under the name of a QDBusConnection; called by a worker.
    using Connect = std::function<QDBusConnection(const QString &connectionName)>;

    /// Goes on the bus. @param object stands there; it and @p clock outlive this object
    MprisBus(Connect connect, QDBusVirtualObject &object, const Clock &clock);
    ~MprisBus() override;
    Q_DISABLE_COPY_MOVE(MprisBus)

    /// Whether others on a bus can see the object.
    bool isPresent() const { return m_connection.has_value(); }
    /// Sends a signal.
    void send(const QDBusMessage &message);
    /// Looks for the bus when it was lost. Without a bus at the start it stays without one.
    void returnIfLost();

Q_SIGNALS:
    /// The object stands on a bus.
    void appeared();

private Q_SLOTS:
    void lose();

private:
    QCoro::Task<void> join();
    QCoro::Task<void> takeName(QDBusConnection connection);
    void leave();

    const Connect m_connect;
    QDBusVirtualObject &m_object;
    const Clock &m_clock;
    std::optional<QDBusConnection> m_connection;
    bool m_isLost = false;
    bool m_isJoining = false;
    std::chrono::nanoseconds m_lastLook{0};
};

} // namespace cadorel
