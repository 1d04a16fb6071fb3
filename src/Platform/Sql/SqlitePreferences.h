// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Preferences.h"
#include "Platform/Sql/LargeValueWriter.h"
#include "Platform/Sql/SqliteConnection.h"

#include <QHash>
#include <QObject>
#include <QVariant>

#include <chrono>
#include <memory>
#include <optional>

namespace cadorel {

/// Preferences in a SQLite file: table preferences(key, type, value), written through a log (WAL).
///
/// Everything is read when the store is opened, but for data values over lazyBytes: those are read from the
/// file each time they are asked for. A write is handed to the operating system inside the call, so that the
/// end of the process, however sudden, cannot lose it; a power failure can lose the writes of the last
/// seconds, never the file. Values over largeBytes are written by a worker, of each key only the last state,
/// and have landed when the destructor ends. A small write that meets a large one under way waits for it
/// busyLimit at most and is then the worker's too.
///
/// A damaged file, or something else in its place, is set aside as "<file>.damaged-<yyyyMMdd-HHmmss>" and
/// replaced by an empty one. Where nothing can be written the values of the file, or none, serve in memory.
/// Both are logged. Needs the application object; one store for a file. Main thread.
class SqlitePreferences : public Preferences
{
public:
    /// Larger data values stay on disk until they are asked for.
    static constexpr qsizetype lazyBytes = qsizetype{64} * 1024;
    /// Larger values are written by the worker.
    static constexpr qsizetype largeBytes = qsizetype{1024} * 1024;
    /// A person does not notice a wait as short as this.
    static constexpr std::chrono::milliseconds busyLimit{50};

    /// Opens @p file, an absolute path in a directory that exists.
    explicit SqlitePreferences(const QString &file);
    ~SqlitePreferences() override;
    Q_DISABLE_COPY_MOVE(SqlitePreferences)

    std::optional<bool> boolValue(const QString &key) const override;
    std::optional<qint64> intValue(const QString &key) const override;
    std::optional<double> doubleValue(const QString &key) const override;
    std::optional<QString> stringValue(const QString &key) const override;
    std::optional<QStringList> stringsValue(const QString &key) const override;
    std::optional<QByteArray> dataValue(const QString &key) const override;
    QFuture<std::optional<QByteArray>> loadData(const QString &key) const override;

    void setBool(const QString &key, bool value) override;
    void setInt(const QString &key, qint64 value) override;
    void setDouble(const QString &key, double value) override;
    void setString(const QString &key, const QString &value) override;
    void setStrings(const QString &key, const QStringList &value) override;
    void setData(const QString &key, const QByteArray &value) override;

    bool contains(const QString &key) const override;
    void remove(const QString &key) override;

private:
    struct Entry
    {
        /// Invalid when the value, a data value then, is on disk only.
        QVariant value;
        /// Number of the worker's write that brings this state to disk; 0 when there is none.
        quint64 ticket = 0;
    };
    using Entries = QHash<QString, Entry>;

    static std::optional<QByteArray> readData(SqliteConnection &connection, const QString &key);
    void openFile();
    QSqlError load(SqliteConnection::Mode mode);
    bool setAside();
    void replaceDamagedFile();
    template <typename T>
    std::optional<T> read(const QString &key) const;
    void write(const QString &key, const QVariant &value);
    void store(const QString &key, const std::optional<PreferenceRow> &row);
    static void leaveOnDisk(Entry &entry);
    void written(const QString &key, const QSqlError &error);
    void landed(const QString &key, quint64 ticket, const QSqlError &error);
    void makeWriter();

    const QString m_file;
    Entries m_entries;
    SqliteConnection::Mode m_mode = SqliteConnection::Mode::readWrite;
    /// Null where the values live in memory only.
    std::unique_ptr<SqliteConnection> m_connection;
    bool m_isRefusing = false;
    qsizetype m_bytesInLog = 0;
    quint64 m_lastTicket = 0;
    /// Writes of the worker up to here went to a file that has been set aside.
    quint64 m_obsoleteTicket = 0;
    /// Receives what the worker reports; it must outlive the worker.
    std::unique_ptr<QObject> m_receiver;
    std::unique_ptr<LargeValueWriter> m_writer;
};

} // namespace cadorel
