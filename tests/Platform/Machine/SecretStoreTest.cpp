// SPDX-License-Identifier: GPL-3.0-or-later
// What every SecretStore keeps to, run against the fake and the real ones.
#include "Fakes/ConsoleLines.h"
#include "Fakes/FakeSecretStore.h"
#include "Fixtures/Keyring/KeyringSession.h"
#include "Platform/Linux/FallbackSecretStore.h"
#include "Platform/Linux/FileSecretStore.h"
#include "Platform/Linux/LibsecretStore.h"
#include "Utils/KeychainHelper.h"

#include <QFuture>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

using namespace cadorel;
using namespace Qt::StringLiterals;

class SecretStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void startsEmpty_data() { implementations(); }
    void startsEmpty();
    void keepsASecret_data() { implementations(); }
    void keepsASecret();
    void addLeavesWhatIsThere_data() { implementations(); }
    void addLeavesWhatIsThere();
    void updateReplaces_data() { implementations(); }
    void updateReplaces();
    void updateMakesNothing_data() { implementations(); }
    void updateMakesNothing();
    void removes_data() { implementations(); }
    void removes();
    void keepsServicesAndAccountsApart_data() { implementations(); }
    void keepsServicesAndAccountsApart();
    void keepsOddSecrets_data() { implementations(); }
    void keepsOddSecrets();
    void keepsOddNames_data() { implementations(); }
    void keepsOddNames();
    void answersSeveralThreads_data() { implementations(); }
    void answersSeveralThreads();
    void aPasswordIsSavedReplacedAndDeleted_data() { implementations(); }
    void aPasswordIsSavedReplacedAndDeleted();
    void aClosedStoreRefuses_data() { implementations(); }
    void aClosedStoreRefuses();

private:
    enum class Kind { fake, file, libsecret, fallbackToFile, fallbackWithService };
    static void implementations();

    SecretStatus add(const QByteArray &secret) { return m_store->add(m_service, m_account, secret); }
    SecretStatus update(const QByteArray &secret) { return m_store->update(m_service, m_account, secret); }
    SecretStatus remove() { return m_store->remove(m_service, m_account); }
    /// The secret, or the status in words.
    QByteArray copy(const QString &service, const QString &account)
    {
        const std::expected<QByteArray, SecretStatus> secret = m_store->copy(service, account);
        return secret ? *secret : "status " + QByteArray::number(std::to_underlying(secret.error()));
    }
    QByteArray copy() { return copy(m_service, m_account); }

    const QString m_service = u"com.cadorel"_s;
    QString m_account;
    KeyringSession m_keyring;
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<SecretStore> m_store;
};

void SecretStoreTest::implementations()
{
    QTest::addColumn<Kind>("kind");
    QTest::newRow("fake") << Kind::fake;
    QTest::newRow("file") << Kind::file;
    QTest::newRow("keyring") << Kind::libsecret;
    QTest::newRow("no service, so a file") << Kind::fallbackToFile;
    QTest::newRow("keyring before a file") << Kind::fallbackWithService;
}

void SecretStoreTest::initTestCase()
{
    // That a file is in use is told, and tried elsewhere.
    QLoggingCategory::setFilterRules(u"cadorel.platform.linux=false"_s);
    QVERIFY2(KeyringSession::available(), "scripts/setup installs the keyring");
    QVERIFY(m_keyring.start());
}

void SecretStoreTest::init()
{
    QFETCH(Kind, kind);
    // The keyring outlasts a test.
    m_account = QString::fromLatin1(QTest::currentTestFunction()) + u' ' +
                QString::fromLatin1(QTest::currentDataTag());
    m_directory = std::make_unique<QTemporaryDir>();
    const auto file = [this] {
        return std::make_unique<FileSecretStore>(m_directory->filePath(u"secrets.json"_s));
    };
    const auto keyring = [](const QByteArray &address) {
        return std::make_unique<LibsecretStore>(LibsecretStore::answerLimit, address);
    };
    switch (kind) {
    case Kind::fake:
        m_store = std::make_unique<FakeSecretStore>();
        break;
    case Kind::file:
        m_store = file();
        break;
    case Kind::libsecret:
        m_store = keyring(m_keyring.busAddress());
        break;
    case Kind::fallbackToFile:
        m_store = std::make_unique<FallbackSecretStore>(keyring("unix:path=/nonexistent/bus"), file());
        break;
    case Kind::fallbackWithService:
        m_store = std::make_unique<FallbackSecretStore>(keyring(m_keyring.busAddress()), file());
        break;
    }
}

void SecretStoreTest::cleanup()
{
    KeychainHelper::setStore(nullptr);
    m_store.reset();
    m_directory.reset();
}

void SecretStoreTest::startsEmpty()
{
    QCOMPARE(copy(), "status -25300"_ba);
    QCOMPARE(remove(), SecretStatus::itemNotFound);
}

void SecretStoreTest::keepsASecret()
{
    QCOMPARE(add("secret"), SecretStatus::success);
    QCOMPARE(copy(), "secret"_ba);
    QCOMPARE(copy(), "secret"_ba);
}

