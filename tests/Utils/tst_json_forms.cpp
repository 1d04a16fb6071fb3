// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/JsonForms.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestJsonForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dates_data()
    {
        QTest::addColumn<QDateTime>("date");
        QTest::addColumn<double>("seconds");
        QTest::newRow("reference") << QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC) << 0.0;
        QTest::newRow("a day later") << QDateTime(QDate(2001, 1, 2), QTime(0, 0), Qt::UTC) << 86400.0;
        QTest::newRow("before") << QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC) << -978307200.0;
        QTest::newRow("milliseconds") << QDateTime(QDate(2001, 1, 1), QTime(0, 0, 1, 250), Qt::UTC) << 1.25;
    }
    void dates()
    {
        QFETCH(const QDateTime, date);
        QFETCH(const double, seconds);
        QCOMPARE(dateToJson(date), QJsonValue(seconds));
        QCOMPARE(dateFromJson(QJsonValue(seconds)), date);
    }

    void dateOfAnotherZoneIsTheSameMoment()
    {
        const QDateTime utc(QDate(2026, 3, 4), QTime(5, 6, 7, 89), Qt::UTC);
        QCOMPARE(dateToJson(utc.toOffsetFromUtc(8 * 3600)), dateToJson(utc));
    }

    void everyMillisecondComesBack()
    {
        const QDateTime start(QDate(2026, 3, 4), QTime(5, 6, 7), Qt::UTC);
        for (int ms = 0; ms < 1000; ++ms)
            QCOMPARE(dateFromJson(dateToJson(start.addMSecs(ms))), start.addMSecs(ms));
    }

    void whatIsNoDate_data()
    {
        QTest::addColumn<QJsonValue>("value");
        QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined);
        QTest::newRow("null") << QJsonValue();
        QTest::newRow("text") << QJsonValue(u"0"_s);
        QTest::newRow("truth") << QJsonValue(true);
        QTest::newRow("list") << QJsonValue(QJsonArray{0});
        QTest::newRow("record") << QJsonValue(QJsonObject());
        QTest::newRow("far future") << QJsonValue(1e300);
        QTest::newRow("far past") << QJsonValue(-1e300);
    }
    void whatIsNoDate()
    {
        QFETCH(const QJsonValue, value);
        QVERIFY(!dateFromJson(value));
    }

    void bytes()
    {
        QByteArray all;
        for (int i = 0; i < 256; ++i)
            all.append(static_cast<char>(i));
        QCOMPARE(bytesFromJson(bytesToJson(all)), all);
        QCOMPARE(bytesToJson("Man"), QJsonValue(u"TWFu"_s));
        QCOMPARE(bytesToJson(QByteArray("M")), QJsonValue(u"TQ=="_s));
        const std::optional<QByteArray> empty = bytesFromJson(bytesToJson(QByteArray()));
        QVERIFY(empty && empty->isEmpty());
    }

    void whatAreNoBytes()
    {
        for (const QJsonValue &value :
             {QJsonValue(QJsonValue::Undefined), QJsonValue(), QJsonValue(1), QJsonValue(u"T*Fu"_s),
              QJsonValue(u"词词词词"_s), QJsonValue(u"TWFu\n"_s)})
            QVERIFY(!bytesFromJson(value));
    }
};

QTEST_GUILESS_MAIN(TestJsonForms)
#include "tst_json_forms.moc"
