// SPDX-License-Identifier: GPL-3.0-or-later
// What becomes of a call when the Secret Service hangs, fails, asks the listener or goes away.
#include "Fixtures/Keyring/FakeSecretService.h"
#include "Fixtures/Keyring/PrivateBus.h"
#include "Platform/Linux/LibsecretStore.h"

#include <QElapsedTimer>
#include <QFuture>
#include <QLocalServer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class SecretServiceFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theFakeServiceIsReadAndWritten();
    void aHangingServiceEndsInTime_data();
    void aHangingServiceEndsInTime();
    void aHangingServiceHoldsNobodyUpButTheCall();
    void aHangingServiceThatRecoversIsUsedAgain();
    void aHangingBusEndsInTime();
    void closingEndsAHangingCallAndThoseThatWait();
    void closingEndsAHangingBus();
    void aFailingServiceIsTold_data();
    void aFailingServiceIsTold();
    void aPromptMayTakeLongerThanAnAnswer();
    void aHangAfterAPromptEndsInTime();
    void aDismissedPromptChangesNothing();
    void closingEndsAPrompt();
    void closingEndsAPromptOfAServiceThatHangs();
    void aServiceThatGoesEndsAPrompt();
    void aBusThatGoesEndsAPrompt();

private:
    static constexpr std::chrono::milliseconds shortLimit{300};
    /// Longer than any test takes, far shorter than D-Bus itself waits.
    static constexpr std::chrono::milliseconds longLimit{20'000};

    void makeStore(std::chrono::milliseconds limit)
    {
        m_store = std::make_unique<LibsecretStore>(limit, m_bus->address().toUtf8());
    }
    QByteArray copy()
    {
        const std::expected<QByteArray, SecretStatus> secret = m_store->copy(u"com.cadorel"_s, u"a"_s);
        return secret ? *secret : "status " + QByteArray::number(std::to_underlying(secret.error()));
    }
    QFuture<QByteArray> startCopying()
    {
        return QtConcurrent::run([this] { return copy(); });
    }
    QFuture<SecretStatus> startUpdating()
    {
        return QtConcurrent::run([this] { return m_store->update(u"com.cadorel"_s, u"a"_s, "new"); });
    }
    static void expectMessage(const QString &status)
    {
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(u"^the Secret Service fails, status %1"_s.arg(status)));
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<FakeSecretService> m_service;
    std::unique_ptr<LibsecretStore> m_store;
};

void SecretServiceFaultsTest::init()
{
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->start());
    m_service = std::make_unique<FakeSecretService>(*m_bus);
    QVERIFY(m_service->appear());
    m_service->hasItem = true;
    m_service->secret = "secret";
    makeStore(longLimit);
}

void SecretServiceFaultsTest::cleanup()
{
    // A test that failed may have left a call behind.
    if (m_store)
        m_store->close();
    QThreadPool::globalInstance()->waitForDone();
    m_store.reset();
    m_service.reset();
    m_bus.reset();
}

void SecretServiceFaultsTest::theFakeServiceIsReadAndWritten()
{
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "secret"_ba);
    QFuture<SecretStatus> updating = startUpdating();
    QTRY_VERIFY(updating.isFinished());
    QCOMPARE(updating.result(), SecretStatus::success);
    QCOMPARE(m_service->secret, "new"_ba);
}

void SecretServiceFaultsTest::aHangingServiceEndsInTime_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<bool>("isLocked");
    QTest::newRow("from the first call on") << u"*"_s << false;
    QTest::newRow("properties") << u"GetAll"_s << false;
    QTest::newRow("session") << u"OpenSession"_s << false;
    QTest::newRow("search") << u"SearchItems"_s << false;
    QTest::newRow("secret") << u"GetSecret"_s << false;
    QTest::newRow("unlocking") << u"Unlock"_s << true;
    QTest::newRow("opening a prompt") << u"Prompt"_s << true;
}

void SecretServiceFaultsTest::aHangingServiceEndsInTime()
{
    QFETCH(QString, method);
    QFETCH(bool, isLocked);
    m_service->unanswered = {method};
    m_service->isLocked = isLocked;
    makeStore(shortLimit);
    QElapsedTimer timer;
    timer.start();
    expectMessage(u"-60008"_s);
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "status -60008"_ba);
    QVERIFY(timer.elapsed() >= shortLimit.count());
    QVERIFY(method == u"*" || m_service->called.contains(method));
}

void SecretServiceFaultsTest::aHangingServiceHoldsNobodyUpButTheCall()
{
    m_service->unanswered = {u"*"_s};
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(!m_service->called.isEmpty());
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
    timer.start(1ms);
    QTRY_VERIFY(ticks >= 10);
    QVERIFY(!copying.isFinished());
}

void SecretServiceFaultsTest::aHangingServiceThatRecoversIsUsedAgain()
{
    m_service->unanswered = {u"GetSecret"_s};
    makeStore(shortLimit);
    expectMessage(u"-60008"_s);
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "status -60008"_ba);
    m_service->unanswered.clear();
    copying = startCopying();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "secret"_ba);
}

