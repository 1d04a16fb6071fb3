// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Sql/SqlitePreferences.h"

#include "Platform/Sql/SqlLog.h"
#include "Utils/Files.h"

#include <QFile>
#include <QFileInfo>
#include <QtConcurrent>

#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

// Writes of the main thread after which the worker moves the log into the file: SQLite's own measure, a
// thousand pages. A write takes a page at least.
constexpr qsizetype pageBytes = 4096;
constexpr qsizetype checkpointBytes = 1000 * pageBytes;

/// SQLite stores a null text as NULL, which is no key.
QString notNull(const QString &text)
{
    return text.isNull() ? u""_s : text;
}

} // namespace

SqlitePreferences::SqlitePreferences(const QString &file)
    : m_file(file)
    , m_receiver(std::make_unique<QObject>())
{
    openFile();
}

SqlitePreferences::~SqlitePreferences()
{
    // The worker's writes land before the last connection closes and moves the log into the file.
    m_writer.reset();
}

void SqlitePreferences::openFile()
{
    QSqlError error = load(SqliteConnection::Mode::readWrite);
    const bool isDamaged = SqliteConnection::isDamage(error) || QFileInfo(m_file).isDir();
    if (isDamaged && setAside())
        error = load(SqliteConnection::Mode::readWrite);
    if (error.isValid() && !SqliteConnection::isDamage(error) && QFileInfo(m_file).isFile()) {
        qCWarning(sqlLog).noquote() << "preferences: cannot be written, changes are kept in memory only:"
                                    << error.text();
        error = load(SqliteConnection::Mode::readOnly);
        m_isRefusing = true;
    }
    if (error.isValid()) {
        qCWarning(sqlLog).noquote() << "preferences: cannot be opened, kept in memory only:" << error.text();
        m_connection.reset();
        m_entries.clear();
        return;
    }
    makeWriter();
}

void SqlitePreferences::makeWriter()
{
    m_writer = std::make_unique<LargeValueWriter>(
        m_file, [this](const QString &key, quint64 ticket, const QSqlError &error) {
            QMetaObject::invokeMethod(
                m_receiver.get(), [this, key, ticket, error] { landed(key, ticket, error); },
                Qt::QueuedConnection);
        });
}

QSqlError SqlitePreferences::load(SqliteConnection::Mode mode)
{
    m_entries.clear();
    m_mode = mode;
    m_connection = std::make_unique<SqliteConnection>(m_file);
    if (const QSqlError error = m_connection->open(mode); error.isValid())
        return error;
    if (mode == SqliteConnection::Mode::readWrite) {
        if (const QSqlError error = m_connection->prepareTable(); error.isValid())
            return error;
        if (const QSqlError error = m_connection->setBusyLimit(busyLimit); error.isValid())
            return error;
    }
    return m_connection->readAll(
        lazyBytes, [this](const QString &key, const PreferenceRow &row, bool isLazy) {
            if (isLazy)
                m_entries.insert(key, {});
            else if (std::optional<QVariant> value = row.decode())
                m_entries.insert(key, {.value = *std::move(value)});
            else
                qCWarning(sqlLog).noquote() << "preferences:" << key << "cannot be read as" << row.type;
        });
}

bool SqlitePreferences::setAside()
{
    m_connection.reset();
    const QString target = freeDamagedName(m_file);
    if (!QFile::rename(m_file, target)) {
        qCWarning(sqlLog).noquote() << "preferences: the file is damaged and cannot be set aside";
        return false;
    }
    for (const QString &suffix : {u"-wal"_s, u"-shm"_s})
        QFile::rename(m_file + suffix, target + suffix);
    qCWarning(sqlLog).noquote() << "preferences: the file is damaged, set aside as"
                                << QFileInfo(target).fileName();
    return true;
}

void SqlitePreferences::replaceDamagedFile()
{
    // What is known without the file survives it.
    m_writer.reset();
    m_obsoleteTicket = m_lastTicket;
    Entries known = std::exchange(m_entries, {});
    known.removeIf([](const auto &entry) { return !entry.value().value.isValid(); });
    if (setAside())
        openFile();
    m_entries = std::move(known);
    for (Entry &entry : m_entries)
        entry.ticket = 0;
    if (!m_connection)
        return;
    const QSqlError error = m_connection->transaction([this] {
        for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry) {
            const QSqlError refused =
                m_connection->write(entry.key(), PreferenceRow::encode(entry.value().value));
            if (refused.isValid())
                return refused;
        }
        return QSqlError();
    });
    if (error.isValid())
        qCWarning(sqlLog).noquote() << "preferences: the new file refuses the values:" << error.text();
}

template <typename T>
std::optional<T> SqlitePreferences::read(const QString &key) const
{
    const QVariant value = m_entries.value(key).value;
    return value.metaType() == QMetaType::fromType<T>() ? std::optional(value.value<T>()) : std::nullopt;
}

std::optional<bool> SqlitePreferences::boolValue(const QString &key) const
{
    return read<bool>(key);
}

