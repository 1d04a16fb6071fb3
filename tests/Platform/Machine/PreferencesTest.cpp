// SPDX-License-Identifier: GPL-3.0-or-later
// What every implementation of Preferences keeps to, run against the fake and the real one.
#include "Fakes/FakePreferences.h"
#include "Platform/Sql/SqlitePreferences.h"

#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

class PreferencesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void startsEmpty_data() { implementations(); }
    void startsEmpty();
    void keepsValues_data() { implementations(); }
    void keepsValues();
    void readsOnlyTheTypeWritten_data() { implementations(); }
    void readsOnlyTheTypeWritten();
    void writingReplacesValueAndType_data() { implementations(); }
    void writingReplacesValueAndType();
    void removes_data() { implementations(); }
    void removes();
    void keepsOddTexts_data() { implementations(); }
    void keepsOddTexts();
    void keepsOddNumbers_data() { implementations(); }
    void keepsOddNumbers();
    void keepsDataOfEverySize_data() { implementations(); }
    void keepsDataOfEverySize();

private:
    static void implementations();

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<Preferences> m_preferences;
};

void PreferencesTest::implementations()
{
    QTest::addColumn<bool>("isReal");
    QTest::newRow("fake") << false;
    QTest::newRow("sqlite") << true;
}

void PreferencesTest::init()
{
    QFETCH(bool, isReal);
    m_directory = std::make_unique<QTemporaryDir>();
    if (isReal)
        m_preferences = std::make_unique<SqlitePreferences>(m_directory->filePath(u"preferences.sqlite"_s));
    else
        m_preferences = std::make_unique<FakePreferences>();
}

void PreferencesTest::cleanup()
{
    m_preferences.reset();
    m_directory.reset();
}

void PreferencesTest::startsEmpty()
{
    QVERIFY(!m_preferences->contains(u"key"_s));
    QVERIFY(!m_preferences->boolValue(u"key"_s));
    QVERIFY(!m_preferences->intValue(u"key"_s));
    QVERIFY(!m_preferences->doubleValue(u"key"_s));
    QVERIFY(!m_preferences->stringValue(u"key"_s));
    QVERIFY(!m_preferences->stringsValue(u"key"_s));
    QVERIFY(!m_preferences->dataValue(u"key"_s));
    m_preferences->remove(u"key"_s);
    QVERIFY(!m_preferences->contains(u"key"_s));
}

void PreferencesTest::keepsValues()
{
    m_preferences->setBool(u"bool"_s, true);
    m_preferences->setBool(u"no"_s, false);
    m_preferences->setInt(u"int"_s, -5);
    m_preferences->setDouble(u"double"_s, 0.1);
    m_preferences->setString(u"string"_s, u"夜曲"_s);
    m_preferences->setStrings(u"strings"_s, {u"周"_s, u"\"quoted\""_s, QString()});
    m_preferences->setData(u"data"_s, QByteArray("\0\xff binary", 9));
    QCOMPARE(m_preferences->boolValue(u"bool"_s), true);
    QCOMPARE(m_preferences->boolValue(u"no"_s), false);
    QCOMPARE(m_preferences->intValue(u"int"_s), -5);
    QCOMPARE(m_preferences->doubleValue(u"double"_s), 0.1);
    QCOMPARE(m_preferences->stringValue(u"string"_s), u"夜曲"_s);
    QCOMPARE(m_preferences->stringsValue(u"strings"_s), (QStringList{u"周"_s, u"\"quoted\""_s, QString()}));
    QCOMPARE(m_preferences->dataValue(u"data"_s), QByteArray("\0\xff binary", 9));
    QVERIFY(m_preferences->contains(u"no"_s));
}

