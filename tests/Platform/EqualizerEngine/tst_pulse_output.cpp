// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/MadeWaves.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/EqualizerEngine/PulseOutput.h"
#include "RampSource.h"

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <climits>
#include <cmath>
#include <functional>
#include <numbers>

namespace cadorel {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr AudioFormat mono{.sampleRate = 48'000, .channelCount = 1};
/// Below it is silence.
constexpr float audible = 0.002F;

/// The sound of a ramp, recorded.
struct Bench
{
    explicit Bench(const SoundServer &server, AudioFormat format = mono,
                   std::shared_ptr<PulseLink> link = std::make_shared<PulseLink>())
        : recorder(server)
        , ramp(format)
        , output(std::move(link))
    {
        output.open(ramp.format(), ramp.source());
    }

    Recorder recorder;
    RampSource ramp;
    PulseOutput output;
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

/// Whether it does at least once in some attempts: what has to arrive in time does not on a machine that is
/// too busy, but it never would if it were done wrong.
bool succeedsOnce(const std::function<bool()> &attempt)
{
    constexpr int attempts = 8;
    for (int i = 0; i < attempts; ++i)
        if (attempt())
            return true;
    return false;
}

} // namespace

class TestPulseOutput : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(SoundServer::available(), "no PulseAudio: scripts/setup installs it");
        QVERIFY(m_server.start());
    }

