// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/SleepWatch.h"
#include "FakeLogind.h"

#include "Platform/Linux/PulseAudioSession.h"

#include <QDBusMessage>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The machine's sleep as logind tells it, on a bus of the test's own.
class SleepWatchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void holdsSleepUpUntilItHasTold();
    void tellsOnceAndHoldsSleepUpAgainAfterwards();
    void aSleepThatIsCalledOffIsNotSleptThrough();
    void sleepIsToldWhereNobodyMayHoldItUp();
    void withoutLogindNothingIsTold();
    void aLogindThatComesLaterIsAsked();
    void aLogindThatStartsAnewIsAskedAgain();
    void withoutABusThereIsNothing();
    void endsAtAnyTime();
    void sleepInterruptsTheSoundAndNothingResumesIt();
    void theSessionNeedsNeitherServerNorBus();

private:
    std::unique_ptr<FakeLogind> m_logind;
};

void SleepWatchTest::init()
{
    m_logind = std::make_unique<FakeLogind>();
    QVERIFY(m_logind->isBusRunning());
}

void SleepWatchTest::cleanup()
{
    m_logind.reset();
}

void SleepWatchTest::holdsSleepUpUntilItHasTold()
{
    QVERIFY(m_logind->appear());
    SleepWatch watch(m_logind->client());
    QVERIFY(watch.start());
    QTRY_VERIFY(watch.delaysSleep());
    QCOMPARE(m_logind->requests.size(), 1);
    QCOMPARE(m_logind->requests[0][0], u"sleep"_s);
    QCOMPARE(m_logind->requests[0][1], u"Tarnova Music Player"_s);
    QCOMPARE(m_logind->requests[0][3], u"delay"_s);
    QVERIFY(m_logind->isHeldUp());

    bool wasHeldUpLater = false;
    int told = 0;
    connect(&watch, &SleepWatch::fallingAsleep, this, [&] {
        ++told;
        // What the player leaves to the main loop still comes before sleep.
        const auto later = [&] { wasHeldUpLater = m_logind->isHeldUp(); };
        QMetaObject::invokeMethod(this, later, Qt::QueuedConnection);
    });
    m_logind->prepareForSleep(true);
    QTRY_VERIFY(!m_logind->isHeldUp());
    QCOMPARE(told, 1);
    QVERIFY(wasHeldUpLater);
}

void SleepWatchTest::tellsOnceAndHoldsSleepUpAgainAfterwards()
{
    QVERIFY(m_logind->appear());
    SleepWatch watch(m_logind->client());
    QSignalSpy asleep(&watch, &SleepWatch::fallingAsleep);
    QSignalSpy awake(&watch, &SleepWatch::awake);
    QVERIFY(watch.start());
    QVERIFY(watch.start());
    for (int i = 1; i <= 3; ++i) {
        QTRY_VERIFY(m_logind->isHeldUp());
        QTRY_VERIFY(watch.delaysSleep());
        m_logind->prepareForSleep(true);
        m_logind->prepareForSleep(true);
        QTRY_VERIFY(!m_logind->isHeldUp());
        QCOMPARE(asleep.size(), i);
        QCOMPARE(awake.size(), i - 1);
        m_logind->prepareForSleep(false);
        QTRY_COMPARE(awake.size(), i);
        QCOMPARE(asleep.size(), i);
    }
}

void SleepWatchTest::aSleepThatIsCalledOffIsNotSleptThrough()
{
    QVERIFY(m_logind->appear());
    SleepWatch watch(m_logind->client());
    QSignalSpy awake(&watch, &SleepWatch::awake);
    QVERIFY(watch.start());
    QTRY_VERIFY(watch.delaysSleep());
    m_logind->prepareForSleep(false);
    m_logind->prepareForSleep(true);
    m_logind->prepareForSleep(false);
    QTRY_COMPARE(awake.size(), 1);
    QTRY_COMPARE(m_logind->requests.size(), 2);
    QTRY_VERIFY(m_logind->isHeldUp());
    QVERIFY(watch.delaysSleep());
}

