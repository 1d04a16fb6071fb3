// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QMutex>
#include <QTemporaryFile>

namespace cadorel {

/// Writes down what the process says while this lives: every message of Qt, with all our own diagnostics
/// switched on, and whatever anybody, a library too, writes to standard error. What print() says is for
/// ConsoleLines. In the end all of it goes where it would have gone, unless the test has passed.
class EverythingSaid
{
public:
    EverythingSaid();
    ~EverythingSaid();
    Q_DISABLE_COPY_MOVE(EverythingSaid)

    /// Everything so far.
    QByteArray text();

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message);

    static inline EverythingSaid *s_current = nullptr;
    QtMessageHandler m_previous = nullptr;
    QTemporaryFile m_errors;
    int m_standardError = -1;
    QMutex m_mutex;
    QByteArray m_messages;
};

} // namespace cadorel
