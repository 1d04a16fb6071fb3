// SPDX-License-Identifier: GPL-3.0-or-later
// Preferences across runs of the player: files, damage, large values.
#include "Platform/Sql/SqlitePreferences.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype aboveLarge = SqlitePreferences::largeBytes + 1;
constexpr qsizetype pageBytes = 4096;
constexpr qsizetype aboveLazy = SqlitePreferences::lazyBytes + 1;

/// A connection of the test's own to the database.
class Database
{
public:
    explicit Database(const QString &file)
        : m_database(QSqlDatabase::addDatabase(u"QSQLITE"_s, u"test"_s))
    {
        m_database.setDatabaseName(file);
        m_database.open();
    }
    ~Database()
    {
        m_database.close();
        m_database = {};
        QSqlDatabase::removeDatabase(u"test"_s);
    }
    Q_DISABLE_COPY_MOVE(Database)

    bool execute(const QString &statement) { return QSqlQuery(m_database).exec(statement); }
    QVariant value(const QString &statement)
    {
        QSqlQuery query(m_database);
        return query.exec(statement) && query.next() ? query.value(0) : QVariant();
    }

private:
    QSqlDatabase m_database;
};

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

class SqlitePreferencesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void keepsEverythingAcrossRuns();
    void theTableIsAsDocumented();
    void aSmallWriteIsInTheFileAtOnce();
    void survivesBeingKilled();
    void ofALargeValueOnlyTheLastStateIsWritten();
    void aLargeValueThatShrinksOrGoesStaysSo();
    void aSmallWriteDoesNotWaitForALargeOne();
    void aRefusedLargeValueStaysInMemory();
    void theLogIsMovedIntoTheFileWhileRunning();
    void twoStoresDoNotDisturbEachOther();

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
    QStringList setAside() const
    {
        return QDir(m_directory->path()).entryList({u"preferences.sqlite.damaged-*"_s}, QDir::AllEntries);
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void SqlitePreferencesTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void SqlitePreferencesTest::keepsEverythingAcrossRuns()
{
    const QByteArray lazy(aboveLazy, 'l');
    const QByteArray large(aboveLarge, 'L');
    {
        SqlitePreferences preferences(file());
        preferences.setBool(u"bool"_s, true);
        preferences.setInt(u"int"_s, std::numeric_limits<qint64>::max());
        preferences.setDouble(u"double"_s, 3.0);
        preferences.setDouble(u"nan"_s, std::nan(""));
        preferences.setString(u"string"_s, u"a\0夜"_s);
        preferences.setString(u"empty"_s, QString());
        preferences.setStrings(u"strings"_s, {u"one"_s, u""_s});
        preferences.setData(u"data"_s, QByteArray("\0\xff", 2));
        preferences.setData(u"lazy"_s, lazy);
        preferences.setData(u"large"_s, large);
        preferences.setString(u"large text"_s, QString(aboveLarge, u'夜'));
        preferences.setInt(u"removed"_s, 1);
        preferences.remove(u"removed"_s);
    }
    const SqlitePreferences preferences(file());
    QCOMPARE(preferences.boolValue(u"bool"_s), true);
    QCOMPARE(preferences.intValue(u"int"_s), std::numeric_limits<qint64>::max());
    QCOMPARE(preferences.doubleValue(u"double"_s), 3.0);
    QVERIFY(!preferences.intValue(u"double"_s));
    QVERIFY(std::isnan(preferences.doubleValue(u"nan"_s).value_or(0)));
    QCOMPARE(preferences.stringValue(u"string"_s), u"a\0夜"_s);
    QCOMPARE(preferences.stringValue(u"empty"_s), u""_s);
    QCOMPARE(preferences.stringsValue(u"strings"_s), (QStringList{u"one"_s, u""_s}));
    QCOMPARE(preferences.dataValue(u"data"_s), QByteArray("\0\xff", 2));
    QCOMPARE(preferences.dataValue(u"lazy"_s), lazy);
    QCOMPARE(preferences.dataValue(u"large"_s), large);
    QCOMPARE(preferences.stringValue(u"large text"_s), QString(aboveLarge, u'夜'));
    QVERIFY(!preferences.contains(u"removed"_s));
    QVERIFY(setAside().isEmpty());
}

void SqlitePreferencesTest::theTableIsAsDocumented()
{
    SqlitePreferences preferences(file());
    preferences.setBool(u"bool"_s, true);
    preferences.setInt(u"int"_s, 7);
    preferences.setDouble(u"double"_s, 0.5);
    preferences.setString(u"string"_s, u"text"_s);
    preferences.setStrings(u"strings"_s, {u"a"_s, u"b"_s});
    preferences.setData(u"data"_s, "bytes");
    Database database(file());
    QCOMPARE(database.value(u"PRAGMA journal_mode"_s).toString(), u"wal"_s);
    QCOMPARE(
        database
            .value(u"SELECT group_concat(key || '=' || type || '/' || typeof(value) || '/' || value, ' ') "
                   "FROM (SELECT * FROM preferences ORDER BY key)"_s)
            .toString(),
        u"bool=bool/integer/1 data=data/blob/bytes double=double/real/0.5 int=int/integer/7 "
        "string=string/text/text strings=strings/text/[\"a\",\"b\"]"_s);
}

void SqlitePreferencesTest::aSmallWriteIsInTheFileAtOnce()
{
    SqlitePreferences preferences(file());
    preferences.setInt(u"key"_s, 1);
    preferences.setData(u"lazy"_s, QByteArray(aboveLazy, 'x'));
    preferences.setInt(u"gone"_s, 1);
    preferences.remove(u"gone"_s);
    Database database(file());
    QCOMPARE(database.value(u"SELECT value FROM preferences WHERE key = 'key'"_s).toInt(), 1);
    QCOMPARE(database.value(u"SELECT length(value) FROM preferences WHERE key = 'lazy'"_s).toInt(),
             aboveLazy);
    QCOMPARE(database.value(u"SELECT count(*) FROM preferences"_s).toInt(), 2);
}

void SqlitePreferencesTest::survivesBeingKilled()
{
    QProcess program;
    program.start(QCoreApplication::applicationDirPath() + u"/PreferencesProgram"_s, {file()});
    QVERIFY(program.waitForReadyRead());
    QCOMPARE(program.readAll(), "written\n");
    // Killed in the middle of its later writes, large ones too.
    Database database(file());
    QTRY_VERIFY(database.value(u"SELECT value FROM preferences WHERE key = 'large'"_s).isValid());
    program.kill();
    QVERIFY(program.waitForFinished());

    const SqlitePreferences preferences(file());
    QCOMPARE(preferences.stringValue(u"state"_s), u"written"_s);
    QVERIFY(preferences.intValue(u"count"_s));
    const QByteArray large = preferences.dataValue(u"large"_s).value_or(QByteArray());
    QCOMPARE(large.size(), 2 * SqlitePreferences::largeBytes);
    QCOMPARE(large.count(large.front()), large.size());
    QVERIFY(setAside().isEmpty());
}

void SqlitePreferencesTest::ofALargeValueOnlyTheLastStateIsWritten()
{
    {
        SqlitePreferences preferences(file());
        Database database(file());
        QVERIFY(database.execute(u"CREATE TABLE writes(key)"_s));
        QVERIFY(database.execute(u"CREATE TRIGGER count_writes AFTER INSERT ON preferences BEGIN "
                                 "INSERT INTO writes VALUES(new.key); END"_s));
        // The worker waits for its turn while the test holds the lock.
        QVERIFY(database.execute(u"BEGIN IMMEDIATE"_s));
        for (char state = 'a'; state <= 'z'; ++state) {
            const QByteArray data(aboveLarge, state);
            preferences.setData(u"large"_s, data);
            QCOMPARE(preferences.dataValue(u"large"_s), data);
        }
        preferences.setData(u"other"_s, QByteArray(aboveLarge, 'o'));
        QVERIFY(database.execute(u"COMMIT"_s));
    }
    Database database(file());
    QCOMPARE(
        database.value(u"SELECT substr(value, 1, 1) FROM preferences WHERE key = 'large'"_s).toByteArray(),
        "z");
    QCOMPARE(
        database.value(u"SELECT substr(value, 1, 1) FROM preferences WHERE key = 'other'"_s).toByteArray(),
        "o");
    const int writes = database.value(u"SELECT count(*) FROM writes WHERE key = 'large'"_s).toInt();
    QVERIFY2(writes == 1 || writes == 2, QByteArray::number(writes).constData());
}

void SqlitePreferencesTest::aLargeValueThatShrinksOrGoesStaysSo()
{
    {
        SqlitePreferences preferences(file());
        for (int round = 0; round < 20; ++round) {
            preferences.setData(u"shrinks"_s, QByteArray(aboveLarge, 'x'));
            preferences.setData(u"shrinks"_s, "small");
            preferences.setData(u"goes"_s, QByteArray(aboveLarge, 'x'));
            preferences.remove(u"goes"_s);
            preferences.setInt(u"changes"_s, 1);
            preferences.setData(u"changes"_s, QByteArray(aboveLarge, 'x'));
            // Lets results of the worker in between.
            QCoreApplication::processEvents();
            QCOMPARE(preferences.dataValue(u"shrinks"_s), "small");
            QVERIFY(!preferences.contains(u"goes"_s));
            QCOMPARE(preferences.dataValue(u"changes"_s).value_or(QByteArray()).size(), aboveLarge);
        }
    }
    const SqlitePreferences preferences(file());
    QCOMPARE(preferences.dataValue(u"shrinks"_s), "small");
    QVERIFY(!preferences.contains(u"goes"_s));
    QCOMPARE(preferences.dataValue(u"changes"_s), QByteArray(aboveLarge, 'x'));
}

void SqlitePreferencesTest::aSmallWriteDoesNotWaitForALargeOne()
{
    SqlitePreferences preferences(file());
    preferences.setInt(u"gone"_s, 1);
    Database database(file());
    // SQLite's own patience, 5 s, would show.
    QVERIFY(database.execute(u"BEGIN IMMEDIATE"_s));
    QElapsedTimer timer;
    timer.start();
    preferences.setInt(u"small"_s, 1);
    preferences.setInt(u"small"_s, 2);
    preferences.remove(u"gone"_s);
    QVERIFY(timer.elapsed() < 3000);
    QCOMPARE(preferences.intValue(u"small"_s), 2);
    QVERIFY(database.execute(u"COMMIT"_s));
    QTRY_COMPARE(database.value(u"SELECT value FROM preferences WHERE key = 'small'"_s).toInt(), 2);
    QTRY_COMPARE(database.value(u"SELECT count(*) FROM preferences"_s).toInt(), 1);
}

void SqlitePreferencesTest::aRefusedLargeValueStaysInMemory()
{
    SqlitePreferences preferences(file());
    {
        Database database(file());
        QVERIFY(database.execute(u"CREATE TRIGGER refuse BEFORE INSERT ON preferences BEGIN "
                                 "SELECT RAISE(FAIL, 'refused by the test'); END"_s));
    }
    bool isTold = false;
    static bool *told = nullptr;
    told = &isTold;
    const QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &text) {
            *told = *told || text.contains(u"large is kept in memory only"_s);
        });
    preferences.setData(u"large"_s, QByteArray(aboveLarge, 'x'));
    const bool isToldInTime = QTest::qWaitFor([&isTold] { return isTold; });
    // Told once, not with every write.
    isTold = false;
    preferences.setString(u"small"_s, u"text"_s);
    qInstallMessageHandler(previous);
    QVERIFY(isToldInTime);
    QVERIFY(!isTold);
    QCOMPARE(preferences.dataValue(u"large"_s), QByteArray(aboveLarge, 'x'));
    QCOMPARE(preferences.stringValue(u"small"_s), u"text"_s);
}