void PreferencesTest::readsOnlyTheTypeWritten()
{
    m_preferences->setInt(u"int"_s, 1);
    QVERIFY(!m_preferences->boolValue(u"int"_s));
    QVERIFY(!m_preferences->stringValue(u"int"_s));
    QCOMPARE(m_preferences->doubleValue(u"int"_s), 1.0);
    m_preferences->setBool(u"bool"_s, true);
    QVERIFY(!m_preferences->intValue(u"bool"_s));
    QVERIFY(!m_preferences->doubleValue(u"bool"_s));
    m_preferences->setDouble(u"double"_s, 2.0);
    QVERIFY(!m_preferences->intValue(u"double"_s));
    m_preferences->setString(u"string"_s, u"1"_s);
    QVERIFY(!m_preferences->dataValue(u"string"_s));
    QVERIFY(!m_preferences->stringsValue(u"string"_s));
    m_preferences->setData(u"data"_s, "text");
    QVERIFY(!m_preferences->stringValue(u"data"_s));
}

void PreferencesTest::writingReplacesValueAndType()
{
    m_preferences->setString(u"key"_s, u"text"_s);
    m_preferences->setInt(u"key"_s, 3);
    QVERIFY(!m_preferences->stringValue(u"key"_s));
    QCOMPARE(m_preferences->intValue(u"key"_s), 3);
}

void PreferencesTest::removes()
{
    m_preferences->setInt(u"key"_s, 3);
    m_preferences->setInt(u"other"_s, 4);
    m_preferences->remove(u"key"_s);
    QVERIFY(!m_preferences->contains(u"key"_s));
    QVERIFY(!m_preferences->intValue(u"key"_s));
    QCOMPARE(m_preferences->intValue(u"other"_s), 4);
}

void PreferencesTest::keepsOddTexts()
{
    m_preferences->setString(u"empty"_s, u""_s);
    m_preferences->setString(u"null"_s, QString());
    m_preferences->setStrings(u"none"_s, {});
    m_preferences->setData(u"no bytes"_s, {});
    m_preferences->setString(u"zero"_s, u"a\0b"_s);
    m_preferences->setString(QString(), u"under no key"_s);
    QCOMPARE(m_preferences->stringValue(u"empty"_s), u""_s);
    QCOMPARE(m_preferences->stringValue(u"null"_s), u""_s);
    QCOMPARE(m_preferences->stringsValue(u"none"_s), QStringList());
    QCOMPARE(m_preferences->dataValue(u"no bytes"_s), QByteArray());
    QCOMPARE(m_preferences->stringValue(u"zero"_s), u"a\0b"_s);
    QCOMPARE(m_preferences->stringValue(u""_s), u"under no key"_s);
    QVERIFY(m_preferences->contains(u"null"_s));
}

void PreferencesTest::keepsOddNumbers()
{
    for (const qint64 number : {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()}) {
        m_preferences->setInt(u"int"_s, number);
        QCOMPARE(m_preferences->intValue(u"int"_s), number);
    }
    for (const double number : {std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min(),
                                std::numeric_limits<double>::infinity()}) {
        m_preferences->setDouble(u"double"_s, number);
        QCOMPARE(m_preferences->doubleValue(u"double"_s), number);
    }
    m_preferences->setDouble(u"double"_s, std::numeric_limits<double>::quiet_NaN());
    QVERIFY(std::isnan(m_preferences->doubleValue(u"double"_s).value_or(0)));
}

void PreferencesTest::keepsDataOfEverySize()
{
    for (const qsizetype size : {SqlitePreferences::lazyBytes, SqlitePreferences::lazyBytes + 1,
                                 SqlitePreferences::largeBytes, SqlitePreferences::largeBytes + 1}) {
        const QByteArray data(size, 'x');
        m_preferences->setData(u"data"_s, data);
        QVERIFY(m_preferences->contains(u"data"_s));
        QCOMPARE(m_preferences->dataValue(u"data"_s), data);
        QCOMPARE(m_preferences->loadData(u"data"_s).result(), data);
        QVERIFY(!m_preferences->stringValue(u"data"_s));
    }
    m_preferences->setData(u"data"_s, "small");
    QCOMPARE(m_preferences->dataValue(u"data"_s), "small");
    m_preferences->setData(u"data"_s, QByteArray(SqlitePreferences::largeBytes + 1, 'y'));
    m_preferences->remove(u"data"_s);
    QVERIFY(!m_preferences->contains(u"data"_s));
    QVERIFY(!m_preferences->dataValue(u"data"_s));
}

QTEST_GUILESS_MAIN(PreferencesTest)
#include "PreferencesTest.moc"
