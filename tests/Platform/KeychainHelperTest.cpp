// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/KeychainHelper.h"
#include "Fakes/ConsoleLines.h"
#include "Fakes/FakeSecretStore.h"

#include <QFuture>
#include <QTest>
#include <QThreadPool>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Operation = FakeSecretStore::Operation;
using Call = FakeSecretStore::Call;

class KeychainHelperTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void saveStoresTheTextAsUtf8();
    void saveOverAnExistingKeyLeavesOneItemWithTheNewPassword();
    void saveReplacesAndNeverUpdatesInPlace();
    void saveOfAnEmptyPasswordStoresIt();
    void saveOfABrokenTextTouchesNothing_data() { brokenTexts(); }
    void saveOfABrokenTextTouchesNothing();
    void saveIgnoresThatNothingCouldBeDeleted();
    void saveTellsTheStatusOfARefusedItem_data() { statuses(); }
    void saveTellsTheStatusOfARefusedItem();
    void saveThatFailsPutsTheEarlierPasswordBack();
    void saveThatCannotDeleteKeepsTheEarlierPassword();
    void saveOnAStoreThatStaysLockedTouchesNothing();
    void saveThatFailsWithoutAnEarlierPasswordLeavesNone();
    void saveThatCanPutNothingBackTellsWithoutThePassword();

    void getOfAMissingKeyIsNothing();
    void getOfBytesThatAreNoTextIsNothing_data();
    void getOfBytesThatAreNoTextIsNothing();
    void everyCharacterOfThePasswordComesBack();
    void getLogsNothing();
    void lookupTellsMissingFromRefused_data() { statuses(); }
    void lookupTellsMissingFromRefused();

    void deleteOfAKeyThatWasNeverStoredSucceeds();
    void deleteRemovesThatKeyAlone();
    void deleteFailsWithTheStore_data() { statuses(); }
    void deleteFailsWithTheStore();

    void updateReplacesThePassword();
    void updateOfAKeyThatWasNeverStoredCreatesIt();
    void updateThatCannotCreateTellsOfTheSave();
    void updateTellsTheStatus_data() { statuses(); }
    void updateTellsTheStatus();
    void updateOfABrokenTextTouchesNothing_data() { brokenTexts(); }
    void updateOfABrokenTextTouchesNothing();

    void existsIsWhetherThereIsAPassword();
    void keysWithPlaceholdersArePrintedAsTheyAre();
    void withoutAStoreEverythingFails();
    void theQueueHoldsNothingElseUp();
    void replacementsOfSeveralThreadsDoNotMix();

private:
    static void statuses();
    static void brokenTexts();

    std::unique_ptr<FakeSecretStore> m_store;
    std::unique_ptr<ConsoleLines> m_lines;
    const QString m_key = u"webdav_password_1B4E28BA-2FA1-11D2-883F-0016D3CCA427"_s;
};

void KeychainHelperTest::brokenTexts()
{
    const QChar halfACharacter(0xD83D);
    QTest::addColumn<QString>("text");
    QTest::newRow("in the middle") << u"pass"_s + halfACharacter + u"word"_s;
    QTest::newRow("at the end") << u"password"_s + halfACharacter;
}

void KeychainHelperTest::statuses()
{
    QTest::addColumn<SecretStatus>("status");
    QTest::addColumn<QString>("number");
    QTest::newRow("dismissed") << SecretStatus::userCancelled << u"-128"_s;
    QTest::newRow("no store") << SecretStatus::notAvailable << u"-25291"_s;
    QTest::newRow("locked") << SecretStatus::interactionNotAllowed << u"-25308"_s;
    QTest::newRow("slow") << SecretStatus::timedOut << u"-60008"_s;
    QTest::newRow("broken") << SecretStatus::ioError << u"-36"_s;
}

void KeychainHelperTest::init()
{
    m_store = std::make_unique<FakeSecretStore>();
    m_lines = std::make_unique<ConsoleLines>();
    KeychainHelper::setStore(m_store.get());
}

void KeychainHelperTest::cleanup()
{
    m_store->close();
    KeychainHelper::queue().waitForDone();
    KeychainHelper::setStore(nullptr);
    m_lines.reset();
    m_store.reset();
}

void KeychainHelperTest::saveStoresTheTextAsUtf8()
{
    QVERIFY(KeychainHelper::save(u"密码 🔑 p@ss:/wörd"_s, m_key));
    QCOMPARE(m_store->secret(m_key, u"com.cadorel"_s), "密码 🔑 p@ss:/wörd"_ba);
    QCOMPARE(KeychainHelper::get(m_key), u"密码 🔑 p@ss:/wörd"_s);
    QCOMPARE(m_lines->take(), QStringList{u"✓ Keychain: 保存成功 - "_s + m_key});
}

