// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/SignalWatcher.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <unistd.h>

using namespace cadorel;

namespace {

int dispositionCalls = 0;

void countCall(int)
{
    ++dispositionCalls;
}

} // namespace

class SignalWatcherTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsOfEachSignal_data();
    void tellsOfEachSignal();
    void tellsOnTheMainThread();
    void aBurstIsToldToo();
    void respectsIgnoredSignals();
    void restoresWhatWas();
};

void SignalWatcherTest::tellsOfEachSignal_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void SignalWatcherTest::tellsOfEachSignal()
{
    QFETCH(int, number);
    const SignalWatcher watcher;
    QSignalSpy spy(&watcher, &SignalWatcher::terminationRequested);
    QCOMPARE(::kill(::getpid(), number), 0);
    QTRY_COMPARE(spy.count(), 1);
    QCOMPARE(spy.first().first().toInt(), number);
}

void SignalWatcherTest::tellsOnTheMainThread()
{
    const SignalWatcher watcher;
    QThread *thread = nullptr;
    connect(
        &watcher, &SignalWatcher::terminationRequested, &watcher,
        [&thread] { thread = QThread::currentThread(); }, Qt::DirectConnection);
    const std::unique_ptr<QThread> other(QThread::create([] { ::raise(SIGTERM); }));
    other->start();
    QVERIFY(other->wait(5000));
    QTRY_VERIFY(thread == QThread::currentThread());
}

void SignalWatcherTest::aBurstIsToldToo()
{
    const SignalWatcher watcher;
    QSignalSpy spy(&watcher, &SignalWatcher::terminationRequested);
    for (const int number : {SIGHUP, SIGTERM, SIGINT})
        QCOMPARE(::raise(number), 0);
    QTRY_COMPARE(spy.count(), 3);
}

void SignalWatcherTest::respectsIgnoredSignals()
{
    std::signal(SIGHUP, SIG_IGN);
    {
        const SignalWatcher watcher;
        QSignalSpy spy(&watcher, &SignalWatcher::terminationRequested);
        QCOMPARE(::raise(SIGHUP), 0);
        QCOMPARE(::raise(SIGTERM), 0);
        QTRY_VERIFY(!spy.isEmpty());
        QCOMPARE(spy.first().first().toInt(), SIGTERM);
    }
    QVERIFY(std::signal(SIGHUP, SIG_DFL) == SIG_IGN);
}

void SignalWatcherTest::restoresWhatWas()
{
    std::signal(SIGTERM, countCall);
    for (int round = 1; round <= 2; ++round) {
        {
            const SignalWatcher watcher;
            QSignalSpy spy(&watcher, &SignalWatcher::terminationRequested);
            ::raise(SIGTERM);
            QTRY_COMPARE(spy.count(), 1);
        }
        QCOMPARE(dispositionCalls, round - 1);
        ::raise(SIGTERM);
        QCOMPARE(dispositionCalls, round);
    }
    std::signal(SIGTERM, SIG_DFL);
}

QTEST_GUILESS_MAIN(SignalWatcherTest)
#include "SignalWatcherTest.moc"
