// SPDX-License-Identifier: GPL-3.0-or-later
#include "MadeWaves.h"
#include "Platform/EqualizerEngine/BiquadEqualizer.h"

#include <QTest>

#include <atomic>
#include <limits>
#include <random>
#include <thread>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr std::array<double, 10> centres{32, 64, 125, 250, 500, 1000, 2000, 4000, 8000, 16000};
constexpr int cdRate = 44'100;
// What the gain of a ramp may grow by from one frame to the next.
const double rampPerFrame = ratioOf(0.25 / 64);

void setGains(BiquadEqualizer &equalizer, double gain)
{
    for (int band = 0; band < equalizer.bandCount(); ++band)
        equalizer.setBand(band, {centres[static_cast<std::size_t>(band)], 1, gain, false});
}

void setGain(BiquadEqualizer &equalizer, int band, double gain)
{
    equalizer.setBand(band, {centres[static_cast<std::size_t>(band)], 1, gain, false});
}

/// One channel through the equalizer, in pieces as a sound device asks for them.
Wave played(BiquadEqualizer &equalizer, Wave wave, std::size_t piece = 1024)
{
    for (std::size_t at = 0; at < wave.size(); at += piece) {
        const std::size_t frames = std::min(piece, wave.size() - at);
        equalizer.process(wave.data() + at, static_cast<qint64>(frames));
    }
    return wave;
}

/// Decibels that a steady tone of one channel is changed by, after half a second for the filters.
double gainAt(BiquadEqualizer &equalizer, double hertz, int sampleRate)
{
    equalizer.prepare({sampleRate, 1});
    const Wave sound = played(equalizer, sine(hertz, sampleRate, 0.1, 1));
    const auto settled = std::span(sound).subspan(static_cast<std::size_t>(sampleRate / 2));
    return decibelsOf(fitTone(settled, hertz, sampleRate).amplitude / 0.1);
}

Wave noise(std::size_t samples, float amplitude)
{
    std::mt19937 engine(7);
    std::uniform_real_distribution<float> distribution(-amplitude, amplitude);
    Wave wave(samples);
    for (float &sample : wave)
        sample = distribution(engine);
    return wave;
}

} // namespace

class BiquadEqualizerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachBandHasItsGainAtItsCentre_data();
    void eachBandHasItsGainAtItsCentre();
    void gainsBesideTheCentreFollowTheCurve();
    void bandsAddUp();
    void bandsNearHalfTheRatePassThrough_data();
    void bandsNearHalfTheRatePassThrough();
    void globalGainChangesTheWholeSound();
    void gainsBeyondTheLimitsAreTheLimits();
    void bypassedBandsLeaveTheSoundAsItIs();
    void withEveryGainAtZeroNoBitChanges_data();
    void withEveryGainAtZeroNoBitChanges();
    void backAtZeroNoBitChanges();

    void globalGainMovesAQuarterDecibelIn64Frames();
    void bandMovesAQuarterDecibelIn64Frames();
    void startsASongWithoutARamp();
    void sizesOfPiecesMakeNoDifference();
    void slidersMakeNoClick_data();
    void slidersMakeNoClick();
    void anotherCentreMakesNoClick();

    void fullScaleIsTurnedDownAndKeepsItsShape_data();
    void fullScaleIsTurnedDownAndKeepsItsShape();
    void channelsAreTurnedDownAlike();
    void loudnessComesBackAfterAPeak();
    void loudToneStaysATone_data();
    void loudToneStaysATone();

    void channelsAreEqualizedAlikeAndApart_data();
    void channelsAreEqualizedAlikeAndApart();
    void steadyPressureStays();
    void silenceStaysSilence();
    void ringsOutToSilence();
    void recoversFromSamplesThatAreNoSound_data();
    void recoversFromSamplesThatAreNoSound();
    void resetForgetsTheSound();
    void settingsMayChangeWhileSoundIsProcessed();
};

void BiquadEqualizerTest::eachBandHasItsGainAtItsCentre_data()
{
    QTest::addColumn<int>("sampleRate");
    QTest::addColumn<double>("gain");
    for (const int sampleRate : {22'050, 44'100, 48'000, 96'000}) {
        for (const double gain : {-12.0, -6.0, 6.0, 12.0})
            QTest::addRow("%d Hz, %+g dB", sampleRate, gain) << sampleRate << gain;
    }
}

