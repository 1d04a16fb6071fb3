// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

namespace cadorel {

/// A connection of a test's own to a database of preferences; one at a time.
class PreferencesDatabase
{
public:
    explicit PreferencesDatabase(const QString &file)
        : m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("test")))
    {
        m_database.setDatabaseName(file);
        m_database.open();
    }
    ~PreferencesDatabase()
    {
        m_database.close();
        m_database = {};
        QSqlDatabase::removeDatabase(QStringLiteral("test"));
    }
    Q_DISABLE_COPY_MOVE(PreferencesDatabase)

    bool execute(const QString &statement) { return QSqlQuery(m_database).exec(statement); }
    QVariant value(const QString &statement)
    {
        QSqlQuery query(m_database);
        return query.exec(statement) && query.next() ? query.value(0) : QVariant();
    }

private:
    QSqlDatabase m_database;
};

} // namespace cadorel
