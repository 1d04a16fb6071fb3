// SPDX-License-Identifier: GPL-3.0-or-later
#include "EqualizerBench.h"

#include <QTest>

#include <algorithm>
#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

// What the gain of a ramp may grow by from one frame to the next.
const double rampPerFrame = ratioOf(0.25 / 64);

} // namespace

/// What is heard while settings change.
class EqualizerMovingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void globalGainMovesAQuarterDecibelIn64Frames();
    void bandMovesAQuarterDecibelIn64Frames();
    void startsASongWithoutARamp();
    void sizesOfPiecesMakeNoDifference();
    void slidersMakeNoClick_data();
    void slidersMakeNoClick();
    void anotherCentreMakesNoClick();
    void settingsMayChangeWhileSoundIsProcessed();
};

void EqualizerMovingTest::globalGainMovesAQuarterDecibelIn64Frames()
{
    BiquadEqualizer equalizer;
    equalizer.prepare({cdRate, 1});
    played(equalizer, Wave(100, 0.5F));
    equalizer.setGlobalGain(-12);
    const Wave sound = played(equalizer, Wave(4000, 0.5F), 100);
    for (const std::size_t frame : {64U, 640U, 1920U, 3008U}) {
        const double expected = -0.25 / 64 * static_cast<double>(frame);
        QVERIFY(std::abs(decibelsOf(double{sound[frame - 1]} / 0.5) - expected) < 0.01);
    }
    QVERIFY(sound[3062] > sound[3063]);
    QCOMPARE(sound[3072 + 64], sound[3999]); // it arrives with the end of a piece
    QVERIFY(std::abs(decibelsOf(double{sound[3999]} / 0.5) + 12) < 1e-5);
}

void EqualizerMovingTest::bandMovesAQuarterDecibelIn64Frames()
{
    BiquadEqualizer equalizer;
    equalizer.setBand(8, {8000, 1, -12, false});
    equalizer.prepare({cdRate, 1});
    played(equalizer, sine(8000, cdRate, 0.05, 0.5)); // 4,000 waves, so the next one follows without a gap
    equalizer.setBand(8, {8000, 1, 12, false});
    const Wave sound = played(equalizer, sine(8000, cdRate, 0.05, 0.5), 441);
    for (const std::size_t frame : {640U, 3072U, 5000U}) {
        const auto piece = std::span(sound).subspan(frame - 55, 110); // its middle is the frame
        const double measured = decibelsOf(fitTone(piece, 8000, cdRate).amplitude / 0.05);
        QVERIFY(std::abs(measured - (-12 + 0.25 / 64 * static_cast<double>(frame))) < 0.2);
    }
    const auto arrived = std::span(sound).subspan(6300, 441);
    QVERIFY(std::abs(decibelsOf(fitTone(arrived, 8000, cdRate).amplitude / 0.05) - 12) < 0.01);
}

