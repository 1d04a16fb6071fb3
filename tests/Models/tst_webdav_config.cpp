// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/DecodingError.h"
#include "Models/WebDAVConfig.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString uuid = u"0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0"_s;

WebDAVConfig server(const QString &serverURL, std::optional<int> port = std::nullopt)
{
    WebDAVConfig config;
    config.name = u"服务器"_s;
    config.serverURL = serverURL;
    config.port = port;
    config.username = u"user"_s;
    config.basePath = u"/music"_s;
    return config;
}

WebDAVConfig complete()
{
    WebDAVConfig config = server(u"https://h.example"_s, 5006);
    config.id = QUuid::fromString(uuid);
    config.isEnabled = false;
    config.lastSyncDate = QDateTime(QDate(2001, 1, 1), QTime(0, 1, 0, 500), Qt::UTC);
    return config;
}

} // namespace

class TestWebDAVConfig : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newServerHasItsDefaults();
    void passwordKeyHoldsTheUpperCaseId();
    void equalityAndHashUseTheIdAlone();

    void jsonHoldsTheKeysOfTheRecord();
    void jsonLeavesOutWhatIsAbsent();
    void jsonHoldsNoPassword();
    void jsonComesBack();
    void nullOptionalKeysMeanNone();
    void recordThatLacksAKeyFails_data();
    void recordThatLacksAKeyFails();
    void recordWithAMistypedKeyFails_data();
    void recordWithAMistypedKeyFails();

    void factories();
    void exampleStaysTheSame();
};

void TestWebDAVConfig::newServerHasItsDefaults()
{
    const WebDAVConfig config;
    QVERIFY(!config.id.isNull());
    QVERIFY(config.id != WebDAVConfig().id);
    QVERIFY(!config.port);
    QCOMPARE(config.basePath, u"/"_s);
    QVERIFY(config.isEnabled);
    QVERIFY(!config.lastSyncDate);
}

void TestWebDAVConfig::passwordKeyHoldsTheUpperCaseId()
{
    WebDAVConfig config;
    config.id = QUuid::fromString(uuid.toLower());
    QCOMPARE(config.uuidText(), uuid);
    QCOMPARE(config.passwordKeychainKey(), u"webdav_password_"_s + uuid);
}

void TestWebDAVConfig::equalityAndHashUseTheIdAlone()
{
    const WebDAVConfig config = server(u"https://a.example"_s);
    WebDAVConfig same = server(u"http://b.example"_s, 1);
    same.id = config.id;
    QCOMPARE(same, config);
    QCOMPARE(qHash(same), qHash(config));
    WebDAVConfig other = config;
    other.id = QUuid::createUuid();
    QVERIFY(other != config);
}

void TestWebDAVConfig::jsonHoldsTheKeysOfTheRecord()
{
    const QJsonObject expected{
        {u"id"_s, uuid},         {u"name"_s, u"服务器"_s},   {u"serverURL"_s, u"https://h.example"_s},
        {u"port"_s, 5006},       {u"username"_s, u"user"_s}, {u"basePath"_s, u"/music"_s},
        {u"isEnabled"_s, false}, {u"lastSyncDate"_s, 60.5}};
    QCOMPARE(complete().toJson(), expected);
}

void TestWebDAVConfig::jsonLeavesOutWhatIsAbsent()
{
    const QJsonObject object = server(u"https://h.example"_s).toJson();
    QCOMPARE(object.keys(),
             (QStringList{u"basePath"_s, u"id"_s, u"isEnabled"_s, u"name"_s, u"serverURL"_s, u"username"_s}));
}

void TestWebDAVConfig::jsonHoldsNoPassword()
{
    const WebDAVConfig config = complete();
    QString line;
    QVERIFY(config.buildAuthenticatedURL(u"/a"_s, u"geheim"_s, line));
    const QByteArray text = QJsonDocument(config.toJson()).toJson();
    QVERIFY(!text.contains("geheim"));
    QVERIFY(!text.contains("password"));
}

void TestWebDAVConfig::jsonComesBack()
{
    for (const WebDAVConfig &config : {complete(), server(u"x"_s)}) {
        const WebDAVConfig read = WebDAVConfig::fromJson(config.toJson());
        QCOMPARE(read.id, config.id);
        QCOMPARE(read.name, config.name);
        QCOMPARE(read.serverURL, config.serverURL);
        QCOMPARE(read.port, config.port);
        QCOMPARE(read.username, config.username);
        QCOMPARE(read.basePath, config.basePath);
        QCOMPARE(read.isEnabled, config.isEnabled);
        QCOMPARE(read.lastSyncDate, config.lastSyncDate);
    }
}