void SqlitePreferencesTest::theLogIsMovedIntoTheFileWhileRunning()
{
    SqlitePreferences preferences(file());
    const qint64 before = QFileInfo(file()).size();
    for (int i = 0; i < 100; ++i)
        preferences.setData(QString::number(i), QByteArray(SqlitePreferences::lazyBytes, 'x'));
    QTRY_VERIFY(QFileInfo(file()).size() > before + SqlitePreferences::largeBytes);
}

void SqlitePreferencesTest::twoStoresDoNotDisturbEachOther()
{
    SqlitePreferences first(file());
    first.setInt(u"key"_s, 1);
    SqlitePreferences second(m_directory->filePath(u"other.sqlite"_s));
    second.setInt(u"key"_s, 2);
    QCOMPARE(first.intValue(u"key"_s), 1);
    QCOMPARE(second.intValue(u"key"_s), 2);
}

void SqlitePreferencesTest::damageIsSetAside_data()
{
    QTest::addColumn<QString>("damage");
    for (const QString &damage :
         {u"garbage"_s, u"short garbage"_s, u"truncated header"_s, u"truncated page"_s, u"truncated file"_s,
          u"broken pages"_s, u"other columns"_s, u"a view"_s, u"directory"_s})
        QTest::newRow(qPrintable(damage)) << damage;
}

