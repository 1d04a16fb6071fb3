// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/EqualizerEngine/PulseOutput.h"
#include "RampSource.h"

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace cadorel {

using namespace std::chrono_literals;

namespace {

constexpr AudioFormat mono{.sampleRate = 48'000, .channelCount = 1};
/// Below it is silence.
constexpr float audible = 0.002F;

/// The sound of a ramp on a device of the test's own, recorded.
struct Bench
{
    explicit Bench(AudioFormat format = mono)
        : ramp(format)
    {
    }

    bool start()
    {
        if (!server.start())
            return false;
        recorder.emplace(server);
        output.open(ramp.format(), ramp.source());
        return true;
    }

    SoundServer server;
    std::optional<Recorder> recorder;
    RampSource ramp;
    PulseOutput output{std::make_shared<PulseLink>()};
};

/// A stretch of a recording without a jump.
struct Stretch
{
    std::size_t begin;
    std::size_t end;
};

/// The stretches in which the ramp is heard at its full size, silence and fades left out.
QList<Stretch> stretchesOf(const std::vector<float> &samples)
{
    constexpr double rise = 2 * RampSource::amplitude / RampSource::lengthSeconds / Recorder::sampleRate;
    constexpr double tolerance = 1.5 / 32'768;
    constexpr std::size_t shortest = 200;
    QList<Stretch> found;
    std::size_t begin = 0;
    for (std::size_t i = 1; i <= samples.size(); ++i) {
        const bool follows =
            i < samples.size() && std::abs(samples[i]) > audible &&
            std::abs(double(samples[i] - samples[begin]) - rise * double(i - begin)) < tolerance;
        if (follows)
            continue;
        if (i - begin >= shortest && std::abs(samples[begin]) > audible)
            found.append({begin, i});
        begin = i;
    }
    return found;
}

} // namespace

class TestPulseOutput : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        if (!SoundServer::available())
            QSKIP("no sound server on this machine");
    }

    void isHeardWholeAndInOrder()
    {
        Bench bench;
        QVERIFY(bench.start());
        bench.output.play();
        QVERIFY(bench.recorder->hear(1500ms));
        const auto stretches = stretchesOf(bench.recorder->samples());
        QCOMPARE(stretches.size(), 1);
        const auto &samples = bench.recorder->samples();
        const double begin = RampSource::secondsOf(samples[stretches[0].begin]);
        const double end = RampSource::secondsOf(samples[stretches[0].end - 1]);
        QVERIFY2(begin < 0.002, qPrintable(QString::number(begin)));
        QVERIFY(end > 1);
        qInfo() << "first sample after" << double(stretches[0].begin) / 48 << "ms";
    }

    void clockAgreesWithTheRecording()
    {
        Bench bench;
        QVERIFY(bench.start());
        bench.output.play();
        QVERIFY(bench.recorder->hear(500ms));
        double before = 0;
        QList<double> lags;
        for (int i = 0; i < 60; ++i) {
            QVERIFY(bench.recorder->hear(std::chrono::milliseconds(500 + i * 50)));
            const double clock = bench.output.framesHeard() / mono.sampleRate;
            QVERIFY(clock >= before);
            before = clock;
            lags.append(clock - RampSource::secondsOf(bench.recorder->samples().back()));
        }
        std::ranges::sort(lags);
        qInfo() << "clock ahead of the recording:" << lags.first() << lags[30] << lags.last();
        // The recording itself is late by some milliseconds, and by more when the machine is busy.
        QVERIFY(lags.first() > -0.01);
        QVERIFY(lags[30] < 0.04);
    }

    void pauseIsSilentAtOnceAndLosesNothing()
    {
        Bench bench;
        QVERIFY(bench.start());
        bench.output.play();
        QVERIFY(bench.recorder->hear(700ms));
        const double clock = bench.output.framesHeard() / mono.sampleRate;
        bench.output.pause();
        const double held = bench.output.framesHeard() / mono.sampleRate;
        QVERIFY(held >= clock);
        QVERIFY2(held - clock < 0.03, qPrintable(QString::number(held - clock)));
        QVERIFY(bench.recorder->hearSilence(200ms, 5s));
        QCOMPARE(bench.output.framesHeard() / mono.sampleRate, held);
        const auto before = stretchesOf(bench.recorder->samples());
        const double last = RampSource::secondsOf(bench.recorder->samples()[before.last().end - 1]);
        qInfo() << "clock at pause" << clock << "held" << held << "last heard" << last;
        QVERIFY2(last - clock < 0.06, qPrintable(QString::number(last - clock)));
        QTRY_VERIFY(bench.server.streams().contains("Corked: yes"));
        bench.recorder->clear();
        bench.output.play();
        QVERIFY(bench.recorder->hear(700ms));
        const auto after = stretchesOf(bench.recorder->samples());
        QCOMPARE(after.size(), 1);
        const double first = RampSource::secondsOf(bench.recorder->samples()[after[0].begin]);
        qInfo() << "goes on at" << first << "after" << double(after[0].begin) / 48 << "ms";
        QVERIFY(std::abs(first - held) < 0.007); // the fade
        QVERIFY(bench.output.framesHeard() / mono.sampleRate > held + 0.3);
    }

    void fadesAreNoClicks()
    {
        Bench bench;
        QVERIFY(bench.start());
        for (int i = 0; i < 8; ++i) {
            bench.output.play();
            QTRY_VERIFY(bench.output.framesHeard() > double((i + 1) * 5'000));
            bench.output.pause();
            QTest::qWait(i * 20); // with the tap open, and with it closed
        }
        QVERIFY(bench.recorder->hearSilence(100ms, 5s));
        const auto &samples = bench.recorder->samples();
        // The first sample is -0.8 without a fade: that is the ramp's own beginning.
        const auto start = std::size_t(bench.recorder->firstAbove(0.5F)) + 10;
        float worst = 0;
        for (std::size_t i = start; i < samples.size(); ++i)
            worst = std::max(worst, std::abs(samples[i] - samples[i - 1]));
        qInfo() << "largest step" << worst;
        QVERIFY2(worst < 0.01F, qPrintable(QString::number(worst))); // 0.8 in five milliseconds is 0.0033
    }

    void anotherSoundFollowsADropAtOnce()
    {
        Bench bench;
        QVERIFY(bench.start());
        bench.output.play();
        QVERIFY(bench.recorder->hear(700ms));
        const double left = bench.output.framesHeard() / mono.sampleRate;
        bench.output.drop();
        QCOMPARE(bench.output.framesHeard(), 0.0);
        bench.ramp.jumpTo(8);
        bench.output.play();
        QVERIFY(bench.output.framesHeard() < 480);
        QTRY_VERIFY(bench.output.framesHeard() > 24'000);
        QVERIFY(bench.recorder->hear(1200ms));
        const auto stretches = stretchesOf(bench.recorder->samples());
        const auto &samples = bench.recorder->samples();
        QVERIFY(stretches.size() >= 2);
        const Stretch old = stretches[stretches.size() - 2];
        const double last = RampSource::secondsOf(samples[old.end - 1]);
        const double first = RampSource::secondsOf(samples[stretches.last().begin]);
        qInfo() << "left at" << left << "last heard" << last << "gap"
                << double(stretches.last().begin - old.end) / 48 << "ms, begins at" << first;
        QVERIFY(last - left < 0.06);
        QVERIFY(std::abs(first - 8) < 0.001);
        QVERIFY(stretches.last().begin - old.end < Recorder::samplesIn(60ms));
    }

    void standsWhileTheSourceHasNothing()
    {
        Bench bench;
        bench.ramp.limitTo(0.5);
        QVERIFY(bench.start());
        bench.output.play();
        QTRY_COMPARE(bench.output.framesHeard(), 24'000.0);
        QVERIFY(bench.recorder->hearSilence(200ms, 5s));
        QCOMPARE(bench.output.framesHeard(), 24'000.0);
        bench.recorder->clear();
        bench.ramp.limitTo(10);
        bench.output.wake();
        QVERIFY(bench.recorder->hear(600ms));
        const auto stretches = stretchesOf(bench.recorder->samples());
        QVERIFY(!stretches.isEmpty());
        const double first = RampSource::secondsOf(bench.recorder->samples()[stretches[0].begin]);
        qInfo() << "goes on at" << first;
        QVERIFY(std::abs(first - 0.5) < 0.007); // the fade
        const double clock = bench.output.framesHeard() / mono.sampleRate;
        const double lag = clock - RampSource::secondsOf(bench.recorder->samples().back());
        qInfo() << "clock ahead by" << lag;
        QVERIFY(lag > -0.02 && lag < 0.1);
    }

    void everyShapeOfSound_data()
    {
        QTest::addColumn<int>("rate");
        QTest::addColumn<int>("channels");
        QTest::newRow("8 kHz mono") << 8'000 << 1;
        QTest::newRow("44.1 kHz stereo") << 44'100 << 2;
        QTest::newRow("96 kHz 6 channels") << 96'000 << 6;
        QTest::newRow("192 kHz 8 channels") << 192'000 << 8;
        QTest::newRow("48 kHz 3 channels") << 48'000 << 3;
        QTest::newRow("48 kHz 5 channels") << 48'000 << 5;
        QTest::newRow("48 kHz 7 channels") << 48'000 << 7;
    }

    void everyShapeOfSound()
    {
        QFETCH(const int, rate);
        QFETCH(const int, channels);
        Bench bench({.sampleRate = rate, .channelCount = channels});
        QVERIFY(bench.start());
        bench.output.play();
        QTRY_VERIFY(bench.output.framesHeard() > 0.5 * rate);
        QVERIFY(bench.recorder->hearSound(0.1F, 5s));
        QVERIFY(bench.output.framesHeard() < 5.0 * rate);
    }

    void streamTellsWhatItIsAndNotWhatItPlays()
    {
        Bench bench;
        QVERIFY(bench.start());
        bench.output.play();
        QTRY_VERIFY(bench.server.streams().contains("Corked: no"));
        const QByteArray streams = bench.server.streams();
        QVERIFY(streams.contains("media.role = \"music\""));
        QVERIFY(streams.contains("application.name = \"Tarnova Music Player\""));
        QVERIFY(streams.contains("media.name = \"Music\""));
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestPulseOutput)
#include "tst_pulse_output.moc"