void SleepWatchTest::sleepIsToldWhereNobodyMayHoldItUp()
{
    m_logind->isRefusing = true;
    QVERIFY(m_logind->appear());
    SleepWatch watch(m_logind->client());
    QSignalSpy asleep(&watch, &SleepWatch::fallingAsleep);
    QVERIFY(watch.start());
    QTRY_COMPARE(m_logind->requests.size(), 1);
    m_logind->prepareForSleep(true);
    QTRY_COMPARE(asleep.size(), 1);
    QVERIFY(!watch.delaysSleep());
}

void SleepWatchTest::withoutLogindNothingIsTold()
{
    SleepWatch watch(m_logind->client());
    QVERIFY(watch.start());
    QDBusConnection bus = m_logind->client();
    QVERIFY(bus.call(QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/"_s,
                                                    u"org.freedesktop.DBus"_s, u"GetId"_s))
                .type() == QDBusMessage::ReplyMessage);
    QCoreApplication::processEvents();
    QVERIFY(!watch.delaysSleep());
}

void SleepWatchTest::aLogindThatComesLaterIsAsked()
{
    SleepWatch watch(m_logind->client());
    QSignalSpy asleep(&watch, &SleepWatch::fallingAsleep);
    QVERIFY(watch.start());
    QVERIFY(m_logind->appear());
    QTRY_VERIFY(watch.delaysSleep());
    m_logind->prepareForSleep(true);
    QTRY_COMPARE(asleep.size(), 1);
}

void SleepWatchTest::aLogindThatStartsAnewIsAskedAgain()
{
    QVERIFY(m_logind->appear());
    SleepWatch watch(m_logind->client());
    QVERIFY(watch.start());
    QTRY_VERIFY(watch.delaysSleep());
    m_logind->vanish();
    QTRY_VERIFY(!watch.delaysSleep());
    QVERIFY(m_logind->appear());
    QTRY_VERIFY(watch.delaysSleep());
    QVERIFY(m_logind->isHeldUp());
}

void SleepWatchTest::withoutABusThereIsNothing()
{
    SleepWatch watch{QDBusConnection(u"no bus"_s)};
    QVERIFY(!watch.start());
    QVERIFY(!watch.delaysSleep());
}

void SleepWatchTest::endsAtAnyTime()
{
    QVERIFY(m_logind->appear());
    for (int i = 0; i < 20; ++i) {
        auto watch = std::make_unique<SleepWatch>(m_logind->client());
        QVERIFY(watch->start());
        for (int turn = 0; turn < i / 4; ++turn)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        connect(watch.get(), &SleepWatch::fallingAsleep, this, [&watch] { watch.reset(); });
        m_logind->prepareForSleep(true);
        QCoreApplication::processEvents();
        m_logind->prepareForSleep(false);
    }
    QTRY_VERIFY(!m_logind->isHeldUp());
}

void SleepWatchTest::sleepInterruptsTheSoundAndNothingResumesIt()
{
    QVERIFY(m_logind->appear());
    PulseAudioSession session(m_logind->client());
    QSignalSpy interrupted(&session, &AudioSession::interrupted);
    session.activate();
    QTRY_VERIFY(m_logind->isHeldUp());
    m_logind->prepareForSleep(true);
    QTRY_COMPARE(interrupted.size(), 1);
    QCOMPARE(interrupted[0][0].value<AudioSession::InterruptionType>(),
             AudioSession::InterruptionType::began);
    QTRY_VERIFY(!m_logind->isHeldUp());
    m_logind->prepareForSleep(false);
    QTRY_COMPARE(interrupted.size(), 2);
    QCOMPARE(interrupted[1][0].value<AudioSession::InterruptionType>(),
             AudioSession::InterruptionType::ended);
    QCOMPARE(interrupted[1][1].toBool(), false);
}

void SleepWatchTest::theSessionNeedsNeitherServerNorBus()
{
    PulseAudioSession session{QDBusConnection(u"no bus"_s)};
    session.activate();
    session.activate();
    QCoreApplication::processEvents();
}

int main(int argc, char **argv)
{
    // No sound server of this machine may answer.
    const QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    qputenv("PULSE_SERVER", "unix:" + runtime.filePath(u"native"_s).toLocal8Bit());
    QCoreApplication application(argc, argv);
    SleepWatchTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "SleepWatchTest.moc"
