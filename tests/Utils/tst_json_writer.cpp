// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/JsonWriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestJsonWriter : public QObject
{
    Q_OBJECT

private:
    template <typename Value>
    static QByteArray written(const Value &value)
    {
        JsonWriter writer;
        writer.beginObject();
        writer.member("k", value);
        writer.endObject();
        return writer.take();
    }

private Q_SLOTS:
    void membersKeepTheOrderOfTheCalls()
    {
        JsonWriter writer;
        writer.beginArray();
        writer.beginObject();
        writer.member("z", u"文"_s);
        writer.member("a", 1.5);
        writer.member("m", 3);
        writer.member("b", true);
        writer.memberUtf8("u", "字节"_ba);
        writer.endObject();
        writer.beginObject();
        writer.endObject();
        writer.beginArray();
        writer.endArray();
        writer.endArray();
        QCOMPARE(writer.text(), "[{\"z\":\"文\",\"a\":1.5,\"m\":3,\"b\":true,\"u\":\"字节\"},{},[]]"_ba);
    }

    void arraysCanBeMembersAndHoldTexts()
    {
        JsonWriter writer;
        writer.beginObject();
        writer.beginArray("none");
        writer.endArray();
        writer.beginArray("texts");
        writer.element(u"a"_s);
        writer.element(u""_s);
        writer.element(u"文"_s);
        writer.endArray();
        writer.beginArray("objects");
        writer.beginObject();
        writer.endObject();
        writer.beginObject();
        writer.endObject();
        writer.endArray();
        writer.member("last", 1);
        writer.endObject();
        QCOMPARE(writer.text(),
                 "{\"none\":[],\"texts\":[\"a\",\"\",\"文\"],\"objects\":[{},{}],\"last\":1}"_ba);
    }

    void takeStartsAnew()
    {
        JsonWriter writer;
        writer.beginArray();
        writer.endArray();
        QCOMPARE(writer.take(), "[]"_ba);
        QCOMPARE(writer.text(), QByteArray());
        writer.beginObject();
        writer.endObject();
        QCOMPARE(writer.take(), "{}"_ba);
    }

    void recordsWithoutAnArrayAreSeparated()
    {
        JsonWriter writer;
        for (int i = 0; i < 2; ++i) {
            writer.beginObject();
            writer.endObject();
        }
        QCOMPARE(writer.take(), "{},{}"_ba);
    }

    void texts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("empty") << QString(u""_s) << "\"\""_ba;
        QTest::newRow("null is empty") << QString() << "\"\""_ba;
        QTest::newRow("quotes") << u"a\"b\\c"_s << "\"a\\\"b\\\\c\""_ba;
        QTest::newRow("line ends") << u"\r\n\t"_s << "\"\\r\\n\\t\""_ba;
        QTest::newRow("control") << u"\u0001\u001f\b\f"_s << "\"\\u0001\\u001f\\u0008\\u000c\""_ba;
        QTest::newRow("zero") << QString(QChar(0)) << "\"\\u0000\""_ba;
        QTest::newRow("delete and slash stand") << u"\u007f/"_s << "\"\x7f/\""_ba;
        QTest::newRow("four bytes") << u"🎵"_s << "\"🎵\""_ba;
        QTest::newRow("line separator") << u"\u2028"_s << "\"\xe2\x80\xa8\""_ba;
    }
    void texts()
    {
        QFETCH(const QString, text);
        QFETCH(const QByteArray, json);
        QCOMPARE(written(text), "{\"k\":" + json + '}');
        const QJsonDocument read = QJsonDocument::fromJson(written(text));
        QCOMPARE(read.object().value(u"k"_s).toString(), text);
    }

    void halfACharacterLeavesTheTextValid()
    {
        const QByteArray json = written(QString(u"a"_s + QChar(0xD83C) + u"b"_s));
        const QString read = QJsonDocument::fromJson(json).object().value(u"k"_s).toString();
        QCOMPARE(read.size(), 3);
        QVERIFY(read.startsWith(u'a') && read.endsWith(u'b'));
    }

    void everyUnitOfTextComesBack()
    {
        QString text;
        for (char16_t unit = 1; unit < 0xD800; ++unit)
            text.append(QChar(unit));
        QCOMPARE(QJsonDocument::fromJson(written(text)).object().value(u"k"_s).toString(), text);
    }

    void numbers_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("zero") << 0.0 << "0"_ba;
        QTest::newRow("whole") << 180.0 << "180"_ba;
        QTest::newRow("fraction") << 180.25 << "180.25"_ba;
        QTest::newRow("shortest") << 0.1 << "0.1"_ba;
        QTest::newRow("a time") << 1772600767.25 << "1772600767.25"_ba;
        QTest::newRow("negative") << -1.5 << "-1.5"_ba;
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << "0"_ba;
        QTest::newRow("endless") << std::numeric_limits<double>::infinity() << "0"_ba;
        QTest::newRow("endless below") << -std::numeric_limits<double>::infinity() << "0"_ba;
    }
    void numbers()
    {
        QFETCH(const double, number);
        QFETCH(const QByteArray, json);
        QCOMPARE(written(number), "{\"k\":" + json + '}');
    }

    void everyNumberReadsBackTheSame()
    {
        for (const double number : {1e308, 5e-324, 1e22, 1e-7, 123456789.123456789, 0.1 + 0.2, 1.0 / 3}) {
            const QJsonValue read = QJsonDocument::fromJson(written(number)).object().value(u"k"_s);
            QVERIFY(read.isDouble());
            QVERIFY(read.toDouble() == number);
        }
    }

    void integers()
    {
        QCOMPARE(written(0), "{\"k\":0}"_ba);
        QCOMPARE(written(std::numeric_limits<int>::min()), "{\"k\":-2147483648}"_ba);
        QCOMPARE(written(std::numeric_limits<int>::max()), "{\"k\":2147483647}"_ba);
        QCOMPARE(written(false), "{\"k\":false}"_ba);
    }
};

QTEST_GUILESS_MAIN(TestJsonWriter)
#include "tst_json_writer.moc"
