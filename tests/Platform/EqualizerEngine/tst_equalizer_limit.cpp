// SPDX-License-Identifier: GPL-3.0-or-later
#include "EqualizerBench.h"

#include <QTest>

namespace cadorel {

/// Sound that the equalizer makes louder than full scale.
class EqualizerLimitTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fullScaleIsTurnedDownAndKeepsItsShape_data();
    void fullScaleIsTurnedDownAndKeepsItsShape();
    void channelsAreTurnedDownAlike();
    void loudnessComesBackAfterAPeak();
    void loudToneStaysATone_data();
    void loudToneStaysATone();
};

void EqualizerLimitTest::fullScaleIsTurnedDownAndKeepsItsShape_data()
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

void EqualizerLimitTest::fullScaleIsTurnedDownAndKeepsItsShape()
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

void EqualizerLimitTest::channelsAreTurnedDownAlike()
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

void EqualizerLimitTest::loudnessComesBackAfterAPeak()
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

void EqualizerLimitTest::loudToneStaysATone_data()
{
    QTest::addColumn<double>("hertz");
    for (const double hertz : {32.0, 100.0, 440.0, 1000.0, 7000.0})
        QTest::addRow("%g Hz", hertz) << hertz;
}

void EqualizerLimitTest::loudToneStaysATone()
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

} // namespace cadorel

QTEST_APPLESS_MAIN(cadorel::EqualizerLimitTest)
#include "tst_equalizer_limit.moc"
