// SPDX-License-Identifier: GPL-3.0-or-later
// Servers and connections.
#include "Services/Navidrome/NavidromeFixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString ping = u"ping.view"_s;

/// What the tries of a server come to: "" for success, else the message.
QString told(const std::optional<NavidromeService::Result> &result)
{
    if (!result)
        return u"(no end)"_s;
    return *result ? QString() : result->error().message;
}

} // namespace

class TestNavidromeService : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<NavidromeFixture> m_fixture;

    NavidromeService &service() { return m_fixture->service(); }
    QString test(const NavidromeConfig &config, const QString &password = u"sesame"_s)
    {
        return told(m_fixture->serve(service().testConnection(config, password)));
    }
    QString connectTo(const NavidromeConfig &config)
    {
        return told(m_fixture->serve(service().connectTo(config)));
    }
    static void addFailures()
    {
        QTest::addColumn<MadeAnswer>("answer");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, const FakeHttpClient::Result &answer, const QString &message) {
            QTest::newRow(name) << MadeAnswer{answer} << message;
        };
        const auto refusal = [](const QByteArray &error) {
            return webAnswer(R"({"subsonic-response":{"status":"failed")" + error + "}}");
        };
        const QString unreadable = u"无法识别服务器的回答"_s;
        row("not found", webAnswer("no", 404), u"连接失败"_s);
        row("a fault of the server", webAnswer(subsonicAnswer(), 500), u"连接失败"_s);
        row("not modified", webAnswer({}, 304), u"连接失败"_s);
        row("refused", webAnswer(subsonicRefusal("Wrong username or password")),
            u"Wrong username or password"_s);
        row("refused in Chinese", webAnswer(subsonicRefusal("用户名或密码错误")), u"用户名或密码错误"_s);
        row("refused without an error", refusal({}), u"请求失败"_s);
        row("refused with null", refusal(R"(,"error":null)"), u"请求失败"_s);
        row("refused without a message", refusal(R"(,"error":{"code":0})"), u"请求失败"_s);
        row("refused with an empty message", refusal(R"(,"error":{"message":""})"), u"请求失败"_s);
        row("another status", webAnswer(R"({"subsonic-response":{"status":"OK"}})"), u"请求失败"_s);
        row("empty", webAnswer({}), unreadable);
        row("a page to sign in at", webAnswer("<html><body>登录</body></html>"), unreadable);
        row("no UTF-8", webAnswer("{\"subsonic-response\":{\"status\":\"ok\",\"version\":\"\xff\"}}"),
            unreadable);
        row("a number as status", webAnswer(R"({"subsonic-response":{"status":1}})"), unreadable);
        row("null", webAnswer(R"({"subsonic-response":null})"), unreadable);
        row("nobody there", noAnswer(u"连接被拒绝"_s), u"连接被拒绝"_s);
        row("silence", noAnswer(u"连接超时"_s, HttpError::Kind::timeout), u"连接超时"_s);
    }

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<NavidromeFixture>(); }
    void cleanup()
    {
        // This service says nothing: its addresses are credentials.
        for (const QString &line : m_fixture->console().take())
            QVERIFY2(line.contains(u"Keychain"_s), qPrintable(line));
        m_fixture.reset();
    }

    void aNewServiceHasNothing()
    {
        m_fixture->start();
        QVERIFY(service().configs().isEmpty());
        QVERIFY(!service().currentConfig());
        QVERIFY(!service().isConnected());
        QVERIFY(!service().isTesting());
        QVERIFY(!service().isSearching());
        QVERIFY(!service().error());
        QVERIFY(service().songs().isEmpty());
    }

    void serversOfTheLastRunAreThereAtOnce()
    {
        const QList<NavidromeConfig> configs{m_fixture->makeConfig(u"a"_s), m_fixture->makeConfig(u"b"_s)};
        m_fixture->store(configs);
        m_fixture->start();
        QCOMPARE(service().configs(), configs);
        QVERIFY(m_fixture->web().sent.isEmpty());
    }

    void aDamagedListOfServersIsEmpty_data()
    {
        QTest::addColumn<QByteArray>("text");
        const QByteArray good =
            QJsonDocument(m_fixture ? QJsonObject() : NavidromeConfig().toJson()).toJson();
        QTest::newRow("no JSON") << QByteArray("[{");
        QTest::newRow("no list") << QByteArray("{}");
        QTest::newRow("no record") << QByteArray("[1]");
        QTest::newRow("an incomplete record") << "[" + good + R"(,{"name":"x"}])";
    }
    void aDamagedListOfServersIsEmpty()
    {
        QFETCH(const QByteArray, text);
        m_fixture->machine().preferences().setData(u"navidrome_configs"_s, text);
        m_fixture->start();
        QVERIFY(service().configs().isEmpty());
    }

    void savingStoresThePasswordThenTheServer()
    {
        m_fixture->start();
        const NavidromeConfig config = m_fixture->makeConfig();
        QSignalSpy changes(&service(), &NavidromeService::configsChanged);
        m_fixture->machine().secrets().hold();
        auto saving = service().saveConfig(config, u"p:w@/夜"_s);
        QTRY_COMPARE(m_fixture->machine().secrets().heldCalls(), 1);
        QVERIFY(service().configs().isEmpty());
        m_fixture->machine().secrets().release();
        QVERIFY(await(std::move(saving)));
        QCOMPARE(m_fixture->machine().secrets().secret(config.passwordKeychainKey()), "p:w@/夜");
        QCOMPARE(service().configs(), QList<NavidromeConfig>{config});
        QCOMPARE(m_fixture->storedConfigs(), QList<NavidromeConfig>{config});
        QCOMPARE(changes.count(), 1);
        QVERIFY(!m_fixture->machine().preferences().dataValue(u"navidrome_configs"_s)->contains("p:w@"));
    }

    void aServerIsSavedThoughItsPasswordIsNot()
    {
        m_fixture->start();
        m_fixture->machine().secrets().refuseAll(SecretStatus::interactionNotAllowed);
        const NavidromeConfig config = m_fixture->makeConfig();
        QVERIFY(await(service().saveConfig(config, u"secret"_s)));
        QCOMPARE(m_fixture->storedConfigs(), QList<NavidromeConfig>{config});
    }

    void savingAServerThatIsListedKeepsItsPlace()
    {
        NavidromeConfig first = m_fixture->makeConfig(u"a"_s);
        const NavidromeConfig second = m_fixture->makeConfig(u"b"_s);
        m_fixture->store({first, second});
        m_fixture->start();
        first.name = u"改"_s;
        first.apiBasePath = u"/music/rest"_s;
        QVERIFY(await(service().saveConfig(first, u"new"_s)));
        QCOMPARE(service().configs(), (QList<NavidromeConfig>{first, second}));
        QCOMPARE(m_fixture->storedConfigs(), (QList<NavidromeConfig>{first, second}));
        QCOMPARE(m_fixture->machine().secrets().secret(first.passwordKeychainKey()), "new");
    }

    void deletingTakesThePasswordAndTheServer()
    {
        const NavidromeConfig config = m_fixture->makeConfig(u"a"_s);
        const NavidromeConfig other = m_fixture->makeConfig(u"b"_s);
        m_fixture->store({config, other});
        m_fixture->start();
        // The screen may hold an older state of it.
        NavidromeConfig shown = config;
        shown.name = u"以前的名称"_s;
        QVERIFY(await(service().deleteConfig(shown)));
        QCOMPARE(service().configs(), QList<NavidromeConfig>{other});
        QCOMPARE(m_fixture->storedConfigs(), QList<NavidromeConfig>{other});
        QCOMPARE(m_fixture->machine().secrets().secret(config.passwordKeychainKey()), QByteArray());
        QCOMPARE(m_fixture->machine().secrets().secret(other.passwordKeychainKey()), "sesame");
    }

    void deletingTheConnectedServerDisconnectsAndLeavesTheSongs()
    {
        const NavidromeConfig config = m_fixture->startConnected();
        m_fixture->addAnswer(u"getRandomSongs.view"_s, webAnswer(randomSongsAnswer({u"一"_s})));
        QVERIFY(m_fixture->serve(service().loadDefaultSongs()));
        QVERIFY(await(service().deleteConfig(config)));
        QVERIFY(!service().isConnected());
        QVERIFY(!service().currentConfig());
        QCOMPARE(m_fixture->titles(), QStringList{u"一"_s});
    }

    void deletingAnotherServerLeavesTheConnection()
    {
        const NavidromeConfig config = m_fixture->startConnected();
        QVERIFY(await(service().deleteConfig(m_fixture->makeConfig(u"other"_s))));
        QVERIFY(service().isConnected());
        QCOMPARE(service().currentConfig(), config);
    }

    void aTestAsksWithThePasswordGiven()
    {
        m_fixture->start();
        m_fixture->addAnswer(ping, webAnswer(subsonicAnswer()));
        const NavidromeConfig config = m_fixture->makeConfig();
        QCOMPARE(test(config, u"other"_s), QString());
        const HttpRequest request = m_fixture->web().sent.constLast();
        QCOMPARE(request.method, "GET");
        QVERIFY(request.headers.isEmpty());
        QVERIFY(request.body.isEmpty());
        QCOMPARE(request.idleTimeout, 30s);
        QCOMPARE(request.totalTimeout, 60s);
        QVERIFY(request.sizeLimit > 0);
        QCOMPARE(request.url.adjusted(QUrl::RemoveQuery), QUrl(u"http://home.test/rest/ping.view"_s));
        // With chance standing still the salt is twelve times the first letter.
        const QString salt(12, u'a');
        QCOMPARE(m_fixture->lastQuery().queryItems(),
                 (QList<QPair<QString, QString>>{{u"u"_s, u"listener"_s},
                                                 {u"t"_s, md5Hex(u"other"_s + salt)},
                                                 {u"s"_s, salt},
                                                 {u"v"_s, u"1.16.1"_s},
                                                 {u"c"_s, u"TarnovaPlayer"_s},
                                                 {u"f"_s, u"json"_s}}));
    }

    void twoRequestsInARowHoldDifferentSalts()
    {
        m_fixture->start();
        m_fixture->machine().random().indexes = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
        const NavidromeConfig config = m_fixture->makeConfig();
        test(config);
        const QUrlQuery first = m_fixture->lastQuery();
        test(config);
        const QUrlQuery second = m_fixture->lastQuery();
        QCOMPARE(first.queryItemValue(u"s"_s), u"bcdefghijklm"_s);
        QVERIFY(second.queryItemValue(u"s"_s) != first.queryItemValue(u"s"_s));
        QVERIFY(second.queryItemValue(u"t"_s) != first.queryItemValue(u"t"_s));
    }

    void aTestTellsWhatWentWrong_data() { addFailures(); }
    void aTestTellsWhatWentWrong()
    {
        QFETCH(const MadeAnswer, answer);
        QFETCH(const QString, message);
        m_fixture->start();
        m_fixture->addAnswer(ping, answer.result);
        QCOMPARE(test(m_fixture->makeConfig()), message);
        QVERIFY(!service().isTesting());
        QVERIFY(!service().error());
    }

    void aTestOfNoAddressAsksNobody()
    {
        m_fixture->start();
        NavidromeConfig config = m_fixture->makeConfig();
        for (const QString &address : {u""_s, u"http://"_s, u"music.test"_s, u"http://my music.test"_s}) {
            config.serverURL = address;
            QCOMPARE(test(config), u"服务器地址无效"_s);
        }
        config.serverURL = u"http://home.test"_s;
        config.username = QString(QChar(0xD800));
        QCOMPARE(test(config), u"请求 URL 构建失败"_s);
        QVERIFY(!service().isTesting());
        QVERIFY(m_fixture->web().sent.isEmpty());
    }

    void testsThatRunAtOnceEndOneByOne()
    {
        m_fixture->start();
        QSignalSpy changes(&service(), &NavidromeService::isTestingChanged);
        auto first = service().testConnection(m_fixture->makeConfig(u"a"_s), u"x"_s);
        auto second = service().testConnection(m_fixture->makeConfig(u"b"_s), u"x"_s);
        QVERIFY(m_fixture->waitForPending(2));
        QVERIFY(m_fixture->web().answer(u"b.test"_s, webAnswer(subsonicAnswer())));
        QCOMPARE(told(await(std::move(second))), QString());
        QVERIFY(service().isTesting());
        QVERIFY(m_fixture->web().answer(u"a.test"_s, webAnswer(subsonicRefusal("no"))));
        QCOMPARE(told(await(std::move(first))), u"no"_s);
        QVERIFY(!service().isTesting());
        QCOMPARE(changes.count(), 2);
    }

    void connectingMakesItTheCurrentServer()
    {
        m_fixture->start();
        m_fixture->addAnswer(ping, webAnswer(subsonicAnswer()));
        const NavidromeConfig config = m_fixture->makeConfig();
        QCOMPARE(connectTo(config), QString());
        QCOMPARE(service().currentConfig(), config);
        QVERIFY(service().isConnected());
        QVERIFY(!service().error());
        QCOMPARE(m_fixture->lastQuery().queryItemValue(u"t"_s), md5Hex(u"sesame"_s + QString(12, u'a')));
    }

    void connectingWithoutAPasswordIsToldAndAsksNobody()
    {
        const NavidromeConfig current = m_fixture->startConnected();
        const qsizetype asked = m_fixture->web().sent.size();
        const NavidromeConfig config = m_fixture->makeConfig(u"other"_s);
        m_fixture->machine().secrets().put(config.passwordKeychainKey(), {});
        m_fixture->machine().secrets().answer(FakeSecretStore::Operation::copy,
                                              SecretStatus::interactionNotAllowed);
        QCOMPARE(connectTo(config), u"无法获取密码"_s);
        QCOMPARE(service().error(), u"无法获取密码"_s);
        QCOMPARE(m_fixture->web().sent.size(), asked);
        QCOMPARE(service().currentConfig(), current);
    }

    void aFailedConnectLeavesNoServer_data() { addFailures(); }
    void aFailedConnectLeavesNoServer()
    {
        QFETCH(const MadeAnswer, answer);
        QFETCH(const QString, message);
        const NavidromeConfig config = m_fixture->startConnected();
        m_fixture->addAnswer(ping, answer.result);
        QCOMPARE(connectTo(config), message);
        QCOMPARE(service().error(), message);
        QVERIFY(!service().currentConfig());
        QVERIFY(!service().isConnected());
    }

    void aConnectToNoAddressIsTold()
    {
        m_fixture->start();
        NavidromeConfig config = m_fixture->makeConfig();
        config.serverURL = u"http:// home.test"_s;
        QCOMPARE(connectTo(config), u"服务器地址无效"_s);
        QCOMPARE(service().error(), u"服务器地址无效"_s);
    }

    void disconnectingLeavesNoServer()
    {
        m_fixture->startConnected();
        QSignalSpy changes(&service(), &NavidromeService::isConnectedChanged);
        service().disconnectFromServer();
        QVERIFY(!service().isConnected());
        QVERIFY(!service().currentConfig());
        service().disconnectFromServer();
        QCOMPARE(changes.count(), 1);
    }

    void theServerThatWasAskedForLastIsTheCurrentOne()
    {
        m_fixture->start();
        const NavidromeConfig slow = m_fixture->makeConfig(u"slow"_s);
        const NavidromeConfig quick = m_fixture->makeConfig(u"quick"_s);
        auto first = service().connectTo(slow);
        QVERIFY(m_fixture->waitForPending(1));
        auto second = service().connectTo(quick);
        QTRY_COMPARE(m_fixture->web().sent.size(), 2);
        QCOMPARE(told(await(std::move(first))), u"已取消"_s);
        QVERIFY(m_fixture->web().answer(u"quick.test"_s, webAnswer(subsonicAnswer())));
        QCOMPARE(told(await(std::move(second))), QString());
        QCOMPARE(service().currentConfig(), quick);
        QVERIFY(!service().error());
        QVERIFY(m_fixture->web().pending.empty());
    }

    void aServerThatIsDeletedMeanwhileIsNotConnected()
    {
        const NavidromeConfig config = m_fixture->makeConfig();
        m_fixture->store({config});
        m_fixture->start();
        auto connecting = service().connectTo(config);
        QVERIFY(m_fixture->waitForPending(1));
        QVERIFY(await(service().deleteConfig(config)));
        QCOMPARE(told(await(std::move(connecting))), u"已取消"_s);
        QVERIFY(!service().isConnected());
        QVERIFY(!service().currentConfig());
        QVERIFY(!service().error());
    }

    void disconnectingEndsAConnect()
    {
        m_fixture->start();
        auto connecting = service().connectTo(m_fixture->makeConfig());
        QVERIFY(m_fixture->waitForPending(1));
        service().disconnectFromServer();
        QCOMPARE(told(await(std::move(connecting))), u"已取消"_s);
        QVERIFY(!service().isConnected());
    }

    void aServiceThatGoesLeavesNothingBehind()
    {
        m_fixture->startConnected();
        auto connecting = service().connectTo(m_fixture->makeConfig(u"other"_s));
        auto testing = service().testConnection(m_fixture->makeConfig(u"third"_s), u"x"_s);
        auto loading = service().loadDefaultSongs();
        QVERIFY(m_fixture->waitForPending(3));
        m_fixture->stop();
        QVERIFY(m_fixture->web().pending.empty());
        QVERIFY(!told(await(std::move(connecting))).isEmpty());
        QVERIFY(!told(await(std::move(testing))).isEmpty());
        QVERIFY(await(std::move(loading)));
    }
};

QTEST_GUILESS_MAIN(TestNavidromeService)
#include "tst_navidrome_service.moc"