void KeychainHelperTest::saveOverAnExistingKeyLeavesOneItemWithTheNewPassword()
{
    QVERIFY(KeychainHelper::save(u"old"_s, m_key));
    QVERIFY(KeychainHelper::save(u"new"_s, m_key));
    QCOMPARE(m_store->itemCount(), 1);
    QCOMPARE(KeychainHelper::get(m_key), u"new"_s);
    QCOMPARE(m_lines->take(), QStringList(2, u"✓ Keychain: 保存成功 - "_s + m_key));
}

void KeychainHelperTest::saveReplacesAndNeverUpdatesInPlace()
{
    m_store->put(m_key, "old");
    QVERIFY(KeychainHelper::save(u"new"_s, m_key));
    QCOMPARE(m_store->callCount(Operation::update), 0);
    const QList<Call> calls = m_store->calls();
    const qsizetype removal = calls.indexOf(Call{Operation::remove, u"com.cadorel"_s, m_key});
    QVERIFY(removal >= 0);
    QVERIFY(calls.indexOf(Call{Operation::add, u"com.cadorel"_s, m_key}) > removal);
}

void KeychainHelperTest::saveOfAnEmptyPasswordStoresIt()
{
    QVERIFY(KeychainHelper::save(QString(), m_key));
    QVERIFY(KeychainHelper::exists(m_key));
    QCOMPARE(KeychainHelper::get(m_key), u""_s);
}

void KeychainHelperTest::saveOfABrokenTextTouchesNothing()
{
    QFETCH(const QString, text);
    QVERIFY(!KeychainHelper::save(text, m_key));
    QCOMPARE(m_store->calls(), QList<Call>());
    QCOMPARE(m_lines->take(), QStringList());
}

void KeychainHelperTest::saveIgnoresThatNothingCouldBeDeleted()
{
    m_store->answer(Operation::remove, SecretStatus::interactionNotAllowed);
    QVERIFY(KeychainHelper::save(u"new"_s, m_key));
    QCOMPARE(m_store->secret(m_key), "new"_ba);
}

void KeychainHelperTest::saveTellsTheStatusOfARefusedItem()
{
    QFETCH(SecretStatus, status);
    QFETCH(QString, number);
    m_store->answer(Operation::add, status);
    QVERIFY(!KeychainHelper::save(u"secret"_s, m_key));
    QCOMPARE(m_lines->take(), QStringList{u"✗ Keychain: 保存失败 - "_s + m_key + u", 错误码: "_s + number});
}

void KeychainHelperTest::saveThatFailsPutsTheEarlierPasswordBack()
{
    // Not even a text: it comes back byte by byte.
    m_store->put(m_key, "old\xff");
    m_store->answer(Operation::add, SecretStatus::timedOut);
    QVERIFY(!KeychainHelper::save(u"new"_s, m_key));
    QCOMPARE(m_store->secret(m_key), "old\xff"_ba);
    QCOMPARE(m_store->itemCount(), 1);
    QCOMPARE(m_lines->take(), QStringList{u"✗ Keychain: 保存失败 - "_s + m_key + u", 错误码: -60008"_s});
}

void KeychainHelperTest::saveThatCannotDeleteKeepsTheEarlierPassword()
{
    m_store->put(m_key, "old");
    m_store->answer(Operation::remove, SecretStatus::userCancelled);
    QVERIFY(!KeychainHelper::save(u"new"_s, m_key));
    QCOMPARE(m_store->secret(m_key), "old"_ba);
    QCOMPARE(m_lines->take(), QStringList{u"✗ Keychain: 保存失败 - "_s + m_key + u", 错误码: -25299"_s});
}

void KeychainHelperTest::saveOnAStoreThatStaysLockedTouchesNothing()
{
    m_store->put(m_key, "old");
    m_store->refuseAll(SecretStatus::userCancelled);
    QVERIFY(!KeychainHelper::save(u"new"_s, m_key));
    QCOMPARE(m_store->callCount(Operation::remove), 0);
    QCOMPARE(m_store->secret(m_key), "old"_ba);
    QCOMPARE(m_lines->take(), QStringList{u"✗ Keychain: 保存失败 - "_s + m_key + u", 错误码: -128"_s});
}