void TestWebDAVConfig::nullOptionalKeysMeanNone()
{
    QJsonObject object = complete().toJson();
    object[u"port"_s] = QJsonValue::Null;
    object[u"lastSyncDate"_s] = QJsonValue::Null;
    QVERIFY(!WebDAVConfig::fromJson(object).port);
    QVERIFY(!WebDAVConfig::fromJson(object).lastSyncDate);
}

void TestWebDAVConfig::recordThatLacksAKeyFails_data()
{
    QTest::addColumn<QString>("key");
    for (const char *key : {"id", "name", "serverURL", "username", "basePath", "isEnabled"})
        QTest::newRow(key) << QString::fromLatin1(key);
}

void TestWebDAVConfig::recordThatLacksAKeyFails()
{
    QFETCH(const QString, key);
    QJsonObject object = complete().toJson();
    object.remove(key);
    try {
        WebDAVConfig::fromJson(object);
        QFAIL("no error");
    } catch (const DecodingError &error) {
        QVERIFY(QString::fromUtf8(error.what()).contains(key));
    }
}

void TestWebDAVConfig::recordWithAMistypedKeyFails_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    QTest::newRow("id") << u"id"_s << QJsonValue(u"no id"_s);
    QTest::newRow("name") << u"name"_s << QJsonValue(1);
    QTest::newRow("null name") << u"name"_s << QJsonValue();
    QTest::newRow("port as text") << u"port"_s << QJsonValue(u"5006"_s);
    QTest::newRow("part of a port") << u"port"_s << QJsonValue(5006.5);
    QTest::newRow("endless port") << u"port"_s << QJsonValue(1e300);
    QTest::newRow("isEnabled") << u"isEnabled"_s << QJsonValue(1);
    QTest::newRow("date") << u"lastSyncDate"_s << QJsonValue(u"2024-01-01"_s);
    QTest::newRow("endless date") << u"lastSyncDate"_s << QJsonValue(1e300);
}

void TestWebDAVConfig::recordWithAMistypedKeyFails()
{
    QFETCH(const QString, key);
    QFETCH(const QJsonValue, value);
    QJsonObject object = complete().toJson();
    object[key] = value;
    QVERIFY_THROWS_EXCEPTION(DecodingError, WebDAVConfig::fromJson(object));
}

void TestWebDAVConfig::factories()
{
    const WebDAVConfig cloud = WebDAVConfig::jianguoyunPreset(u"me"_s);
    QCOMPARE(cloud.name, u"坚果云"_s);
    QCOMPARE(QUrl(cloud.serverURL).scheme(), u"https"_s);
    QVERIFY(!cloud.port);
    QCOMPARE(cloud.username, u"me"_s);
    QCOMPARE(cloud.basePath, u"/dav"_s);
    QCOMPARE(WebDAVConfig::jianguoyunPreset(u"me"_s, u"/dav/我的音乐"_s).basePath, u"/dav/我的音乐"_s);

    const WebDAVConfig own = WebDAVConfig::nextcloudPreset(u"https://n.example"_s, u"me"_s);
    QCOMPARE(own.name, u"NextCloud"_s);
    QCOMPARE(own.serverURL, u"https://n.example"_s);
    QVERIFY(!own.port);
    QCOMPARE(own.username, u"me"_s);
    QCOMPARE(own.basePath, u"/remote.php/dav/files/me"_s);

    const WebDAVConfig nas = WebDAVConfig::synologyPreset(u"https://s.example"_s, u"me"_s);
    QCOMPARE(nas.name, u"群晖 NAS"_s);
    QCOMPARE(nas.serverURL, u"https://s.example"_s);
    QCOMPARE(nas.port, 5006);
    QCOMPARE(nas.username, u"me"_s);
    QCOMPARE(nas.basePath, u"/me"_s);
    QCOMPARE(WebDAVConfig::synologyPreset(u"http://s.example"_s, u"me"_s, false).port, 5005);
    QVERIFY(nas.id != WebDAVConfig::synologyPreset(u"https://s.example"_s, u"me"_s).id);
}

void TestWebDAVConfig::exampleStaysTheSame()
{
    const WebDAVConfig &example = WebDAVConfig::example();
    QCOMPARE(example.id, WebDAVConfig::example().id);
    QCOMPARE(example.name, u"示例服务器"_s);
    QVERIFY(!example.port);
    QCOMPARE(example.username, u"user"_s);
    QCOMPARE(example.basePath, u"/music"_s);
    QVERIFY(example.baseURL());
    QVERIFY(example.baseURL()->host().endsWith(u".example.com"_s));
}

QTEST_GUILESS_MAIN(TestWebDAVConfig)
#include "tst_webdav_config.moc"
