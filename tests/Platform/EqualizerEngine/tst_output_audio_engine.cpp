// SPDX-License-Identifier: GPL-3.0-or-later
#include "CountingFile.h"
#include "Platform/EqualizerEngine/FileOutput.h"
#include "Platform/EqualizerEngine/OutputAudioEngine.h"

#include <QTest>

#include <cmath>
#include <stdexcept>

namespace cadorel {

namespace {

constexpr AudioFormat stereo{.sampleRate = 44'100, .channelCount = 2};
constexpr AudioFormat mono{.sampleRate = 22'050, .channelCount = 1};

/// An engine whose outputs the test steps.
struct Bench
{
    FileOutput *output = nullptr;
    int made = 0;
    bool hasDevice = true;
    OutputAudioEngine engine{[this]() -> std::unique_ptr<AudioOutput> {
                                 if (!hasDevice)
                                     throw std::runtime_error("no device");
                                 auto next = std::make_unique<FileOutput>();
                                 output = next.get();
                                 ++made;
                                 return next;
                             },
                             [](const QUrl &) { return std::make_shared<CountingFile>(100'000, stereo); }};

    bool step(qint64 frames) const
    {
        output->allow(frames);
        return QTest::qWaitFor([this] { return output->allowance() == 0; }, 20'000);
    }
};

} // namespace

class TestOutputAudioEngine : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void opensTheDeviceInTheFormatConnected()
    {
        Bench bench;
        QVERIFY(!bench.engine.isRunning());
        bench.engine.connectNodes(stereo);
        QVERIFY(!bench.engine.isRunning());
        bench.engine.start();
        QVERIFY(bench.engine.isRunning());
        QCOMPARE(bench.output->format(), stereo);
    }

    void keepsTheDeviceWhileTheFormatStays()
    {
        Bench bench;
        for (int song = 0; song < 3; ++song) {
            const auto file = bench.engine.openFile({});
            bench.engine.connectNodes(stereo);
            bench.engine.start();
            bench.engine.playerNode().scheduleFile(file);
            bench.engine.playerNode().play();
            QVERIFY(bench.step(1'000));
            QCOMPARE(bench.engine.playerNode().playerTime()->sampleTime, 1'000.0);
        }
        QCOMPARE(bench.made, 1);
        bench.engine.connectNodes(mono);
        QVERIFY(!bench.engine.isRunning());
        bench.engine.start();
        QCOMPARE(bench.made, 2);
        QCOMPARE(bench.output->format(), mono);
    }

    void withoutADeviceStartThrowsAndNothingRuns()
    {
        Bench bench;
        bench.hasDevice = false;
        bench.engine.connectNodes(stereo);
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, bench.engine.start());
        QVERIFY(!bench.engine.isRunning());
        bench.engine.playerNode().scheduleFile(bench.engine.openFile({}));
        bench.engine.playerNode().play();
        QVERIFY(!bench.engine.playerNode().isPlaying());
        // Once there is one, what was scheduled plays.
        bench.hasDevice = true;
        bench.engine.start();
        bench.engine.playerNode().play();
        QVERIFY(bench.step(1'000));
        QVERIFY(bench.engine.playerNode().isPlaying());
    }

    void lostDeviceIsToldAndAnotherTakesOver()
    {
        Bench bench;
        bench.engine.connectNodes(stereo);
        bench.engine.start();
        bench.engine.playerNode().scheduleFile(bench.engine.openFile({}));
        bench.engine.playerNode().play();
        QVERIFY(bench.step(5'000));
        bench.output->breakDown();
        QVERIFY(!bench.engine.isRunning());
        QVERIFY(!bench.engine.playerNode().isPlaying());
        QCOMPARE(bench.engine.playerNode().playerTime()->sampleTime, 5'000.0);
        bench.engine.start();
        bench.engine.playerNode().play();
        QVERIFY(bench.step(1'000));
        QCOMPARE(bench.engine.playerNode().playerTime()->sampleTime, 6'000.0);
        QCOMPARE(bench.output->samples().front(), CountingFile::valueAt(5'000));
    }

    void soundGoesThroughTheEqualizerAndThenTheVolume()
    {
        Bench bench;
        bench.engine.connectNodes(stereo);
        bench.engine.equalizer().setGlobalGain(-20);
        bench.engine.playerNode().setVolume(0.5F);
        bench.engine.start();
        bench.engine.playerNode().scheduleFile(bench.engine.openFile({}));
        bench.engine.playerNode().play();
        QVERIFY(bench.step(10'000));
        const float wanted = CountingFile::valueAt(9'999) * 0.05F;
        QVERIFY(std::abs(bench.output->samples().at(2 * 9'999) / wanted - 1) < 0.001F);
        // Settled before the first sample: nothing slides at the beginning of a song.
        QVERIFY(std::abs(bench.output->samples().front() / (CountingFile::valueAt(0) * 0.05F) - 1) < 0.001F);
    }

    void goesWithASongUnderWay()
    {
        const auto bench = std::make_unique<Bench>();
        bench->engine.connectNodes(stereo);
        bench->engine.start();
        bench->engine.playerNode().scheduleFile(bench->engine.openFile({}));
        bench->engine.playerNode().play();
        bench->output->allow(20'000'000);
        QTRY_VERIFY(bench->engine.playerNode().playerTime()->sampleTime > 20'000);
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestOutputAudioEngine)
#include "tst_output_audio_engine.moc"
