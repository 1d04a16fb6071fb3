// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Sql/SqliteConnection.h"

#include <QFileInfo>
#include <QStringList>
#include <QUrl>

#include <atomic>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

// Primary result codes, https://www.sqlite.org/rescode.html; extended codes carry them in the low byte.
constexpr int sqliteBusy = 5;
constexpr int sqliteCorrupt = 11;
constexpr int sqliteNotADatabase = 26;
constexpr int primaryCodeMask = 0xff;

// Upper limit of the write-ahead log after a large value has passed through it.
constexpr int logBytes = 4 * 1024 * 1024;

QString uniqueConnectionName()
{
    static std::atomic<quint64> count = 0;
    return u"cadorel.preferences.%1"_s.arg(++count);
}

int primaryCode(const QSqlError &error)
{
    return error.nativeErrorCode().toInt() & primaryCodeMask;
}

QSqlError damage(const QString &text)
{
    return {text, {}, QSqlError::StatementError, QString::number(sqliteCorrupt)};
}

} // namespace

SqliteConnection::SqliteConnection(const QString &file)
    : m_file(file)
    , m_name(uniqueConnectionName())
    , m_database(QSqlDatabase::addDatabase(u"QSQLITE"_s, m_name))
{
}

SqliteConnection::~SqliteConnection()
{
    m_write.reset();
    m_database.close();
    m_database = {};
    QSqlDatabase::removeDatabase(m_name);
}

QSqlError SqliteConnection::open(Mode mode)
{
    if (mode == Mode::readOnly) {
        QUrl address = QUrl::fromLocalFile(m_file);
        // Without a log SQLite would have to make one, which the directory does not allow.
        if (QFileInfo(m_file + u"-wal"_s).size() == 0)
            address.setQuery(u"immutable=1"_s);
        m_database.setConnectOptions(u"QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI"_s);
        m_database.setDatabaseName(address.toString(QUrl::FullyEncoded));
        return m_database.open() ? QSqlError() : m_database.lastError();
    }
    m_database.setDatabaseName(m_file);
    if (!m_database.open())
        return m_database.lastError();
    // The log is moved into the database by checkpoint(), off the main thread, never by a small write.
    for (const QString &pragma :
         {u"PRAGMA journal_mode=WAL"_s, u"PRAGMA synchronous=NORMAL"_s, u"PRAGMA wal_autocheckpoint=0"_s,
          u"PRAGMA journal_size_limit=%1"_s.arg(logBytes)}) {
        if (const QSqlError error = execute(pragma); error.isValid())
            return error;
    }
    return {};
}

QSqlError SqliteConnection::prepareTable()
{
    if (const QSqlError error = execute(u"CREATE TABLE IF NOT EXISTS preferences("
                                        "key TEXT PRIMARY KEY, type TEXT NOT NULL, value BLOB)"_s);
        error.isValid())
        return error;
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.exec(u"SELECT name, pk FROM pragma_table_info('preferences')"_s))
        return query.lastError();
    QStringList columns;
    while (query.next())
        columns.append(query.value(0).toString() + query.value(1).toString());
    if (query.lastError().isValid())
        return query.lastError();
    if (columns != QStringList{u"key1"_s, u"type0"_s, u"value0"_s})
        return damage(u"the table preferences has other columns"_s);
    return {};
}

QSqlError SqliteConnection::readAll(
    qsizetype lazyBytes,
    const std::function<void(const QString &key, const PreferenceRow &row, bool isLazy)> &report)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    // length() of a blob reads the row's header only, so that a value left on disk costs nothing.
    query.prepare(u"SELECT key, type, lazy, CASE WHEN lazy THEN NULL ELSE value END FROM "
                  "(SELECT key, type, value, type = ? AND length(value) > ? AS lazy FROM preferences)"_s);
    query.addBindValue(QString(PreferenceRow::dataType));
    query.addBindValue(lazyBytes);
    if (!query.exec())
        return query.lastError();
    while (query.next())
        report(query.value(0).toString(), {.type = query.value(1).toString(), .value = query.value(3)},
               query.value(2).toBool());
    return query.lastError();
}

QSqlError SqliteConnection::read(const QString &key, QVariant &value)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    query.prepare(u"SELECT value FROM preferences WHERE key = ?"_s);
    query.addBindValue(key);
    if (query.exec() && query.next())
        value = query.value(0);
    return query.lastError();
}

QSqlError SqliteConnection::write(const QString &key, const std::optional<PreferenceRow> &row)
{
    if (!row) {
        QSqlQuery query(m_database);
        query.prepare(u"DELETE FROM preferences WHERE key = ?"_s);
        query.addBindValue(key);
        return query.exec() ? QSqlError() : query.lastError();
    }
    if (!m_write) {
        m_write.emplace(m_database);
        if (!m_write->prepare(u"INSERT OR REPLACE INTO preferences(key, type, value) VALUES(?, ?, ?)"_s)) {
            const QSqlError error = m_write->lastError();
            m_write.reset();
            return error;
        }
    }
    m_write->bindValue(0, key);
    m_write->bindValue(1, row->type);
    m_write->bindValue(2, row->value);
    const QSqlError error = m_write->exec() ? QSqlError() : m_write->lastError();
    // The statement would keep a large value in memory until the next write.
    m_write->bindValue(2, {});
    return error;
}

QSqlError SqliteConnection::transaction(const std::function<QSqlError()> &work)
{
    if (!m_database.transaction())
        return m_database.lastError();
    if (const QSqlError error = work(); error.isValid()) {
        m_database.rollback();
        return error;
    }
    return m_database.commit() ? QSqlError() : m_database.lastError();
}

QSqlError SqliteConnection::checkpoint()
{
    if (const QSqlError error = execute(u"PRAGMA wal_checkpoint(PASSIVE)"_s); error.isValid())
        return error;
    // The first write after a checkpoint waits until the log's new header is on the disk.
    return execute(u"PRAGMA user_version = 0"_s);
}

QSqlError SqliteConnection::setBusyLimit(std::chrono::milliseconds limit)
{
    return execute(u"PRAGMA busy_timeout = %1"_s.arg(limit.count()));
}

bool SqliteConnection::isDamage(const QSqlError &error)
{
    const int code = primaryCode(error);
    return code == sqliteCorrupt || code == sqliteNotADatabase;
}

bool SqliteConnection::isBusy(const QSqlError &error)
{
    return primaryCode(error) == sqliteBusy;
}

QSqlError SqliteConnection::execute(const QString &statement)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    return query.exec(statement) ? QSqlError() : query.lastError();
}

} // namespace cadorel