std::optional<qint64> SqlitePreferences::intValue(const QString &key) const
{
    return read<qint64>(key);
}

std::optional<double> SqlitePreferences::doubleValue(const QString &key) const
{
    if (const std::optional<qint64> integer = read<qint64>(key))
        return static_cast<double>(*integer);
    return read<double>(key);
}

std::optional<QString> SqlitePreferences::stringValue(const QString &key) const
{
    return read<QString>(key);
}

std::optional<QStringList> SqlitePreferences::stringsValue(const QString &key) const
{
    return read<QStringList>(key);
}

std::optional<QByteArray> SqlitePreferences::dataValue(const QString &key) const
{
    const auto entry = m_entries.constFind(key);
    if (entry == m_entries.cend())
        return std::nullopt;
    if (entry->value.isValid())
        return read<QByteArray>(key);
    return readData(*m_connection, notNull(key));
}

QFuture<std::optional<QByteArray>> SqlitePreferences::loadData(const QString &key) const
{
    const auto entry = m_entries.constFind(key);
    if (entry == m_entries.cend() || entry->value.isValid())
        return QtFuture::makeReadyFuture(dataValue(key));
    return QtConcurrent::run([file = m_file, mode = m_mode, key = notNull(key)] {
        SqliteConnection connection(file);
        if (const QSqlError error = connection.open(mode); error.isValid()) {
            qCWarning(sqlLog).noquote() << "preferences:" << key << "cannot be read:" << error.text();
            return std::optional<QByteArray>();
        }
        return readData(connection, key);
    });
}

std::optional<QByteArray> SqlitePreferences::readData(SqliteConnection &connection, const QString &key)
{
    QVariant value;
    if (const QSqlError error = connection.read(key, value); error.isValid()) {
        qCWarning(sqlLog).noquote() << "preferences:" << key << "cannot be read:" << error.text();
        return std::nullopt;
    }
    return value.toByteArray();
}

void SqlitePreferences::setBool(const QString &key, bool value)
{
    write(key, value);
}

void SqlitePreferences::setInt(const QString &key, qint64 value)
{
    write(key, QVariant::fromValue(value));
}

void SqlitePreferences::setDouble(const QString &key, double value)
{
    write(key, value);
}

void SqlitePreferences::setString(const QString &key, const QString &value)
{
    write(key, value);
}

void SqlitePreferences::setStrings(const QString &key, const QStringList &value)
{
    write(key, value);
}

void SqlitePreferences::setData(const QString &key, const QByteArray &value)
{
    write(key, value);
}

bool SqlitePreferences::contains(const QString &key) const
{
    return m_entries.contains(key);
}

void SqlitePreferences::remove(const QString &key)
{
    if (m_entries.remove(key) > 0)
        store(notNull(key), std::nullopt);
}

void SqlitePreferences::write(const QString &key, const QVariant &value)
{
    const QString name = notNull(key);
    m_entries.insert(name, {.value = value});
    store(name, PreferenceRow::encode(value));
}

void SqlitePreferences::store(const QString &key, const std::optional<PreferenceRow> &row)
{
    if (!m_connection)
        return;
    const qsizetype size = row ? row->size() : 0;
    bool isForWorker = size > largeBytes || m_writer->holds(key);
    QSqlError error;
    if (!isForWorker) {
        error = m_connection->write(key, row);
        isForWorker = SqliteConnection::isBusy(error);
    }
    if (isForWorker) {
        const quint64 ticket = ++m_lastTicket;
        if (row)
            m_entries[key].ticket = ticket;
        m_writer->write(key, row, ticket);
        return;
    }
    if (!error.isValid() && row)
        leaveOnDisk(m_entries[key]);
    m_bytesInLog += size + pageBytes;
    written(key, error);
}

void SqlitePreferences::leaveOnDisk(Entry &entry)
{
    if (entry.value.metaType() == QMetaType::fromType<QByteArray>() &&
        entry.value.toByteArray().size() > lazyBytes)
        entry.value = {};
}

void SqlitePreferences::written(const QString &key, const QSqlError &error)
{
    if (SqliteConnection::isDamage(error)) {
        replaceDamagedFile();
        return;
    }
    // A full disk would otherwise be told with every write.
    const bool wasRefusing = std::exchange(m_isRefusing, error.isValid());
    if (error.isValid() && !wasRefusing)
        qCWarning(sqlLog).noquote() << "preferences:" << key << "is kept in memory only:" << error.text();
    if (m_writer && m_bytesInLog > checkpointBytes) {
        m_bytesInLog = 0;
        m_writer->requestCheckpoint();
    }
}

void SqlitePreferences::landed(const QString &key, quint64 ticket, const QSqlError &error)
{
    if (ticket <= m_obsoleteTicket)
        return;
    const auto entry = m_entries.find(key);
    if (entry != m_entries.end() && entry->ticket == ticket) {
        entry->ticket = 0;
        if (!error.isValid())
            leaveOnDisk(*entry);
    }
    written(key, error);
}

} // namespace cadorel
