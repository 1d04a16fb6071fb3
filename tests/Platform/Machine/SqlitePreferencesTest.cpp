// SPDX-License-Identifier: GPL-3.0-or-later
// Preferences across runs of the player: files and large values.
#include "Platform/Sql/SqlitePreferences.h"
#include "PreferencesDatabase.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype aboveLarge = SqlitePreferences::largeBytes + 1;
constexpr qsizetype aboveLazy = SqlitePreferences::lazyBytes + 1;

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
    void aValueOnDiskIsLoadedByAWorker();
    void theLogIsMovedIntoTheFileWhileRunning();
    void twoStoresDoNotDisturbEachOther();

private:
    QString file() const { return m_directory->filePath(u"preferences.sqlite"_s); }

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
    PreferencesDatabase database(file());
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
    PreferencesDatabase database(file());
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
    PreferencesDatabase database(file());
    QTRY_VERIFY(database.value(u"SELECT value FROM preferences WHERE key = 'large'"_s).isValid());
    program.kill();
    QVERIFY(program.waitForFinished());

    const SqlitePreferences preferences(file());
    QCOMPARE(preferences.stringValue(u"state"_s), u"written"_s);
    QVERIFY(preferences.intValue(u"count"_s));
    const QByteArray large = preferences.dataValue(u"large"_s).value_or(QByteArray());
    QCOMPARE(large.size(), 2 * SqlitePreferences::largeBytes);
    QCOMPARE(large.count(large.front()), large.size());
}

void SqlitePreferencesTest::ofALargeValueOnlyTheLastStateIsWritten()
{
    {
        SqlitePreferences preferences(file());
        PreferencesDatabase database(file());
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
    PreferencesDatabase database(file());
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
    PreferencesDatabase database(file());
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
        PreferencesDatabase database(file());
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

void SqlitePreferencesTest::aValueOnDiskIsLoadedByAWorker()
{
    const QByteArray large(aboveLarge, 'L');
    SqlitePreferences(file()).setData(u"large"_s, large);
    SqlitePreferences preferences(file());
    QFuture<std::optional<QByteArray>> onDisk = preferences.loadData(u"large"_s);
    QVERIFY(!preferences.loadData(u"missing"_s).result());
    preferences.setString(u"text"_s, u"no data"_s);
    QVERIFY(!preferences.loadData(u"text"_s).result());
    QCOMPARE(onDisk.result(), large);
    // A state that is on its way to the disk is loaded from memory.
    PreferencesDatabase database(file());
    QVERIFY(database.execute(u"BEGIN IMMEDIATE"_s));
    preferences.setData(u"large"_s, large + '2');
    const QFuture<std::optional<QByteArray>> newer = preferences.loadData(u"large"_s);
    QVERIFY(newer.isFinished());
    QCOMPARE(newer.result(), large + '2');
    QVERIFY(database.execute(u"COMMIT"_s));
    // A log that still holds the value is read with the file.
    preferences.setData(u"lazy"_s, QByteArray(aboveLazy, 'l'));
    QTRY_COMPARE(preferences.loadData(u"lazy"_s).result(), QByteArray(aboveLazy, 'l'));
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

QTEST_GUILESS_MAIN(SqlitePreferencesTest)
#include "SqlitePreferencesTest.moc"
