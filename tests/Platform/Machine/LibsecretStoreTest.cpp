// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/LibsecretStore.h"
#include "Fakes/ConsoleLines.h"
#include "Fixtures/Keyring/KeyringSession.h"
#include "Utils/KeychainHelper.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QFuture>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// Stands for the desktop's window that asks for passwords, and never gets to it.
class SilentPrompter : public QDBusVirtualObject
{
    Q_OBJECT

public:
    explicit SilentPrompter(PrivateBus &bus)
        : m_connection(bus.connection(u"prompter"_s))
    {
        m_connection.registerVirtualObject(u"/org/gnome/keyring/Prompter"_s, this);
    }
    ~SilentPrompter() override { m_connection.unregisterObject(u"/org/gnome/keyring/Prompter"_s); }
    Q_DISABLE_COPY_MOVE(SilentPrompter)

    bool appear() { return m_connection.registerService(u"org.gnome.keyring.SystemPrompter"_s); }
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        message.setDelayedReply(true);
        isAsked = true;
        return true;
    }

    bool isAsked = false;

private:
    QDBusConnection m_connection;
};

/// The store on a real keyring, in the states that a desktop brings it into.
class LibsecretStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void savingTwiceLeavesOneItem();
    void secretsOutlastTheStore();
    void aKeyringThatWasStartedAnewIsFound();
    void aKeyringThatAppearsLaterIsFound();
    void aKeyringThatGoesIsNotAvailable();
    void aBusThatGoesIsNotAvailable();
    void withoutABusThereIsNoStore_data();
    void withoutABusThereIsNoStore();
    void aServiceThatCannotBeStartedIsNoStore();
    void aServiceIsStartedByTheBus();
    void aLockedKeyringWithoutAPromptRefuses();
    void aLockedKeyringLosesNothing();
    void closingEndsAPrompt();

private:
    std::unique_ptr<LibsecretStore>
    makeStore(std::chrono::milliseconds limit = LibsecretStore::answerLimit) const
    {
        return std::make_unique<LibsecretStore>(limit, m_session->busAddress());
    }
    QByteArray copy(SecretStore &store) const
    {
        const std::expected<QByteArray, SecretStatus> secret = store.copy(m_service, m_account);
        return secret ? *secret : "status " + QByteArray::number(std::to_underlying(secret.error()));
    }

    const QString m_service = u"com.cadorel"_s;
    const QString m_account = u"account"_s;
    std::unique_ptr<KeyringSession> m_session;
    std::unique_ptr<LibsecretStore> m_store;
};

void LibsecretStoreTest::initTestCase()
{
    QVERIFY2(KeyringSession::available(), "scripts/setup installs the keyring");
}

void LibsecretStoreTest::init()
{
    m_session = std::make_unique<KeyringSession>();
    QVERIFY(m_session->start());
    m_store = makeStore();
}

void LibsecretStoreTest::cleanup()
{
    KeychainHelper::setStore(nullptr);
    m_store.reset();
    m_session.reset();
}

void LibsecretStoreTest::savingTwiceLeavesOneItem()
{
    const ConsoleLines lines;
    KeychainHelper::setStore(m_store.get());
    QVERIFY(KeychainHelper::save(u"old"_s, m_account));
    QVERIFY(KeychainHelper::save(u"new"_s, m_account));
    // By the schema and the attributes that the class's description names.
    QCOMPARE(m_session->itemCount(u"com.cadorel"_s, m_account), 1);
    QCOMPARE(copy(*m_store), "new"_ba);
    QVERIFY(KeychainHelper::remove(m_account));
    QCOMPARE(m_session->itemCount(u"com.cadorel"_s, m_account), 0);
}

void LibsecretStoreTest::secretsOutlastTheStore()
{
    QCOMPARE(m_store->add(m_service, m_account, "secret"), SecretStatus::success);
    m_store = makeStore();
    QCOMPARE(copy(*m_store), "secret"_ba);
}

void LibsecretStoreTest::aKeyringThatWasStartedAnewIsFound()
{
    QCOMPARE(m_store->add(m_service, m_account, "secret"), SecretStatus::success);
    m_session->stopKeyring();
    QVERIFY(m_session->start());
    QCOMPARE(copy(*m_store), "secret"_ba);
    QCOMPARE(m_store->update(m_service, m_account, "other"), SecretStatus::success);
}

void LibsecretStoreTest::aKeyringThatAppearsLaterIsFound()
{
    m_session->stopKeyring();
    QCOMPARE(copy(*m_store), "status -25291"_ba);
    QVERIFY(m_session->start());
    QCOMPARE(copy(*m_store), "status -25300"_ba);
    QCOMPARE(m_store->add(m_service, m_account, "secret"), SecretStatus::success);
}

