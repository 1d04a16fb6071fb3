// SPDX-License-Identifier: GPL-3.0-or-later
// Servers and connections.
#include "Services/WebDAV/WebDAVFixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// What an operation comes to: its error, or "" when it has none.
QCoro::Task<QString> outcome(QCoro::Task<void> task)
{
    try {
        co_await task;
    } catch (const std::exception &error) {
        co_return QString::fromUtf8(error.what());
    }
    co_return QString();
}

const QString wrongPassword = u"认证失败，请检查用户名和密码"_s;

} // namespace

class TestWebDAVService : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<WebDAVFixture> m_fixture;

    WebDAVService &service() { return m_fixture->service(); }
    void save(const WebDAVConfig &config)
    {
        QVERIFY(await(service().saveConfig(config, u"secret"_s)));
        m_fixture->console().take();
    }
    std::optional<QString> connectTo(const WebDAVConfig &config)
    {
        QCoro::Task<QString> task = outcome(service().connectTo(config));
        return m_fixture->serve(task) ? await(std::move(task)) : std::nullopt;
    }
    std::optional<std::expected<void, WebDAVError>> test(const WebDAVConfig &config, const QString &password)
    {
        auto task = service().testConnection(config, password);
        return m_fixture->serve(task) ? await(std::move(task)) : std::nullopt;
    }

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<WebDAVFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void nothingStoredIsAnEmptyListWithoutALine()
    {
        m_fixture->start();
        QVERIFY(service().configs().isEmpty());
        QVERIFY(service().webDAVSongs().isEmpty());
        QVERIFY(!service().currentConfig());
        QVERIFY(!service().isConnected());
        QVERIFY(!service().isScanning());
        QVERIFY(!service().isTesting());
        QVERIFY(!service().error());
        QCOMPARE(service().scanProgress(), 0.0);
        QVERIFY(!service().lastScanDate());
        QCOMPARE(m_fixture->console().take(), QStringList());
    }

    void serversOfTheLastRunAreThereAtOnce()
    {
        const WebDAVConfig first = m_fixture->makeConfig(u"一"_s);
        const WebDAVConfig second = m_fixture->makeConfig(u"二"_s);
        m_fixture->store(QList<WebDAVConfig>{first, second});
        m_fixture->start(false);
        QCOMPARE(service().configs(), (QList<WebDAVConfig>{first, second}));
        QCOMPARE(service().configs().at(1).name, u"二"_s);
        QCOMPARE(m_fixture->console().take(), QStringList{u"📂 WebDAV: 加载了 2 个配置"_s});
    }

    void aDamagedListOfServersIsEmptyWithoutALine_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("no JSON") << QByteArray("[{");
        QTest::newRow("no list") << QByteArray("{}");
        QTest::newRow("no record") << QByteArray("[1]");
        QTest::newRow("an incomplete record") << QByteArray(R"([{"name":"x"}])");
    }
    void aDamagedListOfServersIsEmptyWithoutALine()
    {
        QFETCH(const QByteArray, text);
        m_fixture->machine().preferences().setData(u"webdav_configs"_s, text);
        m_fixture->start();
        QVERIFY(service().configs().isEmpty());
        QCOMPARE(m_fixture->console().take(), QStringList());
    }

    void savingStoresThePasswordThenTheServer()
    {
        m_fixture->start();
        WebDAVConfig config = m_fixture->makeConfig();
        QSignalSpy changes(&service(), &WebDAVService::configsChanged);
        m_fixture->machine().secrets().hold();
        const QCoro::Task<void> saving = service().saveConfig(config, u"p:w@/夜"_s);
        QTRY_COMPARE(m_fixture->machine().secrets().heldCalls(), 1);
        QVERIFY(service().configs().isEmpty());
        m_fixture->machine().secrets().release();
        QVERIFY(m_fixture->serve(saving));
        QCOMPARE(m_fixture->machine().secrets().secret(config.passwordKeychainKey()), "p:w@/夜");
        QCOMPARE(service().configs(), QList<WebDAVConfig>{config});
        QCOMPARE(m_fixture->storedConfigs(), QList<WebDAVConfig>{config});
        QCOMPARE(changes.count(), 1);
        QCOMPARE(m_fixture->console().take(),
                 (QStringList{u"✓ Keychain: 保存成功 - "_s + config.passwordKeychainKey(),
                              u"✓ WebDAV: 保存配置 - 家"_s}));
        const QByteArray stored = *m_fixture->machine().preferences().dataValue(u"webdav_configs"_s);
        QVERIFY(!stored.contains("p:w@"));
    }

    void aServerIsSavedThoughItsPasswordIsNot()
    {
        m_fixture->start();
        m_fixture->machine().secrets().refuseAll(SecretStatus::interactionNotAllowed);
        const WebDAVConfig config = m_fixture->makeConfig();
        QVERIFY(await(service().saveConfig(config, u"secret"_s)));
        QCOMPARE(m_fixture->storedConfigs(), QList<WebDAVConfig>{config});
        QCOMPARE(m_fixture->console().take().constLast(), u"✓ WebDAV: 保存配置 - 家"_s);
    }

    void savingAServerThatIsListedKeepsItsPlace()
    {
        m_fixture->start();
        WebDAVConfig first = m_fixture->makeConfig(u"一"_s);
        save(first);
        save(m_fixture->makeConfig(u"二"_s));
        first.name = u"一改"_s;
        save(first);
        QCOMPARE(service().configs().size(), 2);
        QCOMPARE(service().configs().constFirst().name, u"一改"_s);
        QCOMPARE(m_fixture->storedConfigs().constFirst().name, u"一改"_s);
    }

    void deletingTakesPasswordServerAndSongsAway()
    {
        const WebDAVConfig gone = m_fixture->makeConfig(u"走"_s);
        const WebDAVConfig kept = m_fixture->makeConfig(u"留"_s);
        m_fixture->store({gone, kept});
        m_fixture->store({WebDAVFixture::song(gone, u"/dav/a.mp3"_s, u"a"_s),
                          WebDAVFixture::song(kept, u"/dav/b.mp3"_s, u"b"_s),
                          WebDAVFixture::song(gone, u"/dav/c.mp3"_s, u"c"_s)});
        m_fixture->start();
        m_fixture->console().take();
        QVERIFY(await(service().deleteConfig(gone)));
        QVERIFY(await(service().songsStored()));
        QCOMPARE(m_fixture->machine().secrets().secret(gone.passwordKeychainKey()), QByteArray());
        QCOMPARE(m_fixture->machine().secrets().secret(kept.passwordKeychainKey()), "secret");
        QCOMPARE(service().configs(), QList<WebDAVConfig>{kept});
        QCOMPARE(m_fixture->storedConfigs(), QList<WebDAVConfig>{kept});
        QCOMPARE(m_fixture->titles(), QStringList{u"b"_s});
        QCOMPARE(m_fixture->storedTitles(), QStringList{u"b"_s});
        QCOMPARE(m_fixture->console().take(), QStringList{u"✓ WebDAV: 删除配置 - 走"_s});
    }

    void deletingTheConnectedServerDisconnectsAnotherDoesNot()
    {
        const WebDAVConfig connected = m_fixture->makeConfig(u"一"_s);
        const WebDAVConfig other = m_fixture->makeConfig(u"二"_s);
        m_fixture->store({connected, other});
        m_fixture->addDirectory(u"/dav"_s, {});
        m_fixture->start();
        QCOMPARE(connectTo(connected), QString());
        QVERIFY(await(service().deleteConfig(other)));
        QCOMPARE(service().currentConfig(), connected);
        QVERIFY(service().isConnected());
        QVERIFY(await(service().deleteConfig(connected)));
        QVERIFY(!service().currentConfig());
        QVERIFY(!service().isConnected());
    }

    void aConnectionTestUsesTheGivenPassword()
    {
        m_fixture->start();
        m_fixture->addDirectory(u"/dav"_s, {});
        QSignalSpy testing(&service(), &WebDAVService::isTestingChanged);
        const auto result = test(m_fixture->makeConfig(), u"typed"_s);
        QVERIFY(result && result->has_value());
        const HttpRequest request = m_fixture->machine().web().sent.constFirst();
        QVERIFY(
            request.headers.contains({"Authorization", "Basic " + QByteArray("listener:typed").toBase64()}));
        QCOMPARE(m_fixture->machine().secrets().calls().size(), 0);
        QCOMPARE(testing.count(), 2);
        QVERIFY(!service().isTesting());
        QVERIFY(!service().isConnected());
    }

    void aConnectionTestEndsWithItsErrorAndIsOver()
    {
        m_fixture->start();
        const WebDAVConfig config = m_fixture->makeConfig();
        m_fixture->addAnswer(u"/dav"_s, answerWith(401));
        auto result = test(config, u"x"_s);
        QVERIFY(result && !result->has_value());
        QCOMPARE(result->error(), WebDAVError(WebDAVError::Case::authenticationFailed));
        QVERIFY(!service().isTesting());

        m_fixture->addAnswer(u"/dav"_s,
                             std::unexpected(HttpError{HttpError::Kind::timeout, u"服务器没有响应"_s}));
        result = test(config, u"x"_s);
        QVERIFY(result && !result->has_value());
        QCOMPARE(result->error(), WebDAVError::networkError(u"服务器没有响应"_s));
        QVERIFY(!service().isTesting());
    }

    void twoConnectionTestsAreOverWhenBothAre()
    {
        m_fixture->start();
        const auto first = service().testConnection(m_fixture->makeConfig(u"一"_s, u"/one"_s), u"x"_s);
        const auto second = service().testConnection(m_fixture->makeConfig(u"二"_s, u"/two"_s), u"x"_s);
        QTRY_COMPARE(m_fixture->machine().web().pending.size(), 2U);
        QVERIFY(m_fixture->machine().web().answer(u"/two/"_s, answerWith(404)));
        QTRY_VERIFY(second.isReady());
        QVERIFY(service().isTesting());
        QVERIFY(m_fixture->machine().web().answer(u"/one/"_s, answerWith(404)));
        QTRY_VERIFY(first.isReady());
        QVERIFY(!service().isTesting());
    }

    void connectingMakesTheServerTheCurrentOne()
    {
        const WebDAVConfig config = m_fixture->makeConfig();
        m_fixture->store({config});
        m_fixture->addDirectory(u"/dav"_s, {});
        m_fixture->start();
        m_fixture->console().take();
        QCOMPARE(connectTo(config), QString());
        QCOMPARE(service().currentConfig(), config);
        QVERIFY(service().isConnected());
        QCOMPARE(m_fixture->console().take().constLast(), u"✓ WebDAV: 连接成功 - 家"_s);
        QVERIFY(m_fixture->machine().web().sent.constFirst().headers.contains(
            {"Authorization", "Basic " + QByteArray("listener:secret").toBase64()}));
        service().disconnectFromServer();
        QVERIFY(!service().currentConfig());
        QVERIFY(!service().isConnected());
    }

    void aFailedConnectionLeavesNoServerAlsoWhenAnotherWasConnected()
    {
        const WebDAVConfig good = m_fixture->makeConfig(u"一"_s, u"/good"_s);
        const WebDAVConfig bad = m_fixture->makeConfig(u"二"_s, u"/bad"_s);
        m_fixture->store({good, bad});
        m_fixture->addDirectory(u"/good"_s, {});
        m_fixture->addAnswer(u"/bad"_s, answerWith(401));
        m_fixture->start();
        QCOMPARE(connectTo(good), QString());
        QCOMPARE(connectTo(bad), wrongPassword);
        QVERIFY(!service().currentConfig());
        QVERIFY(!service().isConnected());
    }

    void connectingWithoutAPasswordIsAnInvalidServer()
    {
        const WebDAVConfig config = m_fixture->makeConfig();
        m_fixture->store({config});
        m_fixture->machine().secrets().answer(FakeSecretStore::Operation::copy, SecretStatus::itemNotFound);
        m_fixture->start();
        QCOMPARE(connectTo(config), u"配置无效"_s);
        QVERIFY(!service().isConnected());
        QVERIFY(m_fixture->machine().web().sent.isEmpty());
    }

    void aServerDeletedWhileItIsConnectedToIsNotTheCurrentOne()
    {
        const WebDAVConfig config = m_fixture->makeConfig();
        m_fixture->store({config});
        m_fixture->addDirectory(u"/dav"_s, {});
        m_fixture->start();
        QCoro::Task<QString> connecting = outcome(service().connectTo(config));
        QTRY_COMPARE(m_fixture->machine().web().pending.size(), 1U);
        QVERIFY(await(service().deleteConfig(config)));
        QVERIFY(m_fixture->serve(connecting));
        QVERIFY(!service().currentConfig());
        QVERIFY(!service().isConnected());
    }

    void theWindowLivesOnWhileTheCredentialStoreWaits()
    {
        const WebDAVConfig config = m_fixture->makeConfig();
        m_fixture->store({config});
        m_fixture->addDirectory(u"/dav"_s, {});
        m_fixture->start();
        m_fixture->machine().secrets().hold();
        QCoro::Task<QString> connecting = outcome(service().connectTo(config));
        QTRY_COMPARE(m_fixture->machine().secrets().heldCalls(), 1);
        bool ticks = false;
        QTimer::singleShot(0, this, [&ticks] { ticks = true; });
        QTRY_VERIFY(ticks);
        QVERIFY(!connecting.isReady());
        m_fixture->machine().secrets().release();
        QVERIFY(m_fixture->serve(connecting));
        QVERIFY(service().isConnected());
    }

    void theServiceEndsWhileItAsks()
    {
        const WebDAVConfig config = m_fixture->makeConfig();
        m_fixture->store({config});
        m_fixture->start();
        const auto testing = service().testConnection(config, u"x"_s);
        const QCoro::Task<QString> connecting = outcome(service().connectTo(config));
        QTRY_COMPARE(m_fixture->machine().web().pending.size(), 2U);
        m_fixture->stop();
        QTRY_VERIFY(testing.isReady() && connecting.isReady());
        QVERIFY(m_fixture->machine().web().pending.empty());
    }
};

QTEST_GUILESS_MAIN(TestWebDAVService)
#include "tst_webdav_service.moc"