void SecretStoreTest::addLeavesWhatIsThere()
{
    QCOMPARE(add("first"), SecretStatus::success);
    QCOMPARE(add("second"), SecretStatus::duplicateItem);
    QCOMPARE(copy(), "first"_ba);
}

void SecretStoreTest::updateReplaces()
{
    QCOMPARE(add("first"), SecretStatus::success);
    QCOMPARE(update("second"), SecretStatus::success);
    QCOMPARE(copy(), "second"_ba);
    QCOMPARE(add("third"), SecretStatus::duplicateItem);
}

void SecretStoreTest::updateMakesNothing()
{
    QCOMPARE(update("secret"), SecretStatus::itemNotFound);
    QCOMPARE(copy(), "status -25300"_ba);
}

void SecretStoreTest::removes()
{
    QCOMPARE(add("secret"), SecretStatus::success);
    QCOMPARE(remove(), SecretStatus::success);
    QCOMPARE(copy(), "status -25300"_ba);
    QCOMPARE(remove(), SecretStatus::itemNotFound);
    QCOMPARE(update("secret"), SecretStatus::itemNotFound);
    QCOMPARE(add("again"), SecretStatus::success);
    QCOMPARE(copy(), "again"_ba);
}

void SecretStoreTest::keepsServicesAndAccountsApart()
{
    const QString otherService = u"com.example"_s;
    const QString otherAccount = m_account + u" 2"_s;
    QCOMPARE(add("one"), SecretStatus::success);
    QCOMPARE(m_store->add(otherService, m_account, "two"), SecretStatus::success);
    QCOMPARE(m_store->add(m_service, otherAccount, "three"), SecretStatus::success);
    QCOMPARE(copy(), "one"_ba);
    QCOMPARE(copy(otherService, m_account), "two"_ba);
    QCOMPARE(copy(m_service, otherAccount), "three"_ba);
    QCOMPARE(remove(), SecretStatus::success);
    QCOMPARE(copy(otherService, m_account), "two"_ba);
    QCOMPARE(copy(m_service, otherAccount), "three"_ba);
}

void SecretStoreTest::keepsOddSecrets()
{
    const QList<QByteArray> secrets{"",
                                    " ",
                                    "密码🔑",
                                    "line\nbreak\r\n",
                                    "\"quoted\" \\ {}",
                                    QByteArray("\0zero\xff\0", 7),
                                    QByteArray(100'000, 'x')};
    QCOMPARE(add("first"), SecretStatus::success);
    for (const QByteArray &secret : secrets) {
        QCOMPARE(update(secret), SecretStatus::success);
        QCOMPARE(copy(), secret);
        QCOMPARE(remove(), SecretStatus::success);
        QCOMPARE(add(secret), SecretStatus::success);
        QCOMPARE(copy(), secret);
    }
}

void SecretStoreTest::keepsOddNames()
{
    for (const QString &end : {u"键 🔑"_s, u"a\"b\\c"_s, u"a=b&c/d"_s, u" "_s, QString(5'000, u'k')}) {
        m_account += end;
        QCOMPARE(add(end.toUtf8()), SecretStatus::success);
        QCOMPARE(copy(), end.toUtf8());
    }
}

void SecretStoreTest::answersSeveralThreads()
{
    constexpr int count = 12;
    QThreadPool pool;
    pool.setMaxThreadCount(4);
    QList<QFuture<QByteArray>> results;
    for (int number = 0; number < count; ++number) {
        results.append(QtConcurrent::run(&pool, [this, number] {
            const QString account = m_account + QString::number(number);
            const SecretStatus status = m_store->add(m_service, account, QByteArray::number(number));
            return status == SecretStatus::success ? copy(m_service, account) : "not added"_ba;
        }));
    }
    pool.waitForDone();
    for (int number = 0; number < count; ++number)
        QCOMPARE(results.at(number).result(), QByteArray::number(number));
}

void SecretStoreTest::aPasswordIsSavedReplacedAndDeleted()
{
    const ConsoleLines lines;
    KeychainHelper::setStore(m_store.get());
    QVERIFY(KeychainHelper::save(u"旧"_s, m_account));
    QVERIFY(KeychainHelper::save(u"新"_s, m_account));
    QCOMPARE(KeychainHelper::get(m_account), u"新"_s);
    QVERIFY(KeychainHelper::update(u"更新"_s, m_account));
    QCOMPARE(copy(), "更新"_ba);
    QVERIFY(KeychainHelper::remove(m_account));
    QVERIFY(!KeychainHelper::exists(m_account));
    QVERIFY(KeychainHelper::remove(m_account));
    QVERIFY(KeychainHelper::update(u"又"_s, m_account));
    QCOMPARE(copy(), "又"_ba);
}

void SecretStoreTest::aClosedStoreRefuses()
{
    QCOMPARE(add("secret"), SecretStatus::success);
    m_store->close();
    QCOMPARE(copy(), "status -25291"_ba);
    QCOMPARE(add("other"), SecretStatus::notAvailable);
    QCOMPARE(update("other"), SecretStatus::notAvailable);
    QCOMPARE(remove(), SecretStatus::notAvailable);
    m_store->close();
}

QTEST_GUILESS_MAIN(SecretStoreTest)
#include "SecretStoreTest.moc"