void LibsecretStoreTest::aKeyringThatGoesIsNotAvailable()
{
    QCOMPARE(m_store->add(m_service, m_account, "secret"), SecretStatus::success);
    m_session->stopKeyring();
    QCOMPARE(copy(*m_store), "status -25291"_ba);
    QCOMPARE(m_store->add(m_service, m_account, "other"), SecretStatus::notAvailable);
    QCOMPARE(m_store->update(m_service, m_account, "other"), SecretStatus::notAvailable);
    QCOMPARE(m_store->remove(m_service, m_account), SecretStatus::notAvailable);
}

void LibsecretStoreTest::aBusThatGoesIsNotAvailable()
{
    QCOMPARE(m_store->add(m_service, m_account, "secret"), SecretStatus::success);
    m_session->bus().stop();
    // The process lives on, which is not a matter of course when the session bus goes.
    QCOMPARE(copy(*m_store), "status -25291"_ba);
    QCOMPARE(copy(*m_store), "status -25291"_ba);
}

void LibsecretStoreTest::withoutABusThereIsNoStore_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::newRow("nothing there") << "unix:path=/nonexistent/bus"_ba;
    QTest::newRow("no address") << "nonsense"_ba;
    QTest::newRow("no host") << "tcp:host=127.0.0.1,port=1"_ba;
}

void LibsecretStoreTest::withoutABusThereIsNoStore()
{
    QFETCH(QByteArray, address);
    LibsecretStore store(LibsecretStore::answerLimit, address);
    QCOMPARE(copy(store), "status -25291"_ba);
    QCOMPARE(store.add(m_service, m_account, "secret"), SecretStatus::notAvailable);
}

void LibsecretStoreTest::aServiceThatCannotBeStartedIsNoStore()
{
    PrivateBus bus;
    bus.addService(u"org.freedesktop.secrets"_s, u"/bin/false"_s);
    QVERIFY(bus.start());
    LibsecretStore store(LibsecretStore::answerLimit, bus.address().toUtf8());
    QCOMPARE(copy(store), "status -25291"_ba);
}

void LibsecretStoreTest::aServiceIsStartedByTheBus()
{
    const QTemporaryDir home;
    PrivateBus bus;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name : {u"HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_RUNTIME_DIR"_s})
        environment.insert(name, home.path());
    bus.setEnvironment(environment);
    bus.addService(u"org.freedesktop.secrets"_s,
                   u"/usr/bin/gnome-keyring-daemon --start --foreground --components=secrets"_s);
    QVERIFY(bus.start());
    LibsecretStore store(LibsecretStore::answerLimit, bus.address().toUtf8());
    QCOMPARE(copy(store), "status -25300"_ba);
    // A first keyring needs a password of the listener, and there is nobody who could ask for it.
    QCOMPARE(store.add(m_service, m_account, "secret"), SecretStatus::userCancelled);
    QCOMPARE(copy(store), "status -25300"_ba);
}

void LibsecretStoreTest::aLockedKeyringWithoutAPromptRefuses()
{
    QCOMPARE(m_store->add(m_service, m_account, "secret"), SecretStatus::success);
    QVERIFY(m_session->lock());
    QCOMPARE(copy(*m_store), "status -128"_ba);
    QCOMPARE(m_store->update(m_service, m_account, "other"), SecretStatus::userCancelled);
    QCOMPARE(m_store->remove(m_service, m_account), SecretStatus::userCancelled);
    QCOMPARE(m_store->add(m_service, m_account, "other"), SecretStatus::duplicateItem);
    QCOMPARE(m_store->add(m_service, u"another"_s, "other"), SecretStatus::userCancelled);
}

void LibsecretStoreTest::aLockedKeyringLosesNothing()
{
    ConsoleLines lines;
    KeychainHelper::setStore(m_store.get());
    QVERIFY(KeychainHelper::save(u"old"_s, m_account));
    QVERIFY(m_session->lock());
    lines.take();
    QVERIFY(!KeychainHelper::save(u"new"_s, m_account));
    QCOMPARE(lines.take(), QStringList{u"✗ Keychain: 保存失败 - account, 错误码: -128"_s});
    QVERIFY(!KeychainHelper::remove(m_account));
    QCOMPARE(m_session->itemCount(m_service, m_account), 1);
    // The keyring is unlocked with its start.
    m_session->stopKeyring();
    QVERIFY(m_session->start());
    QCOMPARE(KeychainHelper::get(m_account), u"old"_s);
}

void LibsecretStoreTest::closingEndsAPrompt()
{
    QCOMPARE(m_store->add(m_service, m_account, "secret"), SecretStatus::success);
    QVERIFY(m_session->lock());
    // A desktop whose listener does not look at the prompt.
    SilentPrompter prompter(m_session->bus());
    QVERIFY(prompter.appear());
    QFuture<QByteArray> copying = QtConcurrent::run([this] { return copy(*m_store); });
    QTRY_VERIFY_WITH_TIMEOUT(prompter.isAsked, 20'000);
    QVERIFY(!copying.isFinished());
    m_store->close();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "status -25291"_ba);
}

QTEST_GUILESS_MAIN(LibsecretStoreTest)
#include "LibsecretStoreTest.moc"