void EqualizerMovingTest::startsASongWithoutARamp()
{
    BiquadEqualizer equalizer;
    equalizer.prepare({cdRate, 1});
    played(equalizer, Wave(100, 0.5F));
    equalizer.prepare({48'000, 1});
    equalizer.setGlobalGain(-12); // after it: what is set for a song is set just before it sounds
    QVERIFY(std::abs(decibelsOf(double{played(equalizer, Wave(1, 0.5F)).front()} / 0.5) + 12) < 1e-5);
    equalizer.setGlobalGain(-6);
    equalizer.reset();
    QVERIFY(std::abs(decibelsOf(double{played(equalizer, Wave(1, 0.5F)).front()} / 0.5) + 6) < 1e-5);
}

void EqualizerMovingTest::sizesOfPiecesMakeNoDifference()
{
    const Wave wave = noise(20'000, 0.1F);
    BiquadEqualizer equalizer;
    setGains(equalizer, 5);
    equalizer.prepare({cdRate, 1});
    const Wave whole = played(equalizer, wave, wave.size());
    for (const std::size_t piece : {1U, 7U, 63U, 64U, 65U, 4096U}) {
        equalizer.reset();
        QCOMPARE(played(equalizer, wave, piece), whole);
    }
    equalizer.process(nullptr, 0);
}

void EqualizerMovingTest::slidersMakeNoClick_data()
{
    QTest::addColumn<int>("band"); // -1 is the global gain
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    for (int band = -1; band < 10; ++band) {
        QTest::addRow("band %d up", band) << band << -12.0 << 12.0;
        QTest::addRow("band %d down", band) << band << 12.0 << -12.0;
    }
}

void EqualizerMovingTest::slidersMakeNoClick()
{
    QFETCH(const int, band);
    QFETCH(const double, from);
    QFETCH(const double, to);
    const double hertz = band < 0 ? 60 : centres[static_cast<std::size_t>(band)];
    const double amplitude = 0.2;
    BiquadEqualizer equalizer;
    const auto set = [&](double gain) {
        if (band < 0)
            equalizer.setGlobalGain(gain);
        else
            setGain(equalizer, band, gain);
    };
    set(from);
    equalizer.prepare({cdRate, 1});
    const Wave wave = sine(hertz, cdRate, amplitude, 1);
    Wave sound = played(equalizer, Wave(wave.begin(), wave.begin() + cdRate / 2));
    set(to);
    const Wave rest = played(equalizer, Wave(wave.begin() + cdRate / 2, wave.end()));
    sound.insert(sound.end(), rest.begin(), rest.end());

    // y = g A sin: from one frame to the next it moves by what the wave moves with the gain as it is, and by
    // what the gain grows at the wave's height. At any time the gain is the one of the ramp, or, as the
    // filter follows it, one that the ramp had before.
    const double start = cdRate / 2;
    const double slope = 2 * std::sin(std::numbers::pi * hertz / cdRate) + (rampPerFrame - 1);
    const double direction = to > from ? 1 : -1;
    for (std::size_t i = cdRate / 4; i < sound.size(); ++i) {
        const double way = std::clamp((static_cast<double>(i) - start) / 256, 0.0, 24.0);
        const double lagging =
            std::clamp((static_cast<double>(i) - start - 3 * cdRate / hertz) / 256, 0.0, 24.0);
        const double gain = std::max(ratioOf(from + direction * way), ratioOf(from + direction * lagging));
        const double jump = std::abs(double{sound[i]} - double{sound[i - 1]});
        QVERIFY2(jump <= 1.02 * amplitude * gain * slope,
                 qPrintable(u"frame %1: %2, not %3"_s.arg(i).arg(jump).arg(amplitude * gain * slope)));
    }
    // And it did move.
    const auto end = std::span(sound).last(cdRate / 4);
    QVERIFY(std::abs(decibelsOf(fitTone(end, hertz, cdRate).amplitude / amplitude) - to) < 0.05);
}

void EqualizerMovingTest::anotherCentreMakesNoClick()
{
    BiquadEqualizer equalizer;
    equalizer.setBand(0, {100, 1, 12, false});
    equalizer.prepare({cdRate, 1});
    const Wave wave = sine(100, cdRate, 0.2, 1);
    Wave sound = played(equalizer, wave);
    equalizer.setBand(0, {3000, 0.5, -12, false});
    const Wave rest = played(equalizer, wave); // a hundred waves: it follows without a gap
    sound.insert(sound.end(), rest.begin(), rest.end());
    const double slope = 2 * std::sin(std::numbers::pi * 100 / cdRate) + (rampPerFrame - 1);
    QVERIFY(largestJump(sound) <= 1.02 * 0.2 * ratioOf(12) * slope);
    // The old bell goes away at the pace of a slider: a wave later it is still there.
    QVERIFY(decibelsOf(fitTone(std::span(rest).first(cdRate / 100), 100, cdRate).amplitude / 0.2) > 10);
    QVERIFY(std::abs(decibelsOf(fitTone(std::span(rest).last(4410), 100, cdRate).amplitude / 0.2)) < 0.05);
    const Wave high = played(equalizer, sine(3000, cdRate, 0.1, 1));
    QVERIFY(std::abs(decibelsOf(fitTone(std::span(high).last(4410), 3000, cdRate).amplitude / 0.1) + 12) <
            0.05);
}

void EqualizerMovingTest::settingsMayChangeWhileSoundIsProcessed()
{
    BiquadEqualizer equalizer;
    setGains(equalizer, 0);
    equalizer.prepare({cdRate, 2});
    std::atomic<bool> ends = false;
    std::atomic<int> pieces = 0;
    bool sound = true;
    std::thread thread([&] {
        Wave piece;
        while (!ends) {
            piece = noise(2 * 512, 1);
            equalizer.process(piece.data(), 512);
            sound = sound && std::ranges::all_of(piece, [](float sample) { return std::abs(sample) <= 1; });
            ++pieces;
        }
    });
    std::mt19937 engine(3);
    while (pieces < 200) {
        const int band = static_cast<int>(engine() % 10);
        equalizer.setBand(band, {20.0 + engine() % 20'000, 0.5 + engine() % 3,
                                 static_cast<double>(engine() % 25) - 12, engine() % 4 == 0});
        equalizer.setGlobalGain(static_cast<double>(engine() % 25) - 12);
        QCOMPARE(equalizer.bandCount(), 10);
    }
    ends = true;
    thread.join();
    QVERIFY(sound);
    // What was said last holds.
    setGains(equalizer, 0);
    setGain(equalizer, 5, -12);
    equalizer.setGlobalGain(3);
    QVERIFY(std::abs(gainAt(equalizer, 1000, cdRate) - (3 - 12)) < 0.05);
}

} // namespace cadorel

QTEST_APPLESS_MAIN(cadorel::EqualizerMovingTest)
#include "tst_equalizer_moving.moc"
