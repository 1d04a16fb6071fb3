// SPDX-License-Identifier: GPL-3.0-or-later
#include "EqualizerBench.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace cadorel {

/// What the equalizer does to sound while nobody moves a slider.
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
    void channelsAreEqualizedAlikeAndApart_data();
    void channelsAreEqualizedAlikeAndApart();
    void steadyPressureStays();
    void silenceStaysSilence();
    void ringsOutToSilence();
    void recoversFromSamplesThatAreNoSound_data();
    void recoversFromSamplesThatAreNoSound();
    void resetForgetsTheSound();
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

} // namespace cadorel

QTEST_APPLESS_MAIN(cadorel::BiquadEqualizerTest)
#include "tst_biquad_equalizer.moc"