    void isHeardWholeAndInOrder()
    {
        const auto isWhole = [this] {
            Bench bench(m_server);
            bench.output.play();
            if (!QTest::qWaitFor([&] { return bench.output.framesHeard() > 48'000; }))
                return false;
            bench.output.pause();
            if (!bench.recorder.hearSilence(100ms, 5s))
                return false;
            const auto &samples = bench.recorder.samples();
            const auto stretches = stretchesOf(samples);
            return stretches.size() == 1 && RampSource::secondsOf(samples[stretches[0].begin]) < 0.002 &&
                   RampSource::secondsOf(samples[stretches[0].end - 1]) > 0.99;
        };
        QVERIFY(succeedsOnce(isWhole));
    }

    void clockAgreesWithTheRecording()
    {
        Bench bench(m_server);
        bench.output.play();
        QVERIFY(bench.recorder.hear(500ms));
        double before = 0;
        QList<double> lags;
        for (int i = 0; i < 60; ++i) {
            QVERIFY(bench.recorder.hear(std::chrono::milliseconds(500 + i * 50)));
            const double clock = bench.output.framesHeard() / mono.sampleRate;
            QVERIFY(clock >= before);
            before = clock;
            const float latest = bench.recorder.samples().back();
            if (std::abs(latest) > audible) // no gap of a busy machine
                lags.append(clock - RampSource::secondsOf(latest));
        }
        QVERIFY(lags.size() > 40);
        std::ranges::sort(lags);
        qInfo() << "clock ahead of the recording:" << lags.first() << lags[lags.size() / 2] << lags.last();
        // The device gives its sound to the recording up to ten milliseconds before it is due, and a busy
        // machine gives it late.
        const double median = lags[lags.size() / 2];
        QVERIFY2(median > -0.02 && median < 0.04, qPrintable(QString::number(median)));
    }

    void pauseIsSilentAtOnceAndLosesNothing()
    {
        Bench bench(m_server);
        double soonest = 1;
        for (int i = 0; i < 3; ++i) {
            bench.recorder.clear();
            const double begin = bench.output.framesHeard() / mono.sampleRate;
            bench.output.play();
            QTRY_VERIFY(bench.output.framesHeard() / mono.sampleRate > begin + 0.3);
            const double clock = bench.output.framesHeard() / mono.sampleRate;
            bench.output.pause();
            const double held = bench.output.framesHeard() / mono.sampleRate;
            QVERIFY(held >= clock && held < clock + 0.1);
            QVERIFY(bench.recorder.hearSilence(200ms, 5s));
            QCOMPARE(bench.output.framesHeard() / mono.sampleRate, held);
            const auto before = stretchesOf(bench.recorder.samples());
            QVERIFY(!before.isEmpty());
            const double last = RampSource::secondsOf(bench.recorder.samples()[before.last().end - 1]);
            soonest = std::min(soonest, last - clock);
            QTRY_VERIFY(m_server.streams().contains("Corked: yes"));

            bench.recorder.clear();
            bench.output.play();
            QTRY_VERIFY(bench.output.framesHeard() / mono.sampleRate > held + 0.2);
            QList<Stretch> after;
            QTRY_VERIFY(bench.recorder.hear(0ms) &&
                        !(after = stretchesOf(bench.recorder.samples())).isEmpty());
            const double first = RampSource::secondsOf(bench.recorder.samples()[after[0].begin]);
            QVERIFY2(std::abs(first - held) < 0.007, qPrintable(QString::number(first - held))); // the fade
            bench.output.pause();
            QVERIFY(bench.recorder.hearSilence(200ms, 5s));
        }
        qInfo() << "silent after" << soonest;
        // Every time, but that the machine may be too busy to let the server hear of it.
        QVERIFY2(soonest < 0.06, qPrintable(QString::number(soonest)));
    }

    void fadesAreNoClicks()
    {
        const auto clicks = [this] {
            Bench bench(m_server);
            double heard = 0;
            for (int i = 0; i < 6; ++i) {
                bench.output.play();
                if (!QTest::qWaitFor([&] { return bench.output.framesHeard() > heard + 5'000; }))
                    return INT_MAX;
                bench.output.pause();
                heard = bench.output.framesHeard();
                QTest::qWait(i * 30); // with the tap open, and with it closed
            }
            if (!bench.recorder.hearSilence(100ms, 5s))
                return INT_MAX;
            const auto &samples = bench.recorder.samples();
            // The ramp's own beginning is none.
            const auto start = std::size_t(bench.recorder.firstAbove(0.5F)) + 10;
            int count = 0;
            for (std::size_t i = start; i < samples.size(); ++i)
                count += std::abs(samples[i] - samples[i - 1]) > 0.01F ? 1 : 0; // a fade's are 0.0033
            return count;
        };
        QVERIFY(succeedsOnce([&] { return clicks() <= 2; }));
    }

    void endsWithoutAClick()
    {
        const auto noStreamIsLeft = [this] {
            return QTest::qWaitFor([this] { return !m_server.streams().contains("Sink Input #"); });
        };
        const auto endsSoftly = [this, noStreamIsLeft](bool dropped) {
            const auto link = std::make_shared<PulseLink>();
            std::optional<Bench> bench(std::in_place, m_server, mono, link);
            Recorder recorder(m_server);
            bench->output.play();
            if (!QTest::qWaitFor([&] { return bench->output.framesHeard() > 24'000; }))
                return false;
            if (dropped)
                bench->output.drop();
            bench.reset();
            if (!recorder.hearSilence(100ms, 5s) || !noStreamIsLeft())
                return false;
            const auto &samples = recorder.samples();
            const auto end = std::size_t(recorder.lastAbove(0.001F));
            return end > 480 && std::abs(samples[end]) < 0.01F;
        };
        QVERIFY(succeedsOnce([&] { return endsSoftly(true); }));
        QVERIFY(succeedsOnce([&] { return endsSoftly(false); }));
    }

    void anotherSoundFollowsADropAtOnce()
    {
        const auto follows = [this] {
            Bench bench(m_server);
            bench.output.play();
            if (!QTest::qWaitFor([&] { return bench.output.framesHeard() > 24'000; }))
                return false;
            const double left = bench.output.framesHeard() / mono.sampleRate;
            bench.output.drop();
            const double dropped = bench.output.framesHeard();
            bench.ramp.jumpTo(8);
            bench.output.play();
            if (dropped != 0 || bench.output.framesHeard() > 4'800 ||
                !QTest::qWaitFor([&] { return bench.output.framesHeard() > 24'000; }))
                return false;
            bench.output.pause();
            if (!bench.recorder.hearSilence(100ms, 5s))
                return false;
            const auto &samples = bench.recorder.samples();
            const auto stretches = stretchesOf(samples);
            const auto next = std::ranges::find_if(stretches, [&samples](const Stretch &stretch) {
                return RampSource::secondsOf(samples[stretch.begin]) > 7.999;
            });
            if (next == stretches.begin() || next == stretches.end())
                return false;
            const double last = RampSource::secondsOf(samples[std::prev(next)->end - 1]);
            const double first = RampSource::secondsOf(samples[next->begin]);
            const double gap = double(next->begin - std::prev(next)->end) / Recorder::sampleRate;
            qInfo() << "left at" << left << "last heard" << last << "gap" << gap << "begins at" << first;
            return last - left < 0.06 && first < 8.002 && gap < 0.06;
        };
        QVERIFY(succeedsOnce(follows));
    }

    void standsWhileTheSourceHasNothing()
    {
        Bench bench(m_server);
        bench.ramp.limitTo(0.5);
        bench.output.play();
        QTRY_COMPARE(bench.output.framesHeard(), 24'000.0);
        QVERIFY(bench.recorder.hearSilence(200ms, 5s));
        QCOMPARE(bench.output.framesHeard(), 24'000.0);
        bench.recorder.clear();
        bench.ramp.limitTo(10);
        bench.output.wake();
        QVERIFY(bench.recorder.hear(600ms));
        const auto stretches = stretchesOf(bench.recorder.samples());
        QVERIFY(!stretches.isEmpty());
        const double first = RampSource::secondsOf(bench.recorder.samples()[stretches[0].begin]);
        qInfo() << "goes on at" << first;
        QVERIFY(std::abs(first - 0.5) < 0.007); // the fade
        const double clock = bench.output.framesHeard() / mono.sampleRate;
        const double lag = clock - RampSource::secondsOf(bench.recorder.samples().back());
        qInfo() << "clock ahead by" << lag;
        QVERIFY(lag > -0.1 && lag < 0.1);
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
        Bench bench(m_server, {.sampleRate = rate, .channelCount = channels});
        bench.output.play();
        QTRY_VERIFY(bench.output.framesHeard() > 0.5 * rate);
        QVERIFY(bench.recorder.hearSound(0.1F, 5s));
        QVERIFY(bench.output.framesHeard() < 5.0 * rate);
    }

    void noChannelIsLostOnTwoSpeakers_data()
    {
        QTest::addColumn<int>("channels");
        for (int channels = 1; channels <= 8; ++channels)
            QTest::addRow("%d channels", channels) << channels;
    }

    void noChannelIsLostOnTwoSpeakers()
    {
        QFETCH(const int, channels);
        const auto hertzOf = [](int channel) { return 400.0 + 300.0 * channel; };
        Recorder recorder(m_server);
        PulseOutput output(std::make_shared<PulseLink>());
        qint64 next = 0;
        output.open({.sampleRate = Recorder::sampleRate, .channelCount = channels}, [&](float *interleaved,
                                                                                        qint64 frameCount) {
            for (qint64 i = 0; i < frameCount; ++i, ++next)
                for (int channel = 0; channel < channels; ++channel)
                    *interleaved++ = float(0.1 * std::sin(2 * std::numbers::pi * hertzOf(channel) *
                                                          double(next) / Recorder::sampleRate));
            return frameCount;
        });
        output.play();
        QVERIFY(recorder.hearSound(0.02F, 5s));
        recorder.clear();
        QVERIFY(recorder.hear(300ms));
        for (int channel = 0; channel < channels; ++channel) {
            // What is meant for a subwoofer, the fourth of six and more, has no place on two speakers.
            // Servers play what is meant for the back more softly than the rest.
            if (channels >= 6 && channel == 3)
                continue;
            const double heard =
                fitTone(recorder.samples(), hertzOf(channel), Recorder::sampleRate).amplitude;
            QVERIFY2(heard > 0.001, qPrintable(u"channel %1: %2"_s.arg(channel).arg(heard)));
        }
    }

    void silenceClosesTheTapThoughNothingCame_data()
    {
        QTest::addColumn<bool>("dropped");
        QTest::newRow("paused") << false;
        QTest::newRow("dropped") << true;
    }

    void silenceClosesTheTapThoughNothingCame()
    {
        QFETCH(const bool, dropped);
        Bench bench(m_server);
        bench.ramp.limitTo(0.2);
        bench.output.play();
        QTRY_COMPARE(bench.output.framesHeard(), 9'600.0);
        bench.output.drop();
        bench.output.play(); // of a file that cannot be read that fast
        if (dropped)
            bench.output.drop();
        else
            bench.output.pause();
        QTRY_VERIFY(m_server.streams().contains("Corked: yes"));
    }

    void streamTellsWhatItIsAndNotWhatItPlays()
    {
        Bench bench(m_server);
        bench.output.play();
        QTRY_VERIFY(m_server.streams().contains("Corked: no"));
        const QByteArray streams = m_server.streams();
        QVERIFY(streams.contains("media.role = \"music\""));
        QVERIFY(streams.contains("application.name = \"Tarnova Music Player\""));
        QVERIFY(streams.contains("media.name = \"Music\""));
    }

private:
    SoundServer m_server;
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestPulseOutput)
#include "tst_pulse_output.moc"
