// SPDX-License-Identifier: GPL-3.0-or-later
// Preferences whose file is damaged, or cannot be written.
#include "Fixtures/UnprivilegedScope.h"
#include "Platform/Sql/SqlitePreferences.h"
#include "PreferencesDatabase.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype aboveLarge = SqlitePreferences::largeBytes + 1;
constexpr qsizetype aboveLazy = SqlitePreferences::lazyBytes + 1;
constexpr qsizetype pageBytes = 4096;

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void expectWarning(const char *pattern)
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString::fromUtf8(pattern)));
}

} // namespace

class DamagedPreferencesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void damageIsSetAside_data();
    void damageIsSetAside();
    void anEmptyFileIsNoDamage();
    void twoDamagedFilesAreBothKept();
    void damageWhileRunningKeepsWhatIsKnown();
    void rowsThatCannotBeReadAreSkipped();
    void worksInMemoryWhereNothingCanBeWritten();
    void readsAFileThatCannotBeWritten();

private:
    QString file() const { return m_directory->filePath(u"preferences.sqlite"_s); }
    /// Names of what was set aside, without the logs.
    QStringList setAside() const
    {
        return QDir(m_directory->path())
            .entryList({u"preferences.sqlite.damaged-*"_s}, QDir::AllEntries)
            .filter(QRegularExpression(u"damaged-\\d{8}-\\d{6}(-\\d+)?$"_s));
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void DamagedPreferencesTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void DamagedPreferencesTest::damageIsSetAside_data()
{
    QTest::addColumn<QString>("damage");
    for (const QString &damage :
         {u"garbage"_s, u"short garbage"_s, u"truncated header"_s, u"truncated page"_s, u"truncated file"_s,
          u"broken pages"_s, u"other columns"_s, u"a view"_s, u"directory"_s})
        QTest::newRow(qPrintable(damage)) << damage;
}

void DamagedPreferencesTest::damageIsSetAside()
{
    QFETCH(QString, damage);
    {
        SqlitePreferences preferences(file());
        for (int i = 0; i < 200; ++i)
            preferences.setString(QString::number(i), QString(200, u'x'));
    }
    const QByteArray good = readFile(file());
    QVERIFY(good.size() > 10 * pageBytes);
    QByteArray bad;
    if (damage == u"garbage")
        bad = QByteArray(5000, 'g');
    else if (damage == u"short garbage")
        bad = "not a database";
    else if (damage == u"truncated header")
        bad = good.first(50);
    else if (damage == u"truncated page")
        bad = good.first(1000);
    else if (damage == u"truncated file")
        bad = good.first(3 * pageBytes);
    else if (damage == u"broken pages")
        bad = good.first(pageBytes) + QByteArray(good.size() - pageBytes, '\xee');
    QVERIFY(QFile::remove(file()));
    if (damage == u"directory") {
        QVERIFY(QDir().mkpath(file() + u"/inside"_s));
    } else if (!bad.isEmpty()) {
        writeFile(file(), bad);
    } else {
        PreferencesDatabase database(file());
        QVERIFY(database.execute(damage == u"a view"
                                     ? u"CREATE VIEW preferences AS SELECT 1 AS key, 2 AS type, 3 AS value"_s
                                     : u"CREATE TABLE preferences(key TEXT PRIMARY KEY, value BLOB)"_s));
    }
    writeFile(file() + u"-shm"_s, {});

    expectWarning("preferences: the file is damaged, set aside as preferences.sqlite.damaged-");
    {
        SqlitePreferences preferences(file());
        QVERIFY(!preferences.contains(u"1"_s));
        preferences.setInt(u"new"_s, 1);
        QCOMPARE(preferences.intValue(u"new"_s), 1);
    }
    const QStringList kept = setAside();
    QCOMPARE(kept.size(), 1);
    if (!bad.isEmpty())
        QCOMPARE(readFile(m_directory->filePath(kept.first())), bad);
    QCOMPARE(SqlitePreferences(file()).intValue(u"new"_s), 1);
}

void DamagedPreferencesTest::anEmptyFileIsNoDamage()
{
    writeFile(file(), {});
    {
        SqlitePreferences preferences(file());
        preferences.setInt(u"key"_s, 1);
    }
    QCOMPARE(SqlitePreferences(file()).intValue(u"key"_s), 1);
    QVERIFY(setAside().isEmpty());
}

void DamagedPreferencesTest::twoDamagedFilesAreBothKept()
{
    for (int round = 0; round < 2; ++round) {
        writeFile(file(), QByteArray(5000, 'g'));
        expectWarning("set aside as");
        SqlitePreferences preferences(file());
    }
    QCOMPARE(setAside().size(), 2);
}

void DamagedPreferencesTest::damageWhileRunningKeepsWhatIsKnown()
{
    SqlitePreferences preferences(file());
    preferences.setString(u"known"_s, u"text"_s);
    for (int i = 0; i < 200; ++i)
        preferences.setString(QString::number(i), QString(200, u'x'));
    preferences.setData(u"large"_s, QByteArray(aboveLarge, 'x'));
    // Everything into the file, so that the log does not repair what the test breaks.
    QTRY_VERIFY(QFileInfo(file()).size() > aboveLarge);
    {
        PreferencesDatabase database(file());
        QTRY_COMPARE(database.value(u"PRAGMA wal_checkpoint(TRUNCATE)"_s).toInt(), 0);
        QFile content(file());
        QVERIFY(content.open(QIODevice::ReadWrite));
        QVERIFY(content.seek(pageBytes));
        const qint64 size = content.size() - pageBytes;
        QCOMPARE(content.write(QByteArray(size, '\xee')), size);
        content.close();
        // A commit of another connection makes the store read its pages anew.
        QVERIFY(database.execute(u"PRAGMA user_version = 1"_s));
    }
    expectWarning("set aside as");
    // The worker meets the damage too, and tells of it when the file has been replaced already.
    preferences.setData(u"fresh"_s, QByteArray(aboveLarge, 'f'));
    preferences.setInt(u"new"_s, 1);
    QCoreApplication::processEvents();
    QCOMPARE(preferences.stringValue(u"known"_s), u"text"_s);
    QCOMPARE(preferences.dataValue(u"fresh"_s), QByteArray(aboveLarge, 'f'));
    QCOMPARE(setAside().size(), 1);
    preferences.setInt(u"newer"_s, 2);
    PreferencesDatabase database(file());
    QCOMPARE(database.value(u"SELECT value FROM preferences WHERE key = 'known'"_s).toString(), u"text"_s);
    QCOMPARE(database.value(u"SELECT length(value) FROM preferences WHERE key = 'fresh'"_s).toLongLong(),
             aboveLarge);
    QCOMPARE(database.value(u"SELECT value FROM preferences WHERE key = 'new'"_s).toInt(), 1);
    QCOMPARE(database.value(u"SELECT value FROM preferences WHERE key = 'newer'"_s).toInt(), 2);
}

void DamagedPreferencesTest::rowsThatCannotBeReadAreSkipped()
{
    {
        SqlitePreferences preferences(file());
        preferences.setInt(u"good"_s, 1);
        PreferencesDatabase database(file());
        QVERIFY(database.execute(u"INSERT INTO preferences VALUES('later', 'date', 5)"_s));
        QVERIFY(database.execute(u"INSERT INTO preferences VALUES('number', 'int', 'text')"_s));
        QVERIFY(database.execute(u"INSERT INTO preferences VALUES('list', 'strings', '{')"_s));
    }
    expectWarning("later cannot be read as date");
    expectWarning("number cannot be read as int");
    expectWarning("list cannot be read as strings");
    const SqlitePreferences preferences(file());
    QCOMPARE(preferences.intValue(u"good"_s), 1);
    QVERIFY(!preferences.contains(u"later"_s));
    QVERIFY(!preferences.intValue(u"number"_s));
    QVERIFY(setAside().isEmpty());
}

void DamagedPreferencesTest::worksInMemoryWhereNothingCanBeWritten()
{
    // A file as the parent stops every user, root included.
    const QString blocker = m_directory->filePath(u"blocker"_s);
    writeFile(blocker, "x");
    expectWarning("preferences: cannot be opened, kept in memory only");
    SqlitePreferences preferences(blocker + u"/preferences.sqlite"_s);
    preferences.setInt(u"key"_s, 1);
    preferences.setData(u"large"_s, QByteArray(aboveLarge, 'x'));
    QCOMPARE(preferences.intValue(u"key"_s), 1);
    QCOMPARE(preferences.dataValue(u"large"_s), QByteArray(aboveLarge, 'x'));
    preferences.remove(u"key"_s);
    QVERIFY(!preferences.contains(u"key"_s));
    QCOMPARE(readFile(blocker), "x");
}

void DamagedPreferencesTest::readsAFileThatCannotBeWritten()
{
    {
        SqlitePreferences preferences(file());
        preferences.setInt(u"key"_s, 1);
        preferences.setData(u"lazy"_s, QByteArray(aboveLazy, 'x'));
    }
    const QFileDevice::Permissions readers =
        QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;
    QVERIFY(QFile::setPermissions(file(), readers));
    QVERIFY(QFile::setPermissions(m_directory->path(), readers | QFileDevice::ExeOwner |
                                                           QFileDevice::ExeGroup | QFileDevice::ExeOther));
    const auto restore = qScopeGuard([this] {
        QFile::setPermissions(m_directory->path(),
                              QFileDevice::WriteOwner | QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    });
    const UnprivilegedScope withoutRights;
    QVERIFY(withoutRights.isActive());
    QVERIFY(!QFile(m_directory->filePath(u"probe"_s)).open(QIODevice::WriteOnly));
    expectWarning("preferences: cannot be written, changes are kept in memory only");
    SqlitePreferences preferences(file());
    QCOMPARE(preferences.intValue(u"key"_s), 1);
    QCOMPARE(preferences.dataValue(u"lazy"_s), QByteArray(aboveLazy, 'x'));
    preferences.setInt(u"key"_s, 2);
    QCOMPARE(preferences.intValue(u"key"_s), 2);
}

QTEST_GUILESS_MAIN(DamagedPreferencesTest)
#include "DamagedPreferencesTest.moc"
