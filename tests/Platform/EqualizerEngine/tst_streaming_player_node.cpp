// SPDX-License-Identifier: GPL-3.0-or-later
#include "CountingFile.h"
#include "Platform/EqualizerEngine/FileOutput.h"
#include "Platform/EqualizerEngine/StreamingPlayerNode.h"

#include <QElapsedTimer>
#include <QTest>

#include <cmath>

namespace cadorel {

namespace {

constexpr AudioFormat stereo{.sampleRate = 48'000, .channelCount = 2};
/// What a sound that begins in its middle needs to be at full volume.
constexpr qint64 fadeFrames = 48'000 / 250;

/// A node on an output that is stepped by the test.
struct Bench
{
    explicit Bench(AudioFormat format = stereo)
    {
        node.setFormat(format);
        output.open(format, node.source());
        node.setOutput(&output);
    }
    ~Bench() { node.setOutput(nullptr); }
    Q_DISABLE_COPY_MOVE(Bench)

    /// The output takes so many frames; whether it did.
    bool step(qint64 frames)
    {
        output.allow(frames);
        return QTest::qWaitFor([this] { return output.allowance() == 0; }, 20'000);
    }
    float sample(qint64 frame, int channel = 0) const
    {
        return output.samples().at(std::size_t(frame * output.format().channelCount + channel));
    }

    int resets = 0;
    StreamingPlayerNode node{{.process = [](float *, qint64) {}, .reset = [this] { ++resets; }}};
    FileOutput output;
};

std::shared_ptr<CountingFile> fileOf(qint64 length, int offset = 0)
{
    return std::make_shared<CountingFile>(length, stereo, offset);
}

} // namespace

class TestStreamingPlayerNode : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void playsEverySampleAsItIs()
    {
        Bench bench;
        const auto file = fileOf(200'000);
        bench.node.scheduleFile(file);
        bench.node.play();
        QVERIFY(bench.node.isPlaying());
        QVERIFY(bench.step(200'000));
        const std::vector<float> heard = bench.output.samples();
        QCOMPARE(heard.size(), std::size_t(400'000));
        for (qint64 frame = 0; frame < 200'000; ++frame) {
            QCOMPARE(heard[std::size_t(2 * frame)], CountingFile::valueAt(frame));
            QCOMPARE(heard[std::size_t(2 * frame + 1)], -CountingFile::valueAt(frame));
        }
    }

    void segmentsFollowEachOtherWithoutAGap()
    {
        Bench bench;
        const auto one = fileOf(10'000);
        const auto two = fileOf(10'000, 500'000);
        bench.node.scheduleSegment(one, 0, 3'000);
        bench.node.scheduleSegment(two, 100, 50);
        bench.node.play();
        bench.node.scheduleSegment(one, 9'000, 1'000);
        QVERIFY(bench.step(4'050));
        QCOMPARE(bench.sample(2'999), CountingFile::valueAt(2'999));
        QCOMPARE(bench.sample(3'000), CountingFile::valueAt(100, 500'000));
        QCOMPARE(bench.sample(3'049), CountingFile::valueAt(149, 500'000));
        QCOMPARE(bench.sample(3'050), CountingFile::valueAt(9'000));
        QCOMPARE(bench.sample(4'049), CountingFile::valueAt(9'999));
    }

    void beginsAtTheStartFrameAndFadesIn()
    {
        Bench bench;
        bench.node.scheduleSegment(fileOf(100'000), 50'000, 50'000);
        bench.node.play();
        QVERIFY(bench.step(1'000));
        QVERIFY(bench.sample(0) < 0.01F * CountingFile::valueAt(50'000));
        for (qint64 frame = 1; frame < fadeFrames; ++frame)
            QVERIFY(bench.sample(frame) > bench.sample(frame - 1));
        QCOMPARE(bench.sample(fadeFrames), CountingFile::valueAt(50'000 + fadeFrames));
        QCOMPARE(bench.sample(999), CountingFile::valueAt(50'999));
    }

    void clockIsWhatTheOutputHasPlayed()
    {
        Bench bench;
        QVERIFY(!bench.node.playerTime());
        bench.node.scheduleFile(fileOf(100'000));
        QVERIFY(!bench.node.playerTime());
        bench.node.play();
        QCOMPARE(bench.node.playerTime()->sampleTime, 0.0);
        QCOMPARE(bench.node.playerTime()->sampleRate, 48'000.0);
        QVERIFY(bench.step(4'800));
        QCOMPARE(bench.node.playerTime()->sampleTime, 4'800.0);
    }

    void pauseHoldsPlaceAndClock()
    {
        Bench bench;
        bench.node.scheduleFile(fileOf(100'000));
        bench.node.play();
        QVERIFY(bench.step(1'000));
        bench.node.pause();
        QVERIFY(!bench.node.isPlaying());
        bench.output.allow(500);
        QTest::qWait(20); // nothing may come meanwhile
        QCOMPARE(bench.node.playerTime()->sampleTime, 1'000.0);
        QCOMPARE(bench.output.allowance(), qint64(500));
        bench.node.play();
        QTRY_COMPARE(bench.output.allowance(), qint64(0));
        QCOMPARE(bench.sample(1'000), CountingFile::valueAt(1'000));
        QCOMPARE(bench.node.playerTime()->sampleTime, 1'500.0);
    }

    void seekIsStopScheduleAndPlay()
    {
        Bench bench;
        const auto file = fileOf(500'000);
        bench.node.scheduleFile(file);
        bench.node.play();
        QVERIFY(bench.step(10'000));
        const int resets = bench.resets;
        bench.node.stop();
        QVERIFY(!bench.node.playerTime());
        bench.node.scheduleSegment(file, 400'000, 100'000);
        QCOMPARE(bench.resets, resets + 1);
        bench.node.play();
        QCOMPARE(bench.node.playerTime()->sampleTime, 0.0);
        QVERIFY(bench.step(10'000));
        QCOMPARE(bench.node.playerTime()->sampleTime, 10'000.0);
        QCOMPARE(bench.sample(19'999), CountingFile::valueAt(409'999));
        QVERIFY(!file->wasShared());
    }

    void silenceFollowsTheEndAndTheClockRunsOn()
    {
        Bench bench;
        bench.node.scheduleFile(fileOf(1'000));
        bench.node.play();
        QVERIFY(bench.step(5'000));
        QCOMPARE(bench.sample(999), CountingFile::valueAt(999));
        QCOMPARE(bench.sample(1'000), 0.0F);
        QCOMPARE(bench.sample(4'999), 0.0F);
        QVERIFY(bench.node.isPlaying());
        QCOMPARE(bench.node.playerTime()->sampleTime, 5'000.0);
    }

    void withNothingScheduledTheClockRunsInSilence()
    {
        Bench bench;
        bench.node.play();
        QVERIFY(bench.node.isPlaying());
        QVERIFY(bench.step(2'000));
        QCOMPARE(bench.node.playerTime()->sampleTime, 2'000.0);
        QCOMPARE(bench.sample(1'999), 0.0F);
        bench.node.scheduleFile(fileOf(1'000));
        QVERIFY(bench.step(1'000));
        QCOMPARE(bench.sample(2'500), CountingFile::valueAt(500));
    }

    void damagedFileEndsInSilence()
    {
        Bench bench;
        const auto file = fileOf(100'000);
        file->breakAt(30'000);
        bench.node.scheduleFile(file);
        bench.node.scheduleSegment(fileOf(1'000, 7), 0, 1'000);
        bench.node.play();
        QVERIFY(bench.step(32'000));
        QCOMPARE(bench.sample(29'999), CountingFile::valueAt(29'999));
        QCOMPARE(bench.sample(30'000), CountingFile::valueAt(0, 7));
        QCOMPARE(bench.sample(31'000), 0.0F);
    }

    void clockWaitsForASlowDisk()
    {
        Bench bench;
        const auto file = fileOf(100'000);
        file->holdAt(20'000);
        bench.node.scheduleFile(file);
        bench.node.play();
        bench.output.allow(50'000);
        QTRY_VERIFY(file->isWaiting());
        const qint64 before = qint64(bench.node.playerTime()->sampleTime);
        QTRY_VERIFY(bench.node.playerTime()->sampleTime >= 20'000);
        QVERIFY(before <= 20'400);
        const double stands = bench.node.playerTime()->sampleTime;
        QTest::qWait(30);
        QCOMPARE(bench.node.playerTime()->sampleTime, stands);
        QVERIFY(bench.node.isPlaying());
        file->release();
        QTRY_COMPARE(bench.output.allowance(), qint64(0));
        // Late, but all of it and in its place.
        for (qint64 frame = 19'000; frame < 22'000; ++frame)
            QCOMPARE(bench.sample(frame), CountingFile::valueAt(frame));
        QCOMPARE(bench.node.playerTime()->sampleTime, 50'000.0);
    }

    void stopDoesNotWaitForAReadThatHangs()
    {
        Bench bench;
        auto hanging = fileOf(100'000);
        hanging->holdAt(0);
        bench.node.scheduleFile(hanging);
        bench.node.play();
        QTRY_VERIFY(hanging->isWaiting());
        QElapsedTimer timer;
        timer.start();
        bench.node.stop();
        QVERIFY(timer.elapsed() < 50);
        // Another file plays meanwhile.
        bench.node.scheduleFile(fileOf(10'000, 9));
        bench.node.play();
        QVERIFY(bench.step(10'000));
        QCOMPARE(bench.sample(9'999), CountingFile::valueAt(9'999, 9));
        // Once it can, the thread lets go of the file.
        std::weak_ptr<CountingFile> left = hanging;
        hanging->release();
        hanging.reset();
        QTRY_VERIFY(left.expired());
    }

    void endOfTheNodeDoesNotWaitForAReadThatHangs()
    {
        auto hanging = fileOf(100'000);
        {
            Bench bench;
            hanging->holdAt(0);
            bench.node.scheduleFile(hanging);
            QTRY_VERIFY(hanging->isWaiting());
            QElapsedTimer timer;
            timer.start();
            bench.node.stop();
            QVERIFY(timer.elapsed() < 50);
        }
        std::weak_ptr<CountingFile> left = hanging;
        hanging->release();
        hanging.reset();
        QTRY_VERIFY(left.expired());
    }

    void stopLetsGoOfTheFile()
    {
        Bench bench;
        auto file = fileOf(1'000'000);
        bench.node.scheduleFile(file);
        bench.node.play();
        QVERIFY(bench.step(5'000));
        bench.node.stop();
        const std::weak_ptr<CountingFile> left = file;
        file.reset();
        QTRY_VERIFY(left.expired());
    }

    void theSameFileIsReadByOneThreadAtATime()
    {
        Bench bench;
        const auto file = fileOf(1'000'000);
        for (int i = 0; i < 200; ++i) {
            bench.node.stop();
            bench.node.scheduleSegment(file, i * 1'000, 500'000);
            bench.node.play();
        }
        QVERIFY(bench.step(1'000));
        QVERIFY(!file->wasShared());
        const std::vector<float> heard = bench.output.samples();
        QCOMPARE(heard[heard.size() - 2], CountingFile::valueAt(199'999));
    }

    void volumeMovesWithoutAJump()
    {
        Bench bench;
        bench.node.setVolume(0.25F);
        const auto loud = fileOf(200'000, 700'000);
        bench.node.scheduleFile(loud);
        bench.node.play();
        QVERIFY(bench.step(4'000));
        // At the beginning there is nothing to slide from.
        QCOMPARE(bench.sample(0), CountingFile::valueAt(0, 700'000) * 0.25F);
        bench.node.setVolume(1);
        QVERIFY(bench.step(4'000));
        const float step = 1.0F / 480; // ten milliseconds from silence to full
        for (qint64 frame = 4'000; frame < 8'000; ++frame)
            QVERIFY(std::abs(bench.sample(frame) - bench.sample(frame - 1)) < step);
        QCOMPARE(bench.sample(7'999), CountingFile::valueAt(7'999, 700'000));
        bench.node.setVolume(0);
        QVERIFY(bench.step(4'000));
        QCOMPARE(bench.sample(11'999), 0.0F);
    }

    void lostOutputIsNotPlaying()
    {
        Bench bench;
        bench.node.scheduleFile(fileOf(100'000));
        bench.node.play();
        QVERIFY(bench.step(10'000));
        bench.output.breakDown();
        QVERIFY(!bench.node.isPlaying());
        QCOMPARE(bench.node.playerTime()->sampleTime, 10'000.0);
        bench.node.play();
        QVERIFY(!bench.node.isPlaying());
    }

    void goesOnWhereALostOutputLeftIt()
    {
        Bench bench;
        bench.node.scheduleFile(fileOf(100'000));
        bench.node.play();
        QVERIFY(bench.step(10'000));
        bench.output.breakDown();
        bench.node.setOutput(nullptr);
        QVERIFY(!bench.node.isPlaying());
        FileOutput other;
        other.open(stereo, bench.node.source());
        bench.node.setOutput(&other);
        QCOMPARE(bench.node.playerTime()->sampleTime, 10'000.0);
        bench.node.play();
        QVERIFY(bench.node.isPlaying());
        other.allow(5'000);
        QTRY_COMPARE(other.allowance(), qint64(0));
        QCOMPARE(bench.node.playerTime()->sampleTime, 15'000.0);
        QCOMPARE(other.samples().front(), CountingFile::valueAt(10'000));
        bench.node.setOutput(nullptr);
    }

    void everyShapeOfSound_data()
    {
        QTest::addColumn<int>("rate");
        QTest::addColumn<int>("channels");
        QTest::newRow("8 kHz mono") << 8'000 << 1;
        QTest::newRow("96 kHz 6 channels") << 96'000 << 6;
        QTest::newRow("192 kHz 8 channels") << 192'000 << 8;
    }

    void everyShapeOfSound()
    {
        QFETCH(const int, rate);
        QFETCH(const int, channels);
        const AudioFormat format{.sampleRate = rate, .channelCount = channels};
        Bench bench(format);
        bench.node.scheduleFile(std::make_shared<CountingFile>(rate, format));
        bench.node.play();
        QVERIFY(bench.step(rate));
        QCOMPARE(bench.sample(rate - 1, channels - 1),
                 CountingFile::valueAt(rate - 1) * (channels % 2 ? 1.0F : -1.0F));
        QCOMPARE(bench.node.playerTime()->sampleRate, double(rate));
    }

    void nothingToScheduleIsLeftOut()
    {
        Bench bench;
        bench.node.scheduleSegment(nullptr, 0, 10);
        bench.node.scheduleSegment(fileOf(100), 0, 0);
        bench.node.scheduleSegment(fileOf(100), 0, -5);
        bench.node.play();
        QVERIFY(bench.step(100));
        QCOMPARE(bench.sample(50), 0.0F);
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestStreamingPlayerNode)
#include "tst_streaming_player_node.moc"
