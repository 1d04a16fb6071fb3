// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/FallbackSecretStore.h"
#include "Fakes/ConsoleLines.h"
#include "Fakes/FakeSecretStore.h"
#include "Utils/KeychainHelper.h"

#include <QFuture>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Operation = FakeSecretStore::Operation;

class FallbackSecretStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aStoreThatIsThereIsUsedAlone();
    void withoutAStoreTheFileIsUsedAndToldOnce();
    void secretsInTheFileAreFoundWhenAStoreAppears();
    void anUpdateMovesTheSecretIntoTheStore();
    void anUpdateWithoutAStoreLeavesTheNewerSecretInTheFile();
    void aSavedPasswordMovesIntoTheStore();
    void aRefusingStoreIsNotReplacedByTheFile_data() { refusals(); }
    void aRefusingStoreIsNotReplacedByTheFile();
    void anUpdateThatIsRefusedKeepsTheFile_data() { refusals(); }
    void anUpdateThatIsRefusedKeepsTheFile();
    void aSaveThatIsRefusedKeepsThePasswordInTheFile_data() { refusals(); }
    void aSaveThatIsRefusedKeepsThePasswordInTheFile();
    void removesFromBoth();
    void aRemovalThatIsRefusedKeepsBoth_data() { refusals(); }
    void aRemovalThatIsRefusedKeepsBoth();
    void anUnreadableFileDoesNotHideTheStore();
    void closingDuringACallWritesNothingToTheFile();
    void closesBoth();

private:
    static void refusals();
    /// From now on there is no store.
    void takeStoreAway() { m_store->refuseAll(SecretStatus::notAvailable); }
    void bringStoreBack() { m_store->refuseAll(SecretStatus::success); }
    QByteArray copy()
    {
        const std::expected<QByteArray, SecretStatus> secret = m_both->copy(m_service, m_account);
        return secret ? *secret : "status " + QByteArray::number(std::to_underlying(secret.error()));
    }
    static void expectFileMessage()
    {
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(u"^there is no Secret Service .* secrets.json"_s));
    }

    const QString m_service = u"com.cadorel"_s;
    const QString m_account = u"account"_s;
    std::unique_ptr<FallbackSecretStore> m_both;
    FakeSecretStore *m_store = nullptr;
    FakeSecretStore *m_file = nullptr;
};

void FallbackSecretStoreTest::refusals()
{
    QTest::addColumn<SecretStatus>("refusal");
    QTest::newRow("dismissed") << SecretStatus::userCancelled;
    QTest::newRow("locked") << SecretStatus::interactionNotAllowed;
    QTest::newRow("slow") << SecretStatus::timedOut;
    QTest::newRow("broken") << SecretStatus::ioError;
}

void FallbackSecretStoreTest::init()
{
    auto store = std::make_unique<FakeSecretStore>();
    auto file = std::make_unique<FakeSecretStore>();
    m_store = store.get();
    m_file = file.get();
    m_both = std::make_unique<FallbackSecretStore>(std::move(store), std::move(file));
    KeychainHelper::setStore(m_both.get());
}

void FallbackSecretStoreTest::cleanup()
{
    KeychainHelper::setStore(nullptr);
    m_both.reset();
}

void FallbackSecretStoreTest::aStoreThatIsThereIsUsedAlone()
{
    QCOMPARE(m_both->add(m_service, m_account, "secret"), SecretStatus::success);
    QCOMPARE(m_store->secret(m_account), "secret"_ba);
    QCOMPARE(m_both->update(m_service, m_account, "other"), SecretStatus::success);
    QCOMPARE(m_store->secret(m_account), "other"_ba);
    QCOMPARE(m_file->itemCount(), 0);
    QCOMPARE(m_file->callCount(Operation::add), 0);
}

void FallbackSecretStoreTest::withoutAStoreTheFileIsUsedAndToldOnce()
{
    takeStoreAway();
    QCOMPARE(copy(), "status -25300"_ba);
    expectFileMessage();
    QCOMPARE(m_both->add(m_service, m_account, "secret"), SecretStatus::success);
    // A second message would fail the test.
    QTest::failOnWarning(QRegularExpression(u"."_s));
    QCOMPARE(m_both->add(m_service, m_account, "another"), SecretStatus::duplicateItem);
    QCOMPARE(m_both->add(m_service, u"second"_s, "secret"), SecretStatus::success);
    QCOMPARE(m_both->update(m_service, m_account, "newer"), SecretStatus::success);
    QCOMPARE(copy(), "newer"_ba);
    QCOMPARE(m_both->update(m_service, u"third"_s, "secret"), SecretStatus::itemNotFound);
    QCOMPARE(m_both->remove(m_service, m_account), SecretStatus::success);
    QCOMPARE(m_both->remove(m_service, m_account), SecretStatus::itemNotFound);
    QCOMPARE(m_file->itemCount(), 1);
}

void FallbackSecretStoreTest::secretsInTheFileAreFoundWhenAStoreAppears()
{
    m_file->put(m_account, "secret");
    QCOMPARE(copy(), "secret"_ba);
    QCOMPARE(m_both->add(m_service, m_account, "another"), SecretStatus::duplicateItem);
    QCOMPARE(m_store->itemCount(), 0);
}

void FallbackSecretStoreTest::anUpdateMovesTheSecretIntoTheStore()
{
    m_file->put(m_account, "old");
    QCOMPARE(m_both->update(m_service, m_account, "new"), SecretStatus::success);
    QCOMPARE(m_store->secret(m_account), "new"_ba);
    QCOMPARE(m_file->itemCount(), 0);
}