void BiquadEqualizerTest::eachBandHasItsGainAtItsCentre()
{
    QFETCH(const int, sampleRate);
    QFETCH(const double, gain);
    for (std::size_t band = 0; band < centres.size(); ++band) {
        if (centres[band] >= 0.45 * sampleRate)
            continue;
        BiquadEqualizer equalizer;
        setGains(equalizer, 0);
        setGain(equalizer, static_cast<int>(band), gain);
        QVERIFY2(std::abs(gainAt(equalizer, centres[band], sampleRate) - gain) < 0.05,
                 qPrintable(QString::number(centres[band])));
    }
}

void BiquadEqualizerTest::gainsBesideTheCentreFollowTheCurve()
{
    for (const double gain : {-12.0, 5.0}) {
        for (const double hertz : {40.0, 300.0, 707.0, 1000.0, 1414.0, 3000.0, 15000.0}) {
            BiquadEqualizer equalizer;
            equalizer.setBand(5, {1000, 1, gain, false});
            const double expected = bellDecibels(hertz, 1000, 1, gain, cdRate);
            const double measured = gainAt(equalizer, hertz, cdRate);
            QVERIFY2(std::abs(measured - expected) < 0.05,
                     qPrintable(u"%1 Hz: %2, not %3"_s.arg(hertz).arg(measured).arg(expected)));
        }
    }
    BiquadEqualizer wide;
    wide.setBand(0, {1000, 3, 9, false});
    QVERIFY(std::abs(gainAt(wide, 500, cdRate) - bellDecibels(500, 1000, 3, 9, cdRate)) < 0.05);
}

void BiquadEqualizerTest::bandsAddUp()
{
    BiquadEqualizer equalizer;
    setGains(equalizer, 6);
    for (const double hertz : {32.0, 90.0, 1000.0, 5500.0, 16000.0}) {
        double expected = 0;
        for (const double centre : centres)
            expected += bellDecibels(hertz, centre, 1, 6, cdRate);
        QVERIFY2(std::abs(gainAt(equalizer, hertz, cdRate) - expected) < 0.05,
                 qPrintable(QString::number(hertz)));
    }
}

void BiquadEqualizerTest::bandsNearHalfTheRatePassThrough_data()
{
    QTest::addColumn<int>("sampleRate");
    QTest::addColumn<double>("centre");
    QTest::addRow("at 0.45") << 20'000 << 9000.0;
    QTest::addRow("between 0.45 and a half") << 22'050 << 10'500.0;
    QTest::addRow("at a half") << 8000 << 4000.0;
    QTest::addRow("beyond a half") << 22'050 << 16'000.0;
    QTest::addRow("far beyond") << 8000 << 16'000.0;
}

void BiquadEqualizerTest::bandsNearHalfTheRatePassThrough()
{
    QFETCH(const int, sampleRate);
    QFETCH(const double, centre);
    BiquadEqualizer equalizer;
    equalizer.setBand(3, {centre, 1, 12, false});
    equalizer.prepare({sampleRate, 1});
    const Wave wave = noise(5000, 0.5F);
    QCOMPARE(played(equalizer, wave), wave);
    equalizer.setBand(3, {centre, 1, -12, false}); // in the course of the sound neither
    QCOMPARE(played(equalizer, wave), wave);

    equalizer.setBand(3, {0.44 * sampleRate, 1, 12, false});
    QVERIFY(std::abs(gainAt(equalizer, 0.44 * sampleRate, sampleRate) - 12) < 0.1);
}