void SqlitePreferencesTest::damageIsSetAside()
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
        Database database(file());
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
    const QStringList kept = QDir(m_directory->path())
                                 .entryList({u"preferences.sqlite.damaged-*"_s}, QDir::AllEntries)
                                 .filter(QRegularExpression(u"damaged-\\d{8}-\\d{6}$"_s));
    QCOMPARE(kept.size(), 1);
    if (!bad.isEmpty())
        QCOMPARE(readFile(m_directory->filePath(kept.first())), bad);
    QCOMPARE(SqlitePreferences(file()).intValue(u"new"_s), 1);
}

void SqlitePreferencesTest::anEmptyFileIsNoDamage()
{
    writeFile(file(), {});
    {
        SqlitePreferences preferences(file());
        preferences.setInt(u"key"_s, 1);
    }
    QCOMPARE(SqlitePreferences(file()).intValue(u"key"_s), 1);
    QVERIFY(setAside().isEmpty());
}

void SqlitePreferencesTest::twoDamagedFilesAreBothKept()
{
    for (int round = 0; round < 2; ++round) {
        writeFile(file(), QByteArray(5000, 'g'));
        expectWarning("set aside as");
        SqlitePreferences preferences(file());
    }
    QCOMPARE(setAside().size(), 2);
}

void SqlitePreferencesTest::damageWhileRunningKeepsWhatIsKnown()
{
    SqlitePreferences preferences(file());
    preferences.setString(u"known"_s, u"text"_s);
    for (int i = 0; i < 200; ++i)
        preferences.setString(QString::number(i), QString(200, u'x'));
    preferences.setData(u"large"_s, QByteArray(aboveLarge, 'x'));
    // Everything into the file, so that the log does not repair what the test breaks.
    QTRY_VERIFY(QFileInfo(file()).size() > aboveLarge);
    {
        Database database(file());
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
    preferences.setInt(u"new"_s, 1);
    QCOMPARE(preferences.stringValue(u"known"_s), u"text"_s);
    QCOMPARE(setAside().filter(QRegularExpression(u"\\d$"_s)).size(), 1);
    preferences.setInt(u"newer"_s, 2);
    Database database(file());
    QCOMPARE(database.value(u"SELECT value FROM preferences WHERE key = 'known'"_s).toString(), u"text"_s);
    QCOMPARE(database.value(u"SELECT value FROM preferences WHERE key = 'new'"_s).toInt(), 1);
    QCOMPARE(database.value(u"SELECT value FROM preferences WHERE key = 'newer'"_s).toInt(), 2);
}

void SqlitePreferencesTest::rowsThatCannotBeReadAreSkipped()
{
    {
        SqlitePreferences preferences(file());
        preferences.setInt(u"good"_s, 1);
        Database database(file());
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

void SqlitePreferencesTest::worksInMemoryWhereNothingCanBeWritten()
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

void SqlitePreferencesTest::readsAFileThatCannotBeWritten()
{
    {
        SqlitePreferences preferences(file());
        preferences.setInt(u"key"_s, 1);
        preferences.setData(u"lazy"_s, QByteArray(aboveLazy, 'x'));
    }
    const QFileDevice::Permissions readOnly = QFileDevice::ReadOwner | QFileDevice::ExeOwner;
    QVERIFY(QFile::setPermissions(file(), QFileDevice::ReadOwner));
    QVERIFY(QFile::setPermissions(m_directory->path(), readOnly));
    const auto restore = qScopeGuard([this] {
        QFile::setPermissions(m_directory->path(),
                              QFileDevice::WriteOwner | QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    });
    if (QFile(m_directory->filePath(u"probe"_s)).open(QIODevice::WriteOnly))
        QSKIP("this user writes everywhere");
    expectWarning("preferences: cannot be written, changes are kept in memory only");
    SqlitePreferences preferences(file());
    QCOMPARE(preferences.intValue(u"key"_s), 1);
    QCOMPARE(preferences.dataValue(u"lazy"_s), QByteArray(aboveLazy, 'x'));
    preferences.setInt(u"key"_s, 2);
    QCOMPARE(preferences.intValue(u"key"_s), 2);
}

QTEST_GUILESS_MAIN(SqlitePreferencesTest)
#include "SqlitePreferencesTest.moc"