void KeychainHelperTest::saveThatFailsWithoutAnEarlierPasswordLeavesNone()
{
    m_store->answer(Operation::add, SecretStatus::timedOut);
    QVERIFY(!KeychainHelper::save(u"new"_s, m_key));
    QCOMPARE(m_store->itemCount(), 0);
    QCOMPARE(m_store->callCount(Operation::add), 1);
}

void KeychainHelperTest::saveThatCanPutNothingBackTellsWithoutThePassword()
{
    m_store->put(m_key, "old");
    m_store->answer(Operation::add, SecretStatus::timedOut);
    m_store->answer(Operation::add, SecretStatus::ioError);
    const QString warning = u"the earlier password of %1 cannot be put back, status -36"_s.arg(m_key);
    QTest::ignoreMessage(QtWarningMsg, warning.toUtf8().constData());
    QVERIFY(!KeychainHelper::save(u"new"_s, m_key));
    QCOMPARE(m_lines->take(), QStringList{u"✗ Keychain: 保存失败 - "_s + m_key + u", 错误码: -60008"_s});
}

void KeychainHelperTest::getOfAMissingKeyIsNothing()
{
    QCOMPARE(KeychainHelper::get(m_key), std::nullopt);
}

void KeychainHelperTest::getOfBytesThatAreNoTextIsNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("no UTF-8") << "\xff\xfe\xfd"_ba;
    QTest::newRow("half a character at the end") << "secret\xe4\xb8"_ba;
}

void KeychainHelperTest::getOfBytesThatAreNoTextIsNothing()
{
    QFETCH(const QByteArray, bytes);
    m_store->put(m_key, bytes);
    QCOMPARE(KeychainHelper::get(m_key), std::nullopt);
    QVERIFY(!KeychainHelper::exists(m_key));
}

void KeychainHelperTest::everyCharacterOfThePasswordComesBack()
{
    // What looks like a byte order mark is a character of the password too.
    const QString password = u"\ufeffp\u00e4ss 密码 🔑"_s;
    QVERIFY(KeychainHelper::save(password, m_key));
    QCOMPARE(KeychainHelper::get(m_key), password);
}

void KeychainHelperTest::getLogsNothing()
{
    m_store->put(m_key, "secret");
    QVERIFY(KeychainHelper::get(m_key));
    QVERIFY(!KeychainHelper::get(u"another"_s));
    m_store->refuseAll(SecretStatus::timedOut);
    QVERIFY(!KeychainHelper::get(m_key));
    QCOMPARE(m_lines->take(), QStringList());
}

void KeychainHelperTest::lookupTellsMissingFromRefused()
{
    QFETCH(SecretStatus, status);
    QVERIFY(!KeychainHelper::lookup(m_key));
    QCOMPARE(KeychainHelper::lookup(m_key).error(), SecretStatus::itemNotFound);
    m_store->put(m_key, "secret");
    QCOMPARE(KeychainHelper::lookup(m_key).value_or(QString()), u"secret"_s);
    m_store->refuseAll(status);
    QVERIFY(!KeychainHelper::lookup(m_key));
    QCOMPARE(KeychainHelper::lookup(m_key).error(), status);
}

void KeychainHelperTest::deleteOfAKeyThatWasNeverStoredSucceeds()
{
    QVERIFY(KeychainHelper::remove(m_key));
    QCOMPARE(m_lines->take(), QStringList());
}

void KeychainHelperTest::deleteRemovesThatKeyAlone()
{
    m_store->put(m_key, "secret");
    m_store->put(u"another"_s, "kept");
    QVERIFY(KeychainHelper::remove(m_key));
    QVERIFY(!KeychainHelper::exists(m_key));
    QCOMPARE(KeychainHelper::get(u"another"_s), u"kept"_s);
}

void KeychainHelperTest::deleteFailsWithTheStore()
{
    QFETCH(SecretStatus, status);
    m_store->put(m_key, "secret");
    m_store->answer(Operation::remove, status);
    QVERIFY(!KeychainHelper::remove(m_key));
    QCOMPARE(m_store->secret(m_key), "secret"_ba);
}

void KeychainHelperTest::updateReplacesThePassword()
{
    m_store->put(m_key, "old");
    QVERIFY(KeychainHelper::update(u"新"_s, m_key));
    QCOMPARE(m_store->secret(m_key), "新"_ba);
    QCOMPARE(m_store->callCount(Operation::remove), 0);
    QCOMPARE(m_lines->take(), QStringList());
}