void BiquadEqualizerTest::globalGainChangesTheWholeSound()
{
    for (const double gain : {-12.0, -3.5, 6.0}) {
        BiquadEqualizer equalizer;
        setGains(equalizer, 0);
        equalizer.setGlobalGain(gain);
        QCOMPARE(equalizer.globalGain(), gain);
        for (const double hertz : {20.0, 1000.0, 19'000.0})
            QVERIFY(std::abs(gainAt(equalizer, hertz, cdRate) - gain) < 0.001);
        setGain(equalizer, 5, 4);
        QVERIFY(std::abs(gainAt(equalizer, 1000, cdRate) - gain - 4) < 0.01);
    }
}

void BiquadEqualizerTest::gainsBeyondTheLimitsAreTheLimits()
{
    BiquadEqualizer equalizer;
    equalizer.setBand(5, {1000, 1, 1000, false});
    equalizer.setGlobalGain(-40); // else the limiter would have its say
    QVERIFY(std::abs(gainAt(equalizer, 1000, cdRate) - (24 - 40)) < 0.05);
    equalizer.setBand(5, {1000, 1, std::numeric_limits<double>::quiet_NaN(), false});
    equalizer.setGlobalGain(std::numeric_limits<double>::quiet_NaN());
    QVERIFY(std::abs(gainAt(equalizer, 1000, cdRate)) < 1e-6);
    equalizer.setBand(5, {std::numeric_limits<double>::quiet_NaN(), -1, 6, false});
    QVERIFY(std::abs(gainAt(equalizer, 1000, cdRate)) < 1e-6);
}

void BiquadEqualizerTest::bypassedBandsLeaveTheSoundAsItIs()
{
    BiquadEqualizer equalizer;
    QVERIFY(equalizer.band(4).bypass);
    for (int band = 0; band < equalizer.bandCount(); ++band)
        equalizer.setBand(band, {centres[static_cast<std::size_t>(band)], 1, 12, true});
    equalizer.prepare({cdRate, 1});
    const Wave wave = noise(5000, 0.5F);
    QCOMPARE(played(equalizer, wave), wave);
    QCOMPARE(equalizer.band(4).gain, 12.0);
}

void BiquadEqualizerTest::withEveryGainAtZeroNoBitChanges_data()
{
    QTest::addColumn<int>("channels");
    for (const int channels : {1, 2, 3, 6})
        QTest::addRow("%d channels", channels) << channels;
}

void BiquadEqualizerTest::withEveryGainAtZeroNoBitChanges()
{
    QFETCH(const int, channels);
    BiquadEqualizer equalizer;
    setGains(equalizer, 0);
    equalizer.prepare({cdRate, channels});
    Wave sound = noise(static_cast<std::size_t>(channels) * 10'000, 1);
    const Wave before = sound;
    equalizer.process(sound.data(), 10'000);
    QCOMPARE(sound, before);
}

void BiquadEqualizerTest::backAtZeroNoBitChanges()
{
    BiquadEqualizer equalizer;
    setGains(equalizer, 6);
    equalizer.prepare({cdRate, 1});
    const Wave wave = noise(2 * cdRate, 0.1F);
    QVERIFY(played(equalizer, wave) != wave);
    setGains(equalizer, 0);
    played(equalizer, wave); // moves down, rings out
    QCOMPARE(played(equalizer, wave), wave);
}

void BiquadEqualizerTest::globalGainMovesAQuarterDecibelIn64Frames()
{
    BiquadEqualizer equalizer;
    equalizer.prepare({cdRate, 1});
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

void BiquadEqualizerTest::bandMovesAQuarterDecibelIn64Frames()
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

void BiquadEqualizerTest::startsASongWithoutARamp()
{
    BiquadEqualizer equalizer;
    equalizer.prepare({cdRate, 1});
    equalizer.setGlobalGain(-12);
    equalizer.prepare({48'000, 1});
    QVERIFY(std::abs(decibelsOf(double{played(equalizer, Wave(1, 0.5F)).front()} / 0.5) + 12) < 1e-5);
    equalizer.setGlobalGain(-6);
    equalizer.reset();
    QVERIFY(std::abs(decibelsOf(double{played(equalizer, Wave(1, 0.5F)).front()} / 0.5) + 6) < 1e-5);
}

void BiquadEqualizerTest::sizesOfPiecesMakeNoDifference()
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

void BiquadEqualizerTest::slidersMakeNoClick_data()
{
    QTest::addColumn<int>("band"); // -1 is the global gain
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    for (int band = -1; band < 10; ++band) {
        QTest::addRow("band %d up", band) << band << -12.0 << 12.0;
        QTest::addRow("band %d down", band) << band << 12.0 << -12.0;
    }
}

void BiquadEqualizerTest::slidersMakeNoClick()
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

void BiquadEqualizerTest::anotherCentreMakesNoClick()
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
    QVERIFY(std::abs(decibelsOf(fitTone(std::span(rest).last(4410), 100, cdRate).amplitude / 0.2)) < 0.05);
    const Wave high = played(equalizer, sine(3000, cdRate, 0.1, 1));
    QVERIFY(std::abs(decibelsOf(fitTone(std::span(high).last(4410), 3000, cdRate).amplitude / 0.1) + 12) <
            0.05);
}

void BiquadEqualizerTest::fullScaleIsTurnedDownAndKeepsItsShape_data()
{
    QTest::addColumn<Wave>("wave");
    QTest::newRow("low tone") << sine(32, cdRate, 1, 2);
    QTest::newRow("middle tone") << sine(1000, cdRate, 1, 2);
    QTest::newRow("high tone") << sine(16'000, cdRate, 1, 2);
    QTest::newRow("noise") << noise(2 * cdRate, 1);
    Wave square(2 * cdRate);
    for (std::size_t i = 0; i < square.size(); ++i)
        square[i] = i / 200 % 2 == 0 ? 1.0F : -1.0F;
    QTest::newRow("square wave") << square;
    Wave clicks(2 * cdRate);
    for (std::size_t i = 0; i < clicks.size(); i += 5000)
        clicks[i] = 1;
    QTest::newRow("clicks") << clicks;
}

void BiquadEqualizerTest::fullScaleIsTurnedDownAndKeepsItsShape()
{
    QFETCH(const Wave, wave);
    BiquadEqualizer equalizer;
    setGains(equalizer, 12);
    equalizer.setGlobalGain(12);
    equalizer.prepare({cdRate, 1});
    const Wave loud = played(equalizer, wave);

    // The same a thousandth as loud, where nothing limits, tells what it would have been.
    Wave quiet = wave;
    for (float &sample : quiet)
        sample /= 1000;
    equalizer.reset();
    quiet = played(equalizer, quiet);

    bool wasLimited = false;
    for (std::size_t i = 0; i < loud.size(); ++i) {
        const double wanted = 1000 * double{quiet[i]};
        const double heard = double{loud[i]};
        QVERIFY(std::abs(heard) <= 1);
        // Turned down, never turned over.
        QVERIFY(wanted * heard >= 0 || std::abs(wanted) < 1e-3);
        QVERIFY(std::abs(heard) <= std::abs(wanted) * 1.0001 + 1e-6);
        wasLimited = wasLimited || std::abs(wanted) > 1.01;
    }
    QVERIFY(wasLimited);
}

void BiquadEqualizerTest::channelsAreTurnedDownAlike()
{
    BiquadEqualizer equalizer;
    equalizer.setGlobalGain(12);
    equalizer.prepare({cdRate, 2});
    const Wave left = sine(300, cdRate, 1, 0.2);
    Wave sound(left.size() * 2);
    for (std::size_t i = 0; i < left.size(); ++i) {
        sound[2 * i] = left[i];
        sound[2 * i + 1] = left[i] / 8;
    }
    equalizer.process(sound.data(), static_cast<qint64>(left.size()));
    double loudest = 0;
    for (std::size_t i = 0; i < left.size(); ++i) {
        QVERIFY(std::abs(double{sound[2 * i]} / 8 - double{sound[2 * i + 1]}) < 1e-6);
        loudest = std::max(loudest, std::abs(double{sound[2 * i]}));
    }
    QVERIFY(loudest > 0.99);
}

void BiquadEqualizerTest::loudnessComesBackAfterAPeak()
{
    BiquadEqualizer equalizer;
    equalizer.setGlobalGain(6);
    equalizer.prepare({cdRate, 1});
    played(equalizer, sine(1000, cdRate, 1, 0.1));
    const Wave after = played(equalizer, sine(1000, cdRate, 0.1, 4));
    // Not with a step, but in the end as if there had been no peak.
    const double justAfter = fitTone(std::span(after).first(882), 1000, cdRate).amplitude;
    QVERIFY(std::abs(justAfter - 0.1) < 0.005);
    const double later = fitTone(std::span(after).last(4410), 1000, cdRate).amplitude;
    QVERIFY(std::abs(decibelsOf(later / 0.1) - 6) < 0.001);
    QVERIFY(largestJump(after) < 0.2 * 2 * std::sin(std::numbers::pi * 1000 / cdRate) * 1.01);
}

void BiquadEqualizerTest::loudToneStaysATone_data()
{
    QTest::addColumn<double>("hertz");
    for (const double hertz : {32.0, 100.0, 440.0, 1000.0, 7000.0})
        QTest::addRow("%g Hz", hertz) << hertz;
}

void BiquadEqualizerTest::loudToneStaysATone()
{
    QFETCH(const double, hertz);
    BiquadEqualizer equalizer;
    equalizer.setGlobalGain(12);
    equalizer.prepare({cdRate, 1});
    const Wave sound = played(equalizer, sine(hertz, cdRate, 1, 2));
    const FittedTone tone = fitTone(std::span(sound).last(cdRate), hertz, cdRate);
    QVERIFY(tone.amplitude > 0.98);
    // Cut off at full scale it would be a third.
    QVERIFY2(tone.remainder < 0.005, qPrintable(QString::number(tone.remainder)));
}

void BiquadEqualizerTest::channelsAreEqualizedAlikeAndApart_data()
{
    QTest::addColumn<int>("channels");
    for (const int channels : {1, 2, 3, 6, 8})
        QTest::addRow("%d channels", channels) << channels;
}

void BiquadEqualizerTest::channelsAreEqualizedAlikeAndApart()
{
    QFETCH(const int, channels);
    const std::size_t frames = 3000;
    Wave sound(frames * static_cast<std::size_t>(channels));
    QList<Wave> waves;
    for (int channel = 0; channel < channels; ++channel) {
        const Wave wave = sine(300 * (channel + 1), cdRate, 0.1, 1);
        for (std::size_t i = 0; i < frames; ++i)
            sound[i * static_cast<std::size_t>(channels) + static_cast<std::size_t>(channel)] = wave[i];
        waves << Wave(wave.begin(), wave.begin() + frames);
    }
    BiquadEqualizer equalizer;
    setGains(equalizer, -7);
    const auto play = [&equalizer](Wave &wave, int count) {
        equalizer.prepare({cdRate, count});
        equalizer.process(wave.data(), 1000);
        equalizer.setBand(4, {500, 1, 9, false}); // and while a slider moves
        equalizer.process(wave.data() + 1000 * count, 2000);
        equalizer.setBand(4, {500, 1, -7, false});
    };
    play(sound, channels);
    for (int channel = 0; channel < channels; ++channel) {
        Wave wave = waves[channel];
        play(wave, 1);
        for (std::size_t i = 0; i < frames; ++i)
            QCOMPARE(sound[i * static_cast<std::size_t>(channels) + static_cast<std::size_t>(channel)],
                     wave[i]);
    }
}

void BiquadEqualizerTest::steadyPressureStays()
{
    BiquadEqualizer equalizer;
    setGains(equalizer, 12);
    equalizer.prepare({cdRate, 1});
    const Wave sound = played(equalizer, Wave(2 * cdRate, 0.1F));
    QVERIFY(std::abs(double{sound.back()} - 0.1) < 1e-6);
}

void BiquadEqualizerTest::silenceStaysSilence()
{
    BiquadEqualizer equalizer;
    setGains(equalizer, 12);
    equalizer.setGlobalGain(12);
    equalizer.prepare({cdRate, 2});
    Wave sound(2 * cdRate);
    equalizer.process(sound.data(), cdRate / 2);
    setGains(equalizer, -12);
    equalizer.process(sound.data() + cdRate, cdRate / 2);
    QCOMPARE(sound, Wave(2 * cdRate));
}

void BiquadEqualizerTest::ringsOutToSilence()
{
    BiquadEqualizer equalizer;
    setGains(equalizer, 12);
    equalizer.prepare({cdRate, 2});
    Wave sound = noise(cdRate, 0.5F);
    equalizer.process(sound.data(), cdRate / 2);
    Wave silence(8 * cdRate);
    equalizer.process(silence.data(), 4 * cdRate);
    QVERIFY(silence.front() != 0);
    QCOMPARE(Wave(silence.end() - cdRate, silence.end()), Wave(cdRate));
}

void BiquadEqualizerTest::recoversFromSamplesThatAreNoSound_data()
{
    QTest::addColumn<float>("sample");
    QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN();
    QTest::newRow("infinite") << std::numeric_limits<float>::infinity();
    QTest::newRow("minus infinite") << -std::numeric_limits<float>::infinity();
    QTest::newRow("largest") << std::numeric_limits<float>::max();
    QTest::newRow("smallest") << std::numeric_limits<float>::denorm_min();
}

void BiquadEqualizerTest::recoversFromSamplesThatAreNoSound()
{
    QFETCH(const float, sample);
    const Wave wave = sine(1000, cdRate, 0.1, 3);
    BiquadEqualizer equalizer;
    setGains(equalizer, 12);
    equalizer.setGlobalGain(-20);
    equalizer.prepare({cdRate, 1});
    const Wave clean = played(equalizer, wave);

    equalizer.prepare({cdRate, 1});
    Wave broken = wave;
    broken[1000] = sample;
    broken[1001] = sample;
    const Wave sound = played(equalizer, broken);
    for (const float heard : sound)
        QVERIFY(std::abs(heard) <= 1); // false for what is not a number
    for (std::size_t i = wave.size() - 4410; i < wave.size(); ++i)
        QVERIFY(std::abs(sound[i] - clean[i]) < 1e-6F);
}

void BiquadEqualizerTest::resetForgetsTheSound()
{
    BiquadEqualizer equalizer;
    setGains(equalizer, 12);
    equalizer.prepare({cdRate, 1});
    played(equalizer, noise(cdRate, 1));
    equalizer.reset();
    QCOMPARE(played(equalizer, Wave(1000)), Wave(1000));
}

void BiquadEqualizerTest::settingsMayChangeWhileSoundIsProcessed()
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

QTEST_APPLESS_MAIN(cadorel::BiquadEqualizerTest)
#include "tst_biquad_equalizer.moc"
