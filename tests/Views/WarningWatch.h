// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1StringView>
#include <QMutex>
#include <QStringList>

namespace cadorel {

/// Collects every warning of the process while it lives: a binding that fails is a warning and nothing more.
/// Not what this Qt says when a timer or an animation ends whose window draws nothing: any test that lets
/// animations run beside a picture of the window may meet it, and none can do anything about it.
class WarningWatch
{
public:
    WarningWatch()
    {
        s_current = this;
        // A watch that is still there must not be taken for the handler before: messages would go round
        // forever.
        const QtMessageHandler previous = qInstallMessageHandler(&WarningWatch::handle);
        if (previous != &WarningWatch::handle)
            s_previous = previous;
    }
    ~WarningWatch()
    {
        if (s_current != this)
            return;
        qInstallMessageHandler(s_previous);
        s_current = nullptr;
    }
    Q_DISABLE_COPY_MOVE(WarningWatch)

    /// The warnings since the last call.
    QStringList take()
    {
        const QMutexLocker lock(&m_mutex);
        return std::exchange(m_warnings, {});
    }

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        WarningWatch *watch = s_current;
        const bool isQtsOwn = message.contains(QLatin1StringView("stopAnimationDriver"));
        if ((type == QtWarningMsg || type == QtCriticalMsg) && !isQtsOwn) {
            const QMutexLocker lock(&watch->m_mutex);
            watch->m_warnings.append(message);
        }
        s_previous(type, context, message);
    }

    static inline WarningWatch *s_current = nullptr;
    static inline QtMessageHandler s_previous = nullptr;
    QMutex m_mutex;
    QStringList m_warnings;
};

} // namespace cadorel