void SecretServiceFaultsTest::aHangingBusEndsInTime()
{
    const QTemporaryDir directory;
    QLocalServer silent;
    QVERIFY(silent.listen(directory.filePath(u"bus"_s)));
    m_store = std::make_unique<LibsecretStore>(shortLimit, "unix:path=" + silent.fullServerName().toUtf8());
    expectMessage(u"-60008"_s);
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "status -60008"_ba);
}

void SecretServiceFaultsTest::closingEndsAHangingCallAndThoseThatWait()
{
    m_service->unanswered = {u"SearchItems"_s};
    QElapsedTimer timer;
    timer.start();
    QList<QFuture<SecretStatus>> updates;
    QThreadPool pool;
    pool.setMaxThreadCount(3);
    for (int number = 0; number < 3; ++number)
        updates.append(
            QtConcurrent::run(&pool, [this] { return m_store->update(u"com.cadorel"_s, u"a"_s, "new"); }));
    QTRY_VERIFY(m_service->called.contains(u"SearchItems"_s));
    m_store->close();
    for (const QFuture<SecretStatus> &update : std::as_const(updates))
        QCOMPARE(update.result(), SecretStatus::notAvailable);
    QVERIFY(timer.elapsed() < longLimit.count());
    QCOMPARE(m_service->called.count(u"SearchItems"_s), 1);
    QCOMPARE(copy(), "status -25291"_ba);
}

void SecretServiceFaultsTest::closingEndsAHangingBus()
{
    const QTemporaryDir directory;
    QLocalServer silent;
    QVERIFY(silent.listen(directory.filePath(u"bus"_s)));
    m_store = std::make_unique<LibsecretStore>(longLimit, "unix:path=" + silent.fullServerName().toUtf8());
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(silent.hasPendingConnections());
    m_store->close();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "status -25291"_ba);
}

void SecretServiceFaultsTest::aFailingServiceIsTold_data()
{
    QTest::addColumn<QString>("method");
    for (const char *method : {"OpenSession", "SearchItems", "GetSecret"})
        QTest::newRow(method) << QString::fromLatin1(method);
}

void SecretServiceFaultsTest::aFailingServiceIsTold()
{
    QFETCH(QString, method);
    m_service->failing = {method};
    expectMessage(u"-36"_s);
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "status -36"_ba);
}

void SecretServiceFaultsTest::aPromptMayTakeLongerThanAnAnswer()
{
    m_service->isLocked = true;
    makeStore(shortLimit);
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(m_service->isPromptOpen);
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY(timer.hasExpired(2 * shortLimit.count()));
    QVERIFY(!copying.isFinished());
    m_service->acceptPrompt();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "secret"_ba);
}

void SecretServiceFaultsTest::aHangAfterAPromptEndsInTime()
{
    m_service->isLocked = true;
    m_service->unanswered = {u"GetSecret"_s};
    makeStore(shortLimit);
    expectMessage(u"-60008"_s);
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(m_service->isPromptOpen);
    m_service->acceptPrompt();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "status -60008"_ba);
}

void SecretServiceFaultsTest::aDismissedPromptChangesNothing()
{
    m_service->isLocked = true;
    QFuture<SecretStatus> updating = startUpdating();
    QTRY_VERIFY(m_service->isPromptOpen);
    m_service->dismissPrompt();
    QTRY_VERIFY(updating.isFinished());
    QCOMPARE(updating.result(), SecretStatus::userCancelled);
    QCOMPARE(m_service->secret, "secret"_ba);
    // The listener is asked again when there is a need again.
    updating = startUpdating();
    QTRY_VERIFY(m_service->isPromptOpen);
    m_service->acceptPrompt();
    QTRY_VERIFY(updating.isFinished());
    QCOMPARE(updating.result(), SecretStatus::success);
    QCOMPARE(m_service->secret, "new"_ba);
}

void SecretServiceFaultsTest::closingEndsAPrompt()
{
    m_service->isLocked = true;
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(m_service->isPromptOpen);
    m_store->close();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "status -25291"_ba);
    QTRY_VERIFY(m_service->called.contains(u"Dismiss"_s));
}

void SecretServiceFaultsTest::closingEndsAPromptOfAServiceThatHangs()
{
    m_service->isLocked = true;
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(m_service->isPromptOpen);
    m_service->unanswered = {u"*"_s};
    m_store->close();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "status -25291"_ba);
}

void SecretServiceFaultsTest::aServiceThatGoesEndsAPrompt()
{
    m_service->isLocked = true;
    expectMessage(u"-36"_s);
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(m_service->isPromptOpen);
    m_service->vanish();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "status -36"_ba);
    QCOMPARE(copy(), "status -25291"_ba);
}

void SecretServiceFaultsTest::aBusThatGoesEndsAPrompt()
{
    m_service->isLocked = true;
    expectMessage(u"-36"_s);
    QFuture<QByteArray> copying = startCopying();
    QTRY_VERIFY(m_service->isPromptOpen);
    m_bus->stop();
    QTRY_VERIFY(copying.isFinished());
    QCOMPARE(copying.result(), "status -36"_ba);
}

QTEST_GUILESS_MAIN(SecretServiceFaultsTest)
#include "SecretServiceFaultsTest.moc"
