// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Sql/PreferenceRow.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <chrono>
#include <functional>
#include <optional>

namespace cadorel {

/// One connection to the preferences database, under a name of its own, closed with the object. Lives on the
/// thread that made it. Errors are returned; an error that is not valid (QSqlError::isValid) means success.
class SqliteConnection
{
public:
    enum class Mode {
        readWrite,
        /// For a directory or a disk that cannot be written.
        readOnly,
    };

    explicit SqliteConnection(const QString &file);
    ~SqliteConnection();
    Q_DISABLE_COPY_MOVE(SqliteConnection)

    /// Opens the file, making it if it is missing and may be written. A power failure can lose the last
    /// writes of a connection, the end of the process cannot: WAL with synchronous=NORMAL.
    QSqlError open(Mode mode);
    /// Makes the table if it is missing; an error of a damaged file if the table has other columns.
    QSqlError prepareTable();
    /// Reports every row by key. Data values over @p lazyBytes come as a null value and are left on disk.
    QSqlError
    readAll(qsizetype lazyBytes,
            const std::function<void(const QString &key, const PreferenceRow &row, bool isLazy)> &report);
    /// The value of one row, null when there is none.
    QSqlError read(const QString &key, QVariant &value);
    /// Writes a row, or removes it when there is none to write.
    QSqlError write(const QString &key, const std::optional<PreferenceRow> &row);
    /// Makes all writes inside @p work one transaction.
    QSqlError transaction(const std::function<QSqlError()> &work);
    /// Moves what the log holds into the database file and starts the log anew, so that no later write has to
    /// wait for the disk. Does wait for it.
    QSqlError checkpoint();
    /// How long a write waits for another connection's; 5 s unless told.
    QSqlError setBusyLimit(std::chrono::milliseconds limit);

    /// Whether an error says that the file is no database of ours or is broken.
    static bool isDamage(const QSqlError &error);
    /// Whether another connection was writing all the time that a write may wait.
    static bool isBusy(const QSqlError &error);

private:
    QSqlError execute(const QString &statement);

    QString m_file;
    QString m_name;
    QSqlDatabase m_database;
    std::optional<QSqlQuery> m_write;
};

} // namespace cadorel
