// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/DecodingError.h"
#include "Models/NavidromeConfig.h"

#include <QJsonDocument>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString uuid = u"0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0"_s;

NavidromeConfig complete()
{
    return {.id = QUuid::fromString(uuid),
            .name = u"家"_s,
            .serverURL = u"https://music.example"_s,
            .apiBasePath = u"/sub/rest"_s,
            .username = u"听众"_s,
            .isEnabled = false,
            .lastSyncDate = QDateTime(QDate(2001, 1, 1), QTime(0, 1, 0, 500), Qt::UTC)};
}

NavidromeConfig withAddress(const QString &serverURL, const QString &apiBasePath)
{
    NavidromeConfig config;
    config.serverURL = serverURL;
    config.apiBasePath = apiBasePath;
    return config;
}

} // namespace

class TestNavidromeConfig : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newServerHasItsDefaults()
    {
        const NavidromeConfig config;
        QVERIFY(!config.id.isNull());
        QVERIFY(config.id != NavidromeConfig().id);
        QCOMPARE(config.apiBasePath, u"/rest"_s);
        QVERIFY(config.isEnabled);
        QVERIFY(!config.lastSyncDate);
    }

    void passwordKeyHoldsTheUpperCaseId()
    {
        QCOMPARE(complete().passwordKeychainKey(), u"navidrome_password_"_s + uuid);
    }

    void equalityAndHashCoverEveryField_data()
    {
        QTest::addColumn<NavidromeConfig>("other");
        NavidromeConfig config = complete();
        const auto row = [&config](const char *name) {
            QTest::newRow(name) << config;
            config = complete();
        };
        config.id = QUuid::createUuid();
        row("id");
        config.name = u"办公室"_s;
        row("name");
        config.serverURL += u'/';
        row("serverURL");
        config.apiBasePath = u"/rest"_s;
        row("apiBasePath");
        config.username = u"别人"_s;
        row("username");
        config.isEnabled = true;
        row("isEnabled");
        config.lastSyncDate = std::nullopt;
        row("lastSyncDate");
    }
    void equalityAndHashCoverEveryField()
    {
        QFETCH(const NavidromeConfig, other);
        QVERIFY(other != complete());
        QVERIFY(qHash(other) != qHash(complete()));
        QCOMPARE(complete(), complete());
        QCOMPARE(qHash(complete()), qHash(complete()));
    }

    void rootOfTheApi_data()
    {
        QTest::addColumn<QString>("serverURL");
        QTest::addColumn<QString>("apiBasePath");
        QTest::addColumn<QString>("root");
        const QString server = u"http://music.example:4533"_s;
        QTest::newRow("plain") << server << u"/rest"_s << u"http://music.example:4533/rest"_s;
        QTest::newRow("a slash at the end goes") << server + u'/' << u"/rest"_s << server + u"/rest"_s;
        QTest::newRow("of two slashes one goes") << server + u"//"_s << u"/rest"_s << server + u"//rest"_s;
        QTest::newRow("no path is the usual one") << server << QString() << server + u"/rest"_s;
        QTest::newRow("a path of blanks too") << server << u" \n"_s << server + u"/rest"_s;
        QTest::newRow("a path gets its slash") << server << u"sub/rest"_s << server + u"/sub/rest"_s;
        QTest::newRow("blanks around both")
            << u"  "_s + server + u"/ \t\n"_s << u" api "_s << server + u"/api"_s;
        QTest::newRow("a server below a path")
            << u"https://nas.example/music/"_s << u"/rest"_s << u"https://nas.example/music/rest"_s;
        QTest::newRow("escapes stay")
            << u"http://nas.example/a%2Fb%20c"_s << u"/rest"_s << u"http://nas.example/a%2Fb%20c/rest"_s;
        QTest::newRow("Chinese") << u"http://nas.example/音乐"_s << u"/rest"_s
                                 << u"http://nas.example/%E9%9F%B3%E4%B9%90/rest"_s;
        QTest::newRow("IPv6") << u"http://[::1]:4533"_s << u"/rest"_s << u"http://[::1]:4533/rest"_s;
    }
    void rootOfTheApi()
    {
        QFETCH(const QString, serverURL);
        QFETCH(const QString, apiBasePath);
        QFETCH(const QString, root);
        const std::optional<QUrl> url = withAddress(serverURL, apiBasePath).apiBaseURL();
        QVERIFY(url);
        QCOMPARE(QString::fromLatin1(url->toEncoded()), root);
    }

    void whatIsNoAddressHasNoRoot_data()
    {
        QTest::addColumn<QString>("serverURL");
        QTest::newRow("a blank in the host") << u"http://my music.example"_s;
        QTest::newRow("a port that is none") << u"http://music.example:port"_s;
        QTest::newRow("a port beyond the last") << u"http://music.example:70000"_s;
        QTest::newRow("an open bracket") << u"http://[::1"_s;
        QTest::newRow("a number and a port") << u"192.168.1.5:4533"_s;
    }
    void whatIsNoAddressHasNoRoot()
    {
        QFETCH(const QString, serverURL);
        QVERIFY(!withAddress(serverURL, u"/rest"_s).apiBaseURL());
    }

    void jsonHoldsTheKeysOfTheRecord()
    {
        const QJsonObject expected{{u"id"_s, uuid},
                                   {u"name"_s, u"家"_s},
                                   {u"serverURL"_s, u"https://music.example"_s},
                                   {u"apiBasePath"_s, u"/sub/rest"_s},
                                   {u"username"_s, u"听众"_s},
                                   {u"isEnabled"_s, false},
                                   {u"lastSyncDate"_s, 60.5}};
        QCOMPARE(complete().toJson(), expected);
    }

    void jsonLeavesOutTheDateThatIsAbsent()
    {
        QVERIFY(!NavidromeConfig().toJson().contains(u"lastSyncDate"_s));
    }

    void jsonComesBack()
    {
        for (const NavidromeConfig &config : {complete(), NavidromeConfig()})
            QCOMPARE(NavidromeConfig::fromJson(config.toJson()), config);
        QJsonObject withNull = complete().toJson();
        withNull[u"lastSyncDate"_s] = QJsonValue::Null;
        QVERIFY(!NavidromeConfig::fromJson(withNull).lastSyncDate);
    }

    void recordThatLacksAKeyOrHasItMistypedFails_data()
    {
        QTest::addColumn<QString>("key");
        for (const char *key : {"id", "name", "serverURL", "apiBasePath", "username", "isEnabled"})
            QTest::newRow(key) << QString::fromLatin1(key);
    }
    void recordThatLacksAKeyOrHasItMistypedFails()
    {
        QFETCH(const QString, key);
        QJsonObject object = complete().toJson();
        object[key] = 1;
        QVERIFY_THROWS_EXCEPTION(DecodingError, NavidromeConfig::fromJson(object));
        object[key] = QJsonValue::Null;
        QVERIFY_THROWS_EXCEPTION(DecodingError, NavidromeConfig::fromJson(object));
        object.remove(key);
        QVERIFY_THROWS_EXCEPTION(DecodingError, NavidromeConfig::fromJson(object));
    }
};

QTEST_GUILESS_MAIN(TestNavidromeConfig)
#include "tst_navidrome_config.moc"
