// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/DecodingError.h"
#include "Models/JsonFields.h"

#include <QJsonDocument>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

QJsonObject object(const char *text)
{
    return QJsonDocument::fromJson(text).object();
}

/// What a reader says of a value under "k": "none", "throws", or the value.
template <typename Read>
QString told(const char *value, Read read)
{
    try {
        const auto result = read(object(QByteArray("{\"k\":") + value + '}'), "k"_L1);
        return result ? QVariant::fromValue(*result).toString() : u"none"_s;
    } catch (const DecodingError &) {
        return u"throws"_s;
    }
}

} // namespace

class JsonFieldsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void wholeNumbersAreHeldToTheLetter_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QString>("asInt");
        QTest::addColumn<QString>("asInt64");
        QTest::newRow("one") << QByteArray("180") << u"180"_s << u"180"_s;
        QTest::newRow("written as a fraction") << QByteArray("180.0") << u"180"_s << u"180"_s;
        QTest::newRow("a fraction") << QByteArray("180.5") << u"throws"_s << u"throws"_s;
        QTest::newRow("beyond an int") << QByteArray("4294967296") << u"throws"_s << u"4294967296"_s;
        QTest::newRow("a text") << QByteArray("\"180\"") << u"throws"_s << u"throws"_s;
        QTest::newRow("null") << QByteArray("null") << u"none"_s << u"none"_s;
        QTest::newRow("zero") << QByteArray("0") << u"0"_s << u"0"_s;
        QTest::newRow("true") << QByteArray("true") << u"throws"_s << u"throws"_s;
    }
    void wholeNumbersAreHeldToTheLetter()
    {
        QFETCH(QByteArray, value);
        QTEST(told(value.constData(), json::optionalInt), "asInt");
        QTEST(told(value.constData(), json::optionalInt64), "asInt64");
    }

    void oneElementOfAnotherTypeFailsAList()
    {
        QCOMPARE(json::optionalTexts(object(R"({"k":["a","b"]})"), "k"_L1), (QStringList{u"a"_s, u"b"_s}));
        QVERIFY(!json::optionalTexts(object(R"({"k":null})"), "k"_L1));
        QVERIFY(!json::optionalTexts(object("{}"), "k"_L1));
        QVERIFY_THROWS_EXCEPTION(DecodingError, json::optionalTexts(object(R"({"k":["a",1]})"), "k"_L1));
        QVERIFY_THROWS_EXCEPTION(DecodingError, json::optionalTexts(object(R"({"k":"a"})"), "k"_L1));
        QCOMPARE(json::optionalObjects(object(R"({"k":[{},{"a":1}]})"), "k"_L1)->size(), 2);
        QVERIFY_THROWS_EXCEPTION(DecodingError, json::optionalObjects(object(R"({"k":[{},null]})"), "k"_L1));
    }

    void aRequiredValueMustBeThere()
    {
        QVERIFY_THROWS_EXCEPTION(DecodingError, json::requiredText(object("{}"), "k"_L1));
        QVERIFY_THROWS_EXCEPTION(DecodingError, json::requiredText(object(R"({"k":null})"), "k"_L1));
        QVERIFY_THROWS_EXCEPTION(DecodingError, json::requiredBool(object(R"({"k":1})"), "k"_L1));
        QVERIFY_THROWS_EXCEPTION(DecodingError, json::requiredUuid(object(R"({"k":"no id"})"), "k"_L1));
        QVERIFY_THROWS_EXCEPTION(DecodingError, json::requiredObject(object(R"({"k":[]})"), "k"_L1));
        QCOMPARE(json::requiredText(object(R"({"k":"v"})"), "k"_L1), u"v"_s);
    }
};

QTEST_GUILESS_MAIN(JsonFieldsTest)
#include "tst_json_fields.moc"
