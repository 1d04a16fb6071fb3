// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Sql/PreferenceRow.h"

#include <QHash>
#include <QSqlError>
#include <QString>
#include <QThreadPool>

#include <functional>
#include <mutex>
#include <optional>
#include <utility>

namespace cadorel {

/// Writes large preferences beside the main thread: one at a time, for each key only the last state that it
/// was given, in a transaction each. Its functions are called on the main thread and do not wait, finish()
/// and the destructor excepted.
class LargeValueWriter
{
public:
    /// Called on the worker's thread when the state of @p key that write() took with @p ticket is on disk, or
    /// was refused.
    using Landed = std::function<void(const QString &key, quint64 ticket, const QSqlError &error)>;

    LargeValueWriter(const QString &file, Landed landed);
    /// Waits until everything has landed.
    ~LargeValueWriter();
    Q_DISABLE_COPY_MOVE(LargeValueWriter)

    /// Whether a state of @p key waits or is being written; a newer state must then go the same way.
    bool holds(const QString &key) const;
    /// Queues a state of @p key in place of one that still waits; no row removes it. The caller counts
    /// @p ticket upwards.
    void write(const QString &key, std::optional<PreferenceRow> row, quint64 ticket);
    /// Moves SQLite's log into the database file when the waiting writes are done.
    void requestCheckpoint();
    /// Waits until everything has landed.
    void finish();

private:
    struct Job
    {
        std::optional<PreferenceRow> row;
        quint64 ticket = 0;
    };

    void wake();
    void drain();
    std::optional<std::pair<QString, Job>> takeJob();

    const QString m_file;
    const Landed m_landed;
    mutable std::mutex m_mutex;
    QHash<QString, Job> m_waiting;
    QString m_keyUnderWay;
    bool m_isWriting = false;
    bool m_isRunning = false;
    QThreadPool m_pool;
};

} // namespace cadorel
