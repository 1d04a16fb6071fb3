// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/CassetteConfig.h"

#include <QJsonDocument>
#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestCassetteConfig : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isWrittenWithItsThreeNames();
    void survivesWritingAndReading_data();
    void survivesWritingAndReading();
    void whatElseIsThereIsLeftAlone();
    void whatIsNoMapIsNothing_data();
    void whatIsNoMapIsNothing();
    void anEmptyMapIsOne();
    void stylesOfALaterVersionAreKept();
};

void TestCassetteConfig::isWrittenWithItsThreeNames()
{
    const QByteArray bytes = encodedConfigs({{u"style1"_s, {0.18F, 0.25F, -0.2F}}});
    QCOMPARE(bytes, R"({"style1":{"offsetX":0.25,"offsetY":-0.2,"scale":0.18}})");
}

void TestCassetteConfig::survivesWritingAndReading_data()
{
    QTest::addColumn<float>("value");
    QTest::newRow("a tenth") << 0.1F;
    QTest::newRow("a third") << 1.0F / 3;
    QTest::newRow("negative") << -0.123456789F;
    QTest::newRow("the smallest") << std::numeric_limits<float>::denorm_min();
    QTest::newRow("the largest") << std::numeric_limits<float>::max();
    QTest::newRow("the least") << std::numeric_limits<float>::lowest();
}

void TestCassetteConfig::survivesWritingAndReading()
{
    QFETCH(const float, value);
    const CassetteConfigs configs{{u"default"_s, {value, 0, 1}}, {u"none"_s, {1, value, value}}};
    const std::optional<CassetteConfigs> read = decodedConfigs(encodedConfigs(configs));
    QVERIFY(read);
    QVERIFY(*read == configs);
}

void TestCassetteConfig::whatElseIsThereIsLeftAlone()
{
    const std::optional<CassetteConfigs> read = decodedConfigs(
        R"({"style2":{"scale":0.3,"offsetX":0,"offsetY":0.1,"rotation":"left","more":{"scale":9}}})");
    QVERIFY(read);
    QVERIFY((*read == CassetteConfigs{{u"style2"_s, {0.3F, 0, 0.1F}}}));
}

void TestCassetteConfig::whatIsNoMapIsNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray good = R"("style1":{"scale":0.3,"offsetX":0,"offsetY":0})";
    QTest::newRow("no bytes") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("\x89PNG\r\n");
    QTest::newRow("cut off") << QByteArray("{" + good);
    QTest::newRow("a list") << QByteArray("[{" + good + "}]");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("a field is missing") << QByteArray("{" + good + R"(,"style2":{"scale":0.3,"offsetX":0}})");
    QTest::newRow("a field is null") << QByteArray("{" + good +
                                                   R"(,"style2":{"scale":null,"offsetX":0,"offsetY":0}})");
    QTest::newRow("a field is a text")
        << QByteArray("{" + good + R"(,"style2":{"scale":"0.3","offsetX":0,"offsetY":0}})");
    QTest::newRow("a field is a truth")
        << QByteArray("{" + good + R"(,"style2":{"scale":true,"offsetX":0,"offsetY":0}})");
    QTest::newRow("beyond every float")
        << QByteArray("{" + good + R"(,"style2":{"scale":1e39,"offsetX":0,"offsetY":0}})");
    QTest::newRow("an entry is a number") << QByteArray("{" + good + R"(,"style2":0.3})");
    QTest::newRow("an entry is null") << QByteArray("{" + good + R"(,"style2":null})");
    QTest::newRow("too deep") << QByteArray("{\"a\":" + QByteArray(5000, '['));
}

void TestCassetteConfig::whatIsNoMapIsNothing()
{
    QFETCH(const QByteArray, bytes);
    QVERIFY(!decodedConfigs(bytes));
}

void TestCassetteConfig::anEmptyMapIsOne()
{
    QCOMPARE(encodedConfigs({}), "{}");
    const std::optional<CassetteConfigs> read = decodedConfigs("{}");
    QVERIFY(read);
    QVERIFY(read->isEmpty());
}

void TestCassetteConfig::stylesOfALaterVersionAreKept()
{
    const QByteArray bytes = R"({"style9":{"offsetX":0,"offsetY":0,"scale":0.5}})";
    const std::optional<CassetteConfigs> read = decodedConfigs(bytes);
    QVERIFY(read);
    QCOMPARE(encodedConfigs(*read), bytes);
}

QTEST_APPLESS_MAIN(TestCassetteConfig)
#include "tst_cassette_config.moc"
