// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace cadorel {

/// A lock that the kernel keeps on a file and gives up with the process, however it ends. So there is no
/// stale lock and no process number to be mistaken for another's. The file stays behind and carries a text
/// for those who find it locked. Any thread.
class FileLock
{
public:
    enum class Outcome {
        taken,
        heldByAnother,
        /// The file cannot be made, or its file system has no locks.
        unavailable,
    };

    explicit FileLock(const QString &path);
    /// Empties the file and gives the lock up, if it was taken.
    ~FileLock();
    Q_DISABLE_COPY_MOVE(FileLock)

    /// Takes the lock if it is free, and empties the file then; does not wait.
    Outcome tryLock();
    /// Replaces the text; only while the lock is taken.
    void setText(const QByteArray &text);
    /// The holder's text; empty while there is none yet.
    QByteArray text() const;

private:
    const QString m_path;
    int m_file = -1;
    bool m_isTaken = false;
};

} // namespace cadorel
