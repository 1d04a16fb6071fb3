// SPDX-License-Identifier: GPL-3.0-or-later
// A sound server that is not there, hangs, goes or moves the stream; and one that is left in peace.
#include "CountingFile.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/RunProgram.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/EqualizerEngine/OutputAudioEngine.h"
#include "Platform/EqualizerEngine/PulseOutput.h"
#include "RampSource.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <stdexcept>

namespace cadorel {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr AudioFormat mono{.sampleRate = 48'000, .channelCount = 1};

/// What a listener is told when the output cannot be opened; empty when it can.
QString failureOf(PulseOutput &output, RampSource &ramp)
{
    try {
        output.open(mono, ramp.source());
        return {};
    } catch (const std::runtime_error &error) {
        return QString::fromUtf8(error.what());
    }
}

/// How often the threads of this process besides the main one have gone to sleep.
qint64 sleepsOfOtherThreads()
{
    qint64 sum = 0;
    const QDir tasks(u"/proc/self/task"_s);
    for (const QString &task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (task.toLongLong() == QCoreApplication::applicationPid())
            continue;
        QFile file(tasks.filePath(task + u"/status"_s));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray status = file.readAll();
        const QByteArray field = "\nvoluntary_ctxt_switches:"_ba;
        const qsizetype at = status.indexOf(field) + field.size();
        sum += status.mid(at, status.indexOf('\n', at) - at).trimmed().toLongLong();
    }
    return sum;
}

} // namespace

class TestPulseOutputFaults : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY2(SoundServer::available(), "no PulseAudio: scripts/setup installs it"); }

    void withoutAServerOpeningFailsAtOnce()
    {
        const SoundServer notStarted;
        RampSource ramp(mono);
        PulseOutput output(std::make_shared<PulseLink>());
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(failureOf(output, ramp), u"没有可用的音频设备"_s);
        QVERIFY(timer.elapsed() < 500);
        QVERIFY(!output.isOpen());
        output.play();
        output.pause();
        output.drop();
        output.wake();
        QCOMPARE(output.framesHeard(), 0.0);
    }

    void hangingServerIsGivenUpWithinASecond()
    {
        SoundServer server;
        QVERIFY(server.start());
        server.setHanging(true);
        const auto link = std::make_shared<PulseLink>();
        RampSource ramp(mono);
        QElapsedTimer timer;
        timer.start();
        PulseOutput output(link);
        QCOMPARE(failureOf(output, ramp), u"没有可用的音频设备"_s);
        QVERIFY2(timer.elapsed() < 1'000, qPrintable(QString::number(timer.elapsed())));
        server.setHanging(false);
        PulseOutput next(link);
        QCOMPARE(failureOf(next, ramp), QString());
    }

    void hangingServerDoesNotHoldUpTheNextStream()
    {
        SoundServer server;
        QVERIFY(server.start());
        const auto link = std::make_shared<PulseLink>();
        RampSource ramp(mono);
        PulseOutput first(link);
        QCOMPARE(failureOf(first, ramp), QString());
        first.play();
        QTRY_VERIFY(first.framesHeard() > 5'000);
        server.setHanging(true);
        QElapsedTimer timer;
        timer.start();
        first.pause();
        first.play();
        first.drop();
        QVERIFY2(timer.elapsed() < 100, qPrintable(QString::number(timer.elapsed())));
        PulseOutput second(link);
        QCOMPARE(failureOf(second, ramp), u"没有可用的音频设备"_s);
        QVERIFY2(timer.elapsed() < 1'100, qPrintable(QString::number(timer.elapsed())));
        server.setHanging(false);
    }

    void hangingServerStopsTheClock()
    {
        SoundServer server;
        QVERIFY(server.start());
        RampSource ramp(mono);
        PulseOutput output(std::make_shared<PulseLink>());
        QCOMPARE(failureOf(output, ramp), QString());
        output.play();
        QTRY_VERIFY(output.framesHeard() > 10'000);
        server.setHanging(true);
        const double at = output.framesHeard();
        // No more than what had been sent.
        QTest::qWait(400);
        const double stands = output.framesHeard();
        QVERIFY2(stands < at + 9'600, qPrintable(QString::number(stands - at)));
        server.setHanging(false);
        QTRY_VERIFY(output.framesHeard() > stands + 10'000);
    }

    void secondStreamNeedsNoNewConnection()
    {
        SoundServer server;
        QVERIFY(server.start());
        const auto link = std::make_shared<PulseLink>();
        RampSource ramp(mono);
        QList<qint64> times;
        for (int i = 0; i < 5; ++i) {
            QElapsedTimer timer;
            timer.start();
            PulseOutput output(link);
            QCOMPARE(failureOf(output, ramp), QString());
            times.append(timer.nsecsElapsed() / 1000);
        }
        qInfo() << "microseconds to open:" << times;
        const auto connection = link->connection(1s);
        QCOMPARE(link->connection(1s), connection);
    }

    void serverThatGoesIsToldAndAnotherServes()
    {
        SoundServer server;
        QVERIFY(server.start());
        const auto link = std::make_shared<PulseLink>();
        RampSource ramp(mono);
        PulseOutput output(link);
        QCOMPARE(failureOf(output, ramp), QString());
        output.play();
        QTRY_VERIFY(output.framesHeard() > 10'000);
        const double before = output.framesHeard();
        server.stop();
        QTRY_VERIFY(!output.isOpen());
        const double held = output.framesHeard();
        QVERIFY(held >= before);
        QTest::qWait(30);
        QCOMPARE(output.framesHeard(), held);
        output.play();
        output.pause();
        output.drop();
        output.wake();
        {
            PulseOutput none(link);
            QCOMPARE(failureOf(none, ramp), u"没有可用的音频设备"_s);
        }
        QVERIFY(server.start());
        PulseOutput next(link);
        QCOMPARE(failureOf(next, ramp), QString());
        next.play();
        QTRY_VERIFY(next.framesHeard() > 10'000);
    }

    void engineThatLostItsServerGoesOnWithTheNext()
    {
        SoundServer server;
        QVERIFY(server.start());
        const auto link = std::make_shared<PulseLink>();
        OutputAudioEngine engine(
            [link] { return std::make_unique<PulseOutput>(link); },
            [](const QUrl &) { return std::make_shared<CountingFile>(4'800'000, mono); });
        engine.connectNodes(mono);
        engine.start();
        engine.playerNode().scheduleFile(engine.openFile({}));
        engine.playerNode().play();
        const auto time = [&engine] { return engine.playerNode().playerTime()->sampleTime; };
        QTRY_VERIFY(time() > 10'000);
        server.stop();
        QTRY_VERIFY(!engine.isRunning());
        QVERIFY(!engine.playerNode().isPlaying());
        const double lost = time();
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, engine.start());
        QVERIFY(!engine.isRunning());
        QVERIFY(server.start());
        engine.start();
        QVERIFY(engine.isRunning());
        QVERIFY(time() >= lost && time() < lost + 12'000);
        engine.playerNode().play();
        QVERIFY(engine.playerNode().isPlaying());
        QTRY_VERIFY(time() > lost + 24'000);
    }

    void movedStreamGoesOn()
    {
        SoundServer server;
        QVERIFY(server.start());
        QVERIFY(runProgram(u"pactl"_s,
                           {u"load-module"_s, u"module-null-sink"_s, u"sink_name=other"_s, u"rate=44100"_s}));
        RampSource ramp(mono);
        PulseOutput output(std::make_shared<PulseLink>());
        QCOMPARE(failureOf(output, ramp), QString());
        output.play();
        QTRY_VERIFY(output.framesHeard() > 10'000);
        for (const QString &sink : {u"other"_s, u"out"_s}) {
            const QByteArray streams = server.streams();
            const qsizetype at = streams.indexOf('#') + 1;
            const QString stream = QString::fromLatin1(streams.mid(at, streams.indexOf('\n', at) - at));
            const double before = output.framesHeard();
            QVERIFY(runProgram(u"pactl"_s, {u"move-sink-input"_s, stream, sink}));
            QTRY_VERIFY(output.framesHeard() > before + 48'000);
            QVERIFY(output.isOpen());
        }
        // Back where it can be heard.
        Recorder recorder(server);
        QVERIFY(recorder.hearSound(0.01F, 5s));
    }

    void pausedOutputSleeps()
    {
        SoundServer server;
        QVERIFY(server.start());
        RampSource ramp(mono);
        PulseOutput output(std::make_shared<PulseLink>());
        QCOMPARE(failureOf(output, ramp), QString());
        output.play();
        QTRY_VERIFY(output.framesHeard() > 10'000);
        output.pause();
        QTRY_VERIFY(server.streams().contains("Corked: yes"));
        // Answers to the last commands may still be on their way.
        qint64 sleeps = -1;
        QTRY_VERIFY2(std::exchange(sleeps, sleepsOfOtherThreads()) == sleepsOfOtherThreads(),
                     "the threads do not come to rest");
        QTest::qWait(200);
        sleeps = sleepsOfOtherThreads();
        QTest::qWait(1'000); // a second of nothing
        QVERIFY(sleepsOfOtherThreads() - sleeps <= 1);
        output.play();
        const double begin = output.framesHeard();
        sleeps = sleepsOfOtherThreads();
        QTRY_VERIFY(output.framesHeard() > begin + 48'000);
        qInfo() << "wake-ups in a second of playing:" << sleepsOfOtherThreads() - sleeps;
        QVERIFY(sleepsOfOtherThreads() - sleeps > 5); // that it would have been noticed
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestPulseOutputFaults)
#include "tst_pulse_output_faults.moc"