void FallbackSecretStoreTest::anUpdateWithoutAStoreLeavesTheNewerSecretInTheFile()
{
    m_store->put(m_account, "oldest");
    takeStoreAway();
    const ConsoleLines lines;
    expectFileMessage();
    QVERIFY(KeychainHelper::update(u"newer"_s, m_account));
    bringStoreBack();
    QCOMPARE(copy(), "newer"_ba);
    QVERIFY(KeychainHelper::update(u"newest"_s, m_account));
    QCOMPARE(m_store->secret(m_account), "newest"_ba);
    QCOMPARE(m_file->itemCount(), 0);
    QCOMPARE(copy(), "newest"_ba);
}

void FallbackSecretStoreTest::aSavedPasswordMovesIntoTheStore()
{
    m_store->put(m_account, "oldest");
    m_file->put(m_account, "old");
    const ConsoleLines lines;
    QVERIFY(KeychainHelper::save(u"new"_s, m_account));
    QCOMPARE(m_store->secret(m_account), "new"_ba);
    QCOMPARE(m_file->itemCount(), 0);
}

void FallbackSecretStoreTest::aRefusingStoreIsNotReplacedByTheFile()
{
    QFETCH(SecretStatus, refusal);
    m_store->refuseAll(refusal);
    QCOMPARE(m_both->add(m_service, m_account, "secret"), refusal);
    QCOMPARE(m_both->update(m_service, m_account, "secret"), refusal);
    QCOMPARE(copy(), "status " + QByteArray::number(std::to_underlying(refusal)));
    QCOMPARE(m_file->itemCount(), 0);
}

void FallbackSecretStoreTest::anUpdateThatIsRefusedKeepsTheFile()
{
    QFETCH(SecretStatus, refusal);
    m_file->put(m_account, "old");
    // The store has no such item, and takes none.
    m_store->answer(Operation::add, refusal);
    QCOMPARE(m_both->update(m_service, m_account, "new"), refusal);
    QCOMPARE(copy(), "old"_ba);
}

void FallbackSecretStoreTest::aSaveThatIsRefusedKeepsThePasswordInTheFile()
{
    QFETCH(SecretStatus, refusal);
    m_file->put(m_account, "old");
    m_store->answer(Operation::add, refusal);
    m_store->answer(Operation::add, refusal);
    ConsoleLines lines;
    expectFileMessage();
    QVERIFY(!KeychainHelper::save(u"new"_s, m_account));
    QCOMPARE(copy(), "old"_ba);
    QCOMPARE(m_store->itemCount(), 0);
    QCOMPARE(lines.take().size(), 1);
    // Nothing else follows it there.
    m_store->answer(Operation::add, refusal);
    QCOMPARE(m_both->add(m_service, u"another"_s, "old"), refusal);
    QCOMPARE(m_file->itemCount(), 1);
}

void FallbackSecretStoreTest::removesFromBoth()
{
    m_store->put(m_account, "one");
    m_file->put(m_account, "two");
    QCOMPARE(m_both->remove(m_service, m_account), SecretStatus::success);
    QCOMPARE(m_store->itemCount() + m_file->itemCount(), 0);
    m_store->put(m_account, "one");
    QCOMPARE(m_both->remove(m_service, m_account), SecretStatus::success);
    m_file->put(m_account, "two");
    QCOMPARE(m_both->remove(m_service, m_account), SecretStatus::success);
    QCOMPARE(m_both->remove(m_service, m_account), SecretStatus::itemNotFound);
}

void FallbackSecretStoreTest::aRemovalThatIsRefusedKeepsBoth()
{
    QFETCH(SecretStatus, refusal);
    m_store->put(m_account, "one");
    m_file->put(m_account, "two");
    m_store->answer(Operation::remove, refusal);
    QCOMPARE(m_both->remove(m_service, m_account), refusal);
    QCOMPARE(m_store->itemCount() + m_file->itemCount(), 2);
}

void FallbackSecretStoreTest::anUnreadableFileDoesNotHideTheStore()
{
    m_store->put(m_account, "secret");
    m_file->refuseAll(SecretStatus::ioError);
    QCOMPARE(copy(), "secret"_ba);
    // But what may lie in it is not missing.
    takeStoreAway();
    QCOMPARE(copy(), "status -36"_ba);
    QCOMPARE(m_both->add(m_service, u"second"_s, "secret"), SecretStatus::ioError);
}

void FallbackSecretStoreTest::closingDuringACallWritesNothingToTheFile()
{
    m_store->hold();
    QFuture<SecretStatus> adding =
        QtConcurrent::run([this] { return m_both->add(m_service, m_account, "secret"); });
    QTRY_COMPARE(m_store->heldCalls(), 1);
    m_both->close();
    QCOMPARE(adding.result(), SecretStatus::notAvailable);
    QCOMPARE(m_file->itemCount(), 0);
}

void FallbackSecretStoreTest::closesBoth()
{
    m_both->close();
    QVERIFY(m_store->isClosed());
    QVERIFY(m_file->isClosed());
    QCOMPARE(copy(), "status -25291"_ba);
    QCOMPARE(m_store->calls(), QList<FakeSecretStore::Call>());
}

QTEST_GUILESS_MAIN(FallbackSecretStoreTest)
#include "FallbackSecretStoreTest.moc"