void KeychainHelperTest::updateOfAKeyThatWasNeverStoredCreatesIt()
{
    QVERIFY(KeychainHelper::update(u"new"_s, m_key));
    QCOMPARE(m_store->secret(m_key), "new"_ba);
    QCOMPARE(m_lines->take(), QStringList{u"✓ Keychain: 保存成功 - "_s + m_key});
}

void KeychainHelperTest::updateThatCannotCreateTellsOfTheSave()
{
    m_store->answer(Operation::add, SecretStatus::userCancelled);
    QVERIFY(!KeychainHelper::update(u"new"_s, m_key));
    QCOMPARE(m_lines->take(), QStringList{u"✗ Keychain: 保存失败 - "_s + m_key + u", 错误码: -128"_s});
}

void KeychainHelperTest::updateTellsTheStatus()
{
    QFETCH(SecretStatus, status);
    QFETCH(QString, number);
    m_store->put(m_key, "old");
    m_store->answer(Operation::update, status);
    QVERIFY(!KeychainHelper::update(u"new"_s, m_key));
    QCOMPARE(m_store->secret(m_key), "old"_ba);
    QCOMPARE(m_lines->take(), QStringList{u"✗ Keychain: 更新失败 - "_s + m_key + u", 错误码: "_s + number});
}

void KeychainHelperTest::updateOfABrokenTextTouchesNothing()
{
    QFETCH(const QString, text);
    QVERIFY(!KeychainHelper::update(text, m_key));
    QCOMPARE(m_store->calls(), QList<Call>());
    QCOMPARE(m_lines->take(), QStringList());
}

void KeychainHelperTest::existsIsWhetherThereIsAPassword()
{
    QVERIFY(!KeychainHelper::exists(m_key));
    m_store->put(m_key, "secret");
    QVERIFY(KeychainHelper::exists(m_key));
    m_store->refuseAll(SecretStatus::notAvailable);
    QVERIFY(!KeychainHelper::exists(m_key));
}

void KeychainHelperTest::keysWithPlaceholdersArePrintedAsTheyAre()
{
    m_store->answer(Operation::add, SecretStatus::timedOut);
    QVERIFY(!KeychainHelper::save(u"secret"_s, u"%1 %3 钥匙"_s));
    QCOMPARE(m_lines->take(), QStringList{u"✗ Keychain: 保存失败 - %1 %3 钥匙, 错误码: -60008"_s});
}

void KeychainHelperTest::withoutAStoreEverythingFails()
{
    KeychainHelper::setStore(nullptr);
    QVERIFY(!KeychainHelper::save(u"secret"_s, m_key));
    QVERIFY(!KeychainHelper::update(u"secret"_s, m_key));
    QVERIFY(!KeychainHelper::remove(m_key));
    QVERIFY(!KeychainHelper::exists(m_key));
    QCOMPARE(KeychainHelper::lookup(m_key).error(), SecretStatus::notAvailable);
    QCOMPARE(m_lines->take(), (QStringList{u"✗ Keychain: 保存失败 - "_s + m_key + u", 错误码: -25291"_s,
                                           u"✗ Keychain: 更新失败 - "_s + m_key + u", 错误码: -25291"_s}));
}

void KeychainHelperTest::theQueueHoldsNothingElseUp()
{
    m_store->put(m_key, "secret");
    m_store->hold();
    QFuture<std::optional<QString>> first =
        QtConcurrent::run(&KeychainHelper::queue(), &KeychainHelper::get, m_key);
    QFuture<std::optional<QString>> second =
        QtConcurrent::run(&KeychainHelper::queue(), &KeychainHelper::get, m_key);
    QTRY_COMPARE(m_store->heldCalls(), 1);
    // The pool of everybody else is free.
    QCOMPARE(QtConcurrent::run([] { return 7; }).result(), 7);
    QVERIFY(!first.isFinished());
    m_store->release();
    QCOMPARE(first.result(), u"secret"_s);
    QCOMPARE(second.result(), u"secret"_s);
}

void KeychainHelperTest::replacementsOfSeveralThreadsDoNotMix()
{
    constexpr int saves = 200;
    QThreadPool pool;
    pool.setMaxThreadCount(4);
    QList<QFuture<bool>> results;
    for (int number = 0; number < saves; ++number)
        results.append(QtConcurrent::run(&pool, &KeychainHelper::save, QString::number(number), m_key));
    pool.waitForDone();
    for (const QFuture<bool> &result : std::as_const(results))
        QVERIFY(result.result());
    QCOMPARE(m_store->itemCount(), 1);
}

QTEST_GUILESS_MAIN(KeychainHelperTest)
#include "KeychainHelperTest.moc"
