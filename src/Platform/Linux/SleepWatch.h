// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusUnixFileDescriptor>
#include <QObject>

#include <optional>

namespace cadorel {

/// Tells that the machine goes to sleep, which waits until that has been told, and that it is awake again.
/// It asks logind; without one it never tells anything. Main thread.
class SleepWatch : public QObject
{
    Q_OBJECT
public:
    /// @param systemBus where logind is, as a rule
    explicit SleepWatch(const QDBusConnection &systemBus);
    ~SleepWatch() override;
    Q_DISABLE_COPY_MOVE(SleepWatch)

    /// Begins to listen. @return false when there is no bus to listen to
    bool start();
    /// Whether sleep waits for the player.
    bool delaysSleep() const { return m_delay.has_value(); }

Q_SIGNALS:
    /// What is done before this returns, and before the main loop goes on, is done before the machine sleeps.
    void fallingAsleep();
    void awake();

private Q_SLOTS:
    void prepareForSleep(bool isStarting);

private:
    QCoro::Task<void> takeDelay();

    QDBusConnection m_bus;
    std::optional<QDBusServiceWatcher> m_logind;
    /// Sleep is put off while this is open, five seconds at most as logind is set up by default.
    std::optional<QDBusUnixFileDescriptor> m_delay;
    bool m_isAsleep = false;
    bool m_isListening = false;
};

} // namespace cadorel
